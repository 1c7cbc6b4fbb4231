#include "xsd/model_automaton.hpp"

#include <algorithm>
#include <map>
#include <set>

namespace netxml::xsd {
namespace {

using Kind = ContentModel::Kind;
using Positions = std::vector<int>;  // sorted

constexpr std::size_t kMostStates = 3000;

// How strictly a wildcard looks into what it takes makes no other symbol.
LeafKey symbolKey(const ContentModel& leaf)
{
    LeafKey key = leafKey(leaf);
    if (leaf.kind == Kind::Wildcard) std::get<3>(key) = 0;
    return key;
}

void unite(Positions& to, const Positions& other)
{
    if (to.empty() || other.empty() || to.back() < other.front()) {
        to.insert(to.end(), other.begin(), other.end());
        return;
    }
    Positions result;
    std::set_union(to.begin(), to.end(), other.begin(), other.end(), std::back_inserter(result));
    to = std::move(result);
}

// The positions of a model whose counts are written out, and which may follow which.
class PositionAutomaton {
public:
    // False when there are too many.
    bool read(const ContentModel& model)
    {
        if (positionCount(model) > kMostPositions) return false;
        const Part whole = term(model);
        if (tooLarge_) return false;
        first = whole.first;
        last = whole.last;
        emptiable = whole.emptiable;
        return true;
    }

    std::vector<ContentModel> symbols;
    std::vector<int> symbolAt;  // by position
    std::vector<const ContentModel*> leafAt;
    std::vector<Positions> following;
    Positions first;
    Positions last;
    bool emptiable = false;

private:
    struct Part {
        Positions first;
        Positions last;
        bool emptiable = true;
    };

    Part term(const ContentModel& model)
    {
        Part whole;
        if (model.kind == Kind::All) tooLarge_ = true;
        const bool unbounded = model.max == kUnbounded;
        const std::uint32_t copies = unbounded ? std::max(model.min, 1u) : model.max;
        for (std::uint32_t i = 0; i < copies && !tooLarge_; ++i) {
            Part copy = once(model);
            if (unbounded && i + 1 == copies) link(copy.last, copy.first);
            if (i >= model.min) copy.emptiable = true;
            append(whole, copy);
        }
        return whole;
    }

    Part once(const ContentModel& model)
    {
        if (model.isLeaf()) return leaf(model);
        Part whole;
        if (model.kind == Kind::Sequence) {
            for (const ContentModel& part : model.parts) append(whole, term(part));
            return whole;
        }
        whole.emptiable = model.parts.empty();
        for (const ContentModel& part : model.parts) {
            const Part one = term(part);
            unite(whole.first, one.first);
            unite(whole.last, one.last);
            whole.emptiable = whole.emptiable || one.emptiable;
        }
        return whole;
    }

    Part leaf(const ContentModel& model)
    {
        const auto [known, added] =
            symbols_.try_emplace(symbolKey(model), static_cast<int>(symbols.size()));
        const int position = static_cast<int>(symbolAt.size());
        symbolAt.push_back(known->second);
        leafAt.push_back(&model);
        if (added) {
            symbols.push_back(model);
            symbols.back().min = symbols.back().max = 1;
        }
        following.emplace_back();
        return {{position}, {position}, false};
    }

    void append(Part& whole, const Part& next)
    {
        link(whole.last, next.first);
        if (whole.emptiable) unite(whole.first, next.first);
        if (next.emptiable) unite(whole.last, next.last);
        else whole.last = next.last;
        whole.emptiable = whole.emptiable && next.emptiable;
    }

    void link(const Positions& from, const Positions& to)
    {
        for (const int position : from) unite(following[static_cast<std::size_t>(position)], to);
    }

    std::map<LeafKey, int> symbols_;
    bool tooLarge_ = false;
};

// Sets of positions as states.
std::optional<ModelAutomaton> determined(const PositionAutomaton& positions)
{
    struct Key {
        Positions after;  // what was read last; nothing at the start
        bool start = false;
        bool operator<(const Key& other) const
        {
            return std::tie(start, after) < std::tie(other.start, other.after);
        }
    };
    ModelAutomaton result;
    result.symbols = positions.symbols;
    std::map<Key, int> known{{{{}, true}, 0}};
    std::vector<Key> keys{{{}, true}};
    for (std::size_t s = 0; s != keys.size(); ++s) {
        if (keys.size() > kMostStates) return std::nullopt;
        const Key key = keys[s];
        Positions candidates = key.start ? positions.first : Positions{};
        bool accepts = key.start && positions.emptiable;
        for (const int p : key.after) {
            unite(candidates, positions.following[static_cast<std::size_t>(p)]);
            accepts =
                accepts || std::binary_search(positions.last.begin(), positions.last.end(), p);
        }
        ModelAutomaton::State state;
        state.accepts = accepts;
        state.next.assign(positions.symbols.size(), ModelAutomaton::kNone);
        std::map<int, Key> ways;  // by symbol
        for (const int p : candidates) {
            Key& next = ways[positions.symbolAt[static_cast<std::size_t>(p)]];
            next.after.push_back(p);
        }
        for (const auto& [symbol, next] : ways) {
            const auto [place, added] = known.emplace(next, static_cast<int>(keys.size()));
            if (added) keys.push_back(next);
            state.next[static_cast<std::size_t>(symbol)] = place->second;
        }
        result.states.push_back(std::move(state));
    }
    return result;
}

// Merges states that nothing tells apart (Moore). Every state is reached and can accept.
ModelAutomaton minimized(const ModelAutomaton& from)
{
    std::vector<int> classes;
    for (const auto& state : from.states) classes.push_back(state.accepts ? 1 : 0);
    for (std::size_t count = 0;;) {
        std::map<std::vector<int>, int> keys;
        std::vector<int> next;
        for (std::size_t s = 0; s != from.states.size(); ++s) {
            std::vector<int> key{classes[s]};
            for (const int to : from.states[s].next)
                key.push_back(to == ModelAutomaton::kNone ? -1
                                                          : classes[static_cast<std::size_t>(to)]);
            next.push_back(keys.emplace(key, static_cast<int>(keys.size())).first->second);
        }
        classes = next;
        if (keys.size() == count) break;
        count = keys.size();
    }
    ModelAutomaton result;
    result.symbols = from.symbols;
    for (std::size_t s = 0; s != from.states.size(); ++s) {
        const auto index = static_cast<std::size_t>(classes[s]);
        if (index < result.states.size()) continue;
        ModelAutomaton::State state = from.states[s];
        for (int& to : state.next) {
            if (to != ModelAutomaton::kNone) to = classes[static_cast<std::size_t>(to)];
        }
        result.states.push_back(state);
    }
    return result;
}

std::uint32_t smallCount(std::uint32_t count, std::uint32_t most)
{
    return count == kUnbounded ? count : std::min(count, most);
}

}  // namespace

bool ModelAutomaton::accepts(const std::vector<int>& word) const
{
    int state = 0;
    for (const int symbol : word) {
        if (symbol == kNone) return false;
        state = states[static_cast<std::size_t>(state)].next[static_cast<std::size_t>(symbol)];
        if (state == kNone) return false;
    }
    return states[static_cast<std::size_t>(state)].accepts;
}

int ModelAutomaton::symbolOf(const ContentModel& leaf) const
{
    for (std::size_t i = 0; i != symbols.size(); ++i) {
        if (symbolKey(symbols[i]) == symbolKey(leaf)) return static_cast<int>(i);
    }
    return kNone;
}

bool isDeterministic(const ContentModel& model)
{
    PositionAutomaton positions;
    if (!positions.read(model)) return false;
    std::vector<Positions> choices = positions.following;
    choices.push_back(positions.first);
    // By symbol: which leaf it was in which choice.
    std::vector<std::pair<const Positions*, const ContentModel*>> leaves(positions.symbols.size());
    for (const Positions& choice : choices) {
        for (const int position : choice) {
            const auto index = static_cast<std::size_t>(position);
            auto& seen = leaves[static_cast<std::size_t>(positions.symbolAt[index])];
            const ContentModel* leaf = positions.leafAt[index];
            if (seen.first == &choice && seen.second != leaf) return false;
            seen = {&choice, leaf};
        }
    }
    return true;
}

std::optional<ModelAutomaton> automatonOf(const ContentModel& model)
{
    PositionAutomaton positions;
    if (!positions.read(model)) return std::nullopt;
    auto automaton = determined(positions);
    if (!automaton) return std::nullopt;
    return minimized(*automaton);
}

ContentModel withSmallCounts(const ContentModel& model)
{
    constexpr std::uint32_t kMostMin = 3;
    constexpr std::uint32_t kMostMax = 5;
    ContentModel result = model;
    const bool fixed = model.min == model.max;
    result.min = smallCount(model.min, kMostMin);
    result.max = fixed ? result.min : smallCount(model.max, kMostMax);
    for (ContentModel& part : result.parts) part = withSmallCounts(part);
    return result;
}

}  // namespace netxml::xsd
