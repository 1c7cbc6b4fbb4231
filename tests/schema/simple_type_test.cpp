// Values by types of every shape, as validation checks them.
#include "schema/validate/simple_value.hpp"
#include "tests/support/schema_kit.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class SimpleType : public testing::Test {
protected:
    static const Schema_SimpleType* builtin(void* record)
    {
        return static_cast<const Schema_SimpleType*>(record);
    }
    Schema_SimpleType* makeType(std::vector<const Schema_SimpleType*> members)
    {
        auto* type = kit.make<Schema_SimpleType>();
        type->memberCount = static_cast<uint32_t>(members.size());
        type->members = kit.array<Schema_SimpleType>(std::move(members));
        return type;
    }
    Schema_SimpleType* restrict(const Schema_SimpleType* base, std::vector<Schema_Facet> facets)
    {
        Schema_SimpleType* type = makeType({base});
        facets_.push_back(std::move(facets));
        type->facets = facets_.back().data();
        type->facetCount = static_cast<uint32_t>(facets_.back().size());
        return type;
    }
    // The detail of the verdict on a value, "valid", or "failed".
    std::string check(const Schema_SimpleType* type, const std::string& value)
    {
        SchemaKit one;
        one.add(one.simpleElement("v", type));
        uint32_t status = XML_RET_OK;
        const Schema_ValidateResult result =
            one.validate(value.empty() ? "<v/>" : "<v>" + value + "</v>", &status);
        if (status != XML_RET_OK) return "failed";
        return result.code == SCHEMA_VALID ? "valid" : result.detail;
    }

    SchemaKit kit;

private:
    std::deque<std::vector<Schema_Facet>> facets_;
};

TEST_F(SimpleType, RestrictionsAskTheBaseFirst)
{
    const Schema_SimpleType* small = restrict(
        builtin(Schema_BLDIN_int()), {{"100", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_INT}});
    const Schema_SimpleType* even =
        restrict(small, {{"[02468]$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_INT}});
    EXPECT_EQ(check(even, "42"), "valid");
    EXPECT_EQ(check(even, "43"), "The value does not match the regular expression.");
    EXPECT_EQ(check(even, "143"), "The value must be less than or equal to 100.");
    EXPECT_EQ(check(even, "x"), "x is an invalid value of int type value.");
    EXPECT_EQ(check(even, ""), "int cannot be empty.");
}

TEST_F(SimpleType, OneEnumerationAndEveryOtherFacetMustHold)
{
    const Schema_SimpleType* type =
        restrict(builtin(Schema_BLDIN_string()),
                 {{"up", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
                  {"5", SCHEMA_FACET_MAX_LENGTH, SCHEMA_BUILTIN_STRING},
                  {"down", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING},
                  {"testing", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING}});
    EXPECT_EQ(check(type, "up"), "valid");
    EXPECT_EQ(check(type, "down"), "valid");
    EXPECT_EQ(check(type, "left"), "The value does not match the enumeration.");
    EXPECT_EQ(check(type, "testing"), "The length must be less than or equal to 5.");
    EXPECT_EQ(check(type, ""), "The value does not match the enumeration.");
}

TEST_F(SimpleType, UnionsTryTheirMembersInOrder)
{
    const Schema_SimpleType* word =
        restrict(builtin(Schema_BLDIN_string()),
                 {{"auto", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_STRING}});
    const Schema_SimpleType* inner = makeType({builtin(Schema_BLDIN_boolean()), word});
    Schema_SimpleType* type = makeType({builtin(Schema_BLDIN_byte()), inner});
    type->kind = SCHEMA_BUILTIN_BYTE;  // a union all the same
    EXPECT_EQ(check(type, "7"), "valid");
    EXPECT_EQ(check(type, "true"), "valid");
    EXPECT_EQ(check(type, "auto"), "valid");
    EXPECT_EQ(check(type, "manual"), "manual does not match any member of union");
    EXPECT_EQ(check(type, ""), " does not match any member of union");
    const Schema_SimpleType* limited =
        restrict(type, {{"2", SCHEMA_FACET_LENGTH, SCHEMA_BUILTIN_STRING}});
    EXPECT_EQ(check(limited, "12"), "valid");
    EXPECT_EQ(check(limited, "7"), "The length must be equal to 2.");
    EXPECT_EQ(check(limited, "no"), "no does not match any member of union");
}

TEST_F(SimpleType, NetworkTypesAreFoundByTheirName)
{
    Schema_SimpleType* ports = kit.make<Schema_SimpleType>();
    ports->name = "_PortRange";
    EXPECT_EQ(check(ports, "80,443"), "valid");
    EXPECT_EQ(check(ports, "0"), "Invalid PortRange");
    EXPECT_EQ(check(ports, ""), "Invalid PortRange");
    ports->namespaceName = "urn:net";
    EXPECT_EQ(check(ports, "80"), "failed") << "another namespace: a restriction without a base";
    ASSERT_EQ(Schema_ReplaceInnerTypeNS("_PortRange", nullptr, "urn:net"), XML_RET_OK);
    EXPECT_EQ(check(ports, "80"), "valid");
    ASSERT_EQ(Schema_ReplaceInnerTypeNS("_PortRange", "urn:net", nullptr), XML_RET_OK);
    const Schema_SimpleType* low = [&] {
        ports->namespaceName = nullptr;
        return restrict(ports, {{"2", SCHEMA_FACET_MAX_LENGTH, SCHEMA_BUILTIN_STRING}});
    }();
    EXPECT_EQ(check(low, "80"), "valid");
    EXPECT_EQ(check(low, "443"), "The length must be less than or equal to 2.");
}

TEST_F(SimpleType, KindsWithoutARuleRefuseAndUnknownOnesFail)
{
    Schema_SimpleType* type = kit.make<Schema_SimpleType>();
    type->kind = SCHEMA_BUILTIN_DECIMAL;
    EXPECT_EQ(check(type, "1.5"), "1.5 is an invalid value of decimal type value.");
    EXPECT_EQ(check(type, ""), "decimal cannot be empty.");
    type->kind = SCHEMA_BUILTIN_ANY_SIMPLE_TYPE;
    EXPECT_EQ(check(type, "anything"), "valid");
    EXPECT_EQ(check(type, ""), "valid");
    type->kind = 47;
    EXPECT_EQ(check(type, "x"), "x is an invalid value of  type value.");
    for (const Schema_BuiltinKind kind : {48u, 1000u, UINT32_MAX}) {
        type->kind = kind;
        EXPECT_EQ(check(type, "x"), "failed") << kind;
    }
}

TEST_F(SimpleType, TheBaseCountsAlsoWithoutACount)
{
    Schema_SimpleType* type = restrict(builtin(Schema_BLDIN_int()),
                                       {{"10", SCHEMA_FACET_MAX_INCLUSIVE, SCHEMA_BUILTIN_INT}});
    type->memberCount = 0;
    EXPECT_EQ(check(type, "10"), "valid");
    EXPECT_EQ(check(type, "11"), "The value must be less than or equal to 10.");
}

// However many values are checked, what a check needs is given back.
TEST_F(SimpleType, AChecksMemoryIsGivenBack)
{
    const Schema_SimpleType* plain = restrict(
        builtin(Schema_BLDIN_int()), {{"2", SCHEMA_FACET_TOTAL_DIGITS, SCHEMA_BUILTIN_INT}});
    const Schema_SimpleType* choice = makeType({builtin(Schema_BLDIN_boolean()), plain});
    netxml::InlineChunkStack<1024> memory;
    netxml::InlineChunkStack<1024> kept;
    netxml::SimpleValue values{memory, kept};
    const netxml::ChunkStack::Mark before = memory.mark();
    using Outcome = netxml::SimpleValue::Outcome;
    for (const Schema_SimpleType* type : {plain, choice}) {
        for (const char* value : {"12", "123", "x", "true"}) {
            const bool valid = values.check(*type, value) == Outcome::Valid;
            EXPECT_EQ(valid, check(type, value) == "valid") << value;
            EXPECT_EQ(memory.mark().chunk, before.chunk);
            EXPECT_EQ(memory.mark().cursor, before.cursor) << value;
        }
    }
}

TEST_F(SimpleType, BrokenOnesAreNoVerdict)
{
    Schema_SimpleType* noFacets = restrict(builtin(Schema_BLDIN_int()), {});
    noFacets->facets = nullptr;
    noFacets->facetCount = 1;
    EXPECT_EQ(check(noFacets, "1"), "failed");
    Schema_SimpleType* noBase = kit.make<Schema_SimpleType>();
    EXPECT_EQ(check(noBase, "x"), "failed");
    EXPECT_EQ(check(makeType({nullptr}), "x"), "failed");
    EXPECT_EQ(check(makeType({builtin(Schema_BLDIN_byte()), nullptr}), "x"), "failed");
    Schema_SimpleType* self = kit.make<Schema_SimpleType>();
    self->memberCount = 1;
    self->members = kit.array<Schema_SimpleType>({self});
    EXPECT_EQ(check(self, "x"), "failed");
    Schema_SimpleType* circle = kit.make<Schema_SimpleType>();
    circle->memberCount = 2;
    circle->members =
        kit.array<Schema_SimpleType>({builtin(Schema_BLDIN_byte()), restrict(circle, {})});
    EXPECT_EQ(check(circle, "x"), "failed");
    EXPECT_EQ(check(circle, "1"), "valid") << "a member that accepts ends the search";
}

}  // namespace
