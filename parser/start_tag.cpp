#include "parser/start_tag.hpp"

#include <bit>

namespace netxml {
namespace {

bool same(const TagAttribute& a, const TagAttribute& b) noexcept
{
    if (a.name.local.view() != b.name.local.view()) return false;
    return a.nameSpace.binding == b.nameSpace.binding ? a.nameSpace.bound() == b.nameSpace.bound()
                                                      : a.nameSpace.name == b.nameSpace.name;
}

bool anyPair(const TagAttribute* attributes, std::size_t count) noexcept
{
    for (std::size_t i = 1; i < count; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (same(attributes[i], attributes[j])) return true;
        }
    }
    return false;
}

}  // namespace

std::uint64_t AttributeCheck::nameHash(const Resolution& nameSpace) const noexcept
{
    const std::string_view name = nameSpace.name;
    if (!nameSpace.binding) return hashBytes(key_, name.data(), name.size());
    Binding& binding = *nameSpace.binding;
    if (!binding.hashed) binding.nameHash = hashBytes(key_, name.data(), name.size());
    binding.hashed = true;
    return binding.nameHash;
}

ParseError AttributeCheck::distinct(const TagAttribute* attributes, std::size_t count) noexcept
{
    if (count <= kFew)
        return anyPair(attributes, count) ? ParseError::AttributeRedefined : ParseError::None;
    if (!keyed_) key_ = randomHashKey();
    keyed_ = true;

    table_.clear();
    const std::size_t size = std::bit_ceil(count) * 2;
    if (!table_.reserve(size)) return ParseError::NoMemory;
    const TagAttribute** table = table_.data();
    for (std::size_t i = 0; i < size; ++i) table[i] = nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view local = attributes[i].name.local.view();
        const std::uint64_t name = nameHash(attributes[i].nameSpace);
        const std::uint64_t hash = hashPair(key_, local.data(), local.size(), &name, sizeof name);
        std::size_t slot = static_cast<std::size_t>(hash) & (size - 1);
        for (; table[slot]; slot = (slot + 1) & (size - 1)) {
            if (same(*table[slot], attributes[i])) return ParseError::AttributeRedefined;
        }
        table[slot] = &attributes[i];
    }
    return ParseError::None;
}

}  // namespace netxml
