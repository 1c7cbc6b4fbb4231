#include "configuration.h"

#include "model.h"
#include "rpc_error.h"
#include "tree.h"

XML_DOM_Node* configurationMake(void)
{
    XML_DOM_Node* configuration = makeElement("configuration", SYSTEM_NAMESPACE);
    if (configuration && XML_DOM_SetRoot(configuration) == XML_RET_OK) return configuration;
    XML_DOM_DelNode(configuration);
    return NULL;
}

/* Schemas of ours have no keys: so the model tells. */
static bool checkKeys(const XML_DOM_Node* configuration, XML_DOM_Node** error)
{
    const ModelRow* row = modelTop();
    const XML_DOM_Node* node = firstElement(configuration);
    const XML_DOM_Node* parent = configuration;
    while (node) {
        const ModelRow* own = modelChild(row, node);
        if (own && modelFind(own, parent, node) != node)
            return refuse(error, &(RpcError){.type = "application",
                                             .tag = "operation-failed",
                                             .node = node,
                                             .message = "Two entries of a list have one key."});
        const XML_DOM_Node* next = own ? firstElement(node) : NULL;
        if (next) {
            row = own;
            parent = node;
        } else {
            next = nextElement(node);
        }
        while (!next && parent != configuration) {
            next = nextElement(parent);
            parent = XML_DOM_GetNodeParent(parent);
            row = modelParent(row);
        }
        node = next;
    }
    return true;
}

bool configurationCheck(const XML_DOM_Node* configuration, const Schema_Root* schemas,
                        XML_DOM_Node** error)
{
    Schema_ValidateResult result;
    *error = NULL;
    if (Schema_ValidateXml(configuration, schemas, &result) != XML_RET_OK) return false;
    if (result.code != SCHEMA_VALID) return refuseVerdict(error, "application", &result);
    return checkKeys(configuration, error);
}
