#include "configuration.h"

#include "node_index.h"
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
    NodeIndex index = {NULL, 0, 0, 0};
    const XML_DOM_Node* twin = NULL;
    const bool distinct = nodeIndexTree(&index, configuration, &twin);
    nodeIndexFree(&index);
    if (!twin) return distinct;
    return refuse(error, &(RpcError){.type = "application",
                                     .tag = "operation-failed",
                                     .node = twin,
                                     .message = "Two entries of a list have one key."});
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
