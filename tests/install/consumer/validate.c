/* Validates two documents by records that netxml_add_schema() made of device.xsd. */
#include <netxml/netxml.h>
#include <stdio.h>
#include <string.h>

#include "device_schema.h"

static int print_verdict(const Schema_Root* schema, const char* document)
{
    char text[512] = "";
    XML_DOM_Node* root = XML_DOM_BuildTreeByMem((const uint8_t*)document,
                                                (uint32_t)strlen(document), sizeof text, text);
    if (!root) return fprintf(stderr, "%s\n", text), 1;
    Schema_ValidateResult result;
    const uint32_t status = Schema_ValidateXml(root, schema, &result);
    if (status == XML_RET_OK && result.code != SCHEMA_VALID)
        Schema_GetErrorDesc(&result, sizeof text, text);
    puts(status != XML_RET_OK ? "no verdict" : result.code == SCHEMA_VALID ? "valid" : text);
    XML_DOM_DelNode(root);
    return 0;
}

int main(void)
{
    Schema_Root schema;
    Schema_InitRoot(&schema);
    if (device_schema_register(&schema) != XML_RET_OK) return 1;
    const int failed = print_verdict(&schema, "<device name=\"edge\"><mtu>1500</mtu></device>") +
                       print_verdict(&schema, "<device name=\"edge\"><mtu>big</mtu></device>");
    device_schema_deregister(&schema);
    Schema_ExitRoot(&schema);
    return failed;
}
