// Which particle of a model group an element can begin.
#pragma once

#include "schema/validate/element_match.hpp"
#include "schema/validate/group_facts.hpp"

#include <cstdint>

namespace netxml {

// The groups asked about must not be broken (GroupFacts). Answers depend on the group and on the
// element's name and namespace; the latest ones are kept. Within one search a group that lies in
// several others is searched once.
class FirstSets {
public:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    FirstSets(ElementMatch& elements, GroupFactsTable& facts) noexcept
        : elements_{elements}, facts_{facts}
    {
    }

    // The index of the first particle that the subject can begin, or kNone. Of an all group, the
    // first that it matches.
    std::uint32_t pick(const Schema_ModelGroup& group, const Subject& subject) noexcept;

    // Whether the subject can begin a repetition of the group. An all group says no.
    bool canStart(const Schema_ModelGroup& group, const Subject& subject) noexcept;

private:
    struct Answer {
        const Schema_ModelGroup* group;  // nullptr: nothing is kept here
        const char* name;
        const char* namespaceName;
        std::uint32_t picked;
    };
    static constexpr std::size_t kAnswers = 64;

    bool canStart(const Schema_Object& particle, const Subject& subject) noexcept;
    std::uint32_t answer(const Schema_ModelGroup& group, const Subject& subject) noexcept;
    std::uint32_t search(const Schema_ModelGroup& group, const Subject& subject) noexcept;

    ElementMatch& elements_;
    GroupFactsTable& facts_;
    Answer answers_[kAnswers] = {};
    std::uint64_t search_ = 0;  // the number of the latest one
};

}  // namespace netxml
