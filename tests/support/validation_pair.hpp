// One random schema with one document, as the library and the plain rules see it.
//
// Some schemas are broken at one place. The library looks at the whole of a content model before it
// uses it, the plain rules only at what they come by; so where a content model is broken, the
// library may give up where the plain rules reach a verdict. Everything else must be the same.
#pragma once

#include "tests/support/random_instance.hpp"
#include "tests/support/random_schema.hpp"

#include <functional>
#include <string>

struct ValidationOutcome {
    uint32_t status = 0;
    Schema_ValidateResult result{};
};

class ValidationPair {
public:
    explicit ValidationPair(Random& random);

    // Whether both reach the same status and the same result, in every field. What the library
    // reached is shown while the tree is still there, if anyone wants to look.
    using Look =
        std::function<void(const XML_DOM_Node*, const Schema_Root*, const ValidationOutcome&)>;
    bool agree(const Look& look = {});
    // What the smallest pair looks like about which the two differ.
    std::string explain();
    // What the two said last, where they did not agree.
    const std::string& difference() const { return difference_; }

    // Breaks the schema at one more place.
    void breakOnce(Random& random);

    const SchemaGraph& graph() const { return graph_; }
    const Instance& instance() const { return instance_; }
    const ValidationOutcome& engine() const { return engine_; }
    const ValidationOutcome& plain() const { return plain_; }
    bool broken() const { return broken_; }
    bool tolerated() const { return tolerated_; }

private:
    const XML_DOM_Node* subject(const XML_DOM_Node* root) const;

    SchemaGraph graph_;
    Instance instance_;
    bool belowRoot_ = false;    // the first child is validated, in the place of the root
    bool broken_ = false;       // the schema, at some place
    bool modelBroken_ = false;  // and perhaps within a content model
    bool tolerated_ = false;
    ValidationOutcome engine_;
    ValidationOutcome plain_;
    std::string difference_;
};
