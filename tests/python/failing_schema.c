/* Schemas that cannot be used: one whose registration fails, one with a circle of types. */
#include <netxml/schema.h>

uint32_t failing_schema_register(Schema_Root* root);
void failing_schema_deregister(Schema_Root* root);
uint32_t circular_schema_register(Schema_Root* root);
void circular_schema_deregister(Schema_Root* root);

uint32_t failing_schema_register(Schema_Root* root)
{
    (void)root;
    return XML_RET_FAIL;
}

void failing_schema_deregister(Schema_Root* root)
{
    (void)root;
}

static Schema_ElementDecl circular = {
    .ref = &circular, .name = "a", .minOccurs = 1, .maxOccurs = 1};
static const Schema_Object top = {&circular, SCHEMA_KIND_ELEMENT};

uint32_t circular_schema_register(Schema_Root* root)
{
    return Schema_RegTopObject(root, &top);
}

void circular_schema_deregister(Schema_Root* root)
{
    Schema_DeregTopObject(root, &top);
}
