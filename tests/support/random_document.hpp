// Random documents: mostly well-formed, with every construct, and then bytes changed at random.
#pragma once

#include <cstdint>
#include <random>
#include <string>

class RandomDocument {
public:
    explicit RandomDocument(std::uint64_t seed) : random_{seed} {}

    // A document in UTF-8, perhaps damaged.
    std::string next();
    // A number from 0 to `most`.
    std::size_t pick(std::size_t most)
    {
        return std::uniform_int_distribution<std::size_t>{0, most}(random_);
    }
    bool chance(unsigned oneIn) { return pick(oneIn - 1) == 0; }

private:
    template <std::size_t N>
    std::string one(const char* const (&of)[N])
    {
        return of[pick(N - 1)];
    }
    std::string name();
    std::string qualifiedName();
    std::string blanks();
    std::string text();
    std::string reference();
    std::string attributes();
    std::string attributeValue();
    std::string comment();
    std::string instruction();
    std::string declaration();
    std::string doctype();
    std::string element(int depth);
    std::string content(int depth);
    std::string items();
    void damage(std::string& document);

    std::mt19937_64 random_;
};
