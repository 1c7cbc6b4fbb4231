/**
 * @file
 * What a Writer keeps of the elements that are open. Nothing here is for users.
 */
#ifndef NETXML_CPP_SCOPE_HPP
#define NETXML_CPP_SCOPE_HPP

#include "netxml/cpp/utf8_text.hpp"
#include "netxml/parser.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace netxml {
inline namespace face {
namespace detail {

// Whether a text in UTF-8 is a name without a colon.
inline bool isName(std::string_view utf8) noexcept
{
    const TreeText name{utf8};
    return name && XML_CheckQName(name.text()) == XML_RET_OK;
}

// The code point that a sequence of UTF-8 gives, and its size; size 0 for what is no UTF-8.
struct CodePoint {
    uint32_t value;
    std::size_t size;
};

inline CodePoint codePointAt(std::string_view text, std::size_t at) noexcept
{
    const auto byte = [&](std::size_t offset) {
        return at + offset < text.size() ? static_cast<uint8_t>(text[at + offset]) : uint8_t{0};
    };
    const uint8_t lead = byte(0);
    const std::size_t size = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
    uint32_t value = size < 2 ? lead : lead & (0x7Fu >> size);
    for (std::size_t offset = 1; offset < size; ++offset) {
        if ((byte(offset) & 0xC0) != 0x80) return {0, 0};
        value = value << 6 | (byte(offset) & 0x3Fu);
    }
    const bool tooLong = (size == 3 && value < 0x800) || (size == 4 && value < 0x10000);
    return {value, tooLong ? 0 : size};
}

// Whether a text is UTF-8 that may stand in a document (XML 1.0, production Char).
inline bool canStand(std::string_view text) noexcept
{
    for (std::size_t at = 0; at < text.size();) {
        const auto [value, size] = codePointAt(text, at);
        const bool control = value < 0x20 && value != 0x09 && value != 0x0A && value != 0x0D;
        const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
        if (size == 0 || control || surrogate || value == 0xFFFE || value == 0xFFFF ||
            value > 0x10FFFF)
            return false;
        at += size;
    }
    return true;
}

inline constexpr char kGivenTwice[] = "an attribute is given twice";
inline constexpr char kUndeclared[] = "nothing declares a prefix of the element or its attributes";

// The open elements with their names, what is declared in them, and the start tag in the making.
class Scope {
public:
    struct Binding {
        std::string prefix;
        std::string name;
    };
    struct Attribute {
        std::string qualified;
        std::size_t prefixSize;
        std::string value;

        std::string_view prefix() const noexcept { return {qualified.data(), prefixSize}; }
        std::string_view local() const noexcept
        {
            std::string_view name = qualified;
            if (prefixSize != 0) name.remove_prefix(prefixSize + 1);
            return name;
        }
    };
    // A part of a vector.
    template <class Item>
    struct Part {
        const Item* first;
        const Item* last;
        const Item* begin() const noexcept { return first; }
        const Item* end() const noexcept { return last; }
    };

    void open(const Name& name)
    {
        open_.push_back({names_.size(), bindings_.size(), name.prefix().size()});
        names_ += qualified(name);
        attributes_.clear();
        relied_.clear();
    }
    void close()
    {
        names_.resize(open_.back().nameAt);
        bindings_.resize(open_.back().firstBinding);
        open_.pop_back();
    }
    std::size_t depth() const noexcept { return open_.size(); }
    // Of the innermost element, with its prefix.
    std::string_view name() const noexcept
    {
        std::string_view name = names_;
        name.remove_prefix(open_.back().nameAt);
        return name;
    }

    // Declares a prefix on the innermost element; false if that declares it already otherwise, or
    // relies on what it stands for from above.
    bool declare(std::string_view prefix, std::string_view name)
    {
        for (const Binding& binding : relied_) {
            if (binding.prefix == prefix && binding.name != name) return false;
        }
        for (const Binding& binding : declared()) {
            if (binding.prefix == prefix) return binding.name == name;
        }
        bindings_.push_back({std::string{prefix}, std::string{name}});
        return true;
    }
    // A name of the innermost element was asked for in a namespace that its prefix stands for.
    void relyOn(std::string_view prefix, std::string_view name)
    {
        for (const Binding& binding : relied_) {
            if (binding.prefix == prefix) return;
        }
        relied_.push_back({std::string{prefix}, std::string{name}});
    }
    // Whether a name of the innermost element has that prefix.
    bool hasPrefix(std::string_view prefix) const noexcept
    {
        if (prefixOfElement() == prefix) return true;
        return std::any_of(attributes_.begin(), attributes_.end(), [&](const Attribute& attribute) {
            return attribute.prefix() == prefix;
        });
    }
    Part<Binding> declared() const noexcept
    {
        return {bindings_.data() + open_.back().firstBinding, bindings_.data() + bindings_.size()};
    }
    // What a prefix stands for, or NULL.
    const std::string* find(std::string_view prefix) const
    {
        for (auto at = bindings_.rbegin(); at != bindings_.rend(); ++at) {
            if (at->prefix == prefix) return &at->name;
        }
        static const std::string xml{XML_NAMESPACE_XML};
        return prefix == "xml" ? &xml : nullptr;
    }

    void add(const Name& name, std::string_view value)
    {
        attributes_.push_back({qualified(name), name.prefix().size(), std::string{value}});
    }
    const std::vector<Attribute>& attributes() const noexcept { return attributes_; }

    // What is wrong with the start tag now that all of it is known; NULL if nothing is.
    const char* check() const
    {
        const std::string_view prefix = prefixOfElement();
        if (!prefix.empty() && !find(prefix)) return kUndeclared;
        std::vector<std::tuple<std::string_view, std::string_view>> expanded;
        for (const Attribute& attribute : attributes_) {
            const std::string* space =
                attribute.prefixSize == 0 ? nullptr : find(attribute.prefix());
            if (attribute.prefixSize != 0 && !space) return kUndeclared;
            expanded.emplace_back(space ? std::string_view{*space} : std::string_view{},
                                  attribute.local());
        }
        std::sort(expanded.begin(), expanded.end());
        const bool twice = std::adjacent_find(expanded.begin(), expanded.end()) != expanded.end();
        return twice ? kGivenTwice : nullptr;
    }

private:
    struct Open {
        std::size_t nameAt;
        std::size_t firstBinding;
        std::size_t prefixSize;
    };

    std::string_view prefixOfElement() const noexcept
    {
        return {name().data(), open_.back().prefixSize};
    }
    static std::string qualified(const Name& name)
    {
        std::string text{name.prefix()};
        if (!text.empty()) text += ':';
        return text += name.local();
    }

    std::string names_;
    std::vector<Open> open_;
    std::vector<Binding> bindings_;
    std::vector<Attribute> attributes_;
    std::vector<Binding> relied_;  // of the start tag in the making, from above it
};

}  // namespace detail
}  // namespace face
}  // namespace netxml

#endif
