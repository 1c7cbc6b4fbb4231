// One type's check beside its plain rule: counts what was compared, and stops at the first
// differences.
#pragma once

#include "tests/schema/guarded_space.hpp"
#include "tests/support/plain_values.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

inline uint64_t testSetting(const char* name, uint64_t otherwise)
{
    const char* value = std::getenv(name);
    return value ? std::strtoull(value, nullptr, 10) : otherwise;
}

// Random numbers from NETXML_TEST_SEED, the same each time unless that is set.
class RandomValues {
public:
    RandomValues() : numbers_{testSetting("NETXML_TEST_SEED", 20)} {}

    // A number from 0 to `count` - 1.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(numbers_() % count); }
    bool chance(std::size_t oneIn) { return below(oneIn) == 0; }
    char letter(std::string_view of) { return of[below(of.size())]; }
    template <typename T, std::size_t N>
    const T& one(const T (&of)[N])
    {
        return of[below(N)];
    }
    std::string digits(std::size_t most)
    {
        std::string text;
        for (std::size_t count = below(most + 1); count != 0; --count) text += letter("0123456789");
        return text;
    }
    // One byte put in, taken out or changed.
    void damage(std::string& text, std::string_view alphabet)
    {
        const std::size_t at = below(text.size() + 1);
        const std::size_t how = below(3);
        if (how == 0 || at == text.size()) text.insert(at, 1, letter(alphabet));
        else if (how == 1) text.erase(at, 1);
        else text[at] = letter(alphabet);
    }

private:
    std::mt19937_64 numbers_;
};

// Bytes as a failure shows them.
inline std::string shown(std::string_view text)
{
    std::string result;
    for (const char c : text.substr(0, 200)) {
        char escaped[8];
        const bool plain = c >= ' ' && c <= '~';
        std::snprintf(escaped, sizeof escaped, plain ? "%c" : "\\x%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(c)));
        result += escaped;
    }
    return text.size() > 200 ? result + "..." : result;
}

// The check of a built-in kind, or of a network type where a name is given.
class Comparison {
public:
    explicit Comparison(uint32_t kind) : kind_{kind}, title_{"kind " + std::to_string(kind)} {}
    explicit Comparison(const char* networkType)
        : entry_{Schema_FoundZynBltInType(networkType, nullptr)}, name_{networkType},
          title_{networkType}
    {
    }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;
    // Neither verdict may be missing, or nothing was compared.
    ~Comparison()
    {
        EXPECT_GT(valid_, 0u) << title_;
        EXPECT_GT(invalid_ + (kind_ == SCHEMA_BUILTIN_STRING ? 1 : 0), 0u) << title_;
    }

    void check(const std::string& value)
    {
        if (differences_ >= kMostDifferences) return;
        const char* text = space_.text(value);
        const bool plain = name_ ? plainNetworkType(name_, value) : plainBuiltin(kind_, value);
        ++(plain ? valid_ : invalid_);
        char message[64];
        const uint32_t result =
            name_ ? Schema_checkZynBltInType(entry_, text, sizeof message, message)
                  : SCHEMA_CheckBaseTypeNonNull(kind_, text);
        if (result == (plain ? 1u : 0u)) return;
        ++differences_;
        ADD_FAILURE() << title_ << ": \"" << shown(value) << "\" is "
                      << (plain ? "valid" : "invalid") << ", but the check gives " << result;
    }

    // All texts over an alphabet up to a length, the empty one included.
    void allOver(std::string_view alphabet, std::size_t most)
    {
        std::vector<std::size_t> letters;  // the text as indexes, counted up like a number
        std::string text;
        check(text);
        while (true) {
            std::size_t at = 0;
            while (at < letters.size() && letters[at] + 1 == alphabet.size()) letters[at++] = 0;
            if (at == letters.size()) letters.push_back(0);
            else ++letters[at];
            if (letters.size() > most) return;
            text.resize(letters.size());
            for (std::size_t i = 0; i < letters.size(); ++i) text[i] = alphabet[letters[i]];
            check(text);
        }
    }

    // Every single byte, and every pair of bytes.
    void allBytes(std::size_t most = 2)
    {
        std::string alphabet;
        for (int byte = 1; byte < 256; ++byte) alphabet += static_cast<char>(byte);
        allOver(alphabet, most);
    }

    // Every text that comes from the seed by one change: a byte put in, taken out or changed.
    void oneChange(const std::string& seed, std::string_view alphabet)
    {
        for (std::size_t at = 0; at <= seed.size(); ++at) {
            if (at < seed.size()) check(std::string{seed}.erase(at, 1));
            for (const char c : alphabet) {
                check(std::string{seed}.insert(at, 1, c));
                if (at < seed.size()) check(std::string{seed}.replace(at, 1, 1, c));
            }
        }
    }

    // Every text that comes from the seed by changing two bytes.
    void twoChanges(const std::string& seed, std::string_view alphabet)
    {
        std::string text = seed;
        for (std::size_t a = 0; a < seed.size(); ++a) {
            for (const char first : alphabet) {
                text[a] = first;
                for (std::size_t b = a + 1; b < seed.size(); ++b) {
                    for (const char second : alphabet) {
                        text[b] = second;
                        check(text);
                    }
                    text[b] = seed[b];
                }
            }
            text[a] = seed[a];
        }
    }

    // A text of every length: the seed cut short, and then with more behind it.
    void everyLength(const std::string& seed, std::string_view alphabet)
    {
        for (std::size_t length = 0; length <= seed.size(); ++length) check(seed.substr(0, length));
        for (const char c : alphabet) check(seed + c);
    }

private:
    static constexpr int kMostDifferences = 5;

    uint32_t kind_ = 0;
    const Schema_ExtType* entry_ = nullptr;
    const char* name_ = nullptr;
    std::string title_;
    GuardedSpace space_{400000};
    uint64_t valid_ = 0;
    uint64_t invalid_ = 0;
    int differences_ = 0;
};
