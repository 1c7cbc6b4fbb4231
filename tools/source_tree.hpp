// A document as a tree, and where its elements stand in the source.
#pragma once

#include "netxml/dom.h"
#include "source_text.hpp"

#include <cstddef>
#include <memory>
#include <string>

namespace netxml::tool {

struct DeleteTree {
    void operator()(XML_DOM_Node* root) const { XML_DOM_DelNode(root); }
};
using Tree = std::unique_ptr<XML_DOM_Node, DeleteTree>;

// Builds the tree of a document that source.parse() has accepted; throws Failure when a tree cannot
// hold it.
Tree buildTree(SourceText& source);

// The offset of an element's start tag in `text`, which the tree was made of. `node` is an element
// of the tree.
std::size_t startTagOffset(std::string_view text, const Tree& tree, const XML_DOM_Node* node);

// An element's path in UTF-8; of an over-long one the end.
std::string shownPath(const XML_DOM_Node* node);

}  // namespace netxml::tool
