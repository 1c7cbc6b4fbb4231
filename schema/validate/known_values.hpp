// Short values that were found valid in this run, by the type that was asked: configurations say
// the same few things over and over.
#pragma once

#include "netxml/schema.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace netxml {

class KnownValues {
public:
    // A value as it is kept: its text up to the NUL, padded with more of them.
    class Key {
    public:
        Key(const Schema_SimpleType* type, const char* value) noexcept : type_{type}
        {
            char text[kLongest + 1] = {};
            std::size_t size = 0;
            while (size <= kLongest && value[size] != '\0') {
                text[size] = value[size];
                ++size;
            }
            isShort_ = size <= kLongest;
            std::memcpy(words_, text, sizeof words_);
        }
        bool isShort() const noexcept { return isShort_; }
        bool operator==(const Key& other) const noexcept
        {
            return type_ == other.type_ && words_[0] == other.words_[0] &&
                   words_[1] == other.words_[1] && words_[2] == other.words_[2];
        }
        std::size_t slot() const noexcept
        {
            const std::uint64_t type = reinterpret_cast<std::uintptr_t>(type_);
            const std::uint64_t mixed = type ^ words_[0] ^ words_[1] * 31 ^ words_[2] * 131;
            return static_cast<std::size_t>(mixed * UINT64_C(0x9E3779B97F4A7C15) >> (64 - kBits));
        }

    private:
        friend class KnownValues;
        static constexpr std::size_t kLongest = 23;

        Key() = default;

        const Schema_SimpleType* type_ = nullptr;
        std::uint64_t words_[3] = {};
        bool isShort_ = false;
    };

    bool holds(const Key& key) const noexcept { return key.isShort() && keys_[key.slot()] == key; }
    void add(const Key& key) noexcept
    {
        if (key.isShort()) keys_[key.slot()] = key;
    }

private:
    static constexpr unsigned kBits = 7;
    Key keys_[1 << kBits] = {};
};

}  // namespace netxml
