// Plans of simple types: which types have one, and that what a plan says is what the rules say.
#include "schema/validate/value_plan.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/plain_validator.hpp"
#include "tests/support/schema_kit.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using namespace netxml;

const Schema_SimpleType* builtin(void* record)
{
    return static_cast<const Schema_SimpleType*>(record);
}

// A restriction that owns its arrays.
struct Restriction {
    Restriction(const Schema_SimpleType* base, std::vector<Schema_Facet> list)
        : bases{base}, facets{std::move(list)}
    {
        type.members = bases;
        type.memberCount = 1;
        type.facets = facets.data();
        type.facetCount = static_cast<std::uint32_t>(facets.size());
    }
    Restriction(const Restriction&) = delete;
    Restriction& operator=(const Restriction&) = delete;

    const Schema_SimpleType* bases[1];
    std::vector<Schema_Facet> facets;
    Schema_SimpleType type{};
};

class Plans {
public:
    const netxml::ValuePlan* of(const Schema_SimpleType& type) { return plans_.of(type); }

private:
    InlineChunkStack<256> kept_;
    PatternCache patterns_;
    ValuePlans plans_{kept_, patterns_};
};

struct PlanCase {
    const char* why;
    void* (*base)();
    std::vector<Schema_Facet> facets;
    std::vector<const char*> held;    // the plan says so at once
    std::vector<const char*> others;  // not, whether they are valid or not
};

constexpr Schema_BuiltinKind kString = SCHEMA_BUILTIN_STRING;
constexpr Schema_BuiltinKind kByte = SCHEMA_BUILTIN_UNSIGNED_BYTE;

// clang-format off
const PlanCase kPlanned[] = {
    {"any text", Schema_BLDIN_string, {}, {"", "x"}, {}},
    {"any text of any type", Schema_BLDIN_anySimpleType, {}, {"", "x"}, {}},
    {"a rule, and no empty text", Schema_BLDIN_boolean, {}, {"true", "0"}, {"", "yes"}},
    {"an empty text that a rule does not see", Schema_BLDIN_base64Binary, {}, {"YWJj"}, {"", "?"}},
    {"digits", Schema_BLDIN_unsignedByte, {}, {"0", "255", "007"}, {"", "256", "-0", "+1", "1x"}},
    {"a sign is for the rules", Schema_BLDIN_byte, {}, {"0", "127"}, {"-1", "128"}},
    {"nothing above 0", Schema_BLDIN_nonPositiveInteger, {}, {"0", "00"}, {"1", "-1"}},
    {"nothing from 0 on", Schema_BLDIN_negativeInteger, {}, {}, {"0", "1", "-1"}},
    {"from 1 on", Schema_BLDIN_positiveInteger, {}, {"1", "999999999999999999"},
     {"0", "1000000000000000000"}},
    {"beyond 18 digits", Schema_BLDIN_unsignedLong, {}, {"999999999999999999"},
     {"1000000000000000000", "18446744073709551615"}},
    {"lengths in bytes", Schema_BLDIN_string,
     {{"2", SCHEMA_FACET_MIN_LENGTH, kString}, {"3", SCHEMA_FACET_MAX_LENGTH, kString}},
     {"ab", "abc", "\xd6\xd0"}, {"", "a", "abcd", "\xd6\xd0\xd6\xd0"}},
    {"one length", Schema_BLDIN_string, {{"2", SCHEMA_FACET_LENGTH, kString}}, {"ab"}, {"a", "abc"}},
    {"bounds that count", Schema_BLDIN_unsignedByte,
     {{"5", SCHEMA_FACET_MIN_INCLUSIVE, kByte}, {"9", SCHEMA_FACET_MAX_INCLUSIVE, kByte}},
     {"5", "9", "09"}, {"4", "10"}},
    {"bounds that do not", Schema_BLDIN_unsignedByte,
     {{"5", SCHEMA_FACET_MIN_EXCLUSIVE, kByte}, {"9", SCHEMA_FACET_MAX_EXCLUSIVE, kByte}},
     {"6", "8"}, {"5", "9"}},
    {"a bound on a text", Schema_BLDIN_string, {{"5", SCHEMA_FACET_MIN_INCLUSIVE, kByte}},
     {"5"}, {"4", "x"}},
    {"a pattern", Schema_BLDIN_string, {{"^a+$", SCHEMA_FACET_PATTERN, kString}}, {"aa"}, {"", "b"}},
    {"all patterns", Schema_BLDIN_string,
     {{"a", SCHEMA_FACET_PATTERN, kString}, {"b", SCHEMA_FACET_PATTERN, kString}},
     {"ab", "ba"}, {"a", "b"}},
    {"one of the words", Schema_BLDIN_string,
     {{"up", SCHEMA_FACET_ENUMERATION, kString}, {"down", SCHEMA_FACET_ENUMERATION, kString}},
     {"up", "down"}, {"", "u", "upp", "dow"}},
    {"one of the numbers, as it stands", Schema_BLDIN_unsignedByte,
     {{"5", SCHEMA_FACET_ENUMERATION, kByte}}, {"5"}, {"05", "6"}},
    {"an empty word", Schema_BLDIN_string, {{nullptr, SCHEMA_FACET_ENUMERATION, kString}}, {""}, {"a"}},
    {"fraction digits and what is no facet", Schema_BLDIN_string,
     {{"2", SCHEMA_FACET_FRACTION_DIGITS, kString}, {"?", 99, kString}}, {"", " "}, {}},
};

const PlanCase kUnplanned[] = {
    {"digits are counted", Schema_BLDIN_int, {{"2", SCHEMA_FACET_TOTAL_DIGITS, SCHEMA_BUILTIN_INT}}, {}, {}},
    {"durations are compared", Schema_BLDIN_duration,
     {{"P1Y0M0DT0H0M0S", SCHEMA_FACET_ENUMERATION, SCHEMA_BUILTIN_DURATION}}, {}, {}},
    {"a bound that is no number", Schema_BLDIN_int, {{"-5", SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_BUILTIN_INT}}, {}, {}},
    {"a bound of a date", Schema_BLDIN_date,
     {{"2024-05-06", SCHEMA_FACET_MIN_INCLUSIVE, SCHEMA_BUILTIN_DATE}}, {}, {}},
    {"a length that is no number", Schema_BLDIN_string, {{"-1", SCHEMA_FACET_MAX_LENGTH, kString}}, {}, {}},
};
// clang-format on

// The built-in records are filled while a root lives.
class ValuePlan : public testing::Test {
    SchemaKit kit_;
};

TEST_F(ValuePlan, SaysWhatIsSurelyValid)
{
    for (const PlanCase& row : kPlanned) {
        SCOPED_TRACE(row.why);
        const Restriction restriction{builtin(row.base()), row.facets};
        Plans plans;
        const netxml::ValuePlan* plan = plans.of(restriction.type);
        ASSERT_TRUE(plan);
        EXPECT_EQ(plans.of(restriction.type), plan) << "made once";
        for (const char* value : row.held) {
            EXPECT_TRUE(plan->holds(value)) << value;
            EXPECT_TRUE(plainAccepts(&restriction.type, value)) << value;
        }
        for (const char* value : row.others) EXPECT_FALSE(plan->holds(value)) << value;
    }
}

TEST_F(ValuePlan, LeavesWhatIsRareToTheRules)
{
    for (const PlanCase& row : kUnplanned) {
        const Restriction restriction{builtin(row.base()), row.facets};
        Plans plans;
        EXPECT_FALSE(plans.of(restriction.type)) << row.why;
        EXPECT_FALSE(plans.of(restriction.type)) << row.why;
    }
}

TEST_F(ValuePlan, BrokenTypesHaveNone)
{
    Schema_SimpleType nothing{};
    Restriction lacksBase{nullptr, {}};
    Restriction lacksFacets{builtin(Schema_BLDIN_string()), {}};
    lacksFacets.type.facetCount = 1;
    lacksFacets.type.facets = nullptr;
    Restriction circle{nullptr, {}};
    circle.bases[0] = &circle.type;
    Schema_SimpleType noRule{};
    noRule.kind = 16;
    Schema_SimpleType noKind{};
    noKind.kind = 99;
    Plans plans;
    const Schema_SimpleType* const broken[] = {&nothing,     &lacksBase.type, &lacksFacets.type,
                                               &circle.type, &noRule,         &noKind};
    for (const Schema_SimpleType* type : broken) EXPECT_FALSE(plans.of(*type));
}

TEST_F(ValuePlan, UnionsAndWhatRestrictsThem)
{
    const Restriction words{builtin(Schema_BLDIN_string()),
                            {{"auto", SCHEMA_FACET_ENUMERATION, kString}}};
    const Schema_SimpleType* members[] = {&words.type, builtin(Schema_BLDIN_unsignedByte())};
    Schema_SimpleType choice{};
    choice.members = members;
    choice.memberCount = 2;
    const Restriction shorter{&choice, {{"2", SCHEMA_FACET_MAX_LENGTH, kString}}};
    Plans plans;
    ASSERT_TRUE(plans.of(choice));
    for (const char* value : {"auto", "12", "255"}) EXPECT_TRUE(plans.of(choice)->holds(value));
    for (const char* value : {"", "aut", "256"}) EXPECT_FALSE(plans.of(choice)->holds(value));
    ASSERT_TRUE(plans.of(shorter.type));
    EXPECT_TRUE(plans.of(shorter.type)->holds("12"));
    EXPECT_FALSE(plans.of(shorter.type)->holds("255"));
    EXPECT_FALSE(plans.of(shorter.type)->holds("auto"));

    const Schema_SimpleType* nested[] = {&choice, builtin(Schema_BLDIN_boolean())};
    Schema_SimpleType outer{};
    outer.members = nested;
    outer.memberCount = 2;
    EXPECT_FALSE(plans.of(outer)) << "a union in a union";
    outer.members = nullptr;
    Plans others;
    EXPECT_FALSE(others.of(outer));
}

TEST_F(ValuePlan, NetworkTypesByTheirHandler)
{
    Schema_SimpleType mask{};
    mask.name = "_Ipv4Mask";
    Plans plans;
    ASSERT_TRUE(plans.of(mask));
    EXPECT_TRUE(plans.of(mask)->holds("255.255.255.0"));
    EXPECT_FALSE(plans.of(mask)->holds("255.0.255.0"));
}

TEST_F(ValuePlan, SixteenLevelsOfBasesAtMost)
{
    std::vector<std::unique_ptr<Restriction>> chain;
    const Schema_SimpleType* base = builtin(Schema_BLDIN_string());
    Plans plans;
    for (int level = 1; level <= 17; ++level) {
        chain.push_back(std::make_unique<Restriction>(base, std::vector<Schema_Facet>{}));
        base = &chain.back()->type;
        EXPECT_EQ(plans.of(*base) != nullptr, level < 16) << level;
    }
}

// What many types share would be copied for each of them.
TEST_F(ValuePlan, AThousandPiecesAtMost)
{
    const Schema_Facet word{"up", SCHEMA_FACET_ENUMERATION, kString};
    const Restriction most{builtin(Schema_BLDIN_string()), std::vector<Schema_Facet>(1022, word)};
    const Restriction more{builtin(Schema_BLDIN_string()), std::vector<Schema_Facet>(1023, word)};
    Plans plans;
    EXPECT_TRUE(plans.of(most.type));
    EXPECT_FALSE(plans.of(more.type));
}

// Whatever the last piece is.
TEST_F(ValuePlan, NotOnePieceMore)
{
    const Schema_Facet pattern{"^a$", SCHEMA_FACET_PATTERN, kString};
    std::vector<Schema_Facet> facets(1023, pattern);
    const Restriction patterns{builtin(Schema_BLDIN_string()), facets};
    facets.push_back({"a", SCHEMA_FACET_ENUMERATION, kString});
    const Restriction words{builtin(Schema_BLDIN_string()), facets};
    const Restriction more{builtin(Schema_BLDIN_string()),
                           std::vector<Schema_Facet>(1024, pattern)};
    const std::vector<const Schema_SimpleType*> members(1024, builtin(Schema_BLDIN_boolean()));
    Schema_SimpleType choice{};
    choice.members = members.data();
    choice.memberCount = 1023;
    Schema_SimpleType larger = choice;
    larger.memberCount = 1024;
    Plans plans;
    EXPECT_TRUE(plans.of(patterns.type));
    EXPECT_FALSE(plans.of(words.type));
    EXPECT_FALSE(plans.of(more.type));
    EXPECT_TRUE(plans.of(choice));
    EXPECT_FALSE(plans.of(larger));
}

TEST_F(ValuePlan, WithoutMemoryOnlyTheFirstAreKept)
{
    std::vector<std::unique_ptr<Restriction>> types;
    for (int i = 0; i < 40; ++i)
        types.push_back(std::make_unique<Restriction>(builtin(Schema_BLDIN_unsignedByte()),
                                                      std::vector<Schema_Facet>{}));
    std::vector<std::string> texts;
    std::vector<Schema_Facet> facets;
    for (int i = 0; i < 40; ++i) texts.push_back("^[[:alpha:]]{" + std::to_string(i) + "}");
    for (const std::string& text : texts)
        facets.push_back({text.c_str(), SCHEMA_FACET_PATTERN, kString});
    const Restriction patterns{builtin(Schema_BLDIN_string()), facets};
    class {
    public:
        netxml::InlineChunkStack<16384> kept;
        PatternCache patterns;
        ValuePlans plans{kept, patterns};
    } large;
    const FailingHeap heap{0};
    std::size_t made = 0;
    for (const auto& type : types) made += large.plans.of(type->type) != nullptr;
    EXPECT_EQ(made, 24u);
    decltype(large) others;
    EXPECT_FALSE(others.plans.of(patterns.type)) << "no room for a pattern";
}

TEST_F(ValuePlan, WithoutMemoryThereIsNone)
{
    const Restriction restriction{
        builtin(Schema_BLDIN_string()),
        std::vector<Schema_Facet>(100, {"up", SCHEMA_FACET_ENUMERATION, kString})};
    const FailingHeap heap{0};
    Plans plans;
    EXPECT_FALSE(plans.of(restriction.type));
}

}  // namespace
