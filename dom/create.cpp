// Creating nodes.
#include "dom/link.hpp"
#include "dom/make.hpp"
#include "netxml/parser.h"

#include <memory>

namespace netxml {
namespace {

struct DeleteNode {
    void operator()(XML_DOM_Node* node) const noexcept { XML_DOM_DelNode(node); }
};
using NodeOwner = std::unique_ptr<XML_DOM_Node, DeleteNode>;

XML_DOM_Node* createTextual(XML_DOM_NodeType type, const char* text) noexcept
{
    return text ? makeTextual(nullptr, type, text) : nullptr;
}

XML_DOM_Node* createElementWith(const char* name, XML_DOM_NodeType type, const char* text) noexcept
{
    NodeOwner element{XML_DOM_CreateElementNode(name)};
    if (!element || !text) return element.release();
    XML_DOM_Node* child = createTextual(type, text);
    if (!child) return nullptr;
    appendChild(element.get(), child);
    return element.release();
}

}  // namespace
}  // namespace netxml

using namespace netxml;

XML_DOM_Node* XML_DOM_CreateElementNodeInner(const char* name)
{
    return name ? makeElement(nullptr, name) : nullptr;
}

XML_DOM_Node* XML_DOM_CreateElementNode(const char* name)
{
    return XML_CheckQName(name) == XML_RET_OK ? makeElement(nullptr, name) : nullptr;
}

XML_DOM_Node* XML_DOM_CreateTextualNodeInner(XML_DOM_NodeType type, const char* data, size_t length)
{
    return data ? makeTextual(nullptr, type, {data, length}) : nullptr;
}

XML_DOM_Node* XML_DOM_CreateTextNode(const char* text)
{
    return createTextual(XML_DOM_NODE_TEXT, text);
}

XML_DOM_Node* XML_DOM_CreateCDataNode(const char* text)
{
    return createTextual(XML_DOM_NODE_CDATA, text);
}

XML_DOM_Node* XML_DOM_CreateElementWithText(const char* name, const char* text)
{
    return createElementWith(name, XML_DOM_NODE_TEXT, text);
}

XML_DOM_Node* XML_DOM_CreateElementWithCData(const char* name, const char* text)
{
    return createElementWith(name, XML_DOM_NODE_CDATA, text);
}
