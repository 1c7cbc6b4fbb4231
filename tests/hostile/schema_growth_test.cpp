// Values, patterns and schemas made to explode: twice as much costs twice the work. Work is
// counted, never timed.
#include "tests/hostile/work_count.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/small_stack.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr double kMost = 2.3;

// Where records are found by their addresses, work depends on where they lie: so eight times as
// much may cost twenty times the work, which is far from sixty-four.
void expectNearlyLinear(const std::string& what, std::size_t n,
                        const std::function<std::uint64_t(std::size_t)>& work)
{
    const std::uint64_t small = work(n);
    const std::uint64_t large = work(8 * n);
    EXPECT_GT(small, 0u) << what;
    EXPECT_LE(static_cast<double>(large), 20 * static_cast<double>(small))
        << what << ": " << small << ", then " << large;
}

// `work` of a size, and of twice that.
void expectLinear(const std::string& what, std::size_t n,
                  const std::function<std::uint64_t(std::size_t)>& work)
{
    const std::uint64_t small = work(n);
    const std::uint64_t large = work(2 * n);
    EXPECT_GT(small, 0u) << what;
    EXPECT_LE(static_cast<double>(large), kMost * static_cast<double>(small))
        << what << ": " << small << ", then " << large;
}

std::string repeated(std::size_t n, std::string_view text)
{
    std::string all;
    for (std::size_t i = 0; i < n; ++i) all += text;
    return all;
}

// Values that look right for long, for one type or another.
std::vector<std::string> longValues(std::size_t n)
{
    return {std::string(n, '9'),
            std::string(n, '0'),
            "-" + std::string(n, '0') + "1",
            std::string(n, '+'),
            std::string(n, '|'),
            std::string(n, 'a'),
            std::string(n, ' '),
            repeated(n, "AAAA"),
            repeated(n, "AAAA") + "=",
            repeated(n, "1,"),
            repeated(n, "1-2,") + "3",
            repeated(n, "1."),
            repeated(n, "1.") + "1",
            repeated(n, ":"),
            repeated(n, "ffff:"),
            repeated(n, "a:"),
            repeated(n, "a/"),
            repeated(n, "2024-02-29T"),
            "2024-02-29T10:00:00." + std::string(n, '1') + "Z",
            "P1Y2M3DT4H5M" + std::string(n, '6') + "S",
            "P" + repeated(n, "1Y"),
            "--12-" + std::string(n, '1'),
            repeated(n, "\xD6\xD0"),
            "1/" + std::string(n, '0')};
}

TEST(ValueGrowth, OfEveryTypeWithEveryLongValue)
{
    const std::size_t count = longValues(1).size();
    for (Schema_BuiltinKind kind = 0; kind <= SCHEMA_BUILTIN_LAST; ++kind) {
        for (std::size_t which = 0; which < count; ++which) {
            expectLinear("kind " + std::to_string(kind) + ", value " + std::to_string(which), 2000,
                         [&](std::size_t n) {
                             const std::string value = longValues(n)[which];
                             Schema_SimpleType type{};
                             type.kind = kind;
                             char text[512];
                             return workOf([&] {
                                 Schema_CheckBaseType(&type, value.c_str(), sizeof text, text);
                             });
                         });
        }
    }
}

TEST(ValueGrowth, OfEveryFacetWithEveryLongValue)
{
    const std::size_t count = longValues(1).size();
    for (Schema_FacetKind kind = SCHEMA_FACET_ENUMERATION; kind <= SCHEMA_FACET_TOTAL_DIGITS;
         ++kind) {
        if (kind == SCHEMA_FACET_PATTERN) continue;  // below
        for (const Schema_BuiltinKind base :
             {SCHEMA_BUILTIN_BYTE, SCHEMA_BUILTIN_UNSIGNED_LONG, SCHEMA_BUILTIN_INTEGER,
              SCHEMA_BUILTIN_DURATION, SCHEMA_BUILTIN_DATE_TIME, SCHEMA_BUILTIN_STRING,
              SCHEMA_BUILTIN_HEX_BINARY}) {
            for (std::size_t which = 0; which < count; ++which) {
                expectLinear("facet " + std::to_string(kind) + ", value " + std::to_string(which),
                             2000, [&](std::size_t n) {
                                 const std::string value = longValues(n)[which];
                                 const Schema_Facet facet{value.c_str(), kind, base};
                                 char text[512];
                                 return workOf([&] {
                                     Schema_CheckFacet(&facet, value.c_str(), sizeof text, text);
                                 });
                             });
            }
        }
    }
}

TEST(ValueGrowth, OfEveryNetworkTypeWithEveryLongValue)
{
    const std::size_t count = longValues(1).size();
    for (const char* name :
         {"OID", "_Ipv6Address", "IPV6_ADDR_PREFIX", "_PortRange", "_VlanRange", "_Ipv4Mask"}) {
        const Schema_ExtType* type = Schema_FoundZynBltInType(name, nullptr);
        ASSERT_NE(type, nullptr) << name;
        for (std::size_t which = 0; which < count; ++which) {
            expectLinear(name + std::string{", value "} + std::to_string(which), 2000,
                         [&](std::size_t n) {
                             const std::string value = longValues(n)[which];
                             char text[512];
                             return workOf([&] {
                                 Schema_checkZynBltInType(type, value.c_str(), sizeof text, text);
                             });
                         });
        }
    }
}

TEST(ValueGrowth, OfSplittingAndOfLanguages)
{
    expectLinear("items", 20000, [](std::size_t n) {
        const std::string text = repeated(n, "ab,");
        char item[8];
        Schema_SplitCtx split;
        return workOf([&] {
            const char* piece =
                Schema_GetFirstSplitStr(text.c_str(), ",", sizeof item, item, &split);
            while (piece) piece = Schema_GetNextSplitStr(&split);
        });
    });
    expectLinear("a long item", 50000, [](std::size_t n) {
        const std::string text(n, 'a');
        char item[8];
        Schema_SplitCtx split;
        return workOf([&] {
            const char* piece =
                Schema_GetFirstSplitStr(text.c_str(), ",", sizeof item, item, &split);
            while (piece) piece = Schema_GetNextSplitStr(&split);
        });
    });
}

// A document of one value and a schema that has a pattern for it.
std::uint64_t patternWork(const char* pattern, const std::string& value, Schema_ErrorCode& code)
{
    SchemaKit kit;
    const Schema_Facet facet{pattern, SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING};
    Schema_SimpleType* type = kit.restrictedString(&facet, 1);
    kit.add(kit.simpleElement("v", type));
    XML_DOM_Node* tree = treeOf("<v>" + value + "</v>");
    Schema_ValidateResult result;
    const std::uint64_t work =
        workOf([&] { EXPECT_EQ(Schema_ValidateXml(tree, &kit.root(), &result), XML_RET_OK); });
    code = result.code;
    XML_DOM_DelNode(tree);
    return work;
}

// What brings other matchers to their knees: here each character of the value is one step.
TEST(PatternGrowth, OfPatternsMadeToExplode)
{
    for (const char* pattern :
         {"^(a+)+$", "^(a*)*$", "^(a|a)*$", "^(a|aa)+$", "^((a*)*)*$", "^(a?){20}a{20}$",
          "(a*)(a*)(a*)(a*)b", "^(([a-z])+.)+[A-Z]([a-z])+$", "^a*a*a*a*a*a*a*a*b$", ".*.*.*.*x",
          "^(a|b|ab)*c$", "^([0-9a]+a*)+$", "^(a{1,20}){1,3}$"}) {
        Schema_ErrorCode code = 0;
        for (const char* end : {"", "!", "b"}) {
            expectLinear(std::string{pattern} + " with " + end, 5000, [&](std::size_t n) {
                return patternWork(pattern, std::string(n, 'a') + end, code);
            });
        }
    }
}

// As many values as the document holds, each asked once.
TEST(PatternGrowth, OfManyValues)
{
    expectLinear("values", 2000, [](std::size_t n) {
        SchemaKit kit;
        const Schema_Facet facets[] = {
            {"^[a-z]+[0-9]*$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING},
            {"^[[:alpha:]]+[0-9]*$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING}};
        Schema_SimpleType* type = kit.restrictedString(facets, 2);
        Schema_ModelGroup* list = kit.model("(v*)");
        auto* item = const_cast<Schema_ElementDecl*>(
            static_cast<const Schema_ElementDecl*>(list->particles->def));
        item->type = type;
        item->typeKind = SCHEMA_KIND_SIMPLE_TYPE;
        kit.add(kit.element("r", kit.complexType(list)));
        std::string document = "<r>";
        for (std::size_t i = 0; i < n; ++i) document += "<v>a" + std::to_string(i) + "</v>";
        XML_DOM_Node* tree = treeOf(document + "</r>");
        Schema_ValidateResult result;
        const std::uint64_t work =
            workOf([&] { EXPECT_EQ(Schema_ValidateXml(tree, &kit.root(), &result), XML_RET_OK); });
        EXPECT_EQ(result.code, SCHEMA_VALID);
        XML_DOM_DelNode(tree);
        return work;
    });
}

// The work of one validation; the document is read before.
std::uint64_t validationWork(SchemaKit& kit, const std::string& document, uint32_t expected)
{
    XML_DOM_Node* tree = treeOf(document);
    Schema_ValidateResult result;
    uint32_t status = XML_RET_FAIL;
    const std::uint64_t work =
        workOf([&] { status = Schema_ValidateXml(tree, &kit.root(), &result); });
    EXPECT_EQ(status, expected) << document.substr(0, 40);
    XML_DOM_DelNode(tree);
    return work;
}

// Models that could be tried in many ways, and long documents for them.
TEST(SchemaGrowth, OfDocumentsForAwkwardModels)
{
    struct Row {
        const char* model;
        const char* piece;
    };
    constexpr Row kRows[] = {
        {"(a*)", "<a/>"},
        {"(a*,a*,a*)", "<a/>"},
        {"((a?,b?)*)", "<b/><a/>"},
        {"((a|(b,c)|#)*)", "<b/><c/><a/><x/>"},
        {"((((((a|b)*)*)*)*)*)", "<a/><b/>"},
        {"((((((a?)*)?)*)?)*)", "<a/>"},
        {"((a{0,4294967294}){0,4294967294})", "<a/>"},
        {"((a,a?){1,})", "<a/>"},
        {"((a{2,3}){2,})", "<a/><a/>"},
        {"(#*,a?)", "<x/>"},
        {"((#|a)*)", "<y/><a/>"},
        {"(((a|b|c)*,d?)*,((a|b)*,e)*)", "<a/><b/><c/><d/>"},
        {"((a{0,0}|b)*)", "<b/>"},
        {"(a?,(b|c){0,0},d*)", "<d/>"},
    };
    for (const Row& row : kRows) {
        expectLinear(row.model, 5000, [&row](std::size_t n) {
            SchemaKit kit;
            kit.add(kit.element("r", kit.complexType(kit.model(row.model))));
            return validationWork(kit, "<r>" + repeated(n, row.piece) + "</r>", XML_RET_OK);
        });
    }
}

const Schema_SimpleType* byteType()
{
    return static_cast<const Schema_SimpleType*>(Schema_BLDIN_byte());
}

// A chain of `n` types, each a restriction or a union of the one before, or a circle of them.
void addTypes(SchemaKit& kit, std::size_t n, uint32_t members, bool circle)
{
    const Schema_SimpleType* type = byteType();
    Schema_SimpleType* first = nullptr;
    for (std::size_t i = 0; i < n; ++i) {
        auto* next = kit.make<Schema_SimpleType>();
        next->memberCount = members;
        next->members =
            kit.array<Schema_SimpleType>(std::vector<const Schema_SimpleType*>(members, type));
        if (!first) first = next;
        type = next;
    }
    if (circle)
        first->members =
            kit.array<Schema_SimpleType>(std::vector<const Schema_SimpleType*>(members, type));
    kit.add(kit.simpleElement("r", type));
}

// A chain or a circle of types, each an extension of the one before.
void addDerivations(SchemaKit& kit, std::size_t n, bool circle)
{
    Schema_ComplexType* type = kit.complexType(kit.model("(a)"));
    Schema_Derivation* first = nullptr;
    for (std::size_t i = 0; i < n; ++i) {
        auto* derivation = kit.make<Schema_Derivation>();
        derivation->kind = SCHEMA_KIND_COMPLEX_EXTENSION;
        derivation->base = type;
        derivation->baseKind = SCHEMA_KIND_COMPLEX_TYPE;
        if (!first) first = derivation;
        type = kit.complexType(nullptr);
        type->derivation = derivation;
    }
    if (circle) first->base = type;
    kit.add(kit.element("r", type));
}

// A chain or a circle of attribute groups, each holding the one before twice.
void addAttributeGroups(SchemaKit& kit, std::size_t n, bool circle)
{
    auto* first = kit.make<Schema_AttributeGroup>();
    const Schema_AttributeGroup* group = first;
    for (std::size_t i = 0; i < n; ++i) {
        auto* outer = kit.make<Schema_AttributeGroup>();
        outer->attributeGroupCount = 2;
        outer->attributeGroups = kit.array<Schema_AttributeGroup>({group, group});
        group = outer;
    }
    if (circle) first->ref = group;
    Schema_ComplexType* type = kit.complexType(nullptr);
    type->attributeGroupCount = 1;
    type->attributeGroups = kit.array<Schema_AttributeGroup>({group});
    kit.add(kit.element("r", type));
}

// A chain or a circle of references to elements.
void addReferences(SchemaKit& kit, std::size_t n, bool circle)
{
    Schema_ElementDecl* first = kit.element("r");
    const Schema_ElementDecl* element = first;
    for (std::size_t i = 0; i < n; ++i) {
        Schema_ElementDecl* reference = kit.element("r");
        reference->ref = element;
        element = reference;
    }
    if (circle) first->ref = element;
    kit.add(element);
}

TEST(SchemaGrowth, OfDeepGraphsAndOfCircles)
{
    constexpr std::size_t kDeep = 10000;
    onSmallStack([] {
        for (const bool circle : {false, true}) {
            const uint32_t expected = circle ? XML_RET_FAIL : XML_RET_OK;
            const std::string suffix = circle ? " in a circle" : "";
            expectNearlyLinear("restrictions" + suffix, kDeep, [&](std::size_t n) {
                SchemaKit kit;
                addTypes(kit, n, 1, circle);
                return validationWork(kit, "<r>1</r>", expected);
            });
            // In a circle the union's own members would answer first; a wrong value asks them all.
            expectNearlyLinear("unions" + suffix, kDeep, [&](std::size_t n) {
                SchemaKit kit;
                addTypes(kit, n, 2, circle);
                return validationWork(kit, "<r>x</r>", expected);
            });
            expectNearlyLinear("extensions" + suffix, kDeep, [&](std::size_t n) {
                SchemaKit kit;
                addDerivations(kit, n, circle);
                return validationWork(kit, "<r><a/></r>", expected);
            });
            expectNearlyLinear("attribute groups" + suffix, kDeep, [&](std::size_t n) {
                SchemaKit kit;
                addAttributeGroups(kit, n, circle);
                return validationWork(kit, "<r b='1'/>", expected);
            });
            expectNearlyLinear("references" + suffix, kDeep, [&](std::size_t n) {
                SchemaKit kit;
                addReferences(kit, n, circle);
                return validationWork(kit, "<r/>", expected);
            });
        }
    });
}

// Wide ones: a choice, a sequence, an all group, a union, attributes, each of `n`, and one of each
// in the document.
TEST(SchemaGrowth, OfWideGraphs)
{
    for (const Schema_Compositor compositor :
         {SCHEMA_COMPOSITOR_CHOICE, SCHEMA_COMPOSITOR_SEQUENCE, SCHEMA_COMPOSITOR_ALL}) {
        expectNearlyLinear("compositor " + std::to_string(compositor), 2000, [&](std::size_t n) {
            SchemaKit kit;
            std::vector<Schema_Object> particles;
            for (std::size_t i = 0; i < n; ++i) {
                Schema_ElementDecl* element = kit.element("e" + std::to_string(i));
                element->minOccurs = 0;
                particles.push_back({element, SCHEMA_KIND_ELEMENT});
            }
            Schema_ModelGroup group{particles.data(), 1, 1, static_cast<uint32_t>(n), compositor};
            kit.add(kit.element("r", kit.complexType(&group)));
            return validationWork(kit, "<r><e" + std::to_string(n - 1) + "/></r>", XML_RET_OK);
        });
    }
    expectNearlyLinear("a union", 2000, [](std::size_t n) {
        SchemaKit kit;
        std::vector<const Schema_SimpleType*> members;
        for (std::size_t i = 0; i < n; ++i) {
            auto* member = kit.make<Schema_SimpleType>();
            member->memberCount = 1;
            member->members = kit.array<Schema_SimpleType>({byteType()});
            members.push_back(member);
        }
        auto* type = kit.make<Schema_SimpleType>();
        type->memberCount = static_cast<uint32_t>(n);
        type->members = kit.array<Schema_SimpleType>(members);
        kit.add(kit.simpleElement("r", type));
        return validationWork(kit, "<r>x</r>", XML_RET_OK);
    });
    expectNearlyLinear("attributes, all of them there", 2000, [](std::size_t n) {
        SchemaKit kit;
        std::vector<const Schema_AttributeDecl*> uses;
        std::string document = "<r";
        for (std::size_t i = 0; i < n; ++i) {
            auto* use = kit.make<Schema_AttributeDecl>();
            use->name = kit.text("a" + std::to_string(i));
            use->type = byteType();
            uses.push_back(use);
            document += " a" + std::to_string(n - 1 - i) + "='1'";
        }
        Schema_ComplexType* type = kit.complexType(nullptr);
        type->attributeCount = static_cast<uint32_t>(n);
        type->attributes = kit.array<Schema_AttributeDecl>(uses);
        kit.add(kit.element("r", type));
        return validationWork(kit, document + "/>", XML_RET_OK);
    });
}

}  // namespace
