// Validation of one element by any declaration, wherever the element lies.
#pragma once

#include "netxml/dom.h"
#include "netxml/schema.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace netxml::tool {

class ElementValidator {
public:
    // The schema must live as long as this.
    explicit ElementValidator(const Schema_Root& root);
    ElementValidator(const ElementValidator&) = delete;
    ElementValidator& operator=(const ElementValidator&) = delete;

    // Validates an element with all below it as if `decl` was its declaration, which is no
    // reference. False when there is no verdict. Throws std::bad_alloc.
    bool validate(XML_DOM_Node* element, const Schema_ElementDecl& decl,
                  Schema_ValidateResult& result);

private:
    Schema_ElementDecl decl_{};
    std::vector<const void*> elements_;  // the declaration and behind it the top-level ones
    Schema_Root root_;
};

}  // namespace netxml::tool
