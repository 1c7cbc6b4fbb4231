#include "schema/validate/content_check.hpp"

#include <algorithm>

namespace netxml {
namespace {

// An element may return to its first child so often; each time costs as much as all children until
// there.
constexpr unsigned kMostReturns = 4;

// Whether the child is one more of an element or wildcard without an upper bound, so that nothing
// has changed by it: for what comes it is the same whether there were enough or more than enough.
// That holds where each group occurs once at most; the counts of others may matter. (No document
// has as many children as the number that stands for no bound.)
bool isOneMore(const OpenElement& element) noexcept
{
    const LeafRun& run = element.run;
    constexpr std::uint32_t kFew = 1000;
    if (!run.active || run.max != SCHEMA_UNBOUNDED || run.min > kFew ||
        run.count < std::max(run.min, 1u))
        return false;
    for (const GroupFrame* frame = element.frame; frame; frame = frame->outer) {
        if (frame->group->minOccurs > 1 || frame->group->maxOccurs != 1) return false;
    }
    return true;
}

void endMatching(OpenElement& element) noexcept
{
    element.frame = nullptr;
    element.run = LeafRun{};
}

}  // namespace

bool ContentCheck::begin(OpenElement& element, ContentPart& part) noexcept
{
    if (beginKnown(element, part)) return true;
    ContentState* first = part.memory ? known_.begin(*part.memory) : nullptr;
    element.way = ContentWay{&part, element.child.node, first, nullptr, nullptr, 0, true};
    return matcher_.begin(element, *part.model);
}

MatchStep ContentCheck::advance(OpenElement& element) noexcept
{
    while (element.way.part) {
        const MatchStep step = element.way.matching ? match(element) : follow(element);
        if (step == MatchStep::Ended) element.way.part = nullptr;
        if (step != MatchStep::Check || element.facts) return step;
        accepted(element);
    }
    return MatchStep::Ended;
}

MatchStep ContentCheck::follow(OpenElement& element) noexcept
{
    ContentWay& way = element.way;
    const ContentStep* step =
        element.child ? known_.find(*way.state, element.child, false) : nullptr;
    if (step && step->next) {
        way.next = step->next;
        element.facts = step->wanted;
        return MatchStep::Check;
    }
    if (step || (!element.child && way.state->mayEnd)) {
        endMatching(element);
        return MatchStep::Ended;
    }
    way.matching = true;
    return way.state == way.frozen ? match(element) : matchAgain(element);
}

MatchStep ContentCheck::match(OpenElement& element) noexcept
{
    const MatchStep step = matcher_.advance(element);
    if (step == MatchStep::Ended && element.way.state)
        known_.learnEnd(*element.way.state, element.child);
    if (step != MatchStep::Check) return step;
    element.facts = element.wanted ? facts_.of(*element.wanted) : nullptr;
    if (!element.wanted || element.facts) return step;
    verdict_.fail();
    return MatchStep::Stop;
}

// Leads the matcher from the first child to the one where the way ends. It finds nothing wrong that
// has been found right before.
MatchStep ContentCheck::matchAgain(OpenElement& element) noexcept
{
    const XML_DOM_Node* end = element.child.node;
    endMatching(element);
    ++element.way.returns;
    element.child = makeSubject(element.way.start, element.defaultNamespace);
    if (!matcher_.begin(element, *element.way.part->model)) return MatchStep::Stop;
    while (element.child.node != end) {
        const MatchStep step = matcher_.advance(element);
        if (step != MatchStep::Check) return step;
        ContentMatcher::accepted(element);
        toNextChild(element);
    }
    return match(element);
}

// Tells the matcher of a child that was checked. Where nothing changes, it need not see the
// children that are like this one.
void ContentCheck::learn(OpenElement& element) noexcept
{
    ContentWay& way = element.way;
    if (way.state) {
        ContentState* same = isOneMore(element) ? way.state : nullptr;
        way.state = known_.learn(*way.part->memory, *way.state, element.child, element.facts, same);
        if (same && way.state == same && way.returns < kMostReturns) {
            way.frozen = same;
            way.matching = false;
        }
    }
    ContentMatcher::accepted(element);
}

}  // namespace netxml
