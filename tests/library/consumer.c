/* A program as users write it: C99, the public headers, the shared library. Builds a document by
   hand, edits, copies and writes it, parses it back, and validates an element. */
#include <netxml/netxml.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures;

static void check(int ok, const char* what)
{
    if (ok) return;
    fprintf(stderr, "failed: %s\n", what);
    ++failures;
}

static uint32_t toFile(void* context, const char* bytes, size_t length)
{
    return fwrite(bytes, 1, length, (FILE*)context) == length ? XML_RET_OK : XML_RET_FAIL;
}

/* The schema that the header shows. */
static void validate(void)
{
    static Schema_ElementDecl mtu;
    Schema_Root root;
    Schema_ValidateResult result;
    char sentence[1024] = "";
    XML_DOM_Node* node = XML_DOM_CreateElementWithText("mtu", "x");
    const Schema_Object top = {&mtu, SCHEMA_KIND_ELEMENT};
    mtu.name = "mtu";
    mtu.type = Schema_BLDIN_unsignedShort();
    mtu.typeKind = SCHEMA_KIND_SIMPLE_TYPE;
    mtu.minOccurs = mtu.maxOccurs = 1;
    check(Schema_InitRoot(&root) == XML_RET_OK, "init the schema");
    check(Schema_RegTopObject(&root, &top) == XML_RET_OK, "register");
    check(Schema_ValidateXml(node, &root, &result) == XML_RET_OK, "validate");
    check(Schema_GetErrorDesc(&result, sizeof sentence, sentence) == XML_RET_OK, "describe");
    check(strcmp(sentence, "The value of element '/mtu' is invalid. x is an invalid value of "
                           "unsignedShort type value.") == 0,
          sentence);
    Schema_DeregTopObject(&root, &top);
    Schema_ExitRoot(&root);
    check(root.elements.items == NULL && root.simpleTypes.items == NULL, "nothing is left");
    XML_DOM_DelNode(node);
}

int main(void)
{
    static const char kExpected[] =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><config xmlns=\"urn:example\"><interface "
        "name=\"eth0\">"
        "<mtu>1500</mtu><description><![CDATA[<uplink>]]></description></interface></config>";
    XML_DOM_Node* root = XML_DOM_CreateElementNode("config");
    XML_DOM_Node* interface = XML_DOM_CreateElementNode("interface");
    check(XML_DOM_SetRoot(root) == XML_RET_OK, "set root");
    check(XML_DOM_AddNodeNameSpace(root, NULL, "urn:example") == XML_RET_OK, "declare");
    check(XML_DOM_AddChildNode(root, interface) == XML_RET_OK, "add interface");
    check(XML_DOM_AddAttr(interface, NULL, "name", "eth0") != NULL, "add attribute");
    check(XML_DOM_AddAttr(interface, NULL, "name", "eth1") == NULL, "refuse a second one");
    check(XML_DOM_AddChildNode(interface, XML_DOM_CreateElementWithText("mtu", "9000")) ==
              XML_RET_OK,
          "add mtu");
    check(XML_DOM_AddChildNode(
              interface, XML_DOM_CreateElementWithCData("description", "<uplink>")) == XML_RET_OK,
          "add description");
    check(XML_DOM_SetNodeValue(XML_DOM_GetFirstChild(XML_DOM_GetFirstChild(interface)), "1500") ==
              XML_RET_OK,
          "edit");

    char* text = NULL;
    size_t length = 0;
    check(XML_DOM_TranslateStr(root, 0, &text, &length) == XML_RET_OK, "write");
    check(text && strcmp(text, kExpected) == 0 && length == strlen(kExpected), "text as expected");

    char error[200] = "";
    XML_DOM_Node* parsed =
        XML_DOM_BuildTreeByMem((const uint8_t*)text, (uint32_t)length, sizeof error, error);
    check(parsed != NULL, error);
    XML_DOM_Node* copy = XML_DOM_CopyRoot(parsed);
    check(XML_DOM_CopySubTree(copy, parsed) == XML_RET_OK, "copy");
    XML_DOM_DelNode(parsed);
    char* again = NULL;
    check(XML_DOM_TranslateStr(copy, 0, &again, NULL) == XML_RET_OK, "write the copy");
    check(again && text && strcmp(again, text) == 0, "the copy is the same");
    char path[64];
    XML_DOM_Node* mtu = XML_DOM_GetFirstChild(XML_DOM_GetFirstChild(copy));
    check(XML_DOM_GetXPath(mtu, sizeof path, path) == strlen("/config/interface[1]/mtu[1]"),
          "path");
    check(strcmp(path, "/config/interface[1]/mtu[1]") == 0, "path as expected");
    check(XML_DOM_OutPutTranslateStr(copy, 0, toFile, stdout) == XML_RET_OK, "write to a callback");
    check(XML_DOM_BuildTreeByMem((const uint8_t*)"<a>", 3, sizeof error, error) == NULL,
          "refuse a broken one");
    check(strcmp(error, "The Line 1 Column 4 :\"<a>\", tag not finished.") == 0, error);
    free(text);
    free(again);
    XML_DOM_DelNode(copy);
    XML_DOM_DelNode(root);
    validate();
    return failures == 0 ? 0 : 1;
}
