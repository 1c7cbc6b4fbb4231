// What declarations of elements and of attributes have in common.
#pragma once

#include "netxml/schema.h"
#include "schema/validate/namespace_match.hpp"
#include "support/text.hpp"

namespace netxml {

// The record at the end of a chain of references, or nullptr when the chain runs in a circle
// (Brent's algorithm: one pointer stays behind while the other goes on for twice as long).
template <class Record>
const Record* resolve(const Record* record) noexcept
{
    const Record* behind = record;
    std::size_t steps = 0;
    std::size_t limit = 1;
    while (record->ref) {
        record = record->ref;
        if (record == behind) return nullptr;
        if (++steps == limit) {
            behind = record;
            steps = 0;
            limit *= 2;
        }
    }
    return record;
}

// The namespace that a declaration asks for. `final` is what its references lead to; that is
// global, so its namespace counts. Otherwise the form says whether it does.
template <class Declaration>
const char* expectedNamespace(const Declaration& declaration, const Declaration& final,
                              Schema_Form defaultForm) noexcept
{
    const Schema_Form form = final.form == SCHEMA_FORM_DEFAULT ? defaultForm : final.form;
    return declaration.ref || form == SCHEMA_FORM_QUALIFIED ? final.namespaceName : nullptr;
}

// Whether a global declaration is the one of a name and namespace. Its form has no say.
template <class Declaration>
bool isCalled(const Declaration& declaration, const char* name, const char* namespaceName) noexcept
{
    return sameText(declaration.name, name) &&
           namespaceMatches(namespaceName, declaration.namespaceName, nullptr);
}

// The first registered declaration that passes a test, or nullptr.
template <class Declaration, class Test>
const Declaration* firstDeclaration(const Schema_ObjectList& list, Test test) noexcept
{
    for (std::uint32_t i = 0; i < list.count; ++i) {
        const auto* declaration = static_cast<const Declaration*>(list.items[i]);
        if (declaration && test(*declaration)) return declaration;
    }
    return nullptr;
}

}  // namespace netxml
