// A root from its beginning to its end.
#include "netxml/schema.h"

uint64_t Schema_InitRoot(Schema_Root* root)
{
    if (!root) return XML_RET_FAIL;
    *root = Schema_Root{};
    root->attributeFormDefault = SCHEMA_FORM_UNQUALIFIED;
    root->elementFormDefault = SCHEMA_FORM_QUALIFIED;
    return SchemaReg_xml_schema_buildin(root);
}

void Schema_ExitRoot(Schema_Root* root)
{
    if (root) SchemaDereg_xml_schema_buildin(root);
}
