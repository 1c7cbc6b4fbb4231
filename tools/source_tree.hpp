// A document as a tree, and where its elements stand in the source.
#pragma once

#include "netxml/dom.h"
#include "source_text.hpp"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace netxml::tool {

struct DeleteTree {
    void operator()(XML_DOM_Node* root) const { XML_DOM_DelNode(root); }
};
using Tree = std::unique_ptr<XML_DOM_Node, DeleteTree>;

// Builds the tree of a document that source.parse() has accepted; throws Failure when a tree cannot
// hold it.
Tree buildTree(SourceText& source);

// Where elements stand in the source, and their paths. Finding them takes one pass over the tree
// and the text, however many they are.
class ElementPlaces {
public:
    // `text` is what the tree was made of, and `elements` are in the tree.
    ElementPlaces(std::string_view text, const Tree& tree,
                  const std::vector<const XML_DOM_Node*>& elements);

    // The offset of the start tag.
    std::size_t offsetOf(const XML_DOM_Node* element) const;
    // The path in the encoding of the tree as the library writes it, of which `size` bytes at least
    // are given if there are so many.
    std::string beginningOfPath(const XML_DOM_Node* element, std::size_t size) const;
    // The path in UTF-8; of an over-long one the end.
    std::string shownPath(const XML_DOM_Node* element) const;

private:
    void addPositions(const XML_DOM_Node* parent);
    std::string stepOf(const XML_DOM_Node* element) const;

    std::unordered_map<const XML_DOM_Node*, std::size_t> offsets_;
    // Among the siblings of the same name, of the elements and all around them.
    std::unordered_map<const XML_DOM_Node*, std::size_t> positions_;
};

}  // namespace netxml::tool
