#include "schema/validate/element_match.hpp"

#include "schema/validate/declaration.hpp"

#include <cstdint>

namespace netxml {
namespace {

bool standsFor(const Schema_ElementDecl& decl, const Schema_ElementDecl& head) noexcept
{
    return decl.substitutionGroupName && sameText(decl.substitutionGroupName, head.name) &&
           sameText(decl.substitutionGroupNamespace, head.namespaceName);
}

}  // namespace

const Schema_ElementDecl* ElementMatch::search(const Subject& subject) const noexcept
{
    return firstDeclaration<Schema_ElementDecl>(root_.elements, [&](const auto& decl) noexcept {
        return isCalled(decl, subject.name(), subject.namespaceName);
    });
}

const Schema_ElementDecl* ElementMatch::topLevel(const Subject& subject) noexcept
{
    Answer& answer = answers_[subject.hash() % kAnswers];
    if (!answer.name || !sameText(answer.name, subject.name()) ||
        !sameText(answer.namespaceName, subject.namespaceName))
        answer = Answer{subject.name(), subject.namespaceName, search(subject)};
    return answer.found;
}

const Schema_ElementDecl* ElementMatch::substitute(const Schema_ElementDecl& head,
                                                   const Subject& subject) const noexcept
{
    return firstDeclaration<Schema_ElementDecl>(root_.elements, [&](const auto& decl) noexcept {
        return standsFor(decl, head) && isCalled(decl, subject.name(), subject.namespaceName);
    });
}

bool ElementMatch::matches(const Schema_ElementDecl& particle, const Schema_ElementDecl& final,
                           const Subject& subject) noexcept
{
    if (final.abstract == 1) return isSubstitute(final, subject);
    return sameText(final.name, subject.name()) &&
           isExpected(subject.namespaceName,
                      expectedNamespace(particle, final, root_.elementFormDefault));
}

bool ElementMatch::isExpected(const char* namespaceName, const char* expected) noexcept
{
    if (!namespaceName || !expected) return namespaceMatches(namespaceName, expected, nullptr);
    if (namespaceName != comparedName_ || expected != comparedExpected_) {
        comparedName_ = namespaceName;
        comparedExpected_ = expected;
        comparedAlike_ = namespaceMatches(namespaceName, expected, nullptr);
    }
    return comparedAlike_;
}

bool ElementMatch::matchesGlobally(const Schema_ElementDecl& final, const Subject& subject) noexcept
{
    if (final.abstract == 1) return isSubstitute(final, subject);
    return isCalled(final, subject.name(), subject.namespaceName);
}

// The first top-level element of the subject's name decides.
bool ElementMatch::isSubstitute(const Schema_ElementDecl& head, const Subject& subject) noexcept
{
    const Schema_ElementDecl* found = topLevel(subject);
    return found && standsFor(*found, head);
}

bool ElementMatch::matches(const Schema_Wildcard& wildcard, const Subject& subject,
                           const Schema_ElementDecl*& found) noexcept
{
    found = nullptr;
    if (!namespaceMatches(subject.namespaceName, wildcard.namespaceName, wildcard.targetNamespace))
        return false;
    if (wildcard.processContents == SCHEMA_PROCESS_SKIP) return true;
    found = topLevel(subject);
    return found || wildcard.processContents != SCHEMA_PROCESS_STRICT;
}

}  // namespace netxml
