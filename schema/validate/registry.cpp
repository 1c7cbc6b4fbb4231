// The registry of top-level declarations.
#include "netxml/schema.h"
#include "support/heap.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace netxml {
namespace {

constexpr std::uint32_t kFirstCapacity = 32;

struct ListOfKind {
    Schema_ObjectKind kind;
    Schema_ObjectList Schema_Root::*list;
};

constexpr ListOfKind kLists[] = {
    {SCHEMA_KIND_SIMPLE_TYPE, &Schema_Root::simpleTypes},
    {SCHEMA_KIND_ATTRIBUTE, &Schema_Root::attributes},
    {SCHEMA_KIND_ELEMENT, &Schema_Root::elements},
    {SCHEMA_KIND_COMPLEX_TYPE, &Schema_Root::complexTypes},
    {SCHEMA_KIND_ATTRIBUTE_GROUP, &Schema_Root::attributeGroups},
};

// The list that takes records of the object's kind, or nullptr.
Schema_ObjectList* listFor(Schema_Root* root, const Schema_Object* object) noexcept
{
    if (!root || !object) return nullptr;
    for (const ListOfKind& row : kLists) {
        if (row.kind == object->kind) return &(root->*row.list);
    }
    return nullptr;
}

bool resize(Schema_ObjectList& list, std::uint32_t capacity) noexcept
{
    const std::size_t size = std::size_t{capacity} * sizeof(void*);
    void* items = list.items ? heap::resize(list.items, size) : heap::allocateZeroed(size);
    if (!items) return false;
    list.items = static_cast<const void**>(items);
    list.capacity = capacity;
    return true;
}

bool hasRoom(Schema_ObjectList& list) noexcept
{
    if (list.count < list.capacity) return true;
    constexpr std::size_t kMost = std::min<std::size_t>(UINT32_MAX, SIZE_MAX / sizeof(void*)) / 2;
    if (list.capacity == 0) return resize(list, kFirstCapacity);
    return std::size_t{list.capacity} <= kMost && resize(list, list.capacity * 2);
}

void releaseIfEmpty(Schema_ObjectList& list) noexcept
{
    if (list.count != 0) return;
    heap::release(list.items);
    list.items = nullptr;
    list.capacity = 0;
}

}  // namespace
}  // namespace netxml

uint32_t Schema_RegTopObject(Schema_Root* root, const Schema_Object* object)
{
    Schema_ObjectList* list = netxml::listFor(root, object);
    if (!list || !netxml::hasRoom(*list)) return XML_RET_FAIL;
    list->items[list->count++] = object->def;
    return XML_RET_OK;
}

void Schema_DeregTopObject(Schema_Root* root, const Schema_Object* object)
{
    Schema_ObjectList* list = netxml::listFor(root, object);
    if (!list) return;
    std::uint32_t slot = 0;
    while (slot < list->count && list->items[slot] != object->def) ++slot;
    if (slot < list->count) {
        list->items[slot] = list->items[--list->count];
        list->items[list->count] = nullptr;
    }
    netxml::releaseIfEmpty(*list);
}
