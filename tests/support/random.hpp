// Random numbers that are the same everywhere for the same seed, or choices that given bytes make.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <iterator>
#include <random>
#include <span>
#include <vector>

// How many rounds a comparison on random input makes: as many as usual, or fewer where
// NETXML_TEST_DOCUMENTS asks for few documents, because something slow looks on.
inline std::size_t randomRounds(std::size_t usual)
{
    const char* documents = std::getenv("NETXML_TEST_DOCUMENTS");
    const std::size_t most = documents ? std::strtoul(documents, nullptr, 10) * 3 : usual;
    return most < usual ? most : usual;
}

// Every how many cases one is tried: each, or fewer by `watched` where something slow looks on.
inline std::size_t caseStep(std::size_t watched)
{
    constexpr std::size_t kMany = 1000;
    return randomRounds(kMany) < kMany ? watched : 1;
}

class Random {
public:
    explicit Random(std::uint64_t seed) : engine_{seed} {}
    // The bytes decide first, one for a small choice; once they are used up, the seed does.
    Random(std::uint64_t seed, std::span<const std::uint8_t> bytes) : engine_{seed}, bytes_{bytes}
    {
    }

    // A number below `count`, which is not 0.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(draw(count) % count); }
    std::size_t between(std::size_t least, std::size_t most)
    {
        return least + below(most - least + 1);
    }
    bool percent(unsigned chance) { return below(100) < chance; }
    template <typename Item>
    Item one(std::initializer_list<Item> of)
    {
        return of.begin()[below(of.size())];
    }
    template <typename List>
    auto& anyOf(List& list)
    {
        return list[below(std::size(list))];
    }
    // An index, each with its weight.
    std::size_t weighted(std::initializer_list<unsigned> weights)
    {
        unsigned sum = 0;
        for (const unsigned weight : weights) sum += weight;
        auto left = static_cast<unsigned>(below(sum));
        std::size_t at = 0;
        for (const unsigned weight : weights) {
            if (left < weight) break;
            left -= weight;
            ++at;
        }
        return at;
    }

private:
    std::uint64_t draw(std::size_t count)
    {
        if (bytes_.empty()) return engine_();
        std::uint64_t number = 0;
        std::size_t reach = 1;  // how many numbers the bytes so far can tell apart
        do {
            number = number << 8 | bytes_.front();
            bytes_ = bytes_.subspan(1);
            reach <<= 8;
        } while (reach < count && reach < (std::size_t{1} << 24) && !bytes_.empty());
        return number;
    }

    std::mt19937_64 engine_;
    std::span<const std::uint8_t> bytes_;
};
