/* Put in front of the library: no validation comes to a verdict or, with FAILING_REGISTRATION in
 * the environment, nothing can be registered. */
#include <netxml/schema.h>

#include <stdlib.h>

uint32_t Schema_ValidateXml(const XML_DOM_Node* documentElement, const Schema_Root* root,
                            Schema_ValidateResult* result)
{
    (void)documentElement;
    (void)root;
    *result = (Schema_ValidateResult){0};
    return XML_RET_FAIL;
}

uint32_t Schema_RegTopObject(Schema_Root* root, const Schema_Object* object)
{
    (void)root;
    (void)object;
    return getenv("FAILING_REGISTRATION") ? XML_RET_FAIL : XML_RET_OK;
}
