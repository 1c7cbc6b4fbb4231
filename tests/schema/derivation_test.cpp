// Derived types and attributes: order of the content, of the scopes, and what is left over.
#include "tests/support/schema_kit.hpp"

#include <gtest/gtest.h>

namespace {

class Derivation : public testing::Test {
protected:
    // A type derived from another one.
    Schema_ComplexType* derive(Schema_ObjectKind kind, const void* base, Schema_ObjectKind baseKind,
                               const Schema_ModelGroup* content = nullptr)
    {
        auto* derivation = kit.make<Schema_Derivation>();
        derivation->kind = kind;
        derivation->base = base;
        derivation->baseKind = baseKind;
        derivation->content = content;
        Schema_ComplexType* type = kit.complexType(nullptr);
        type->derivation = derivation;
        return type;
    }
    Schema_ComplexType* extend(const Schema_ComplexType* base, const char* model)
    {
        return derive(SCHEMA_KIND_COMPLEX_EXTENSION, base, SCHEMA_KIND_COMPLEX_TYPE,
                      model ? kit.model(model) : nullptr);
    }
    static Schema_Derivation& of(Schema_ComplexType* type)
    {
        return const_cast<Schema_Derivation&>(*type->derivation);
    }

    SchemaKit kit;
};

TEST_F(Derivation, ContentOfTheBaseComesFirst)
{
    Schema_ComplexType* base = kit.complexType(kit.model("(a)"));
    Schema_ComplexType* middle = extend(base, "(b)");
    Schema_ComplexType* last = extend(middle, "(c)");
    kit.add(kit.element("r", last));
    kit.add(kit.element("x", derive(SCHEMA_KIND_COMPLEX_RESTRICTION, last, SCHEMA_KIND_COMPLEX_TYPE,
                                    kit.model("(b)"))));
    kit.add(kit.element("only", extend(base, nullptr)));
    kit.add(kit.element("none", extend(kit.complexType(nullptr), nullptr)));
    EXPECT_EQ(kit.sentence("<r><a/><b/><c/></r>"), "valid");
    EXPECT_EQ(kit.sentence("<r><b/><a/><c/></r>"), "Expecting element '':'a' under element '/r'.");
    EXPECT_EQ(kit.sentence("<r><a/><b/></r>"),
              "The number of occurrences of element '/r/c' is invalid.");
    EXPECT_EQ(kit.sentence("<x><b/></x>"), "valid") << "a restriction replaces";
    EXPECT_EQ(kit.sentence("<x><a/><b/></x>"), "Expecting element '':'b' under element '/x'.");
    EXPECT_EQ(kit.sentence("<only><a/></only>"), "valid") << "without content of its own";
    EXPECT_EQ(kit.sentence("<none><a/></none>"), "Element '/none' can not have a child element.");
    EXPECT_EQ(kit.sentence("<only>t</only>"),
              "Element '/only' can not have a textual child element.");
}

TEST_F(Derivation, SimpleContent)
{
    Schema_ComplexType* number =
        derive(SCHEMA_KIND_SIMPLE_EXTENSION, Schema_BLDIN_int(), SCHEMA_KIND_SIMPLE_TYPE);
    Schema_ComplexType* extended =
        derive(SCHEMA_KIND_SIMPLE_EXTENSION, number, SCHEMA_KIND_COMPLEX_TYPE);
    Schema_ComplexType* restricted =
        derive(SCHEMA_KIND_SIMPLE_RESTRICTION, extended, SCHEMA_KIND_COMPLEX_TYPE);
    const Schema_Facet facets[] = {{"10", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_INT}};
    of(restricted).facets = facets;
    of(restricted).facetCount = 1;
    kit.add(kit.element("r", restricted));
    EXPECT_EQ(kit.sentence("<r>10</r>"), "valid");
    EXPECT_EQ(kit.sentence("<r>11</r>"), "The value of element '/r' is invalid. The value must be "
                                         "less than or equal to 10.");
    EXPECT_EQ(kit.sentence("<r>x</r>"),
              "The value of element '/r' is invalid. x is an invalid value of int type value.")
        << "the base comes before the facets";
    EXPECT_EQ(kit.sentence("<r/>"), "The value of element '/r' is invalid. int cannot be empty.");
    EXPECT_EQ(kit.sentence("<r><a/></r>"), "Element '/r' can not have a child element.");
}

TEST_F(Derivation, BrokenOnesAreNoVerdict)
{
    const Schema_ComplexType* plain = kit.complexType(nullptr);
    Schema_ComplexType* noBase = extend(nullptr, nullptr);
    Schema_ComplexType* badKind = derive(9, plain, SCHEMA_KIND_COMPLEX_TYPE);
    Schema_ComplexType* badBase = derive(SCHEMA_KIND_COMPLEX_EXTENSION, plain, 14);
    Schema_ComplexType* circle = extend(plain, nullptr);
    Schema_ComplexType* circle2 = extend(circle, nullptr);
    of(circle).base = extend(circle2, nullptr);
    int number = 0;
    for (Schema_ComplexType* type : {noBase, badKind, badBase, circle}) {
        const std::string name = "t" + std::to_string(number++);
        kit.add(kit.element(name, type));
        EXPECT_EQ(kit.sentence("<" + name + "/>"), "failed") << name;
    }
}

class Attributes : public Derivation {
protected:
    Schema_AttributeDecl* use(const char* name, const void* type = Schema_BLDIN_byte())
    {
        auto* decl = kit.make<Schema_AttributeDecl>();
        decl->name = kit.text(name);
        decl->namespaceName = "urn:a";
        decl->type = static_cast<const Schema_SimpleType*>(type);
        return decl;
    }
    template <class Holder>
    void give(Holder& holder, std::vector<const Schema_AttributeDecl*> uses)
    {
        holder.attributeCount = static_cast<uint32_t>(uses.size());
        holder.attributes = kit.array<Schema_AttributeDecl>(std::move(uses));
    }
    template <class Holder>
    void giveGroups(Holder& holder, std::vector<const Schema_AttributeGroup*> groups)
    {
        holder.attributeGroupCount = static_cast<uint32_t>(groups.size());
        holder.attributeGroups = kit.array<Schema_AttributeGroup>(std::move(groups));
    }
};

TEST_F(Attributes, UsesAndValues)
{
    Schema_AttributeDecl* required = use("req");
    required->use = SCHEMA_USE_REQUIRED;
    Schema_AttributeDecl* prohibited = use("no");
    prohibited->use = SCHEMA_USE_PROHIBITED;
    prohibited->type = nullptr;
    Schema_AttributeDecl* fixed = use("fix");
    fixed->fixed = 1;
    fixed->value = "7";
    fixed->type = nullptr;
    Schema_AttributeDecl* empty = use("emp");
    empty->fixed = 1;
    Schema_AttributeDecl* qualified = use("qual");
    qualified->form = SCHEMA_FORM_QUALIFIED;
    Schema_AttributeDecl* global = use("glob");
    Schema_AttributeDecl* reference = use("ignored");
    reference->ref = global;
    reference->use = SCHEMA_USE_REQUIRED;
    Schema_ComplexType* type = kit.complexType(nullptr);
    give(*type, {use("opt"), required, prohibited, fixed, empty, qualified, reference});
    kit.add(kit.element("r", type));
    struct Case {
        const char* why;
        const char* attributes;
        const char* sentence;
    };
    // clang-format off
    const Case kCases[] = {
        {"what must stand", "req='1'", "valid"},
        {"nothing: the declared namespace is named whatever the form", "",
         "The element '/r' should have an attribute 'urn:a':'req'."},
        {"all that may stand", "req='1' opt='2' fix='7' emp='' p:qual='3' p:glob='4'", "valid"},
        {"a bad value", "req='1' opt='x'",
         "The value of attribute '':'opt' for element '/r' is invalid. "
         "x is an invalid value of byte type value."},
        {"a bad value with a namespace", "req='1' p:qual='x'",
         "The value of attribute 'urn:a':'qual' for element '/r' is invalid. "
         "x is an invalid value of byte type value."},
        {"an unqualified one for a qualified use", "req='1' qual='1'",
         "Unexpected attribute '':'qual' of element '/r'."},
        {"a qualified one for an unqualified use", "req='1' p:opt='1'",
         "Unexpected attribute 'urn:a':'opt' of element '/r'."},
        {"a prohibited one", "req='1' no='1'", "Unexpected attribute '':'no' of element '/r'."},
        {"another than the fixed value", "req='1' fix='07'",
         "The value of attribute '':'fix' for element '/r' is invalid. must equal 7"},
        {"a value where none is fixed", "req='1' emp='x'",
         "The value of attribute '':'emp' for element '/r' is invalid. must be empty"},
        {"the first one left over", "req='1' z='1' y='1'",
         "Unexpected attribute '':'z' of element '/r'."},
        {"a reference is always qualified", "req='1' glob='4'",
         "Unexpected attribute '':'glob' of element '/r'."},
        {"xsi:type has to be declared, too (Kept)",
         "req='1' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t'",
         "Unexpected attribute 'http://www.w3.org/2001/XMLSchema-instance':'type' of element '/r'."},
    };
    // clang-format on
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(kit.sentence(std::string{"<r xmlns:p='urn:a' "} + row.attributes + "/>"),
                  row.sentence);
    }
    kit.root().attributeFormDefault = SCHEMA_FORM_QUALIFIED;
    EXPECT_EQ(kit.sentence("<r xmlns:p='urn:a' p:req='1'/>"), "valid") << "the default is changed";
}

TEST_F(Attributes, TheResultNamesTheElementForUnexpectedOnesOnly)
{
    Schema_ComplexType* type = kit.complexType(nullptr);
    Schema_AttributeDecl* required = use("req");
    required->use = SCHEMA_USE_REQUIRED;
    give(*type, {required});
    kit.add(kit.element("r", type));
    EXPECT_EQ(kit.validate("<r/>").elementName, nullptr);
    EXPECT_EQ(kit.validate("<r req='x'/>").elementName, nullptr);
    EXPECT_STREQ(kit.validate("<r req='1' z='1'/>").elementName, "r");
}

// Each scope has a required attribute of its own; what is absent is reported in the order in which
// scopes are asked.
TEST_F(Attributes, ScopesAreAskedInTheirOrder)
{
    const auto required = [this](const char* name) {
        Schema_AttributeDecl* decl = use(name);
        decl->use = SCHEMA_USE_REQUIRED;
        return decl;
    };
    const auto group = [&](const char* name) {
        auto* g = kit.make<Schema_AttributeGroup>();
        give(*g, {required(name)});
        return g;
    };
    Schema_ComplexType* base = kit.complexType(nullptr);
    give(*base, {required("d-base")});
    giveGroups(*base, {group("e-base-group")});
    Schema_ComplexType* type = extend(base, nullptr);
    give(*type, {required("a-type")});
    give(of(type), {required("b-derivation")});
    giveGroups(of(type), {group("c-derivation-group")});
    Schema_AttributeGroup* outer = group("h-outer");
    giveGroups(*outer, {group("f-inner"), group("g-inner")});
    auto* reference = kit.make<Schema_AttributeGroup>();
    reference->ref = outer;
    giveGroups(*type, {reference, group("i-last")});
    kit.add(kit.element("r", type));
    const char* const kOrder[] = {"a-type",  "b-derivation", "c-derivation-group",
                                  "d-base",  "e-base-group", "f-inner",
                                  "g-inner", "h-outer",      "i-last"};
    std::string document = "<r";
    for (const char* name : kOrder) {
        EXPECT_STREQ(kit.validate(document + "/>").attrName, name);
        document += std::string{" "} + name + "='1'";
    }
    EXPECT_EQ(kit.sentence(document + "/>"), "valid");
}

TEST_F(Attributes, Wildcards)
{
    Schema_AttributeDecl* global = use("g");
    kit.add(global);
    Schema_AttributeDecl* fixed = use("f");
    fixed->fixed = 1;
    fixed->value = "7";
    kit.add(fixed);
    Schema_AttributeWildcard wildcard{};
    Schema_ComplexType* type = kit.complexType(nullptr);
    type->anyAttribute = &wildcard;
    give(*type, {use("own")});
    kit.add(kit.element("r", type));
    struct Case {
        const char* why;
        const char* constraint;
        Schema_ProcessContents process;
        const char* attributes;
        Schema_ErrorCode code;
    };
    // clang-format off
    constexpr Case kCases[] = {
        {"own uses come first",         "##any",   0, "own='x'",           4},
        {"strict, declared",            "##any",   0, "p:g='1'",           0},
        {"strict, declared and wrong",  "##any",   0, "p:g='x'",           4},
        {"strict, declared and fixed",  "##any",   0, "p:f='8'",           4},
        {"strict, not declared",        "##any",   0, "p:z='1'",           7},
        {"strict, other namespace",     "##any",   0, "g='1'",             7},
        {"lax, not declared",           "##any",   1, "p:z='1' z='2'",     0},
        {"lax, declared and wrong",     "##any",   1, "p:g='x'",           4},
        {"skip, declared and wrong",    "##any",   2, "p:g='x'",           0},
        {"other than the target",       "##other", 2, "p:g='x'",           0},
        {"other, without a namespace",  "##other", 2, "z='x'",             7},
        {"the target itself",           "##other", 2, "t:z='x'",           7},
    };
    // clang-format on
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.why);
        wildcard = Schema_AttributeWildcard{"urn:t", row.constraint, row.process};
        EXPECT_EQ(
            kit.validate(std::string{"<r xmlns:p='urn:a' xmlns:t='urn:t' "} + row.attributes + "/>")
                .code,
            row.code);
    }
}

// A tree made by hand may have an attribute twice: the first one counts, the other is left over.
TEST_F(Attributes, OfTwoOfOneNameTheFirstCounts)
{
    Schema_ComplexType* type = kit.complexType(nullptr);
    std::vector<const Schema_AttributeDecl*> uses;
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i) names.push_back("a" + std::to_string(i));
    for (const std::string& name : names) uses.push_back(use(name.c_str()));
    give(*type, uses);
    kit.add(kit.element("r", type));
    for (const std::size_t count : {std::size_t{3}, names.size()}) {
        XML_DOM_Node* root = XML_DOM_CreateElementNode("r");
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_TRUE(XML_DOM_AddAttrInner(root, names[i].c_str(), "1"));
        Schema_ValidateResult result;
        ASSERT_EQ(Schema_ValidateXml(root, &kit.root(), &result), XML_RET_OK);
        EXPECT_EQ(result.code, SCHEMA_VALID);
        ASSERT_TRUE(XML_DOM_AddAttrInner(root, "a1", "x"));
        ASSERT_EQ(Schema_ValidateXml(root, &kit.root(), &result), XML_RET_OK);
        EXPECT_EQ(result.code, SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED) << count;
        XML_DOM_DelNode(root);
    }
}

TEST_F(Attributes, BrokenOnesAreNoVerdict)
{
    const auto check = [&](const char* name, const char* attribute, auto breakIt) {
        Schema_ComplexType* type = kit.complexType(nullptr);
        breakIt(*type);
        kit.add(kit.element(name, type));
        EXPECT_EQ(kit.sentence(std::string{"<"} + name + attribute + "/>"), "failed") << name;
    };
    Schema_AttributeDecl* untyped = use("a", nullptr);
    check("untyped", " a='1'", [&](Schema_ComplexType& t) { give(t, {untyped}); });
    check("missing", "", [&](Schema_ComplexType& t) { give(t, {nullptr}); });
    Schema_AttributeDecl* one = use("a");
    Schema_AttributeDecl* two = use("a");
    one->ref = two;
    two->ref = one;
    check("refs", "", [&](Schema_ComplexType& t) { give(t, {one}); });
    Schema_AttributeDecl* badType = use("a", kit.make<Schema_SimpleType>());
    check("badtype", " a='1'", [&](Schema_ComplexType& t) { give(t, {badType}); });
    Schema_AttributeWildcard lax{nullptr, "##any", SCHEMA_PROCESS_LAX};
    Schema_AttributeDecl* circle = use("c");
    circle->namespaceName = nullptr;
    circle->ref = circle;
    kit.add(circle);
    check("found", " c='1'", [&](Schema_ComplexType& t) { t.anyAttribute = &lax; });
    auto* g = kit.make<Schema_AttributeGroup>();
    auto* h = kit.make<Schema_AttributeGroup>();
    giveGroups(*g, {h});
    giveGroups(*h, {g});
    check("groups", "", [&](Schema_ComplexType& t) { giveGroups(t, {g}); });
    auto* ref = kit.make<Schema_AttributeGroup>();
    ref->ref = ref;
    check("groupref", "", [&](Schema_ComplexType& t) { giveGroups(t, {ref}); });
    check("nogroup", "", [&](Schema_ComplexType& t) { giveGroups(t, {nullptr}); });
    check("nouses", "", [&](Schema_ComplexType& t) { t.attributeCount = 1; });
    check("nogroups", "", [&](Schema_ComplexType& t) { t.attributeGroupCount = 1; });
}

}  // namespace
