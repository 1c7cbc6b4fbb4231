#include "tests/support/plain_rules.hpp"

#include <algorithm>
#include <span>

namespace plain {
namespace {

std::span<const void* const> itemsOf(const Schema_ObjectList& list)
{
    return {list.items, list.count};
}

bool isNone(const char* nameSpace)
{
    return equal(nameSpace, "");
}

const char* nameOf(const XML_DOM_Node* element)
{
    return XML_DOM_GetNodeName(element);
}

const char* namespaceOf(const XML_DOM_Node* element)
{
    const char* result = nullptr;
    XML_DOM_GetNodeNameSpace(element, nullptr, &result);
    return result;
}

bool names(const Schema_ElementDecl& substitute, const Schema_ElementDecl& head)
{
    return substitute.substitutionGroupName && equal(substitute.substitutionGroupName, head.name) &&
           equal(substitute.substitutionGroupNamespace, head.namespaceName);
}

// By a top-level declaration's own name and namespace, without the form rule.
bool matchesTop(const XML_DOM_Node* element, const Schema_ElementDecl& top)
{
    return equal(nameOf(element), top.name) &&
           namespaceMatches(namespaceOf(element), top.namespaceName, nullptr);
}

const char* byForm(Schema_Form form, Schema_Form otherwise, const char* nameSpace)
{
    if (form == SCHEMA_FORM_DEFAULT) form = otherwise;
    return form == SCHEMA_FORM_QUALIFIED ? nameSpace : nullptr;
}

}  // namespace

bool namespaceMatches(const char* instance, const char* constraint, const char* targetNamespace)
{
    if (equal(constraint, "##any")) return true;
    if (equal(instance, "##any")) return true;  // Kept: a document's namespace may be that text
    if (equal(constraint, "##other")) return !isNone(instance) && !equal(instance, targetNamespace);
    const std::string text = constraint ? constraint : "";
    if (text.find(' ') == std::string::npos) return equal(instance, constraint);
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t to = std::min(text.find(' ', from), text.size());
        if (equal(instance, text.substr(from, to - from).c_str())) return true;
        from = to + 1;
    }
    return false;
}

const Schema_ElementDecl* Names::findElement(const XML_DOM_Node* element) const
{
    for (const void* item : itemsOf(root_.elements)) {
        const auto* top = static_cast<const Schema_ElementDecl*>(item);
        if (top && matchesTop(element, *top)) return top;
    }
    return nullptr;
}

bool Names::isCalled(const XML_DOM_Node* element, const Schema_ElementDecl& decl) const
{
    return matchesTop(element, decl);
}

const Schema_AttributeDecl* Names::findAttribute(const char* name, const char* nameSpace) const
{
    for (const void* item : itemsOf(root_.attributes)) {
        const auto* top = static_cast<const Schema_AttributeDecl*>(item);
        if (top && equal(name, top->name) &&
            namespaceMatches(nameSpace, top->namespaceName, nullptr))
            return top;
    }
    return nullptr;
}

const Schema_ElementDecl* Names::findSubstitute(const XML_DOM_Node* element,
                                                const Schema_ElementDecl& head) const
{
    for (const void* item : itemsOf(root_.elements)) {
        const auto* top = static_cast<const Schema_ElementDecl*>(item);
        if (top && matchesTop(element, *top) && names(*top, head)) return top;
    }
    return nullptr;
}

bool Names::standsFor(const XML_DOM_Node* element, const Schema_ElementDecl& head) const
{
    const Schema_ElementDecl* top = findElement(element);
    return top && names(*top, head);
}

bool Names::matches(const XML_DOM_Node* element, const Schema_ElementDecl& particle) const
{
    const auto [decl, global] = follow(&particle);
    if (decl->abstract == 1) return standsFor(element, *decl);
    const char* expected = global
                               ? decl->namespaceName
                               : byForm(decl->form, root_.elementFormDefault, decl->namespaceName);
    return equal(nameOf(element), decl->name) &&
           namespaceMatches(namespaceOf(element), expected, nullptr);
}

bool Names::accepts(const Schema_Wildcard& wildcard, const XML_DOM_Node* element) const
{
    return namespaceMatches(namespaceOf(element), wildcard.namespaceName,
                            wildcard.targetNamespace) &&
           (wildcard.processContents != SCHEMA_PROCESS_STRICT || findElement(element));
}

const char* Names::expectedNamespace(const Followed<Schema_AttributeDecl>& attribute) const
{
    return attribute.global ? attribute.decl->namespaceName
                            : byForm(attribute.decl->form, root_.attributeFormDefault,
                                     attribute.decl->namespaceName);
}

}  // namespace plain
