#include "schema/validate/attribute_set.hpp"

#include "support/text.hpp"

#include <bit>
#include <cstdint>

namespace netxml {
namespace {

std::size_t countAttributes(const XML_DOM_Node* element) noexcept
{
    std::size_t count = 0;
    for (const XML_DOM_Attr* attr = element->firstAttr; attr; attr = attr->next) ++count;
    return count;
}

bool isCalled(const AttributeSet::Item& item, const char* name, const char* namespaceName) noexcept
{
    return sameText(item.attr->name, name) && sameText(item.namespaceName(), namespaceName);
}

}  // namespace

bool AttributeSet::fill(const XML_DOM_Node* element, LazyHashKey& key) noexcept
{
    const std::size_t count = countAttributes(element);
    if (count > kFew) {
        if (!allocate(count)) return false;
        key_ = key.get();
    }
    for (const XML_DOM_Attr* attr = element->firstAttr; attr; attr = attr->next)
        items_[count_++] = Item{attr, true};
    if (slots_) index();
    return true;
}

bool AttributeSet::allocate(std::size_t count) noexcept
{
    constexpr std::size_t kMost = SIZE_MAX / (4 * sizeof(std::uint32_t) + sizeof(Item)) / 2;
    if (count > kMost || count >= UINT32_MAX / 4) return false;
    slotCount_ = std::bit_ceil(count * 2);
    const std::size_t itemBytes = count * sizeof(Item);
    block_.reset(heap::allocateZeroed(itemBytes + slotCount_ * sizeof(std::uint32_t)));
    if (!block_) return false;
    items_ = static_cast<Item*>(block_.get());
    slots_ = reinterpret_cast<std::uint32_t*>(static_cast<char*>(block_.get()) + itemBytes);
    return true;
}

// Of two attributes of one name the first stays.
void AttributeSet::index() noexcept
{
    for (std::size_t i = 0; i < count_; ++i) {
        std::uint32_t& slot = slotOf(items_[i].attr->name, items_[i].namespaceName());
        if (slot == 0) slot = static_cast<std::uint32_t>(i + 1);
    }
}

// The slot that holds the name, or the free one where it goes.
std::uint32_t& AttributeSet::slotOf(const char* name, const char* namespaceName) noexcept
{
    name = orEmpty(name);
    namespaceName = orEmpty(namespaceName);
    const std::uint64_t hash =
        hashPair(key_, name, std::strlen(name), namespaceName, std::strlen(namespaceName));
    std::size_t place = static_cast<std::size_t>(hash) & (slotCount_ - 1);
    while (slots_[place] != 0 && !isCalled(items_[slots_[place] - 1], name, namespaceName))
        place = (place + 1) & (slotCount_ - 1);
    return slots_[place];
}

AttributeSet::Item* AttributeSet::find(const char* name, const char* namespaceName) noexcept
{
    if (slots_) {
        const std::uint32_t slot = slotOf(name, namespaceName);
        return slot != 0 ? items_ + (slot - 1) : nullptr;
    }
    for (Item& item : *this) {
        if (isCalled(item, name, namespaceName)) return &item;
    }
    return nullptr;
}

}  // namespace netxml
