// An element whose content is being checked. Open elements lie one in another on a heap stack, so
// depth costs memory and no stack.
#pragma once

#include "netxml/schema.h"
#include "schema/validate/group_frame.hpp"
#include "schema/validate/known_content.hpp"
#include "schema/validate/subject.hpp"
#include "schema/validate/type_facts.hpp"

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

// The known way through the content that is being checked.
struct ContentWay {
    ContentPart* part;           // nullptr: no content is being checked
    const XML_DOM_Node* start;   // its first child
    ContentState* state;         // nullptr: the way is lost
    ContentState* next;          // behind the child that is being checked
    const ContentState* frozen;  // where the matcher has been left to come back to
    unsigned returns;            // to the start, so far
    bool matching;               // what comes is not known: the matcher says

    bool isKnown() const noexcept { return part && !matching; }
};

struct OpenElement {
    OpenElement* outer;
    ChunkStack::Mark memory;
    const XML_DOM_Node* node;
    const char* defaultNamespace;  // in scope of the children
    TypeFacts* type;
    ContentPart* parts;  // what is still to be checked
    ContentWay way;
    Subject child;                     // the next child element that nothing has taken
    GroupFrame* frame;                 // the innermost group that is being matched
    const Schema_ElementDecl* wanted;  // by which the child is to be checked next
    const ElementFacts* facts;         // of that declaration
    LeafRun run;
};

inline void toNextChild(OpenElement& element) noexcept
{
    element.child = nextSubject(element.child, element.defaultNamespace);
}

}  // namespace netxml
