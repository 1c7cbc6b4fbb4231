#include "schema/validate/element_match.hpp"

#include "schema/validate/namespace_match.hpp"

#include <cstdint>

namespace netxml {
namespace {

bool hasName(const Schema_ElementDecl& decl, const Subject& subject) noexcept
{
    return sameText(decl.name, subject.name()) &&
           namespaceMatches(subject.namespaceName, decl.namespaceName, nullptr);
}

bool standsFor(const Schema_ElementDecl& decl, const Schema_ElementDecl& head) noexcept
{
    return decl.substitutionGroupName && sameText(decl.substitutionGroupName, head.name) &&
           sameText(decl.substitutionGroupNamespace, head.namespaceName);
}

template <class Test>
const Schema_ElementDecl* firstElement(const Schema_Root& root, Test test) noexcept
{
    for (std::uint32_t i = 0; i < root.elements.count; ++i) {
        const auto* decl = static_cast<const Schema_ElementDecl*>(root.elements.items[i]);
        if (decl && test(*decl)) return decl;
    }
    return nullptr;
}

}  // namespace

const Schema_ElementDecl* ElementMatch::search(const Subject& subject) const noexcept
{
    return firstElement(
        root_, [&](const Schema_ElementDecl& decl) noexcept { return hasName(decl, subject); });
}

const Schema_ElementDecl* ElementMatch::topLevel(const Subject& subject) noexcept
{
    Answer& answer = answers_[subject.hash % kAnswers];
    if (!answer.name || !sameText(answer.name, subject.name()) ||
        !sameText(answer.namespaceName, subject.namespaceName))
        answer = Answer{subject.name(), subject.namespaceName, search(subject)};
    return answer.found;
}

const Schema_ElementDecl* ElementMatch::substitute(const Schema_ElementDecl& head,
                                                   const Subject& subject) const noexcept
{
    return firstElement(root_, [&](const Schema_ElementDecl& decl) noexcept {
        return standsFor(decl, head) && hasName(decl, subject);
    });
}

// A reference is global, so its namespace counts; else the form says whether it does.
bool ElementMatch::matches(const Schema_ElementDecl& particle, const Schema_ElementDecl& final,
                           const Subject& subject) noexcept
{
    if (final.abstract == 1) {
        const Schema_ElementDecl* found = topLevel(subject);
        return found && standsFor(*found, final);
    }
    if (!sameText(final.name, subject.name())) return false;
    const Schema_Form form =
        final.form == SCHEMA_FORM_DEFAULT ? root_.elementFormDefault : final.form;
    const bool qualified = particle.ref || form == SCHEMA_FORM_QUALIFIED;
    return namespaceMatches(subject.namespaceName, qualified ? final.namespaceName : nullptr,
                            nullptr);
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
