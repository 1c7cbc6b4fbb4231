// The records of the built-in types: static, shared by all roots, filled once.
#include "netxml/schema.h"

#include <atomic>
#include <sched.h>

// Every built-in simple type that has a record, in the order of registration, with its kind.
// Kept: `language` carries the kind of NOTATION.
// clang-format off
#define NETXML_BUILTIN_RECORDS(row)                                                              \
    row(anySimpleType, 1)       row(byte, 3)              row(short, 4)                          \
    row(unsignedByte, 5)        row(unsignedShort, 6)     row(int, 7)                            \
    row(long, 8)                row(unsignedInt, 9)       row(unsignedLong, 10)                  \
    row(integer, 11)            row(positiveInteger, 12)  row(nonPositiveInteger, 13)            \
    row(negativeInteger, 14)    row(nonNegativeInteger, 15) row(duration, 19)                    \
    row(dateTime, 20)           row(date, 21)             row(time, 22)                          \
    row(gYear, 23)              row(gMonth, 24)           row(gDay, 25)                          \
    row(gYearMonth, 26)         row(gMonthDay, 27)        row(string, 28)                        \
    row(boolean, 29)            row(hexBinary, 30)        row(base64Binary, 31)                  \
    row(anyURI, 32)             row(QName, 33)            row(language, 34)
// clang-format on

namespace netxml {
namespace {

struct RecordRow {
    const char* name;
    Schema_BuiltinKind kind;
};

#define NETXML_ROW(name, kind) {#name, kind},
constexpr RecordRow kRecords[] = {NETXML_BUILTIN_RECORDS(NETXML_ROW)};
#undef NETXML_ROW

#define NETXML_INDEX(name, kind) kIndexOf_##name,
enum RecordIndex : std::size_t { NETXML_BUILTIN_RECORDS(NETXML_INDEX) kRecordCount };
#undef NETXML_INDEX
static_assert(kRecordCount == 30);

Schema_SimpleType simpleTypes[kRecordCount];
Schema_ComplexType anyType;

void fillRecords() noexcept
{
    for (std::size_t i = 0; i < kRecordCount; ++i) {
        simpleTypes[i].name = kRecords[i].name;
        simpleTypes[i].namespaceName = XML_NAMESPACE_SCHEMA;
        simpleTypes[i].kind = kRecords[i].kind;
    }
    anyType.name = "anyType";
    anyType.namespaceName = XML_NAMESPACE_SCHEMA;
}

enum FillState { kZero, kFilling, kFilled };
std::atomic<int> fillState{kZero};

// The first caller fills; one that comes meanwhile waits until the records are whole. After that
// nobody writes to them, so registering beside a validation in another thread is no race.
void fillRecordsOnce() noexcept
{
    int state = fillState.load(std::memory_order_acquire);
    if (state == kZero && fillState.compare_exchange_strong(state, kFilling)) {
        fillRecords();
        fillState.store(kFilled, std::memory_order_release);
        return;
    }
    while (fillState.load(std::memory_order_acquire) != kFilled) sched_yield();
}

template <class Action>
void forEachRecord(Action action)
{
    for (const Schema_SimpleType& type : simpleTypes)
        action(Schema_Object{&type, SCHEMA_KIND_SIMPLE_TYPE});
    action(Schema_Object{&anyType, SCHEMA_KIND_COMPLEX_TYPE});
}

}  // namespace
}  // namespace netxml

using namespace netxml;

uint64_t SchemaReg_xml_schema_buildin(Schema_Root* root)
{
    fillRecordsOnce();
    uint64_t sum = 0;
    forEachRecord([&](const Schema_Object& object) { sum += Schema_RegTopObject(root, &object); });
    return sum;
}

void SchemaDereg_xml_schema_buildin(Schema_Root* root)
{
    forEachRecord([&](const Schema_Object& object) { Schema_DeregTopObject(root, &object); });
}

using Record = void*;

#define NETXML_ACCESSOR(name, kind)                                                                \
    Record Schema_BLDIN_##name(void)                                                               \
    {                                                                                              \
        return &simpleTypes[kIndexOf_##name];                                                      \
    }
NETXML_BUILTIN_RECORDS(NETXML_ACCESSOR)
#undef NETXML_ACCESSOR

void* Schema_BLDIN_anyType(void)
{
    return &anyType;
}
