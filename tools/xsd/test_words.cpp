// Words by which two readers of a content model are compared.
#include "xsd/model_automaton.hpp"

#include <algorithm>
#include <cstdint>
#include <set>

namespace netxml::xsd {
namespace {

using Word = std::vector<int>;

constexpr std::size_t kRepeats = 12;

// A shortest word to each state.
std::vector<Word> waysTo(const ModelAutomaton& automaton)
{
    std::vector<Word> ways(automaton.states.size());
    std::vector<bool> seen(automaton.states.size());
    std::vector<int> order{0};
    seen[0] = true;
    for (std::size_t i = 0; i != order.size(); ++i) {
        const auto from = static_cast<std::size_t>(order[i]);
        for (std::size_t a = 0; a != automaton.symbols.size(); ++a) {
            const int to = automaton.states[from].next[a];
            if (to == ModelAutomaton::kNone || seen[static_cast<std::size_t>(to)]) continue;
            seen[static_cast<std::size_t>(to)] = true;
            ways[static_cast<std::size_t>(to)] = ways[from];
            ways[static_cast<std::size_t>(to)].push_back(static_cast<int>(a));
            order.push_back(to);
        }
    }
    return ways;
}

// The ways on from each state: symbols and where they lead.
using Ways = std::vector<std::vector<std::pair<int, int>>>;

Ways waysOn(const ModelAutomaton& automaton)
{
    Ways ways(automaton.states.size());
    for (std::size_t s = 0; s != ways.size(); ++s) {
        for (std::size_t a = 0; a != automaton.symbols.size(); ++a) {
            const int to = automaton.states[s].next[a];
            if (to != ModelAutomaton::kNone) ways[s].emplace_back(static_cast<int>(a), to);
        }
    }
    return ways;
}

// A shortest word from each state to an accepting one: from those backwards.
std::vector<Word> waysToEnd(const ModelAutomaton& automaton)
{
    const Ways on = waysOn(automaton);
    Ways back(automaton.states.size());
    for (std::size_t s = 0; s != on.size(); ++s) {
        for (const auto& [symbol, to] : on[s])
            back[static_cast<std::size_t>(to)].emplace_back(symbol, static_cast<int>(s));
    }
    std::vector<Word> ways(automaton.states.size());
    std::vector<std::size_t> order;
    std::vector<bool> known(automaton.states.size());
    for (std::size_t s = 0; s != known.size(); ++s) {
        known[s] = automaton.states[s].accepts;
        if (known[s]) order.push_back(s);
    }
    for (std::size_t i = 0; i != order.size(); ++i) {
        for (const auto& [symbol, from] : back[order[i]]) {
            const auto s = static_cast<std::size_t>(from);
            if (known[s]) continue;
            known[s] = true;
            ways[s] = {symbol};
            ways[s].insert(ways[s].end(), ways[order[i]].begin(), ways[order[i]].end());
            order.push_back(s);
        }
    }
    return ways;
}

Word joined(Word a, const Word& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

}  // namespace

std::vector<Word> testWords(const ModelAutomaton& automaton, std::size_t most)
{
    const std::vector<Word> to = waysTo(automaton);
    const std::vector<Word> end = waysToEnd(automaton);
    std::set<Word> words;
    const auto add = [&](const Word& word) {
        if (words.size() < most) words.insert(word);
    };
    for (std::size_t s = 0; s != automaton.states.size() && words.size() < most; ++s) {
        add(to[s]);
        add(joined(to[s], end[s]));
        for (std::size_t a = 0; a != automaton.symbols.size() && words.size() < most; ++a) {
            const int next = automaton.states[s].next[a];
            Word word = to[s];
            word.push_back(static_cast<int>(a));
            add(word);  // and where that leads nowhere, what follows is read all the same
            add(joined(word, next == ModelAutomaton::kNone ? end[s]
                                                           : end[static_cast<std::size_t>(next)]));
            for (std::size_t i = 0; i != kRepeats; ++i) {
                word.push_back(static_cast<int>(a));
                add(word);
            }
            if (next == ModelAutomaton::kNone) continue;
            // Two steps behind each way.
            for (std::size_t b = 0; b != automaton.symbols.size() && words.size() < most; ++b) {
                Word longer = to[s];
                longer.push_back(static_cast<int>(a));
                longer.push_back(static_cast<int>(b));
                const int last = automaton.states[static_cast<std::size_t>(next)].next[b];
                add(last == ModelAutomaton::kNone
                        ? longer
                        : joined(longer, end[static_cast<std::size_t>(last)]));
            }
        }
    }
    return {words.begin(), words.end()};
}

namespace {

// Numbers that look random; the constants are those of Knuth's MMIX.
class Sequence {
public:
    std::size_t below(std::size_t count)
    {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::size_t>(state_ >> 33) % count;
    }

private:
    std::uint64_t state_ = 1;
};

// A random word, and where it leads.
std::pair<Word, std::size_t> randomWay(const Ways& on, std::size_t longest, Sequence& sequence)
{
    Word word;
    std::size_t state = 0;
    for (std::size_t length = sequence.below(longest + 1); word.size() < length;) {
        const auto& ways = on[state];
        if (ways.empty()) break;
        const auto& [symbol, to] = ways[sequence.below(ways.size())];
        word.push_back(symbol);
        state = static_cast<std::size_t>(to);
    }
    return {word, state};
}

void changeOne(Word& word, std::size_t symbols, Sequence& sequence)
{
    const auto place = word.begin() + static_cast<std::ptrdiff_t>(sequence.below(word.size()));
    switch (sequence.below(3)) {
    case 0: *place = static_cast<int>(sequence.below(symbols)); break;
    case 1: word.erase(place); break;
    default: word.insert(place, *place); break;
    }
}

}  // namespace

std::vector<Word> randomWords(const ModelAutomaton& automaton, std::size_t count,
                              std::size_t longest)
{
    const std::vector<Word> end = waysToEnd(automaton);
    const Ways on = waysOn(automaton);
    std::vector<Word> words;
    words.reserve(count);
    Sequence sequence;
    while (words.size() < count) {
        const auto [way, state] = randomWay(on, longest, sequence);
        Word word = joined(way, end[state]);
        if (!word.empty() && sequence.below(4) == 0)
            changeOne(word, automaton.symbols.size(), sequence);
        words.push_back(word);
    }
    return words;
}

}  // namespace netxml::xsd
