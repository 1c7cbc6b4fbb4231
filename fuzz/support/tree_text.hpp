// Trees as the accessors show them, and as they are written.
#pragma once

#include "netxml/netxml.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct DeleteTree {
    void operator()(XML_DOM_Node* node) const { XML_DOM_DelNode(node); }
};
using Tree = std::unique_ptr<XML_DOM_Node, DeleteTree>;

enum class Texts {
    AsTheyAre,
    Joined,  // neighbours that are text count as one: what is written does not keep them apart
};

// Every node with its kind, names, namespaces, attributes and value, one a line.
std::string described(const XML_DOM_Node* top, Texts texts = Texts::AsTheyAre);

// XML_DOM_TranslateStr(), or nothing where it fails.
std::optional<std::string> translated(const XML_DOM_Node* node, uint32_t flags = 0);

// The pieces of XML_DOM_OutPutTranslateStr() in a row, or nothing where it fails.
std::optional<std::string> translatedByPieces(const XML_DOM_Node* node, uint32_t flags = 0);

// XML_DOM_BuildTreeByMem(), with what it reports.
Tree treeFrom(std::string_view document, std::string* message = nullptr);

// What keeps a tree from being read back: it is written as it is on purpose.
struct Oddities {
    bool quote = false;     // in an attribute's value or a namespace name
    bool cdataEnd = false;  // in a CDATA section
    bool emptyCData = false;
};
Oddities odditiesOf(XML_DOM_Node* root, std::string_view document);  // which it was made of
