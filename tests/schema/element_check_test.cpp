// Elements against their declarations: document element, types, text, substitution, forms.
#include "tests/support/schema_kit.hpp"

#include <gtest/gtest.h>

#include <cstring>

namespace {

struct DocumentCase {
    const char* why;
    const char* document;
    const char* sentence;
};

void expectSentences(SchemaKit& kit, std::initializer_list<DocumentCase> rows)
{
    for (const DocumentCase& row : rows) {
        SCOPED_TRACE(testing::Message() << row.why << ": " << row.document);
        EXPECT_EQ(kit.sentence(row.document), row.sentence);
    }
}

TEST(ValidateXml, RefusesNullAndLeavesTheResult)
{
    SchemaKit kit;
    kit.add(kit.element("r"));
    XML_DOM_Node* node = XML_DOM_CreateElementNode("r");
    Schema_ValidateResult result;
    std::memset(&result, 0x5A, sizeof result);
    const Schema_ValidateResult before = result;
    EXPECT_EQ(Schema_ValidateXml(nullptr, &kit.root(), &result), XML_RET_FAIL);
    EXPECT_EQ(Schema_ValidateXml(node, nullptr, &result), XML_RET_FAIL);
    EXPECT_EQ(Schema_ValidateXml(node, &kit.root(), nullptr), XML_RET_FAIL);
    EXPECT_EQ(std::memcmp(&before, &result, sizeof result), 0);
    EXPECT_EQ(Schema_ValidateXml(node, &kit.root(), &result), XML_RET_OK);
    const Schema_ValidateResult zero{};
    EXPECT_EQ(result.code, 0u);
    EXPECT_EQ(result.node, nullptr);
    EXPECT_EQ(std::memcmp(result.detail, zero.detail, sizeof zero.detail), 0) << "all zero";
    XML_DOM_DelNode(node);
}

TEST(ValidateXml, FindsTheDocumentElement)
{
    SchemaKit kit;
    Schema_ElementDecl* here = kit.element("here");
    here->namespaceName = "urn:a";
    here->form = SCHEMA_FORM_UNQUALIFIED;
    kit.add(here);
    Schema_ElementDecl* anywhere = kit.element("anywhere");
    anywhere->namespaceName = "##any";
    anywhere->minOccurs = anywhere->maxOccurs = 0;
    kit.add(anywhere);
    Schema_ElementDecl* twice = kit.element("twice");
    twice->minOccurs = twice->maxOccurs = 2;
    kit.add(twice);
    Schema_ElementDecl* head = kit.element("head");
    head->abstract = 1;
    kit.add(head);
    const char* const kNone = "The root element of XML document is invalid.";
    expectSentences(
        kit, {{"a global name whatever its form", "<here xmlns='urn:a'/>", "valid"},
              {"by a prefix", "<p:here xmlns:p='urn:a'/>", "valid"},
              {"another namespace", "<here xmlns='urn:b'/>", kNone},
              {"no namespace", "<here/>", kNone},
              {"any namespace", "<anywhere xmlns='urn:b'/>", "valid"},
              {"no namespace is any, too", "<anywhere/>", "valid"},
              {"a document's own ##any (Kept)", "<here xmlns='##any'/>", "valid"},
              {"an unknown name", "<nowhere/>", kNone},
              {"one where there must be two", "<twice/>",
               "The number of occurrences of element '/twice' is invalid."},
              {"an abstract head", "<head/>", "Unexpected element '':'head' under element '"}});
    const Schema_ValidateResult result = kit.validate("<nowhere/>");
    EXPECT_STREQ(XML_DOM_GetNodeName(result.node), "nowhere");
}

TEST(ValidateXml, AnElementOfATreeIsCheckedAlone)
{
    SchemaKit kit;
    kit.add(kit.simpleElement("b", Schema_BLDIN_byte()));
    const char* document = "<a xmlns='urn:x'><b xmlns=''>1</b><b xmlns=''>x</b></a>";
    XML_DOM_Node* tree = XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document),
                                                uint32_t(std::strlen(document)), 0, nullptr);
    Schema_ValidateResult result;
    XML_DOM_Node* first = XML_DOM_GetFirstChild(tree);
    EXPECT_EQ(Schema_ValidateXml(first, &kit.root(), &result), XML_RET_OK);
    EXPECT_EQ(result.code, SCHEMA_VALID);
    EXPECT_EQ(Schema_ValidateXml(XML_DOM_GetNextSibling(first), &kit.root(), &result), XML_RET_OK);
    EXPECT_EQ(result.code, SCHEMA_ERROR_ELEMENT_VALUE);
    XML_DOM_Node* text = XML_DOM_GetFirstChild(first);
    EXPECT_EQ(Schema_ValidateXml(text, &kit.root(), &result), XML_RET_OK);
    EXPECT_EQ(result.code, SCHEMA_ERROR_DOCUMENT_ELEMENT) << "a text is no document element";
    XML_DOM_DelNode(tree);
}

TEST(ValidateXml, ADocumentElementIsWhatItsReferenceLeadsTo)
{
    SchemaKit kit;
    Schema_ElementDecl* target = kit.element("b");
    target->namespaceName = "urn:b";
    Schema_ElementDecl* named = kit.element("a");
    named->ref = target;
    kit.add(named);
    Schema_ElementDecl* same = kit.element("b");
    same->namespaceName = "urn:b";
    same->ref = target;
    kit.add(same);
    EXPECT_EQ(kit.sentence("<a/>"), "Expecting element 'urn:b':'b' under element ''.");
    EXPECT_EQ(kit.sentence("<b xmlns='urn:b'/>"), "valid");
}

TEST(ValidateXml, ReferencesInACircleAreNoVerdict)
{
    SchemaKit kit;
    Schema_ElementDecl* circle = kit.element("c");
    circle->ref = circle;
    kit.add(circle);
    kit.add(kit.element("wild", kit.complexType(kit.model("(#)"))));
    Schema_ElementDecl* head = kit.element("head");
    head->abstract = 1;
    kit.add(head);
    Schema_ElementDecl* substitute = kit.element("s");
    substitute->substitutionGroupName = "head";
    substitute->ref = substitute;
    kit.add(substitute);
    Schema_ModelGroup* model = kit.model("(h)");
    const_cast<Schema_Object*>(model->particles)->def = head;
    kit.add(kit.element("r", kit.complexType(model)));
    EXPECT_EQ(kit.sentence("<c/>"), "failed") << "the document element";
    EXPECT_EQ(kit.sentence("<wild><c/></wild>"), "failed") << "what a wildcard finds";
    EXPECT_EQ(kit.sentence("<r><s/></r>"), "failed") << "a substitute";
}

// A tree may hold nodes that the parser never makes.
TEST(ValidateXml, ToleratesElementsWithoutANameAndOtherNodes)
{
    SchemaKit kit;
    kit.add(kit.element("r", kit.complexType(kit.model("(#*)"))));
    XML_DOM_Node* root = XML_DOM_CreateElementNode("r");
    XML_DOM_Node* unnamed = XML_DOM_CreateTextualNodeInner(XML_DOM_NODE_ELEMENT, "x", 1);
    XML_DOM_Node* other = XML_DOM_CreateTextualNodeInner(7, "x", 1);
    ASSERT_TRUE(unnamed && other);
    ASSERT_EQ(XML_DOM_AddChildNode(root, unnamed), XML_RET_OK);
    ASSERT_EQ(XML_DOM_AddChildNode(root, other), XML_RET_OK);
    Schema_ValidateResult result;
    EXPECT_EQ(Schema_ValidateXml(root, &kit.root(), &result), XML_RET_OK);
    EXPECT_EQ(result.code, SCHEMA_VALID) << "neither is text";
    EXPECT_EQ(Schema_ValidateXml(unnamed, &kit.root(), &result), XML_RET_OK);
    EXPECT_EQ(result.code, SCHEMA_ERROR_DOCUMENT_ELEMENT);
    XML_DOM_DelNode(root);
}

TEST(ValidateXml, ElementsOfASimpleType)
{
    SchemaKit kit;
    kit.add(kit.simpleElement("n", Schema_BLDIN_byte()));
    Schema_ElementDecl* fixed = kit.simpleElement("f", Schema_BLDIN_byte());
    fixed->fixed = 1;
    fixed->value = "7";
    kit.add(fixed);
    Schema_ElementDecl* blank = kit.simpleElement("e", Schema_BLDIN_string());
    blank->fixed = 1;
    kit.add(blank);
    Schema_ElementDecl* nil = kit.simpleElement("z", Schema_BLDIN_byte());
    nil->nillable = 1;
    kit.add(nil);
    const char* const kXsi = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";
    const std::string nilled = std::string{"<z "} + kXsi + " xsi:nil='true'/>";
    const std::string other = std::string{"<n "} + kXsi + " xsi:type='x'>1</n>";
    expectSentences(
        kit,
        {{"a value", "<n>1</n>", "valid"},
         {"a bad value", "<n>x</n>",
          "The value of element '/n' is invalid. x is an invalid value of byte type value."},
         {"no value", "<n/>", "The value of element '/n' is invalid. byte cannot be empty."},
         {"a CDATA section is no value (Kept)", "<n><![CDATA[1]]></n>",
          "The value of element '/n' is invalid. byte cannot be empty."},
         {"the last of several texts counts (Kept)", "<n>x<!-- -->1</n>", "valid"},
         {"a child", "<n>1<x/></n>", "Unexpected element '':'x' under element '/n"},
         {"attributes come first", "<n a='1'><x/></n>",
          "Unexpected attribute '':'a' of element '/n'."},
         {"xml attributes", "<n xml:lang='en' xml:space='x' xml:base='y'>1</n>", "valid"},
         {"a name of theirs without the namespace", "<n lang='en'>1</n>",
          "Unexpected attribute '':'lang' of element '/n'."},
         {"another xml attribute", "<n xml:id='a'>1</n>",
          "Unexpected attribute 'http://www.w3.org/XML/1998/namespace':'id' of element '/n'."},
         {"a bad language, cut at 20 bytes", "<n xml:lang='abcdefghijklmnopqrstuvwxyzabcd'>1</n>",
          "The value of attribute 'http://www.w3.org/XML/1998/namespace':'lang' for element '/n' "
          "is "
          "invalid. abcdefghijklmnopqrst is not a valid value for "
          "http://www.w3.org/XML/1998/namespace:lang"},
         {"a language in capitals", "<n xml:lang='EN'>1</n>",
          "The value of attribute 'http://www.w3.org/XML/1998/namespace':'lang' for element '/n' "
          "is "
          "invalid. EN is not a valid value for http://www.w3.org/XML/1998/namespace:lang"},
         {"the fixed value", "<f>7</f>", "valid"},
         {"the fixed value as another text", "<f>07</f>",
          "The value of element '/f' is invalid. must equal 7"},
         {"no text where one is fixed", "<f/>",
          "The value of element '/f' is invalid. must equal 7"},
         {"fixed to nothing", "<e/>", "valid"},
         {"a text where nothing is fixed", "<e>x</e>",
          "The value of element '/e' is invalid. must be empty"},
         {"a nillable one without children", "<z/>", "valid"},
         {"a nillable one with nil", nilled.c_str(), "valid"},
         {"a nillable one with a value", "<z>x</z>",
          "The value of element '/z' is invalid. x is an invalid value of byte type value."},
         {"a nillable one's attributes are checked", "<z b='1'/>",
          "Unexpected attribute '':'b' of element '/z'."},
         {"xsi:type is none of the four", other.c_str(),
          "Unexpected attribute 'http://www.w3.org/2001/XMLSchema-instance':'type' of element "
          "'/n'."}});
}

TEST(ValidateXml, TextAndChildrenOfComplexTypes)
{
    SchemaKit kit;
    kit.add(kit.element("any", static_cast<const Schema_ComplexType*>(Schema_BLDIN_anyType())));
    kit.add(kit.element("c", kit.complexType(kit.model("(a?)"))));
    Schema_ComplexType* mixed = kit.complexType(kit.model("(a?)"));
    mixed->mixed = 1;
    kit.add(kit.element("m", mixed));
    Schema_ComplexType* mixedEmpty = kit.complexType(nullptr);
    mixedEmpty->mixed = 1;
    kit.add(kit.element("me", mixedEmpty));
    Schema_ElementDecl* fixedEmpty = kit.element("fe", kit.complexType(nullptr));
    fixedEmpty->fixed = 1;
    fixedEmpty->value = "7";
    kit.add(fixedEmpty);
    Schema_ElementDecl* fixedMixed = kit.element("fm", mixed);
    fixedMixed->fixed = 1;
    fixedMixed->value = "7";
    kit.add(fixedMixed);
    Schema_ElementDecl* nil = kit.element("z", kit.complexType(kit.model("(a)")));
    nil->nillable = 1;
    kit.add(nil);
    expectSentences(kit, {{"anyType is empty", "<any/>", "valid"},
                          {"anyType with text (Kept)", "<any>x</any>",
                           "Element '/any' can not have a textual child element."},
                          {"anyType with a child (Kept)", "<any><x/></any>",
                           "Element '/any' can not have a child element."},
                          {"text is looked for before children", "<any><x/>t</any>",
                           "Element '/any' can not have a textual child element."},
                          {"text beside a content model", "<c>x</c>",
                           "Element '/c' can not have a textual child element."},
                          {"a CDATA section is text here", "<c><![CDATA[x]]></c>",
                           "Element '/c' can not have a textual child element."},
                          {"mixed content", "<m>x<a/>y</m>", "valid"},
                          {"mixed without a model still has no text (Kept)", "<me>x</me>",
                           "Element '/me' can not have a textual child element."},
                          {"a fixed text needs no model", "<fe>7</fe>", "valid"},
                          {"another text than the fixed one", "<fe>8</fe>",
                           "The value of element '/fe' is invalid. must equal 7"},
                          {"a fixed text in mixed content: children are not looked at (Kept)",
                           "<fm>7<zzz/></fm>", "valid"},
                          {"a nillable one without children", "<z/>", "valid"},
                          {"a nillable one with something", "<z>x</z>",
                           "Element '/z' can not have a textual child element."},
                          {"a nillable one's attributes are checked", "<z q='1'/>",
                           "Unexpected attribute '':'q' of element '/z'."}});
}

TEST(ValidateXml, FormsAndReferences)
{
    SchemaKit kit;
    Schema_ElementDecl* global = kit.element("g");
    global->namespaceName = "urn:a";
    global->form = SCHEMA_FORM_UNQUALIFIED;
    Schema_ElementDecl* between = kit.element("ignored");
    between->ref = global;
    Schema_ElementDecl* reference = kit.element("ignored");
    reference->ref = between;
    reference->minOccurs = 0;
    Schema_ElementDecl* qualified = kit.element("q");
    qualified->namespaceName = "urn:a";
    qualified->form = SCHEMA_FORM_QUALIFIED;
    qualified->minOccurs = 0;
    Schema_ElementDecl* plain = kit.element("u");
    plain->namespaceName = "urn:a";
    plain->form = SCHEMA_FORM_UNQUALIFIED;
    plain->minOccurs = 0;
    Schema_ElementDecl* byDefault = kit.element("d");
    byDefault->namespaceName = "urn:a";
    const Schema_Object particles[] = {{reference, SCHEMA_KIND_ELEMENT},
                                       {qualified, SCHEMA_KIND_ELEMENT},
                                       {plain, SCHEMA_KIND_ELEMENT},
                                       {byDefault, SCHEMA_KIND_ELEMENT}};
    auto* model = kit.make<Schema_ModelGroup>();
    *model = Schema_ModelGroup{particles, 1, 1, 4, SCHEMA_COMPOSITOR_SEQUENCE};
    Schema_ElementDecl* root = kit.element("r", kit.complexType(model));
    root->namespaceName = "urn:a";
    kit.add(root);
    const char* const kMissing = "Expecting element 'urn:a':'d' under element '/r'.";
    expectSentences(
        kit,
        {{"each as its form says", "<p:r xmlns:p='urn:a'><p:g/><p:q/><u/><p:d/></p:r>", "valid"},
         {"a reference is qualified", "<p:r xmlns:p='urn:a'><g/><p:d/></p:r>", kMissing},
         {"a qualified one without", "<p:r xmlns:p='urn:a'><q/><p:d/></p:r>", kMissing},
         {"an unqualified one with", "<p:r xmlns:p='urn:a'><p:u/><p:d/></p:r>", kMissing},
         {"the default, unmet", "<p:r xmlns:p='urn:a'><d/></p:r>", kMissing}});
    kit.root().elementFormDefault = SCHEMA_FORM_UNQUALIFIED;
    expectSentences(kit, {{"the default, changed", "<p:r xmlns:p='urn:a'><d/></p:r>", "valid"},
                          {"names the declared namespace all the same",
                           "<p:r xmlns:p='urn:a'><p:d/></p:r>", kMissing}});
}

TEST(ValidateXml, SubstitutionGroups)
{
    SchemaKit kit;
    Schema_ElementDecl* head = kit.simpleElement("head", Schema_BLDIN_byte());
    head->abstract = 1;
    head->namespaceName = "urn:a";
    kit.add(head);
    const auto substitute = [&](const char* name, const void* type) {
        Schema_ElementDecl* decl = kit.simpleElement(name, type);
        decl->namespaceName = "urn:a";
        decl->substitutionGroupName = "head";
        decl->substitutionGroupNamespace = "urn:a";
        kit.add(decl);
        return decl;
    };
    substitute("one", Schema_BLDIN_byte());
    substitute("word", Schema_BLDIN_string());
    Schema_ElementDecl* hidden = substitute("hidden", Schema_BLDIN_byte());
    hidden->substitutionGroupName = "other";
    substitute("hidden", Schema_BLDIN_byte());  // the first of the name decides
    Schema_ElementDecl* particle = kit.element("");
    particle->ref = head;
    particle->maxOccurs = 3;
    const Schema_Object particles[] = {{particle, SCHEMA_KIND_ELEMENT}};
    auto* model = kit.make<Schema_ModelGroup>();
    *model = Schema_ModelGroup{particles, 1, 1, 1, SCHEMA_COMPOSITOR_SEQUENCE};
    Schema_ElementDecl* root = kit.element("r", kit.complexType(model));
    root->namespaceName = "urn:a";
    kit.add(root);
    expectSentences(
        kit,
        {{"substitutes, each by its own type", "<r xmlns='urn:a'><one>1</one><word>x</word></r>",
          "valid"},
         {"a substitute's value is checked", "<r xmlns='urn:a'><one>x</one></r>",
          "The value of element '/r/one[1]' is invalid. x is an invalid value of byte type value."},
         {"the head itself", "<r xmlns='urn:a'><head>1</head></r>",
          "Unexpected element 'urn:a':'head' under element '/r"},
         {"an unknown element", "<r xmlns='urn:a'><x/></r>",
          "Unexpected element 'urn:a':'x' under element '/r"},
         {"of another head", "<r xmlns='urn:a'><hidden>1</hidden></r>",
          "Unexpected element 'urn:a':'hidden' under element '/r"},
         {"none", "<r xmlns='urn:a'/>",
          "The number of occurrences of element '/r/head' is invalid."}});
}

TEST(ValidateXml, Wildcards)
{
    SchemaKit kit;
    kit.add(kit.simpleElement("n", Schema_BLDIN_byte()));
    Schema_ElementDecl* inA = kit.simpleElement("n", Schema_BLDIN_byte());
    inA->namespaceName = "urn:a";
    kit.add(inA);
    struct WildcardCase {
        const char* why;
        const char* constraint;
        Schema_ProcessContents process;
        const char* child;
        Schema_ErrorCode code;
    };
    // clang-format off
    constexpr WildcardCase kCases[] = {
        {"any, strict, declared",          "##any",       0, "<n>1</n>",                0},
        {"any, strict, wrong value",       "##any",       0, "<n>x</n>",                3},
        {"any, strict, not declared",      "##any",       0, "<m/>",                    8},
        {"any, lax, declared and wrong",   "##any",       1, "<n>x</n>",                3},
        {"any, lax, not declared",         "##any",       1, "<m><o/></m>",             0},
        {"any, skip, wrong value",         "##any",       2, "<n>x</n>",                0},
        {"other excludes the target",      "##other",     2, "<n xmlns='urn:t'/>",      8},
        {"other excludes no namespace",    "##other",     2, "<n/>",                    8},
        {"other admits others",            "##other",     2, "<n xmlns='urn:b'/>",      0},
        {"one namespace",                  "urn:a",       2, "<n xmlns='urn:a'/>",      0},
        {"one namespace, another",         "urn:a",       2, "<n xmlns='urn:b'/>",      8},
        {"one namespace, none",            "urn:a",       2, "<n/>",                    8},
        {"a list, first",                  "urn:a urn:b", 2, "<n xmlns='urn:a'/>",      0},
        {"a list, last",                   "urn:a urn:b", 2, "<n xmlns='urn:b'/>",      0},
        {"a list, part of an item",        "urn:a urn:b", 2, "<n xmlns='urn:'/>",       8},
        {"a list, an item and more",       "urn:a urn:b", 2, "<n xmlns='urn:ab'/>",     8},
        {"no constraint admits none",      nullptr,       2, "<n/>",                    0},
        {"no constraint refuses others",   nullptr,       2, "<n xmlns='urn:a'/>",      8},
        {"the document says ##any (Kept)", "urn:a",       2, "<n xmlns='##any'/>",      0},
        {"the declaration of the child's namespace", "urn:a", 0, "<n xmlns='urn:a'>x</n>", 3},
    };
    // clang-format on
    Schema_Wildcard wildcard{};
    const Schema_Object particles[] = {{&wildcard, SCHEMA_KIND_WILDCARD}};
    const Schema_ModelGroup model{particles, 1, 1, 1, SCHEMA_COMPOSITOR_SEQUENCE};
    kit.add(kit.element("r", kit.complexType(&model)));
    for (const WildcardCase& row : kCases) {
        SCOPED_TRACE(row.why);
        wildcard = Schema_Wildcard{"urn:t", row.constraint, 1, 1, row.process};
        EXPECT_EQ(kit.validate(std::string{"<r>"} + row.child + "</r>").code, row.code);
    }
}

}  // namespace
