// Which declaration an element of the document belongs to.
#pragma once

#include "netxml/schema.h"
#include "schema/validate/subject.hpp"

#include <cstddef>

namespace netxml {

class ElementMatch {
public:
    explicit ElementMatch(const Schema_Root& root) noexcept : root_{root} {}

    // The first top-level element with the subject's name and namespace, or nullptr. The form of
    // declarations has no say here.
    const Schema_ElementDecl* topLevel(const Subject& subject) noexcept;

    // The first top-level element like that whose substitution group is the given head's.
    const Schema_ElementDecl* substitute(const Schema_ElementDecl& head,
                                         const Subject& subject) const noexcept;

    // Whether the subject matches a particle. `final` is what the particle's references lead to.
    // An abstract one never matches by its own name.
    bool matches(const Schema_ElementDecl& particle, const Schema_ElementDecl& final,
                 const Subject& subject) noexcept;

    // The same without the form rule, as the document element is matched.
    bool matchesGlobally(const Schema_ElementDecl& final, const Subject& subject) noexcept;

    // Whether the subject matches a wildcard. `found` becomes its top-level declaration, or nullptr
    // when there is none or none is asked for.
    bool matches(const Schema_Wildcard& wildcard, const Subject& subject,
                 const Schema_ElementDecl*& found) noexcept;

private:
    struct Answer {
        const char* name;  // nullptr: nothing is kept here
        const char* namespaceName;
        const Schema_ElementDecl* found;
    };
    static constexpr std::size_t kAnswers = 32;

    bool isSubstitute(const Schema_ElementDecl& head, const Subject& subject) noexcept;
    const Schema_ElementDecl* search(const Subject& subject) const noexcept;

    // A local name's namespace against what a particle expects: mostly the one just compared.
    bool isExpected(const char* namespaceName, const char* expected) noexcept;

    const Schema_Root& root_;
    const char* comparedName_ = nullptr;
    const char* comparedExpected_ = nullptr;
    bool comparedAlike_ = false;
    Answer answers_[kAnswers] = {};  // the latest of each hash
};

}  // namespace netxml
