// An element whose content is being checked. Open elements lie one in another on a heap stack, so
// depth costs memory and no stack.
#pragma once

#include "netxml/schema.h"
#include "schema/validate/content_plan.hpp"
#include "schema/validate/group_frame.hpp"
#include "schema/validate/subject.hpp"

#include <cstdint>

namespace netxml {

// A particle that is no group, while it takes child after child.
struct LeafRun {
    const Schema_ElementDecl* element;  // the particle; nullptr when it is a wildcard
    const Schema_ElementDecl* final;    // what its references lead to
    const Schema_Wildcard* wildcard;
    std::uint64_t count;
    std::uint32_t min;
    std::uint32_t max;
    bool active;
    bool repeatable;  // its group may repeat by it alone
};

struct OpenElement {
    OpenElement* outer;
    ChunkStack::Mark memory;
    const XML_DOM_Node* node;
    const char* defaultNamespace;  // in scope of the children
    const Schema_ComplexType* type;
    ContentPart* parts;                // what is still to be checked
    Subject child;                     // the next child element that nothing has taken
    GroupFrame* frame;                 // the innermost group that is being matched
    const Schema_ElementDecl* wanted;  // by which the child is to be checked next
    LeafRun run;
};

}  // namespace netxml
