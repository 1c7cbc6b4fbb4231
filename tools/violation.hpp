// A violation, kept small: there may be many.
#pragma once

#include "netxml/dom.h"
#include "netxml/schema.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace netxml::tool {

struct Violation {
    const XML_DOM_Node* node;  // the element that it is about
    Schema_ErrorCode code;
    std::string sentence;  // in the tree's encoding, with a mark where the path belongs
};

// Makes violations of results. The library would search for the path of each element by itself,
// which takes time for each of its siblings; here, that is done for all violations at once.
class ViolationMaker {
public:
    explicit ViolationMaker(const XML_DOM_Node* documentElement);

    // Throws std::bad_alloc.
    Violation make(const Schema_ValidateResult& result) const;

private:
    struct DeleteNode {
        void operator()(XML_DOM_Node* node) const { XML_DOM_DelNode(node); }
    };

    const XML_DOM_Node* documentElement_;
    std::unique_ptr<XML_DOM_Node, DeleteNode> mark_;  // its path is the mark
};

// So many bytes of a path, from its beginning, stand in a sentence of the library.
inline constexpr std::size_t kPathInSentence = 511;

// The sentence with the path of its element, in the tree's encoding.
std::string sentenceWithPath(const Violation& violation, std::string_view path);

}  // namespace netxml::tool
