// All violations of a document: how validation goes on behind the first one.
//
// The library stops at the first violation. What lies behind it is validated by itself, from the
// inside outward: of the element with the violation and of each element around it the children
// behind the place, each by the declaration that its parent's type has for it, in whatever order
// and number they stand, and then the attributes. So an element is validated once, and what is
// found follows from nothing that was found before.
#pragma once

#include "child_index.hpp"
#include "content_shape.hpp"
#include "element_validator.hpp"
#include "loose_types.hpp"
#include "other_attributes.hpp"
#include "violation.hpp"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace netxml::tool {

struct Findings {
    std::vector<Violation> violations;  // the first one is the library's
    bool more = false;                  // there are more than were asked for
    bool broken = false;  // from some place on there was no verdict: the schema is broken, or
                          // memory has run out
};

class ValidationRun {
public:
    // The schema must live as long as the run; any number of runs may use it at a time. The tree is
    // changed while it is validated, and is as it was in the end, but for some declarations of
    // namespaces that are in scope anyway.
    ValidationRun(const TopLevelIndex& schema, XML_DOM_Node* documentElement);

    // Finds `limit` violations at most, all for 0. To be called once. Throws std::bad_alloc.
    Findings run(std::size_t limit);

private:
    // A type as far as something behind a violation has been validated by it.
    struct KnownType {
        KnownType(const Schema_ComplexType& described, const TopLevelIndex& schema)
            : type{described}, children{described, schema}, loose{described, children.particles()},
              shape{described}, isEmpty{!described.derivation && !described.content}
        {
        }
        const Schema_ComplexType& type;
        ChildIndex children;
        LooseTypes loose;
        ContentShape shape;
        bool isEmpty;
        bool isValidBare = false;  // an element without attributes has none wrong
        // Declarations of elements that fulfil the content model alone.
        std::unordered_set<const Schema_ElementDecl*> fulfilling;
    };

    // An element whose rest is to be validated. The innermost one comes last.
    struct Rest {
        XML_DOM_Node* element = nullptr;
        KnownType* type = nullptr;
        XML_DOM_Node* next = nullptr;  // the first child that is to be validated, if any
        std::uint32_t index = 0;       // how many elements stand before it
        std::uint32_t streak = 0;      // how many children in a row were validated without a find
        bool isModelOpen = false;      // the content model was not seen to its end
        bool isExplained = false;      // the first unknown child is what has been reported, if it
        const Schema_ElementDecl* missing = nullptr;  // stands where this one must, if that is told
        const Schema_ElementDecl* withText = nullptr;  // the content is to be validated as it is,
                                                       // but for its text
    };

    bool validate(XML_DOM_Node* element, const Schema_ElementDecl& decl);
    bool validateLoosely(XML_DOM_Node* element, const Schema_ComplexType& type);
    void report();
    void reportUnknown(const XML_DOM_Node* child);
    bool isExplained(Rest& rest, XML_DOM_Node* child);
    bool standsForMissing(const Rest& rest, XML_DOM_Node* child);

    void follow(XML_DOM_Node* top, const Schema_ElementDecl* decl);
    void followAt(XML_DOM_Node* node, const Schema_ElementDecl& decl);
    void followChild(XML_DOM_Node* child, const KnownType& parent);
    void pushFrom(XML_DOM_Node* element, KnownType& type, XML_DOM_Node* child);
    void push(XML_DOM_Node* element, KnownType& type, XML_DOM_Node* next, std::uint32_t index);

    void goOn();
    void validateModel(Rest& rest);
    bool violatesModel(const Rest& rest);
    void explain(Rest& rest);
    void validateRest(Rest& rest);
    void validateNext(Rest& rest);
    void validateAttributes(const Rest& rest);
    void reportAttribute(const Rest& rest);
    void validateOtherAttributes(XML_DOM_Node* element, const KnownType* type);
    void validateWithText(const Rest& rest);
    void validateValue(XML_DOM_Node* element, const Schema_ElementDecl& decl);

    KnownType* known(const Schema_ElementDecl& decl);

    const TopLevelIndex& schema_;
    XML_DOM_Node* const documentElement_;
    ElementValidator validator_;
    ElementValidator shapeValidator_;
    ViolationMaker maker_;
    std::unordered_map<const Schema_ComplexType*, std::unique_ptr<KnownType>> types_;
    std::vector<Rest> rests_;
    Schema_ValidateResult result_{};  // of the latest validation
    std::size_t limit_ = 0;
    Findings findings_;
};

}  // namespace netxml::tool
