// The records of the built-in types: where they lie, what they hold, and how they get into a root.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/failing_heap.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Record {
    void* (*accessor)();
    const char* name;
    uint32_t kind;
};

// In the order of registration. Kept: `language` has the kind of NOTATION.
// clang-format off
constexpr Record kRecords[] = {
    {Schema_BLDIN_anySimpleType,      "anySimpleType",      1},
    {Schema_BLDIN_byte,               "byte",               3},
    {Schema_BLDIN_short,              "short",              4},
    {Schema_BLDIN_unsignedByte,       "unsignedByte",       5},
    {Schema_BLDIN_unsignedShort,      "unsignedShort",      6},
    {Schema_BLDIN_int,                "int",                7},
    {Schema_BLDIN_long,               "long",               8},
    {Schema_BLDIN_unsignedInt,        "unsignedInt",        9},
    {Schema_BLDIN_unsignedLong,       "unsignedLong",       10},
    {Schema_BLDIN_integer,            "integer",            11},
    {Schema_BLDIN_positiveInteger,    "positiveInteger",    12},
    {Schema_BLDIN_nonPositiveInteger, "nonPositiveInteger", 13},
    {Schema_BLDIN_negativeInteger,    "negativeInteger",    14},
    {Schema_BLDIN_nonNegativeInteger, "nonNegativeInteger", 15},
    {Schema_BLDIN_duration,           "duration",           19},
    {Schema_BLDIN_dateTime,           "dateTime",           20},
    {Schema_BLDIN_date,               "date",               21},
    {Schema_BLDIN_time,               "time",               22},
    {Schema_BLDIN_gYear,              "gYear",              23},
    {Schema_BLDIN_gMonth,             "gMonth",             24},
    {Schema_BLDIN_gDay,               "gDay",               25},
    {Schema_BLDIN_gYearMonth,         "gYearMonth",         26},
    {Schema_BLDIN_gMonthDay,          "gMonthDay",          27},
    {Schema_BLDIN_string,             "string",             28},
    {Schema_BLDIN_boolean,            "boolean",            29},
    {Schema_BLDIN_hexBinary,          "hexBinary",          30},
    {Schema_BLDIN_base64Binary,       "base64Binary",       31},
    {Schema_BLDIN_anyURI,             "anyURI",             32},
    {Schema_BLDIN_QName,              "QName",              33},
    {Schema_BLDIN_language,           "language",           34},
};
// clang-format on
constexpr std::size_t kRecordCount = std::size(kRecords);
static_assert(kRecordCount == 30);
constexpr uint64_t kStatusCount = kRecordCount + 1;  // of the simple types and of anyType

template <typename T>
bool allZero(const T& record)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(&record);
    return std::all_of(bytes, bytes + sizeof record, [](unsigned char byte) { return byte == 0; });
}

const Schema_SimpleType& simple(const Record& record)
{
    return *static_cast<const Schema_SimpleType*>(record.accessor());
}

const Schema_ComplexType& anyType()
{
    return *static_cast<const Schema_ComplexType*>(Schema_BLDIN_anyType());
}

// Read before main() runs, so that no test can have filled the records.
struct BeforeTheFirstRoot {
    std::vector<const void*> addresses;
    bool zero = true;

    BeforeTheFirstRoot()
    {
        for (const Record& record : kRecords) {
            addresses.push_back(record.accessor());
            zero = zero && allZero(simple(record));
        }
        addresses.push_back(Schema_BLDIN_anyType());
        zero = zero && allZero(anyType());
    }
};
const BeforeTheFirstRoot kBefore;

void expectFilled()
{
    for (const Record& record : kRecords) {
        const Schema_SimpleType& type = simple(record);
        EXPECT_STREQ(type.name, record.name);
        EXPECT_STREQ(type.namespaceName, "http://www.w3.org/2001/XMLSchema");
        EXPECT_EQ(type.kind, record.kind) << record.name;
        EXPECT_EQ(type.members, nullptr);
        EXPECT_EQ(type.facets, nullptr);
        EXPECT_EQ(type.facetCount, 0u);
        EXPECT_EQ(type.memberCount, 0u);
        EXPECT_EQ(type.flags, 0u);
    }
    Schema_ComplexType any;
    std::memcpy(&any, &anyType(), sizeof any);
    EXPECT_STREQ(any.name, "anyType");
    EXPECT_STREQ(any.namespaceName, "http://www.w3.org/2001/XMLSchema");
    any.name = nullptr;
    any.namespaceName = nullptr;
    EXPECT_TRUE(allZero(any)) << "everything else is zero";
}

void expectSameAddresses()
{
    for (std::size_t i = 0; i < kRecordCount; ++i)
        EXPECT_EQ(kRecords[i].accessor(), kBefore.addresses[i]) << kRecords[i].name;
    EXPECT_EQ(Schema_BLDIN_anyType(), kBefore.addresses[kRecordCount]);
}

// This test is the first: each runs in a process of its own under ctest, and when all run in one,
// the records have not been filled by a registration that went well.
TEST(BuiltinRecords, AreFilledEvenWhenRegistrationFails)
{
    Schema_Root root;
    {
        const FailingHeap heap{0};
        EXPECT_NE(Schema_InitRoot(&root), XML_RET_OK);
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
    }
    expectFilled();
    Schema_ExitRoot(&root);
}

TEST(BuiltinRecords, AreZeroBeforeTheFirstRoot)
{
    EXPECT_TRUE(kBefore.zero);
}

TEST(BuiltinRecords, HaveOneAddressEach)
{
    std::vector<const void*> addresses = kBefore.addresses;
    std::sort(addresses.begin(), addresses.end());
    EXPECT_EQ(std::adjacent_find(addresses.begin(), addresses.end()), addresses.end());
    EXPECT_EQ(addresses.size(), kStatusCount);

    Schema_Root first;
    Schema_Root second;
    expectSameAddresses();
    EXPECT_EQ(Schema_InitRoot(&first), XML_RET_OK);
    expectSameAddresses();
    EXPECT_EQ(Schema_InitRoot(&second), XML_RET_OK);
    expectSameAddresses();
    expectFilled();
    EXPECT_NE(first.simpleTypes.items, second.simpleTypes.items);
    Schema_ExitRoot(&first);
    expectFilled();
    Schema_ExitRoot(&second);
    expectFilled();
    expectSameAddresses();
}

TEST(BuiltinRecords, AreRegisteredInOrder)
{
    Schema_Root root{};
    EXPECT_EQ(SchemaReg_xml_schema_buildin(&root), 0u);
    ASSERT_EQ(root.simpleTypes.count, kRecordCount);
    EXPECT_EQ(root.simpleTypes.capacity, 32u);
    for (std::size_t i = 0; i < kRecordCount; ++i)
        EXPECT_EQ(root.simpleTypes.items[i], kRecords[i].accessor()) << kRecords[i].name;
    ASSERT_EQ(root.complexTypes.count, 1u);
    EXPECT_EQ(root.complexTypes.items[0], Schema_BLDIN_anyType());
    EXPECT_EQ(root.attributes.count + root.elements.count + root.reserved.count +
                  root.attributeGroups.count,
              0u);
    SchemaDereg_xml_schema_buildin(&root);
}

TEST(BuiltinRecords, TwiceRegisteredStandTwice)
{
    const long before = heapLiveBlocks();
    Schema_Root root{};
    EXPECT_EQ(SchemaReg_xml_schema_buildin(&root), 0u);
    EXPECT_EQ(SchemaReg_xml_schema_buildin(&root), 0u);
    EXPECT_EQ(root.simpleTypes.count, 2 * kRecordCount);
    EXPECT_EQ(root.complexTypes.count, 2u);
    SchemaDereg_xml_schema_buildin(&root);
    EXPECT_EQ(root.simpleTypes.count, kRecordCount);
    SchemaDereg_xml_schema_buildin(&root);
    EXPECT_EQ(root.simpleTypes.count, 0u);
    EXPECT_EQ(heapLiveBlocks(), before);
}

TEST(BuiltinRecords, AreTakenOutBesideOthers)
{
    const long before = heapLiveBlocks();
    static const Schema_SimpleType own{};
    const Schema_Object object{&own, SCHEMA_KIND_SIMPLE_TYPE};
    Schema_Root root;
    EXPECT_EQ(Schema_InitRoot(&root), XML_RET_OK);
    EXPECT_EQ(Schema_RegTopObject(&root, &object), XML_RET_OK);
    Schema_ExitRoot(&root);
    ASSERT_EQ(root.simpleTypes.count, 1u);
    EXPECT_EQ(root.simpleTypes.items[0], &own);
    EXPECT_EQ(root.complexTypes.items, nullptr) << "an emptied list holds no memory";
    Schema_DeregTopObject(&root, &object);
    EXPECT_EQ(root.simpleTypes.items, nullptr);
    SchemaDereg_xml_schema_buildin(&root);  // nothing there any more
    EXPECT_EQ(root.simpleTypes.count, 0u);
    EXPECT_EQ(heapLiveBlocks(), before);
}

struct FailureCase {
    const char* why;
    std::size_t allowed;
    std::size_t failures;
    uint64_t failed;
    uint32_t simpleTypes;
    uint32_t complexTypes;
};

// Each list takes its memory with its first record, so one that cannot tries again with the next.
// clang-format off
constexpr FailureCase kFailures[] = {
    // why                                 allowed failures              failed        simple complex
    {"no memory at all",                   0,      FailingHeap::kForever, kStatusCount, 0,    0},
    {"none for the first record",          0,      1,                     1,            29,   1},
    {"none for the first ten",             0,      10,                    10,           20,   1},
    {"none for any simple type",           0,      30,                    30,           0,    1},
    {"none for anyType",                   1,      FailingHeap::kForever, 1,            30,   0},
    {"enough",                             2,      FailingHeap::kForever, 0,            30,   1},
};
// clang-format on

// The sum of the statuses needs more than 32 bits, and a failure ends nothing.
TEST(BuiltinRecords, TheSumOfTheStatuses)
{
    for (const FailureCase& c : kFailures) {
        SCOPED_TRACE(c.why);
        const long before = heapLiveBlocks();
        Schema_Root root{};
        {
            const FailingHeap heap{c.allowed, c.failures};
            EXPECT_EQ(SchemaReg_xml_schema_buildin(&root), c.failed * XML_RET_FAIL);
        }
        EXPECT_EQ(root.simpleTypes.count, c.simpleTypes);
        EXPECT_EQ(root.complexTypes.count, c.complexTypes);
        SchemaDereg_xml_schema_buildin(&root);
        EXPECT_EQ(heapLiveBlocks(), before);
        {
            const FailingHeap heap{c.allowed, c.failures};
            EXPECT_EQ(Schema_InitRoot(&root), c.failed * XML_RET_FAIL) << "passed on as it is";
        }
        Schema_ExitRoot(&root);
        EXPECT_EQ(heapLiveBlocks(), before);
    }
}

TEST(BuiltinRecords, WithoutARootEveryStatusIsAFailure)
{
    EXPECT_EQ(SchemaReg_xml_schema_buildin(nullptr), kStatusCount * XML_RET_FAIL);
    SchemaDereg_xml_schema_buildin(nullptr);
    EXPECT_EQ(Schema_InitRoot(nullptr), XML_RET_FAIL);
    Schema_ExitRoot(nullptr);
}

// A thread sanitizer would see a write to a record that another thread reads.
TEST(BuiltinRecords, AreReadWhileOtherRootsComeAndGo)
{
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 200; ++i) {
                Schema_Root root;
                EXPECT_EQ(Schema_InitRoot(&root), XML_RET_OK);
                for (const Record& record : kRecords) EXPECT_EQ(simple(record).kind, record.kind);
                EXPECT_STREQ(anyType().name, "anyType");
                Schema_ExitRoot(&root);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
}

// What the record is called is not always what its sentences say.
TEST(BuiltinRecords, NamesInSentences)
{
    Schema_Root root;
    ASSERT_EQ(Schema_InitRoot(&root), XML_RET_OK);
    for (const Record& record : kRecords) {
        std::string printed = record.name;
        if (record.kind == 34) printed = "NOTATION";
        if (record.kind == 20) printed = "datetime";
        const Sentence sentence{512};
        const bool valid =
            Schema_CheckBaseType(&simple(record), "\x01", 512, sentence.buffer()) == 1;
        EXPECT_EQ(valid, record.kind == 1 || record.kind == 28) << record.name;
        EXPECT_EQ(sentence.text(), valid
                                       ? "(untouched)"
                                       : "\x01 is an invalid value of " + printed + " type value.");
    }
    const Sentence sentence{512};
    EXPECT_EQ(Schema_CheckBaseType(static_cast<const Schema_SimpleType*>(Schema_BLDIN_language()),
                                   "", 512, sentence.buffer()),
              0u);
    EXPECT_EQ(sentence.text(), "NOTATION cannot be empty.");
    Schema_ExitRoot(&root);
}

}  // namespace
