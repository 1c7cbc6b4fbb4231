// From an automaton back to an expression: one in which the next element tells where it belongs.
//
// States that reach each other make an orbit; a gate of an orbit is a state that accepts or leads
// out of it. In a language that has such an expression, the gates of an orbit agree on what comes
// behind, so the orbit's own language can be written first and the ways out behind it. Inside an
// orbit, a symbol that leads every accepting state to one and the same state begins a repetition:
// these ways are cut, and written as a repeated choice behind the rest.
#include "xsd/model_automaton.hpp"

#include <algorithm>
#include <map>
#include <set>

namespace netxml::xsd {
namespace {

using Kind = ContentModel::Kind;
using State = ModelAutomaton::State;

constexpr std::size_t kMostFormTerms = 1500;
constexpr unsigned kMostFormNesting = 60;

// An automaton whose states may be cut off; the numbers stay.
struct Part {
    std::vector<State> states;
    std::vector<bool> in;
};

std::vector<int> reachedFrom(const Part& part, int start)
{
    std::vector<int> order{start};
    std::vector<bool> seen(part.states.size());
    seen[static_cast<std::size_t>(start)] = true;
    for (std::size_t i = 0; i != order.size(); ++i) {
        for (const int next : part.states[static_cast<std::size_t>(order[i])].next) {
            if (next == ModelAutomaton::kNone || seen[static_cast<std::size_t>(next)]) continue;
            seen[static_cast<std::size_t>(next)] = true;
            order.push_back(next);
        }
    }
    return order;
}

// Only what is reached from `start` and from where an accepting state is reached.
Part trimmed(Part part, int start)
{
    const std::size_t count = part.states.size();
    std::vector<bool> reached(count);
    for (const int s : reachedFrom(part, start)) reached[static_cast<std::size_t>(s)] = true;
    std::vector<bool> useful(count);
    for (bool grown = true; grown;) {
        grown = false;
        for (std::size_t s = 0; s != count; ++s) {
            if (useful[s] || !reached[s]) continue;
            bool leads = part.states[s].accepts;
            for (const int next : part.states[s].next)
                leads = leads ||
                        (next != ModelAutomaton::kNone && useful[static_cast<std::size_t>(next)]);
            if (leads) useful[s] = grown = true;
        }
    }
    for (std::size_t s = 0; s != count; ++s) {
        if (!useful[s]) part.states[s].accepts = false;
        for (int& next : part.states[s].next) {
            if (next != ModelAutomaton::kNone &&
                (!useful[s] || !useful[static_cast<std::size_t>(next)]))
                next = ModelAutomaton::kNone;
        }
    }
    part.in = useful;
    return part;
}

class Former {
public:
    explicit Former(const ModelAutomaton& automaton) : symbols_{automaton.symbols} {}

    std::optional<ContentModel> form(Part part, int start, unsigned nesting)
    {
        if (nesting == kMostFormNesting || terms_ > kMostFormTerms) return std::nullopt;
        part = trimmed(std::move(part), start);
        if (!part.in[static_cast<std::size_t>(start)]) return std::nullopt;
        const std::set<int> orbit = orbitOf(part, start);
        bool leaves = false;
        for (std::size_t s = 0; s != part.states.size(); ++s)
            leaves = leaves || (part.in[s] && !orbit.contains(static_cast<int>(s)));
        const bool trivial = orbit.size() == 1 && !loops(part, start);
        if (trivial || leaves) return throughOrbit(part, start, orbit, trivial, nesting);
        return repeatedOrbit(part, start, nesting);
    }

private:
    static bool loops(const Part& part, int state)
    {
        const auto& next = part.states[static_cast<std::size_t>(state)].next;
        return std::find(next.begin(), next.end(), state) != next.end();
    }

    static std::set<int> orbitOf(const Part& part, int start)
    {
        std::set<int> orbit{start};
        for (const int s : reachedFrom(part, start)) {
            const std::vector<int> back = reachedFrom(part, s);
            if (std::find(back.begin(), back.end(), start) != back.end()) orbit.insert(s);
        }
        return orbit;
    }

    // A leaf and what may follow it.
    std::optional<ContentModel> stepTo(const Part& part, int symbol, int target, unsigned nesting)
    {
        ++terms_;
        const auto rest = form(part, target, nesting + 1);
        if (!rest) return std::nullopt;
        return group(Kind::Sequence, {symbols_[static_cast<std::size_t>(symbol)], *rest});
    }

    // The orbit's own language, and behind it the ways out of its gates.
    std::optional<ContentModel> throughOrbit(const Part& part, int start,
                                             const std::set<int>& orbit, bool trivial,
                                             unsigned nesting)
    {
        const State* gate = nullptr;
        std::vector<int> out;
        Part inside = part;
        for (const int s : orbit) {
            State& state = inside.states[static_cast<std::size_t>(s)];
            std::vector<int> outside(state.next.size(), ModelAutomaton::kNone);
            bool leads = state.accepts;
            for (std::size_t a = 0; a != state.next.size(); ++a) {
                if (state.next[a] == ModelAutomaton::kNone || orbit.contains(state.next[a]))
                    continue;
                outside[a] = state.next[a];
                state.next[a] = ModelAutomaton::kNone;
                leads = true;
            }
            if (!leads) continue;
            const State& original = part.states[static_cast<std::size_t>(s)];
            if (gate && (gate->accepts != original.accepts || out != outside)) return std::nullopt;
            gate = &original;
            out = outside;
        }
        if (!gate) return std::nullopt;
        for (std::size_t s = 0; s != inside.states.size(); ++s) {
            State& state = inside.states[s];
            const bool isGate = orbit.contains(static_cast<int>(s)) && leadsOut(part, orbit, s);
            state.accepts = isGate;
        }
        std::vector<ContentModel> ways;
        for (std::size_t a = 0; a != out.size(); ++a) {
            if (out[a] == ModelAutomaton::kNone) continue;
            const auto way = stepTo(part, static_cast<int>(a), out[a], nesting);
            if (!way) return std::nullopt;
            ways.push_back(*way);
        }
        std::vector<ContentModel> parts;
        if (!trivial) {
            const auto own = form(inside, start, nesting + 1);
            if (!own) return std::nullopt;
            parts.push_back(*own);
        }
        if (!ways.empty()) parts.push_back(group(Kind::Choice, ways, gate->accepts ? 0 : 1));
        return group(Kind::Sequence, parts);
    }

    static bool leadsOut(const Part& part, const std::set<int>& orbit, std::size_t s)
    {
        const State& state = part.states[s];
        if (state.accepts) return true;
        return std::any_of(state.next.begin(), state.next.end(), [&](int next) {
            return next != ModelAutomaton::kNone && !orbit.contains(next);
        });
    }

    // One orbit: cuts the ways by which its accepting states begin anew.
    std::optional<ContentModel> repeatedOrbit(const Part& part, int start, unsigned nesting)
    {
        std::vector<int> again(symbols_.size(), ModelAutomaton::kNone);
        bool first = true;
        for (std::size_t s = 0; s != part.states.size(); ++s) {
            if (!part.in[s] || !part.states[s].accepts) continue;
            for (std::size_t a = 0; a != again.size(); ++a) {
                if (first) again[a] = part.states[s].next[a];
                else if (again[a] != part.states[s].next[a]) again[a] = ModelAutomaton::kNone;
            }
            first = false;
        }
        Part cut = part;
        bool any = false;
        for (State& state : cut.states) {
            for (std::size_t a = 0; state.accepts && a != again.size(); ++a) {
                if (again[a] == ModelAutomaton::kNone) continue;
                state.next[a] = ModelAutomaton::kNone;
                any = true;
            }
        }
        if (!any) return std::nullopt;
        std::vector<ContentModel> ways;
        for (std::size_t a = 0; a != again.size(); ++a) {
            if (again[a] == ModelAutomaton::kNone) continue;
            const auto way = stepTo(cut, static_cast<int>(a), again[a], nesting);
            if (!way) return std::nullopt;
            ways.push_back(*way);
        }
        const auto own = form(cut, start, nesting + 1);
        if (!own) return std::nullopt;
        return group(Kind::Sequence, {*own, group(Kind::Choice, ways, 0, kUnbounded)});
    }

    const std::vector<ContentModel>& symbols_;
    std::size_t terms_ = 0;
};

}  // namespace

std::optional<ContentModel> deterministicForm(const ModelAutomaton& automaton)
{
    if (automaton.states.empty()) return std::nullopt;
    Part whole{automaton.states, std::vector<bool>(automaton.states.size(), true)};
    const auto form = Former{automaton}.form(std::move(whole), 0, 0);
    if (!form) return std::nullopt;
    return simplified(*form);
}

}  // namespace netxml::xsd
