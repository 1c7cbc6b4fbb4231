/* Validates documents against device.xsd, whose records the build makes. */
#include "device_schema.h"

#include <netxml/netxml.h>
#include <stdio.h>

// begin: validate
/* 0 is valid, 3 not valid, 1 no verdict. */
static int validate(const char* file, const Schema_Root* schema)
{
    char text[1024] = "cannot open the file";
    XML_DOM_Node* root = XML_DOM_BuildTreeByFile(file, sizeof text, text);
    Schema_ValidateResult result;
    int status = 1;
    if (root && Schema_ValidateXml(root, schema, &result) == XML_RET_OK) {
        status = result.code == SCHEMA_VALID ? 0 : 3;
        snprintf(text, sizeof text, "valid");
        Schema_GetErrorDesc(&result, sizeof text, text);  // leaves the text of a valid document
    }
    printf("%s: %s\n", file, text);
    XML_DOM_DelNode(root);
    return status;
}
// end: validate

int main(int argc, char** argv)
{
    int worst = 0;
    // begin: register
    Schema_Root schema;
    if (Schema_InitRoot(&schema) != XML_RET_OK || device_schema_register(&schema) != XML_RET_OK)
        return Schema_ExitRoot(&schema), 1;
    for (int i = 1; i < argc; ++i) {
        const int status = validate(argv[i], &schema);
        if (status > worst) worst = status;
    }
    device_schema_deregister(&schema);
    Schema_ExitRoot(&schema);
    // end: register
    return worst;
}
