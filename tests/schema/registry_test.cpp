// Filling and emptying a root.
#include "netxml/schema.h"
#include "tests/support/failing_heap.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

constexpr Schema_ObjectKind kRegistered[] = {
    SCHEMA_KIND_SIMPLE_TYPE,  SCHEMA_KIND_ATTRIBUTE,       SCHEMA_KIND_ELEMENT,
    SCHEMA_KIND_COMPLEX_TYPE, SCHEMA_KIND_ATTRIBUTE_GROUP,
};

Schema_ObjectList& listOf(Schema_Root& root, Schema_ObjectKind kind)
{
    switch (kind) {
    case SCHEMA_KIND_SIMPLE_TYPE: return root.simpleTypes;
    case SCHEMA_KIND_ATTRIBUTE: return root.attributes;
    case SCHEMA_KIND_ELEMENT: return root.elements;
    case SCHEMA_KIND_COMPLEX_TYPE: return root.complexTypes;
    default: return root.attributeGroups;
    }
}

bool isUntouched(const Schema_ObjectList& list)
{
    return !list.items && list.capacity == 0 && list.count == 0;
}

TEST(InitRoot, ClearsSetsTheFormsAndRegistersTheBuiltIns)
{
    Schema_Root root;
    std::memset(&root, 0xAB, sizeof root);
    EXPECT_EQ(Schema_InitRoot(&root), XML_RET_OK);
    EXPECT_EQ(root.attributeFormDefault, SCHEMA_FORM_UNQUALIFIED);
    EXPECT_EQ(root.elementFormDefault, SCHEMA_FORM_QUALIFIED);
    EXPECT_EQ(root.simpleTypes.count, 30u);
    EXPECT_EQ(root.simpleTypes.capacity, 32u);
    EXPECT_EQ(root.complexTypes.count, 1u);
    EXPECT_TRUE(isUntouched(root.attributes) && isUntouched(root.elements) &&
                isUntouched(root.reserved) && isUntouched(root.attributeGroups));
    Schema_ExitRoot(&root);
    EXPECT_TRUE(isUntouched(root.simpleTypes) && isUntouched(root.complexTypes));
}

TEST(InitRoot, ToleratesNull)
{
    Schema_InitRoot(nullptr);
    Schema_ExitRoot(nullptr);
}

TEST(InitRoot, SumsUpWhatFailsAndCanBeReleased)
{
    for (std::size_t allowed = 0; allowed < 2; ++allowed) {
        Schema_Root root;
        FailingHeap heap{allowed};
        // The list of simple types takes the first block, that of complex types the second.
        const uint64_t failures = allowed == 0 ? 31 : 1;
        EXPECT_EQ(Schema_InitRoot(&root), failures * XML_RET_FAIL);
        EXPECT_EQ(root.simpleTypes.count, allowed == 0 ? 0u : 30u);
        Schema_ExitRoot(&root);
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
    }
}

TEST(RegTopObject, PutsEachKindIntoItsList)
{
    for (const Schema_ObjectKind kind : kRegistered) {
        SCOPED_TRACE(kind);
        Schema_Root root{};
        const int record = 0;
        const Schema_Object object{&record, kind};
        EXPECT_EQ(Schema_RegTopObject(&root, &object), XML_RET_OK);
        Schema_ObjectList& list = listOf(root, kind);
        ASSERT_EQ(list.count, 1u);
        EXPECT_EQ(list.items[0], &record);
        EXPECT_EQ(list.capacity, 32u);
        for (uint32_t slot = 1; slot < 32; ++slot) EXPECT_EQ(list.items[slot], nullptr);
        EXPECT_EQ(Schema_RegTopObject(&root, &object), XML_RET_OK) << "twice stands twice";
        EXPECT_EQ(list.count, 2u);
        Schema_DeregTopObject(&root, &object);
        EXPECT_EQ(list.count, 1u);
        Schema_DeregTopObject(&root, &object);
        EXPECT_TRUE(isUntouched(list));
    }
}

TEST(RegTopObject, RefusesOtherKindsAndNull)
{
    Schema_Root root{};
    for (Schema_ObjectKind kind = 0; kind < 64; ++kind) {
        const Schema_Object object{&root, kind};
        const bool known = kind == 5 || kind == 6 || kind == 9 || kind == 14 || kind == 29;
        if (!known) {
            EXPECT_EQ(Schema_RegTopObject(&root, &object), XML_RET_FAIL) << kind;
        }
        Schema_DeregTopObject(&root, &object);  // ignored
    }
    const Schema_Object object{&root, SCHEMA_KIND_ELEMENT};
    EXPECT_EQ(Schema_RegTopObject(nullptr, &object), XML_RET_FAIL);
    EXPECT_EQ(Schema_RegTopObject(&root, nullptr), XML_RET_FAIL);
    Schema_DeregTopObject(nullptr, &object);
    Schema_DeregTopObject(&root, nullptr);
    EXPECT_TRUE(isUntouched(root.elements));
}

TEST(RegTopObject, DoublesAtThe33rd)
{
    Schema_Root root{};
    std::vector<Schema_ElementDecl> elements(65);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Schema_Object object{&elements[i], SCHEMA_KIND_ELEMENT};
        EXPECT_EQ(Schema_RegTopObject(&root, &object), XML_RET_OK);
        EXPECT_EQ(root.elements.capacity, i < 32 ? 32u : i < 64 ? 64u : 128u) << i;
    }
    for (std::size_t i = 0; i < elements.size(); ++i)
        EXPECT_EQ(root.elements.items[i], &elements[i]);
    for (const Schema_ElementDecl& element : elements) {
        const Schema_Object object{&element, SCHEMA_KIND_ELEMENT};
        Schema_DeregTopObject(&root, &object);
    }
    EXPECT_TRUE(isUntouched(root.elements));
}

TEST(RegTopObject, LeavesTheListAsItWasWhenItCannotGrow)
{
    Schema_Root root{};
    std::vector<Schema_ElementDecl> elements(33);
    const Schema_Object last{&elements[32], SCHEMA_KIND_ELEMENT};
    {
        FailingHeap heap{0};
        EXPECT_EQ(Schema_RegTopObject(&root, &last), XML_RET_FAIL);
        EXPECT_TRUE(isUntouched(root.elements));
    }
    for (std::size_t i = 0; i < 32; ++i) {
        const Schema_Object object{&elements[i], SCHEMA_KIND_ELEMENT};
        ASSERT_EQ(Schema_RegTopObject(&root, &object), XML_RET_OK);
    }
    {
        FailingHeap heap{0};
        const void** items = root.elements.items;
        EXPECT_EQ(Schema_RegTopObject(&root, &last), XML_RET_FAIL);
        EXPECT_EQ(root.elements.items, items);
        EXPECT_EQ(root.elements.count, 32u);
        EXPECT_EQ(root.elements.capacity, 32u);
    }
    EXPECT_EQ(Schema_RegTopObject(&root, &last), XML_RET_OK);
    for (const Schema_ElementDecl& element : elements) {
        const Schema_Object object{&element, SCHEMA_KIND_ELEMENT};
        Schema_DeregTopObject(&root, &object);
    }
}

TEST(DeregTopObject, MovesTheLastIntoTheGap)
{
    Schema_Root root{};
    Schema_ElementDecl elements[4] = {};
    for (const Schema_ElementDecl& element : elements) {
        const Schema_Object object{&element, SCHEMA_KIND_ELEMENT};
        ASSERT_EQ(Schema_RegTopObject(&root, &object), XML_RET_OK);
    }
    const Schema_Object second{&elements[1], SCHEMA_KIND_ELEMENT};
    Schema_DeregTopObject(&root, &second);
    ASSERT_EQ(root.elements.count, 3u);
    EXPECT_EQ(root.elements.items[0], &elements[0]);
    EXPECT_EQ(root.elements.items[1], &elements[3]);
    EXPECT_EQ(root.elements.items[2], &elements[2]);
    EXPECT_EQ(root.elements.items[3], nullptr);
    Schema_DeregTopObject(&root, &second);
    EXPECT_EQ(root.elements.count, 3u) << "one that is not there changes nothing";
    for (const int i : {0, 2, 3}) {
        const Schema_Object object{&elements[i], SCHEMA_KIND_ELEMENT};
        Schema_DeregTopObject(&root, &object);
    }
    EXPECT_TRUE(isUntouched(root.elements));
    Schema_DeregTopObject(&root, &second);
    EXPECT_TRUE(isUntouched(root.elements)) << "nor does one from an empty list";
}

}  // namespace
