// The example's schema: registered whole or not at all, and what it makes use of.
#include "examples/interfaces/interfaces_schema.h"
#include "tests/support/failing_heap.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

struct Counts {
    std::uint32_t simpleTypes;
    std::uint32_t attributes;
    std::uint32_t elements;
    std::uint32_t complexTypes;
    std::uint32_t attributeGroups;

    bool operator==(const Counts&) const = default;
};

Counts countsOf(const Schema_Root& root)
{
    return {root.simpleTypes.count, root.attributes.count, root.elements.count,
            root.complexTypes.count, root.attributeGroups.count};
}

constexpr const char* kNetworkTypes[] = {"OID",        "_Ipv6Address", "IPV6_ADDR_PREFIX",
                                         "_PortRange", "_VlanRange",   "_Ipv4Mask"};

// True when all network types belong to the namespace.
bool networkTypesAreIn(const char* namespaceName)
{
    for (const char* name : kNetworkTypes) {
        if (!Schema_FoundZynBltInType(name, namespaceName)) return false;
    }
    return true;
}

class InterfacesSchema : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Schema_InitRoot(&root_), XML_RET_OK); }
    void TearDown() override { Schema_ExitRoot(&root_); }

    Schema_Root root_;
};

TEST_F(InterfacesSchema, LeavesTheRootAsItWas)
{
    const Counts before = countsOf(root_);
    ASSERT_EQ(interfaces_schema_register(&root_), XML_RET_OK);
    EXPECT_TRUE(networkTypesAreIn(INTERFACES_NAMESPACE));
    EXPECT_FALSE(countsOf(root_) == before);
    interfaces_schema_deregister(&root_);
    EXPECT_TRUE(networkTypesAreIn(nullptr));
    EXPECT_TRUE(countsOf(root_) == before);
}

TEST_F(InterfacesSchema, TheLastOfSeveralRootsTakesTheNamesBack)
{
    Schema_Root other;
    ASSERT_EQ(Schema_InitRoot(&other), XML_RET_OK);
    ASSERT_EQ(interfaces_schema_register(&root_), XML_RET_OK);
    ASSERT_EQ(interfaces_schema_register(&other), XML_RET_OK);
    EXPECT_TRUE(countsOf(root_) == countsOf(other));
    interfaces_schema_deregister(&root_);
    EXPECT_TRUE(networkTypesAreIn(INTERFACES_NAMESPACE));
    interfaces_schema_deregister(&other);
    EXPECT_TRUE(networkTypesAreIn(nullptr));
    Schema_ExitRoot(&other);
}

TEST_F(InterfacesSchema, ANullRootIsRefused)
{
    EXPECT_EQ(interfaces_schema_register(nullptr), XML_RET_FAIL);
    EXPECT_TRUE(networkTypesAreIn(nullptr));
    interfaces_schema_deregister(nullptr);
    EXPECT_TRUE(networkTypesAreIn(nullptr));
}

TEST_F(InterfacesSchema, ANetworkTypeThatBelongsElsewhereIsAFailureWithoutATrace)
{
    const Counts before = countsOf(root_);
    ASSERT_EQ(Schema_ReplaceInnerTypeNS("_PortRange", nullptr, "urn:other"), XML_RET_OK);
    EXPECT_EQ(interfaces_schema_register(&root_), XML_RET_FAIL);
    ASSERT_EQ(Schema_ReplaceInnerTypeNS("_PortRange", "urn:other", nullptr), XML_RET_OK);
    EXPECT_TRUE(networkTypesAreIn(nullptr));
    EXPECT_TRUE(countsOf(root_) == before);
}

TEST(InterfacesSchemaHeap, IsRegisteredWholeOrNotAtAllWhicheverAllocationFails)
{
    bool registered = false;
    for (unsigned allowed = 0; !registered; ++allowed) {
        ASSERT_LT(allowed, 40u) << "fails even with every allocation allowed";
        Schema_Root root;
        ASSERT_EQ(Schema_InitRoot(&root), XML_RET_OK);
        const Counts before = countsOf(root);
        {
            const FailingHeap heap{allowed};
            registered = interfaces_schema_register(&root) == XML_RET_OK;
            EXPECT_NE(registered, FailingHeap::refused()) << "with " << allowed << " allowed";
        }
        EXPECT_EQ(networkTypesAreIn(registered ? INTERFACES_NAMESPACE : nullptr), true)
            << "with " << allowed << " allowed";
        EXPECT_EQ(countsOf(root) == before, !registered) << "with " << allowed << " allowed";
        if (registered) {
            EXPECT_GT(allowed, 0u) << "no allocation has failed";
            interfaces_schema_deregister(&root);
        }
        Schema_ExitRoot(&root);
        EXPECT_EQ(root.simpleTypes.items, nullptr);
        EXPECT_EQ(root.attributeGroups.items, nullptr);
    }
}

TEST_F(InterfacesSchema, UsesEveryFacetUnionsAndBothNamespaces)
{
    ASSERT_EQ(interfaces_schema_register(&root_), XML_RET_OK);
    std::set<Schema_FacetKind> facets;
    std::set<std::string> namespaces;
    unsigned unions = 0;
    for (std::uint32_t i = 0; i < root_.simpleTypes.count; ++i) {
        const auto* type = static_cast<const Schema_SimpleType*>(root_.simpleTypes.items[i]);
        if (type->kind != SCHEMA_BUILTIN_NONE) continue;
        for (std::uint32_t f = 0; f < type->facetCount; ++f) facets.insert(type->facets[f].kind);
        for (std::uint32_t m = 0; m < type->memberCount; ++m)
            EXPECT_NE(type->members[m], nullptr) << type->name << " is not filled";
        unions += type->memberCount > 1;
        namespaces.insert(type->namespaceName);
    }
    for (Schema_FacetKind kind = SCHEMA_FACET_ENUMERATION; kind <= SCHEMA_FACET_TOTAL_DIGITS;
         ++kind)
        EXPECT_EQ(facets.count(kind), 1u) << "facet " << kind;
    EXPECT_GE(unions, 5u);
    EXPECT_EQ(namespaces, (std::set<std::string>{INTERFACES_NAMESPACE, INTERFACES_QOS_NAMESPACE}));
    interfaces_schema_deregister(&root_);
}

TEST_F(InterfacesSchema, UsesEveryKindOfDerivationAndSubstitution)
{
    ASSERT_EQ(interfaces_schema_register(&root_), XML_RET_OK);
    std::set<Schema_ObjectKind> kinds;
    for (std::uint32_t i = 0; i < root_.complexTypes.count; ++i) {
        const auto* type = static_cast<const Schema_ComplexType*>(root_.complexTypes.items[i]);
        if (type->derivation) kinds.insert(type->derivation->kind);
    }
    EXPECT_EQ(kinds, (std::set<Schema_ObjectKind>{
                         SCHEMA_KIND_COMPLEX_RESTRICTION, SCHEMA_KIND_COMPLEX_EXTENSION,
                         SCHEMA_KIND_SIMPLE_RESTRICTION, SCHEMA_KIND_SIMPLE_EXTENSION}));
    std::set<std::string> heads;
    std::set<std::string> substituted;
    for (std::uint32_t i = 0; i < root_.elements.count; ++i) {
        const auto* element = static_cast<const Schema_ElementDecl*>(root_.elements.items[i]);
        if (element->abstract) heads.insert(element->name);
        if (element->substitutionGroupName) substituted.insert(element->substitutionGroupName);
    }
    EXPECT_EQ(heads, (std::set<std::string>{"interface", "condition"}));
    EXPECT_EQ(substituted, heads);
    interfaces_schema_deregister(&root_);
}

}  // namespace
