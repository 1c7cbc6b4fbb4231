/* Validates documents against a schema of one element, whose records are written by hand. */
#include <netxml/netxml.h>
#include <stdio.h>

static void validate(const char* file)
{
    XML_DOM_Node* root = XML_DOM_BuildTreeByFile(file, 0, NULL);
    // begin: validate
    static Schema_ElementDecl mtu;  // <xs:element name="mtu" type="xs:unsignedShort"/>
    mtu.name = "mtu";
    mtu.type = Schema_BLDIN_unsignedShort();
    mtu.typeKind = SCHEMA_KIND_SIMPLE_TYPE;
    mtu.minOccurs = mtu.maxOccurs = 1;

    Schema_Root schema;
    Schema_InitRoot(&schema);
    const Schema_Object top = {&mtu, SCHEMA_KIND_ELEMENT};
    Schema_RegTopObject(&schema, &top);

    Schema_ValidateResult result;
    if (Schema_ValidateXml(root, &schema, &result) == XML_RET_OK && result.code != SCHEMA_VALID) {
        char sentence[1024];
        Schema_GetErrorDesc(&result, sizeof sentence, sentence);
        puts(sentence);
    }
    // end: validate
    // begin: release
    Schema_DeregTopObject(&schema, &top);
    Schema_ExitRoot(&schema);
    // end: release
    XML_DOM_DelNode(root);
}

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) validate(argv[i]);
    return 0;
}
