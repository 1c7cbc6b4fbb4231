/* Put in front of the library: no validation comes to a verdict, or none behind so many as
 * FAILING_AFTER in the environment says; with FAILING_REGISTRATION nothing can be registered. */
#include <netxml/schema.h>

#include <dlfcn.h>
#include <stdlib.h>
#include <string.h>

typedef uint32_t Validate(const XML_DOM_Node* documentElement, const Schema_Root* root,
                          Schema_ValidateResult* result);
typedef uint32_t Register(Schema_Root* root, const Schema_Object* object);

uint32_t Schema_ValidateXml(const XML_DOM_Node* documentElement, const Schema_Root* root,
                            Schema_ValidateResult* result)
{
    static unsigned long validations = 0;
    const char* most = getenv("FAILING_AFTER");
    if (most && validations++ < strtoul(most, NULL, 10)) {
        void* found = dlsym(RTLD_NEXT, "Schema_ValidateXml");
        Validate* validate;
        memcpy(&validate, &found, sizeof validate);
        return validate(documentElement, root, result);
    }
    *result = (Schema_ValidateResult){0};
    return XML_RET_FAIL;
}

uint32_t Schema_RegTopObject(Schema_Root* root, const Schema_Object* object)
{
    void* found = dlsym(RTLD_NEXT, "Schema_RegTopObject");
    Register* enter;
    memcpy(&enter, &found, sizeof enter);
    if (getenv("FAILING_AFTER")) return enter(root, object);
    return getenv("FAILING_REGISTRATION") ? XML_RET_FAIL : XML_RET_OK;
}
