// What the content of a complex type consists of, along the types that it is derived from.
#pragma once

#include "netxml/schema.h"
#include "support/chunk_stack.hpp"

namespace netxml {

struct ContentState;

// What is known of matching elements with one model.
struct ModelMemory {
    ContentState* first;  // before the first child; nullptr: nothing yet
    unsigned states;
};

// One part of the content, in the order in which the parts are checked: the base's come first.
// Exactly one of the pointers behind the first two is set.
struct ContentPart {
    ContentPart* next;
    ModelMemory* memory;                 // of the model; nullptr: nothing is to be kept
    const Schema_ModelGroup* model;      // child elements
    const Schema_SimpleType* value;      // the text, by a simple type
    const Schema_Derivation* restricts;  // the text, by the facets of a restriction
};

struct ContentPlan {
    ContentPart* first;  // nullptr: nothing is checked
    bool hasModel;       // child elements may stand
    unsigned partCount;
    bool made;  // false: memory ran out
};

// The parts lie in `memory`. The bases must be sound (derivation.hpp).
ContentPlan planContent(const Schema_ComplexType& type, ChunkStack& memory) noexcept;

}  // namespace netxml
