// Matching child elements with model groups: greedily, particle by particle, with counters.
//
// The matcher goes on until a child has to be checked by a declaration, says which, and is told
// when that has been done. It never looks below a child, so documents may be as deep as they like.
#pragma once

#include "schema/validate/first_set.hpp"
#include "schema/validate/open_element.hpp"
#include "schema/validate/verdict.hpp"

namespace netxml {

enum class [[nodiscard]] MatchStep{
    Ended,  // the group has ended without a violation
    Check,  // the element's child is to be checked by `wanted`, or to be passed over where that is
            // nullptr; then accepted() is to be called
    Stop    // a violation or failure is recorded
};

class ContentMatcher {
public:
    ContentMatcher(ElementMatch& elements, ChunkStack& memory, Verdict& verdict) noexcept
        : elements_{elements}, firstSets_{elements, facts_}, memory_{memory}, verdict_{verdict}
    {
    }

    // Begins with the content model of an element. False when that is broken or cannot be begun.
    [[nodiscard]] bool begin(OpenElement& element, const Schema_ModelGroup& model) noexcept;

    // Goes on with the groups that have been begun. Ended when there are none (any more).
    MatchStep advance(OpenElement& element) noexcept;

    // The child has been checked: it counts, and the caller goes on to the next one.
    static void accepted(OpenElement& element) noexcept;

private:
    [[nodiscard]] bool beginGroup(OpenElement& element, const Schema_ModelGroup& group,
                                  GroupFacts facts) noexcept;
    [[nodiscard]] bool neverGroup(OpenElement& element, const Schema_ModelGroup& group,
                                  GroupFacts facts) noexcept;
    [[nodiscard]] bool push(OpenElement& element, const Schema_ModelGroup& group,
                            GroupFacts facts) noexcept;
    void pop(OpenElement& element) noexcept;

    MatchStep stepChoice(OpenElement& element, GroupFrame& frame) noexcept;
    MatchStep stepSequence(OpenElement& element, GroupFrame& frame) noexcept;
    MatchStep stepAll(OpenElement& element, GroupFrame& frame) noexcept;

    MatchStep beginParticle(OpenElement& element, const Schema_Object& particle,
                            bool repeatable) noexcept;
    MatchStep endRun(OpenElement& element) noexcept;
    bool passEnds(const OpenElement& element, GroupFrame& frame) const noexcept;
    MatchStep endGroup(OpenElement& element, GroupFrame& frame) noexcept;
    MatchStep endAll(OpenElement& element, const GroupFrame& frame) noexcept;

    MatchStep run(OpenElement& element) noexcept;
    bool runMatches(OpenElement& element) noexcept;
    bool mayGoOn(const OpenElement& element) const noexcept;
    bool runTooShort(const OpenElement& element) noexcept;
    bool expected(const OpenElement& element, const Schema_ElementDecl& decl) noexcept;
    bool wrongCount(const OpenElement& element, const char* name) noexcept;
    bool missing(const OpenElement& element, const Schema_ModelGroup& group) noexcept;

    ElementMatch& elements_;
    GroupFactsTable facts_;
    FirstSets firstSets_;
    ChunkStack& memory_;
    Verdict& verdict_;
};

}  // namespace netxml
