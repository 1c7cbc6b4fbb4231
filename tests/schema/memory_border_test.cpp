// Memory that runs out at any record of a validation: what lies in front of it fills the room that
// costs no heap to any size.
#include "tests/support/failing_heap.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Every allocation fails once, and from there on: there is no verdict or the right one, and nothing
// is held.
void expectNoHarm(SchemaKit& kit, const std::string& document)
{
    XML_DOM_Node* tree = treeOf(document);
    Schema_ValidateResult expected;
    ASSERT_EQ(Schema_ValidateXml(tree, &kit.root(), &expected), XML_RET_OK);
    ASSERT_EQ(expected.code, SCHEMA_VALID) << expected.detail;
    const long before = heapLiveBlocks();
    for (const std::size_t failures : {std::size_t{1}, FailingHeap::kForever}) {
        bool refused = true;
        for (std::size_t allowed = 0; refused; ++allowed) {
            ASSERT_LT(allowed, 500u);
            const FailingHeap heap{allowed, failures};
            Schema_ValidateResult result;
            const uint32_t status = Schema_ValidateXml(tree, &kit.root(), &result);
            refused = FailingHeap::refused();
            ASSERT_TRUE(status == XML_RET_OK || refused);
            ASSERT_EQ(result.code, SCHEMA_VALID) << "no other verdict";
            ASSERT_EQ(heapLiveBlocks(), before);
        }
    }
    XML_DOM_DelNode(tree);
}

// A type with a part of every kind: a base with content, a simple type that is walked through,
// attributes of groups, groups in groups.
class AnyBorder : public testing::Test {
protected:
    Schema_SimpleType* restrict(const void* base, std::vector<Schema_Facet> facets)
    {
        facets_.push_back(std::move(facets));
        auto* type = kit.make<Schema_SimpleType>();
        type->memberCount = 1;
        type->members = kit.array<Schema_SimpleType>({static_cast<const Schema_SimpleType*>(base)});
        type->facets = facets_.back().data();
        type->facetCount = static_cast<uint32_t>(facets_.back().size());
        return type;
    }
    // A union that no plan decides: each value is asked of all its members.
    Schema_SimpleType* choice()
    {
        auto* type = kit.make<Schema_SimpleType>();
        type->memberCount = 2;
        type->members = kit.array<Schema_SimpleType>(
            {static_cast<const Schema_SimpleType*>(Schema_BLDIN_boolean()),
             restrict(Schema_BLDIN_int(),
                      {{"2", SCHEMA_FACET_TOTAL_DIGITS, SCHEMA_BUILTIN_INT},
                       {"^[0-9]+$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_INT}})});
        return type;
    }
    Schema_AttributeGroup* attributes(const char* name, const Schema_SimpleType* type)
    {
        auto* use = kit.make<Schema_AttributeDecl>();
        use->name = name;
        use->type = type;
        auto* group = kit.make<Schema_AttributeGroup>();
        group->attributeCount = 1;
        group->attributes = kit.array<Schema_AttributeDecl>({use});
        return group;
    }
    Schema_ComplexType* everything()
    {
        Schema_ModelGroup* base = kit.model("(k?,(l|m)*)");
        auto* derivation = kit.make<Schema_Derivation>();
        derivation->kind = SCHEMA_KIND_COMPLEX_EXTENSION;
        derivation->base = kit.complexType(base);
        derivation->baseKind = SCHEMA_KIND_COMPLEX_TYPE;
        derivation->content = kit.model("(n?,((o)?))");
        Schema_ComplexType* type = kit.complexType(nullptr);
        type->derivation = derivation;
        Schema_AttributeGroup* outer = attributes("w", choice());
        outer->attributeGroupCount = 1;
        outer->attributeGroups = kit.array<Schema_AttributeGroup>({attributes("v", choice())});
        type->attributeGroupCount = 1;
        type->attributeGroups = kit.array<Schema_AttributeGroup>({outer});
        const_cast<Schema_Object*>(base->particles)->def = [&] {
            Schema_ElementDecl* k = kit.simpleElement("k", choice());
            k->minOccurs = 0;
            return k;
        }();
        return type;
    }
    // "(first,e+,f)" with types for e and f.
    const Schema_ModelGroup* list(const Schema_ElementDecl* first)
    {
        Schema_ElementDecl* e = kit.element("e", everything());
        e->maxOccurs = SCHEMA_UNBOUNDED;
        auto& particles = particles_.emplace_back();
        particles = {{first, SCHEMA_KIND_ELEMENT},
                     {e, SCHEMA_KIND_ELEMENT},
                     {kit.element("f", everything()), SCHEMA_KIND_ELEMENT}};
        auto* model = kit.make<Schema_ModelGroup>();
        *model = Schema_ModelGroup{particles.data(), 1, 1, 3, SCHEMA_COMPOSITOR_SEQUENCE};
        return model;
    }

    static constexpr char kContent[] =
        "<e w='12' v='true'><k>77</k><l/><m/><n/><o/></e><e w='12'><k>77</k><n/><o/></e>"
        "<f w='12'><k>77</k><l/></f>";

    SchemaKit kit;

private:
    std::deque<std::vector<Schema_Facet>> facets_;
    std::deque<std::vector<Schema_Object>> particles_;
};

// What is kept for the run: an enumeration of any length lies in front of all that is learnt.
TEST_F(AnyBorder, OfWhatIsKept)
{
    for (std::size_t words = 1; words < 500; words += 3) {
        const std::vector<Schema_Facet> facets(
            words, {"up", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING});
        Schema_ElementDecl* first =
            kit.simpleElement("first", restrict(Schema_BLDIN_string(), facets));
        SchemaKit one;
        one.add(one.element("r", one.complexType(list(first))));
        expectNoHarm(one, std::string{"<r><first>up</first>"} + kContent + "</r>");
        if (HasFatalFailure()) return;
    }
}

// What is open: the notes of an all group with any number of particles lie below it.
TEST_F(AnyBorder, OfWhatIsOpen)
{
    for (std::size_t count = 5000; count < 8200; count += 16) {
        Schema_ElementDecl* a = kit.element("a", kit.complexType(list(kit.element("first"))));
        a->minOccurs = 0;
        const std::vector<Schema_Object> particles(count, {a, SCHEMA_KIND_ELEMENT});
        const Schema_ModelGroup model{particles.data(), 1, 1, static_cast<uint32_t>(count),
                                      SCHEMA_COMPOSITOR_ALL};
        SchemaKit one;
        one.add(one.element("r", one.complexType(&model)));
        expectNoHarm(one, std::string{"<r><a><first/>"} + kContent + "</a></r>");
        if (HasFatalFailure()) return;
    }
}

// An element without content whose type has attributes in groups one in another, and one whose type
// has so many bases that its parts are not kept.
TEST_F(AnyBorder, OfGroupsAndChains)
{
    Schema_AttributeGroup* group = attributes("w", choice());
    for (int i = 0; i < 6; ++i) {
        auto* outer = kit.make<Schema_AttributeGroup>();
        outer->attributeGroupCount = 1;
        outer->attributeGroups = kit.array<Schema_AttributeGroup>({group});
        group = outer;
    }
    Schema_ComplexType* grouped = kit.complexType(nullptr);
    grouped->attributeGroupCount = 1;
    grouped->attributeGroups = kit.array<Schema_AttributeGroup>({group});
    Schema_ComplexType* chained = kit.complexType(kit.model("(k?)"));
    for (int i = 0; i < 40; ++i) {
        auto* derivation = kit.make<Schema_Derivation>();
        derivation->kind = SCHEMA_KIND_COMPLEX_EXTENSION;
        derivation->base = chained;
        derivation->baseKind = SCHEMA_KIND_COMPLEX_TYPE;
        derivation->content = kit.model("(k?)");
        chained = kit.complexType(nullptr);
        chained->derivation = derivation;
    }
    for (const bool chain : {false, true}) {
        const Schema_ElementDecl* inner = kit.element("e", chain ? chained : grouped);
        const std::string inside = chain ? "<e><k/><k/></e>" : "<e w='12'/>";
        for (std::size_t count = 3000; count < 8200; count += 16) {
            const Schema_Object only{inner, SCHEMA_KIND_ELEMENT};
            const Schema_ModelGroup content{&only, 1, 1, 1, SCHEMA_COMPOSITOR_SEQUENCE};
            SchemaKit one;
            Schema_ElementDecl* a = one.element("a", one.complexType(&content));
            a->minOccurs = 0;
            const std::vector<Schema_Object> particles(count, {a, SCHEMA_KIND_ELEMENT});
            const Schema_ModelGroup model{particles.data(), 1, 1, static_cast<uint32_t>(count),
                                          SCHEMA_COMPOSITOR_ALL};
            one.add(one.element("r", one.complexType(&model)));
            expectNoHarm(one, "<r><a>" + inside + "</a></r>");
            if (HasFatalFailure()) return;
        }
    }
}

// An element that leaves the way that another one, in front of it and less deep, has made known:
// its groups are opened again from the first child on.
TEST_F(AnyBorder, OfAWayThatIsLeft)
{
    const Schema_ElementDecl* e = kit.element("e", kit.complexType(kit.model("(n?,((o)?),q?)")));
    const Schema_Object only{e, SCHEMA_KIND_ELEMENT};
    const Schema_ModelGroup content{&only, 1, 1, 1, SCHEMA_COMPOSITOR_SEQUENCE};
    Schema_ElementDecl* a = kit.element("a", kit.complexType(&content));
    a->minOccurs = 0;
    for (std::size_t count = 5000; count < 8200; count += 8) {
        const std::vector<Schema_Object> particles(count, {a, SCHEMA_KIND_ELEMENT});
        const Schema_ModelGroup all{particles.data(), 1, 1, static_cast<uint32_t>(count),
                                    SCHEMA_COMPOSITOR_ALL};
        SchemaKit one;
        const Schema_Object both[] = {
            {e, SCHEMA_KIND_ELEMENT},
            {one.element("g", one.complexType(&all)), SCHEMA_KIND_ELEMENT}};
        const Schema_ModelGroup root{both, 1, 1, 2, SCHEMA_COMPOSITOR_SEQUENCE};
        one.add(one.element("r", one.complexType(&root)));
        expectNoHarm(one, "<r><e><n/><o/></e><g><a><e><n/><o/><q/></e></a></g></r>");
        if (HasFatalFailure()) return;
    }
}

// What is found by its address: tables of any number of records.
TEST_F(AnyBorder, OfWhatIsFoundByItsAddress)
{
    std::vector<Schema_Object> particles;
    std::string document = "<r>";
    for (int i = 0; i < 120; ++i) {
        const std::string name = "e" + std::to_string(i);
        Schema_ElementDecl* element =
            i % 3 == 0 ? kit.simpleElement(name, choice()) : kit.element(name, everything());
        particles.push_back({element, SCHEMA_KIND_ELEMENT});
        document +=
            "<" + name + ">" + (i % 3 == 0 ? "12" : "<k>77</k><l/><n/>") + "</" + name + ">";
        if (i % 4 != 0) continue;
        const Schema_ModelGroup model{particles.data(), 1, 1,
                                      static_cast<uint32_t>(particles.size()),
                                      SCHEMA_COMPOSITOR_SEQUENCE};
        SchemaKit one;
        one.add(one.element("r", one.complexType(&model)));
        expectNoHarm(one, document + "</r>");
        if (HasFatalFailure()) return;
    }
}

TEST_F(AnyBorder, OfNamespaces)
{
    Schema_ModelGroup* list = kit.model("(a,b,c,d,e,f,g,h)");
    std::string document = "<r>";
    for (uint32_t i = 0; i < list->particleCount; ++i) {
        const char name = static_cast<char>('a' + i);
        const_cast<Schema_ElementDecl*>(
            static_cast<const Schema_ElementDecl*>(list->particles[i].def))
            ->type = kit.complexType(kit.model("(#*)"));
        document += std::string{"<"} + name + ">";
        for (uint32_t k = 0; k < 9; ++k)
            document += "<p:x xmlns:p='u" + std::to_string(9 * i + k) + "'/>";
        document += std::string{"</"} + name + ">";
    }
    kit.add(kit.element("r", kit.complexType(list)));
    expectNoHarm(kit, document + "</r>");
}

}  // namespace
