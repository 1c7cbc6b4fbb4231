// The attributes of one element: which are still to be accounted for, and where one of a name is.
#pragma once

#include "dom/node.hpp"
#include "support/heap.hpp"
#include "support/keyed_hash.hpp"

#include <cstddef>
#include <cstdint>

namespace netxml {

// A key that is drawn when it is first needed.
class LazyHashKey {
public:
    const HashKey& get() noexcept
    {
        if (!drawn_) key_ = randomHashKey();
        drawn_ = true;
        return key_;
    }

private:
    HashKey key_{};
    bool drawn_ = false;
};

// NULL for none.
inline const char* namespaceOf(const XML_DOM_Attr& attr) noexcept
{
    return attr.nameSpace ? attr.nameSpace->name : nullptr;
}

class AttributeSet {
public:
    struct Item {
        const XML_DOM_Attr* attr;
        bool pending;  // no use and no wildcard has taken it yet

        const char* namespaceName() const noexcept { return namespaceOf(*attr); }
    };

    AttributeSet() noexcept = default;
    AttributeSet(const AttributeSet&) = delete;
    AttributeSet& operator=(const AttributeSet&) = delete;

    // All attributes of an element, in their order. False when memory runs out.
    [[nodiscard]] bool fill(const XML_DOM_Node* element, LazyHashKey& key) noexcept;

    // The first attribute of a name and namespace, or nullptr. A NULL namespace is the empty one.
    Item* find(const char* name, const char* namespaceName) noexcept;

    Item* begin() noexcept { return items_; }
    Item* end() noexcept { return items_ + count_; }

private:
    static constexpr std::size_t kFew = 16;  // compared one by one

    bool allocate(std::size_t count) noexcept;
    void index() noexcept;
    std::uint32_t& slotOf(const char* name, const char* namespaceName) noexcept;

    Item few_[kFew];
    Item* items_ = few_;
    std::size_t count_ = 0;
    heap::Owned<void> block_;         // items and slots, when there are many
    std::uint32_t* slots_ = nullptr;  // an item's index + 1, or 0; nullptr when there are few
    std::size_t slotCount_ = 0;       // a power of two, at least twice the items
    HashKey key_{};
};

}  // namespace netxml
