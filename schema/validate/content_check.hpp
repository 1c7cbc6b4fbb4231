// Checking the child elements of an element: along the known way as far as there is one, from there
// on with the matcher, which makes it known.
#pragma once

#include "schema/validate/content_matcher.hpp"
#include "schema/validate/known_content.hpp"

namespace netxml {

class ContentCheck {
public:
    // What becomes known lies in `kept`, which must not be released while this is used.
    ContentCheck(ElementMatch& elements, ElementFactsTable& facts, ChunkStack& memory,
                 ChunkStack& kept, Verdict& verdict) noexcept
        : matcher_{elements, memory, verdict}, facts_{facts}, known_{kept}, verdict_{verdict}
    {
    }

    // Begins with a part of an element's content that is a model. False when that is broken or
    // cannot be begun.
    [[nodiscard]] bool begin(OpenElement& element, ContentPart& part) noexcept;

    // Begins with a part where something is known of it; false, and nothing is begun, elsewhere.
    bool beginKnown(OpenElement& element, ContentPart& part) noexcept
    {
        ContentState* first = part.memory ? part.memory->first : nullptr;
        if (!first || first->isNew()) return false;
        element.way = ContentWay{&part, element.child.node, first, nullptr, nullptr, 0, false};
        return true;
    }

    // What is known of the element's child where the way has come to; nullptr: nothing.
    const ContentStep* find(const ContentState& at, const Subject& child, bool wide) noexcept
    {
        return known_.find(at, child, wide);
    }

    // Check: the child is to be checked by `facts`; then accepted() is to be called. Ended when
    // there is no content (any more).
    MatchStep advance(OpenElement& element) noexcept;

    // The child has been checked: the next one is its sibling.
    void accepted(OpenElement& element) noexcept
    {
        if (element.way.matching) learn(element);
        else element.way.state = element.way.next;
        toNextChild(element);
    }

private:
    MatchStep follow(OpenElement& element) noexcept;
    MatchStep match(OpenElement& element) noexcept;
    MatchStep matchAgain(OpenElement& element) noexcept;
    void learn(OpenElement& element) noexcept;

    ContentMatcher matcher_;
    ElementFactsTable& facts_;
    KnownContent known_;
    Verdict& verdict_;
};

}  // namespace netxml
