// How the names in a document are compared with those in a schema: by the rules of validation.
#pragma once

#include "netxml/schema.h"

#include <cstddef>
#include <string_view>

namespace netxml::tool {

// A NULL text is the empty one.
inline std::string_view textOrEmpty(const char* text)
{
    return text ? std::string_view{text} : std::string_view{};
}

// Whether a document's namespace satisfies a constraint: a name, names between blanks, "##any", or
// "##other", which excludes `target` and none.
bool namespaceMatches(const char* name, const char* constraint, const char* target);

// The record that references lead to; nothing when they run in a circle. (One pointer stays behind
// while the other goes on for twice as long: in a circle they meet.)
template <class Record>
const Record* recordAtEnd(const Record* record)
{
    const Record* behind = record;
    std::size_t steps = 0;
    for (std::size_t limit = 1; record && record->ref;) {
        record = record->ref;
        if (record == behind) return nullptr;
        if (++steps != limit) continue;
        behind = record;
        steps = 0;
        limit *= 2;
    }
    return record;
}

// The namespace that a particle or an attribute use asks for. `final` is what its references lead
// to.
template <class Declaration>
const char* expectedNamespace(const Declaration& particle, const Declaration& final,
                              Schema_Form defaultForm)
{
    const Schema_Form form = final.form == SCHEMA_FORM_DEFAULT ? defaultForm : final.form;
    return particle.ref || form == SCHEMA_FORM_QUALIFIED ? final.namespaceName : nullptr;
}

// Whether a declaration names an abstract one as the head of its substitution group.
bool standsFor(const Schema_ElementDecl& decl, const Schema_ElementDecl& head);

}  // namespace netxml::tool
