#include "parser/tree_builder.hpp"

#include "dom/make.hpp"

namespace netxml {

bool TreeBuilder::beginDocument(XML_DOM_Node* element) noexcept
{
    element->document = makeDocument(arena_, element);
    // Records of an arena are deleted from the root down, also this one alone.
    if (element->document || arena_) root_ = element;
    return element->document != nullptr;
}

bool TreeBuilder::enterElement(std::string_view name) noexcept
{
    XML_DOM_Node* element = makeElement(arena_, name);
    return element && enter(element);
}

bool TreeBuilder::refuse(XML_DOM_Node* element) noexcept
{
    if (!arena_) XML_DOM_DelNode(element);  // an arena goes as a whole
    current_ = nullptr;
    return false;
}

XML_DOM_NsDecl* TreeBuilder::declare(std::string_view prefix, std::string_view name) noexcept
{
    XML_DOM_NsDecl* decl = makeDecl(arena_, prefix, name);
    if (!decl) return nullptr;
    touch();
    appendDecl(current_, decl);
    return decl;
}

XML_DOM_Attr* TreeBuilder::addAttribute(std::string_view name, std::string_view value) noexcept
{
    XML_DOM_Attr* attr = makeAttr(arena_, name, value);
    if (attr) add(attr);
    return attr;
}

bool TreeBuilder::addTextual(XML_DOM_NodeType type, std::string_view value) noexcept
{
    if (!takesChildren()) return false;
    XML_DOM_Node* node = makeTextual(arena_, type, value);
    if (node) add(node);
    return node != nullptr;
}

}  // namespace netxml
