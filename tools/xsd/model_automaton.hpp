// The automaton of a content model: what XML Schema accepts, exactly.
#pragma once

#include "xsd/content_model.hpp"

#include <optional>
#include <vector>

namespace netxml::xsd {

inline constexpr std::size_t kMostTestWords = 1500;
inline constexpr std::size_t kMostPositions =
    3000;  // leaves of a model whose counts are written out

// A deterministic automaton with the fewest states. State 0 is the first one. Symbols are the
// elements (by name and namespace) and wildcards of the model.
struct ModelAutomaton {
    static constexpr int kNone = -1;

    struct State {
        bool accepts = false;
        std::vector<int> next;  // by symbol; kNone where there is no way on
    };

    std::vector<ContentModel> symbols;  // leaves that occur once
    std::vector<State> states;

    bool accepts(const std::vector<int>& word) const;
    // The symbol of a leaf.
    int symbolOf(const ContentModel& leaf) const;
};

// Nothing when the automaton would be too large, or for models with an all group.
std::optional<ModelAutomaton> automatonOf(const ContentModel& model);

// Whether the next element always tells which leaf of the model it belongs to, whatever the counts
// (XML Schema part 1, section 3.8.6). False for what would be too large to tell.
bool isDeterministic(const ContentModel& model);

// An expression of the automaton's language in which the next element always tells where it
// belongs, or nothing when there is none (Brueggemann-Klein and Wood, "One-unambiguous regular
// languages", 1998) or it would be too large.
std::optional<ContentModel> deterministicForm(const ModelAutomaton& automaton);

// Words that go through every state, and from every state with every symbol, to an end and beyond;
// accepted and refused ones; so many at most.
std::vector<std::vector<int>> testWords(const ModelAutomaton& automaton,
                                        std::size_t most = kMostTestWords);

// Words of up to `longest` symbols on random ways through the automaton, and some with a symbol
// changed, left out or doubled. The same every time.
std::vector<std::vector<int>> randomWords(const ModelAutomaton& automaton, std::size_t count,
                                          std::size_t longest);

// A model with counts so small that its automaton stays small, for tests.
ContentModel withSmallCounts(const ContentModel& model);

}  // namespace netxml::xsd
