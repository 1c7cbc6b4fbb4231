// Validation under pressure: depth, sharing, many of everything, no memory, many threads.
#include "schema/types/pattern.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/small_stack.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <thread>

namespace {

// An element that may hold itself.
Schema_ElementDecl* recursiveElement(SchemaKit& kit)
{
    Schema_ModelGroup* model = kit.model("(e?)");
    Schema_ElementDecl* element = kit.element("e", kit.complexType(model));
    element->minOccurs = 0;
    const_cast<Schema_Object*>(model->particles)->def = element;
    return element;
}

std::string nested(std::size_t depth, const char* inmost)
{
    std::string document;
    document.reserve(depth * 7 + 16);
    for (std::size_t i = 0; i < depth; ++i) document += "<e>";
    document += inmost;
    for (std::size_t i = 0; i < depth; ++i) document += "</e>";
    return document;
}

TEST(ValidationScale, AMillionNestedElementsOnASmallStack)
{
    constexpr std::size_t kDepth = 1000000;
    SchemaKit kit;
    kit.add(recursiveElement(kit));
    for (const char* inmost : {"", "<f/>"}) {
        XML_DOM_Node* tree = treeOf(nested(kDepth, inmost));
        const long before = heapLiveBlocks();
        onSmallStack([&] {
            Schema_ValidateResult result;
            EXPECT_EQ(Schema_ValidateXml(tree, &kit.root(), &result), XML_RET_OK);
            EXPECT_EQ(result.code,
                      *inmost == '\0' ? SCHEMA_VALID : SCHEMA_ERROR_ELEMENT_UNEXPECTED);
        });
        EXPECT_EQ(heapLiveBlocks(), before);
        XML_DOM_DelNode(tree);
    }
}

// The default namespace of the root holds at every level; asking for it from below would cost the
// depth each time.
TEST(ValidationScale, AMillionNestedElementsOfADefaultNamespace)
{
    SchemaKit kit;
    Schema_ElementDecl* element = recursiveElement(kit);
    element->namespaceName = "urn:e";
    kit.add(element);
    std::string document = nested(1000000, "");
    document.replace(0, 3, "<e xmlns='urn:e'>");
    EXPECT_EQ(kit.validate(document).code, SCHEMA_VALID);
}

TEST(ValidationScale, AMillionSiblings)
{
    SchemaKit kit;
    kit.add(kit.element("r", kit.complexType(kit.model("((a|(b,c)|#)*)"))));
    std::string document = "<r>";
    for (int i = 0; i < 250000; ++i) document += "<b/><c/><a/><x/>";
    EXPECT_EQ(kit.validate(document + "</r>").code, SCHEMA_VALID);
}

TEST(ValidationScale, ManyAttributes)
{
    constexpr int kMany = 100000;
    SchemaKit kit;
    std::vector<const Schema_AttributeDecl*> uses;
    std::string document = "<r";
    for (int i = 0; i < kMany; ++i) {
        auto* use = kit.make<Schema_AttributeDecl>();
        use->name = kit.text("a" + std::to_string(i));
        use->type = static_cast<const Schema_SimpleType*>(Schema_BLDIN_int());
        use->use = SCHEMA_USE_REQUIRED;
        uses.push_back(use);
        document += " a" + std::to_string(kMany - 1 - i) + "='" + std::to_string(i) + "'";
    }
    Schema_ComplexType* type = kit.complexType(nullptr);
    type->attributeCount = kMany;
    type->attributes = kit.array<Schema_AttributeDecl>(uses);
    kit.add(kit.element("r", type));
    EXPECT_EQ(kit.validate(document + "/>").code, SCHEMA_VALID);
    EXPECT_STREQ(kit.validate(document + " b='1'/>").attrName, "b");
}

// Each level holds the next one twice: asked anew each time it would be 2^40.
TEST(ValidationScale, WhatIsSharedIsAskedOnce)
{
    constexpr int kLevels = 40;
    SchemaKit kit;
    const auto* refusing = static_cast<const Schema_SimpleType*>(Schema_BLDIN_byte());
    const Schema_SimpleType* type = refusing;
    const Schema_AttributeGroup* group = kit.make<Schema_AttributeGroup>();
    for (int i = 0; i < kLevels; ++i) {
        auto* next = kit.make<Schema_SimpleType>();
        next->memberCount = 2;
        next->members = kit.array<Schema_SimpleType>({type, type});
        type = next;
        auto* outer = kit.make<Schema_AttributeGroup>();
        outer->attributeGroupCount = 2;
        outer->attributeGroups = kit.array<Schema_AttributeGroup>({group, group});
        group = outer;
    }
    kit.add(kit.simpleElement("u", type));
    EXPECT_EQ(kit.validate("<u>x</u>").code, SCHEMA_ERROR_ELEMENT_VALUE);
    EXPECT_EQ(kit.validate("<u>1</u>").code, SCHEMA_VALID);
    Schema_ComplexType* complex = kit.complexType(nullptr);
    complex->attributeGroupCount = 1;
    complex->attributeGroups = kit.array<Schema_AttributeGroup>({group});
    kit.add(kit.element("g", complex));
    EXPECT_EQ(kit.validate("<g/>").code, SCHEMA_VALID);
    EXPECT_EQ(kit.validate("<g a='1'/>").code, SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED);
}

// Six levels of choices, each holding the two groups of the next level many times: asked anew each
// time it would be 64^5.
TEST(ValidationScale, GroupsThatAreSharedAreAskedOnce)
{
    constexpr std::size_t kLevels = 6;
    constexpr std::size_t kTimes = 64;
    SchemaKit kit;
    std::vector<Schema_ModelGroup> groups(kLevels * kTimes);  // every 64th one is used
    Schema_ElementDecl* element = kit.element("z");
    std::vector<std::vector<Schema_Object>> particles(kLevels);
    for (std::size_t level = kLevels; level-- > 0;) {
        for (std::size_t i = 0; i < kTimes; ++i) {
            if (level + 1 == kLevels) particles[level].push_back({element, SCHEMA_KIND_ELEMENT});
            else
                particles[level].push_back(
                    {&groups[(level + 1) * kTimes + i % 2], SCHEMA_KIND_MODEL_GROUP});
        }
        for (std::size_t i = 0; i < 2; ++i)
            groups[level * kTimes + i] =
                Schema_ModelGroup{particles[level].data(), 1, 1, kTimes, SCHEMA_COMPOSITOR_CHOICE};
    }
    kit.add(kit.element("r", kit.complexType(&groups[0])));
    EXPECT_EQ(kit.validate("<r><z/></r>").code, SCHEMA_VALID);
    EXPECT_EQ(kit.validate("<r><y/></r>").code, SCHEMA_ERROR_CHILDREN_MISSING);
}

TEST(ValidationScale, DeepSchemasOnASmallStack)
{
    constexpr int kDeep = 100000;
    SchemaKit kit;
    const auto* base = static_cast<const Schema_SimpleType*>(Schema_BLDIN_byte());
    const Schema_ComplexType* bases = kit.complexType(kit.model("(a)"));
    const Schema_AttributeGroup* group = kit.make<Schema_AttributeGroup>();
    const Schema_ElementDecl* element = kit.element("a");
    for (int i = 0; i < kDeep; ++i) {
        auto* type = kit.make<Schema_SimpleType>();
        type->memberCount = i % 2 == 0 ? 1 : 2;
        type->members = kit.array<Schema_SimpleType>({base, base});
        base = type;
        auto* derivation = kit.make<Schema_Derivation>();
        *derivation = Schema_Derivation{};
        derivation->kind = SCHEMA_KIND_COMPLEX_EXTENSION;
        derivation->base = bases;
        derivation->baseKind = SCHEMA_KIND_COMPLEX_TYPE;
        Schema_ComplexType* derived = kit.complexType(nullptr);
        derived->derivation = derivation;
        bases = derived;
        auto* outer = kit.make<Schema_AttributeGroup>();
        if (i % 2 == 0) {
            outer->ref = group;
        } else {
            outer->attributeGroupCount = 1;
            outer->attributeGroups = kit.array<Schema_AttributeGroup>({group});
        }
        group = outer;
        Schema_ElementDecl* reference = kit.element("");
        reference->ref = element;
        element = reference;
    }
    const_cast<Schema_ComplexType*>(bases)->attributeGroupCount = 1;
    const_cast<Schema_ComplexType*>(bases)->attributeGroups =
        kit.array<Schema_AttributeGroup>({group});
    kit.add(kit.simpleElement("s", base));
    kit.add(kit.element("c", bases));
    Schema_ModelGroup* model = kit.model("(a)");
    const_cast<Schema_Object*>(model->particles)->def = element;
    kit.add(kit.element("r", kit.complexType(model)));
    onSmallStack([&] {
        EXPECT_EQ(kit.validate("<s>1</s>").code, SCHEMA_VALID);
        EXPECT_EQ(kit.validate("<s>x</s>").code, SCHEMA_ERROR_ELEMENT_VALUE);
        EXPECT_EQ(kit.validate("<c><a/></c>").code, SCHEMA_VALID);
        EXPECT_EQ(kit.validate("<c b='1'><a/></c>").code, SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED);
        EXPECT_EQ(kit.validate("<r><a/></r>").code, SCHEMA_VALID);
    });
}

// A schema with everything in it, for counting and failing.
class EverySchema {
public:
    EverySchema()
    {
        facets_[0] = {"^[a-z]+$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING};
        facets_[1] = {"2", SCHEMA_FACET_MIN_LENGTH, SCHEMA_BUILTIN_STRING};
        auto* word = kit.make<Schema_SimpleType>();
        word->memberCount = 1;
        word->members = kit.array<Schema_SimpleType>(
            {static_cast<const Schema_SimpleType*>(Schema_BLDIN_string())});
        word->facets = facets_;
        word->facetCount = 2;
        auto* use = kit.make<Schema_AttributeDecl>();
        use->name = "w";
        use->type = word;
        auto* attributes = kit.make<Schema_AttributeGroup>();
        attributes->attributeCount = 1;
        attributes->attributes = kit.array<Schema_AttributeDecl>({use});
        attributes->anyAttribute = &lax_;
        Schema_ModelGroup* leaf = kit.model("(a?,(b|c)*,(x,y)?)");
        Schema_ComplexType* type = kit.complexType(leaf);
        type->attributeGroupCount = 1;
        type->attributeGroups = kit.array<Schema_AttributeGroup>({attributes});
        Schema_ElementDecl* item = kit.element("e", type);
        Schema_ModelGroup* list = kit.model("(e*)");
        item->minOccurs = 0;
        item->maxOccurs = SCHEMA_UNBOUNDED;
        const_cast<Schema_Object*>(list->particles)->def = item;
        const_cast<Schema_Object*>(leaf->particles)->def = item;
        kit.add(kit.element("r", kit.complexType(list)));
        kit.add(kit.element("all", kit.complexType(kit.model("(a&b&c)"))));
    }

    SchemaKit kit;

private:
    Schema_Facet facets_[2];
    Schema_AttributeWildcard lax_{nullptr, "##any", SCHEMA_PROCESS_LAX};
};

std::string configuration(int items, int attributes, int depth)
{
    std::string document = "<r>";
    for (int i = 0; i < items; ++i) {
        for (int level = 0; level < depth; ++level) {
            document += "<e w='word'";
            for (int a = 0; a < attributes; ++a) document += " a" + std::to_string(a) + "='1'";
            document += ">";
        }
        document += "<b/><c/><b/><x/><y/>";
        for (int level = 0; level < depth; ++level) document += "</e>";
    }
    return document + "</r>";
}

// Allocations of one validation of a valid document.
std::size_t allocationsFor(SchemaKit& kit, const std::string& document)
{
    XML_DOM_Node* tree = treeOf(document);
    Schema_ValidateResult result;
    FailingHeap heap{FailingHeap::kForever};
    EXPECT_EQ(Schema_ValidateXml(tree, &kit.root(), &result), XML_RET_OK);
    EXPECT_EQ(result.code, SCHEMA_VALID);
    const std::size_t count = FailingHeap::allocations();
    EXPECT_EQ(FailingHeap::liveBlocks(), 0);
    XML_DOM_DelNode(tree);
    return count;
}

// But for the table of a pattern, of which the configurations have one.
TEST(ValidationMemory, AValidDocumentTakesNoneUnlessItIsLarge)
{
    EverySchema schema;
    EXPECT_EQ(allocationsFor(schema.kit, configuration(1, 0, 1)), 1u);
    EXPECT_EQ(allocationsFor(schema.kit, configuration(500, 15, 8)), 1u)
        << "many, and 16 attributes";
    EXPECT_EQ(allocationsFor(schema.kit, "<all><c/><b/><a/></all>"), 0u);
    EXPECT_EQ(allocationsFor(schema.kit, configuration(3, 16, 1)), 4u) << "17 attributes each";
    EXPECT_EQ(allocationsFor(schema.kit, configuration(50, 0, 16)), 1u) << "16 levels";
    const std::size_t deep = allocationsFor(schema.kit, configuration(1, 0, 1000));
    EXPECT_GT(deep, 0u);
    EXPECT_LT(deep, 40u) << "pieces of 16 KiB for what is open";
    EXPECT_LE(allocationsFor(schema.kit, configuration(20, 0, 1000)), 20 * deep);
}

TEST(ValidationMemory, AWideSchemaIsLearntOnce)
{
    SchemaKit kit;
    std::vector<const Schema_SimpleType*> members;
    std::vector<const Schema_AttributeGroup*> groups;
    for (int i = 0; i < 200; ++i) {
        auto* member = kit.make<Schema_SimpleType>();
        member->memberCount = 1;
        member->members = kit.array<Schema_SimpleType>({static_cast<const Schema_SimpleType*>(
            i == 199 ? Schema_BLDIN_string() : Schema_BLDIN_byte())});
        members.push_back(member);
        groups.push_back(kit.make<Schema_AttributeGroup>());
    }
    auto* type = kit.make<Schema_SimpleType>();
    type->memberCount = 200;
    type->members = kit.array<Schema_SimpleType>(members);
    Schema_ModelGroup* list = kit.model("(a*)");
    auto* item = const_cast<Schema_ElementDecl*>(
        static_cast<const Schema_ElementDecl*>(list->particles->def));
    auto* derivation = kit.make<Schema_Derivation>();
    derivation->kind = SCHEMA_KIND_SIMPLE_EXTENSION;
    derivation->base = type;
    derivation->baseKind = SCHEMA_KIND_SIMPLE_TYPE;
    Schema_ComplexType* complex = kit.complexType(nullptr);
    complex->derivation = derivation;
    complex->attributeGroupCount = 200;
    complex->attributeGroups = kit.array<Schema_AttributeGroup>(groups);
    item->type = complex;
    kit.add(kit.element("r", kit.complexType(list)));
    std::string document = "<r>";
    for (int i = 0; i < 1000; ++i) document += "<a>word</a>";
    EXPECT_LT(allocationsFor(kit, document + "</r>"), 10u) << "twice doubled, whatever comes";
}

// What only saves time may be missing; everything else ends the run.
TEST(ValidationMemory, EveryAllocationMayFail)
{
    EverySchema schema;
    const std::string documents[] = {configuration(2, 20, 200), "<all><c/><b/><a/></all>"};
    for (const std::string& document : documents) {
        XML_DOM_Node* tree = treeOf(document);
        for (const std::size_t failures : {std::size_t{1}, FailingHeap::kForever}) {
            bool refused = true;
            std::size_t spared = 0;
            for (std::size_t allowed = 0; refused; ++allowed) {
                ASSERT_LT(allowed, 2000u);
                Schema_ValidateResult result;
                FailingHeap heap{allowed, failures};
                const uint32_t status = Schema_ValidateXml(tree, &schema.kit.root(), &result);
                refused = FailingHeap::refused();
                ASSERT_EQ(status, refused && status != XML_RET_OK ? XML_RET_FAIL : XML_RET_OK);
                spared += refused && status == XML_RET_OK;
                ASSERT_EQ(result.code, SCHEMA_VALID);
                ASSERT_EQ(FailingHeap::liveBlocks(), 0);
            }
            EXPECT_LE(spared, 2u);
        }
        XML_DOM_DelNode(tree);
    }
}

// More children than are kept states for, and more namespaces than are told apart by their text.
TEST(ValidationMemory, WhatIsNotKeptIsMatchedAllTheSame)
{
    SchemaKit kit;
    kit.add(kit.element("r", kit.complexType(kit.model("((a|b)*,z,#*)"))));
    std::string list;
    std::string spaces;
    for (int i = 0; i < 3000; ++i) {
        list += i % 7 < 3 ? "<a/>" : "<b/>";
        spaces += "<p:x xmlns:p='u" + std::to_string(i % 40) + "'/>";
    }
    for (const std::string& rest : {std::string{}, spaces, spaces + list}) {
        EXPECT_EQ(kit.sentence("<r>" + list + "<z/>" + rest + "</r>"), "valid");
        EXPECT_NE(kit.sentence("<r>" + list + rest + "</r>"), "valid");
    }
}

// A chain of types so long that its parts are laid anew for each element.
TEST(ValidationMemory, AChainOfManyExtensions)
{
    SchemaKit kit;
    Schema_ComplexType* type = kit.complexType(kit.model("(caa)"));
    std::string content = "<caa/>";
    for (int i = 1; i < 50; ++i) {
        auto* derivation = kit.make<Schema_Derivation>();
        derivation->kind = SCHEMA_KIND_COMPLEX_EXTENSION;
        derivation->base = type;
        derivation->baseKind = SCHEMA_KIND_COMPLEX_TYPE;
        std::string name = "c";
        for (const int letter : {i / 26, i % 26}) name += static_cast<char>('a' + letter);
        derivation->content = kit.model("(" + name + "?)");
        type = kit.complexType(nullptr);
        type->derivation = derivation;
        content += "<" + name + "/>";
    }
    Schema_ModelGroup* items = kit.model("(e*)");
    auto* item = const_cast<Schema_ElementDecl*>(
        static_cast<const Schema_ElementDecl*>(items->particles->def));
    item->type = type;
    item->typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    kit.add(kit.element("r", kit.complexType(items)));
    const std::string whole = "<e>" + content + "</e>";
    EXPECT_EQ(kit.sentence("<r>" + whole + whole + "<e><caa/></e></r>"), "valid");
    EXPECT_NE(kit.sentence("<r>" + whole + whole + "<e><cab/></e></r>"), "valid");
    EXPECT_NE(kit.sentence("<r>" + whole + "<e>" + content + "<caa/></e></r>"), "valid");
}

// Where the inline memory ends depends on the depth, so that each kind of record is once the first
// that asks the heap.
TEST(ValidationMemory, TheFirstPieceMayFailForAnyRecord)
{
    SchemaKit kit;
    Schema_ModelGroup* model = kit.model("(a?,((e)?))");
    auto* derivation = kit.make<Schema_Derivation>();
    derivation->kind = SCHEMA_KIND_COMPLEX_EXTENSION;
    derivation->base = kit.complexType(kit.model("(b?)"));
    derivation->baseKind = SCHEMA_KIND_COMPLEX_TYPE;
    derivation->content = model;
    Schema_ComplexType* type = kit.complexType(nullptr);
    type->derivation = derivation;
    type->attributeGroupCount = 1;
    type->attributeGroups = kit.array<Schema_AttributeGroup>({kit.make<Schema_AttributeGroup>()});
    Schema_ElementDecl* element = kit.element("e", type);
    const auto* inner = static_cast<const Schema_ModelGroup*>(model->particles[1].def);
    inner = static_cast<const Schema_ModelGroup*>(inner->particles[0].def);
    const_cast<Schema_Object*>(inner->particles)->def = element;
    kit.add(element);
    bool refused = false;
    bool sufficed = false;
    for (std::size_t depth = 10; depth < 60; ++depth) {
        XML_DOM_Node* tree = treeOf(nested(depth, "<a/>"));
        Schema_ValidateResult result;
        FailingHeap heap{0};
        const uint32_t status = Schema_ValidateXml(tree, &kit.root(), &result);
        EXPECT_EQ(status, FailingHeap::refused() ? XML_RET_FAIL : XML_RET_OK) << depth;
        EXPECT_EQ(result.code, SCHEMA_VALID);
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
        refused |= FailingHeap::refused();
        sufficed |= !FailingHeap::refused();
        XML_DOM_DelNode(tree);
    }
    EXPECT_TRUE(refused && sufficed);
}

TEST(PatternCache, KeepsManyAndGoesOnWithoutMemory)
{
    for (const bool failing : {false, true}) {
        FailingHeap heap{failing ? 0 : FailingHeap::kForever};
        {
            std::deque<std::string> patterns;
            netxml::PatternCache cache;
            for (int round = 0; round < 2; ++round) {
                for (int i = 0; i < 60; ++i) {
                    patterns.push_back("^a{" + std::to_string(i) + "}$");
                    const std::string text(static_cast<std::size_t>(i), 'a');
                    EXPECT_TRUE(cache.matches(patterns.back().c_str(), text.c_str()));
                    EXPECT_FALSE(cache.matches(patterns.back().c_str(), (text + "a").c_str()));
                }
            }
            EXPECT_FALSE(cache.matches("(", "(")) << "does not compile";
            EXPECT_FALSE(cache.matches("(", "("));
        }
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
    }
}

// Eight threads validate against one root while others fill and empty roots of their own.
TEST(ValidationThreads, ShareOneRoot)
{
    EverySchema schema;
    const std::string document = configuration(50, 3, 4);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            XML_DOM_Node* tree = treeOf(document);
            for (int round = 0; round < 20; ++round) {
                Schema_Root own;
                EXPECT_EQ(Schema_InitRoot(&own), XML_RET_OK);
                Schema_ValidateResult result;
                EXPECT_EQ(Schema_ValidateXml(tree, &schema.kit.root(), &result), XML_RET_OK);
                EXPECT_EQ(result.code, SCHEMA_VALID);
                Schema_ExitRoot(&own);
            }
            XML_DOM_DelNode(tree);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
