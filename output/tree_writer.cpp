#include "output/tree_writer.hpp"

namespace netxml {

void TreeWriter::prefix(const XML_DOM_NsDecl* bound) noexcept
{
    if (bound->prefix) out_.string(bound->prefix, wide_.has(bound->home, Home::kFirstString));
    out_.markup(":");
}

void TreeWriter::value(const char* text, bool wide) noexcept
{
    out_.markup("=\"");
    out_.escaped(text, wide);
    out_.markup("\"");
}

void TreeWriter::nameSpace(const XML_DOM_NsDecl* decl) noexcept
{
    if (leavesOut(decl, flags_)) return;
    out_.markup(" xmlns");
    if (decl->prefix) {
        out_.markup(":");
        out_.string(decl->prefix, wide_.has(decl->home, Home::kFirstString));
    }
    value(decl->name, wide_.has(decl->home, Home::kSecondString));
}

void TreeWriter::attribute(const XML_DOM_Attr* attr) noexcept
{
    out_.markup(" ");
    if (attr->nameSpace) prefix(attr->nameSpace);
    out_.string(attr->name, wide_.has(attr->home, Home::kFirstString));
    value(attr->value, wide_.has(attr->home, Home::kSecondString));
}

void TreeWriter::startTag(const XML_DOM_Node* element, TagMode mode) noexcept
{
    out_.markup("<");
    if (element->nameSpace) prefix(element->nameSpace);
    out_.string(element->name, wide_.has(element->home, Home::kFirstString));
    for (const XML_DOM_NsDecl* decl = element->firstNs; decl; decl = decl->next) nameSpace(decl);
    for (const XML_DOM_Attr* attr = element->firstAttr; attr; attr = attr->next) attribute(attr);
    if (mode == TagMode::Whole && !element->firstChild) out_.markup("/>");
    else out_.markup(">");
}

void TreeWriter::content(const XML_DOM_Node* node) noexcept
{
    if (node->type == XML_DOM_NODE_TEXT) {
        out_.escaped(node->value, wide_.has(node->home, Home::kSecondString));
    } else if (node->type == XML_DOM_NODE_CDATA) {
        out_.markup("<![CDATA[");
        out_.string(node->value, wide_.has(node->home, Home::kSecondString));
        out_.markup("]]>");
    }
}

void TreeWriter::endTag(const XML_DOM_Node* element) noexcept
{
    out_.markup("</");
    if (element->nameSpace) prefix(element->nameSpace);
    out_.string(element->name, wide_.has(element->home, Home::kFirstString));
    out_.markup(">");
}

std::uint32_t TreeWriter::declaration(const XML_DOM_Node* node) noexcept
{
    if (!node->document) return status();
    out_.markup("<?xml version=\"");
    out_.string(node->document->version, false);
    out_.markup("\" encoding=\"");
    out_.string(encodingName(node->document->encoding), false);
    out_.markup("\"?>");
    return status();
}

std::uint32_t TreeWriter::begin(const XML_DOM_Node* node, TagMode mode) noexcept
{
    if (node->type == XML_DOM_NODE_ELEMENT) startTag(node, mode);
    else content(node);
    return status();
}

std::uint32_t TreeWriter::end(const XML_DOM_Node* node, TagMode mode) noexcept
{
    const bool closed = mode == TagMode::Whole && !node->firstChild;
    if (node->type == XML_DOM_NODE_ELEMENT && !closed) endTag(node);
    return status();
}

std::uint32_t TreeWriter::whole(const XML_DOM_Node* top) noexcept
{
    const XML_DOM_Node* node = top;
    while (out_.ok()) {
        if (node->type == XML_DOM_NODE_ELEMENT) {
            startTag(node, TagMode::Whole);
            if (node->firstChild) {
                node = node->firstChild;
                continue;
            }
        } else {
            content(node);
        }
        while (node != top && !node->nextSibling) {
            node = node->parent;
            endTag(node);
        }
        if (node == top) break;
        node = node->nextSibling;
    }
    return status();
}

}  // namespace netxml
