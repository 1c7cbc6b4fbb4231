#include "tests/support/plain_validator.hpp"

#include "tests/support/plain_rules.hpp"

#include <cstring>

namespace plain {
namespace {

// Follows the bases of a type from one to the next; every one must be usable.
void checkBases(const Schema_ComplexType& type)
{
    std::set<const Schema_ComplexType*> seen;
    const Schema_ComplexType* at = &type;
    while (at->derivation) {
        if (!seen.insert(at).second) throw BrokenSchema{};
        const Schema_Derivation& derivation = *at->derivation;
        const uint32_t kind = derivation.kind;
        if (kind != SCHEMA_KIND_COMPLEX_RESTRICTION && kind != SCHEMA_KIND_COMPLEX_EXTENSION &&
            kind != SCHEMA_KIND_SIMPLE_RESTRICTION && kind != SCHEMA_KIND_SIMPLE_EXTENSION)
            throw BrokenSchema{};
        if (!derivation.base) throw BrokenSchema{};
        if (derivation.baseKind == SCHEMA_KIND_SIMPLE_TYPE) return;
        if (derivation.baseKind != SCHEMA_KIND_COMPLEX_TYPE) throw BrokenSchema{};
        at = static_cast<const Schema_ComplexType*>(derivation.base);
    }
}

const Schema_ComplexType* complexBase(const Schema_Derivation& derivation)
{
    return derivation.baseKind == SCHEMA_KIND_COMPLEX_TYPE
               ? static_cast<const Schema_ComplexType*>(derivation.base)
               : nullptr;
}

// Whether checking the content of a type would meet a content model.
bool hasContent(const Schema_ComplexType& type)
{
    if (!type.derivation) return type.content != nullptr;
    const Schema_ComplexType* base = complexBase(*type.derivation);
    switch (type.derivation->kind) {
    case SCHEMA_KIND_COMPLEX_RESTRICTION: return type.derivation->content != nullptr;
    case SCHEMA_KIND_COMPLEX_EXTENSION:
        return type.derivation->content || (base && hasContent(*base));
    default: return base && hasContent(*base);
    }
}

bool isElement(const XML_DOM_Node* node)
{
    return XML_DOM_GetNodeType(node) == XML_DOM_NODE_ELEMENT;
}

bool hasText(const XML_DOM_Node* element)
{
    const XML_DOM_Node* node = XML_DOM_GetFirstChild(element);
    for (; node; node = XML_DOM_GetNextSibling(node))
        if (!isElement(node)) return true;
    return false;
}

const char* lastText(const XML_DOM_Node* element)
{
    const char* text = nullptr;
    const XML_DOM_Node* node = XML_DOM_GetFirstChild(element);
    for (; node; node = XML_DOM_GetNextSibling(node))
        if (XML_DOM_GetNodeType(node) == XML_DOM_NODE_TEXT) text = XML_DOM_GetNodeValue(node);
    return text;
}

}  // namespace

const XML_DOM_Node* elementFrom(const XML_DOM_Node* node)
{
    while (node && !isElement(node)) node = XML_DOM_GetNextSibling(node);
    return node;
}

void Run::fail(Schema_ErrorCode code, const XML_DOM_Node* node)
{
    result_.code = code;
    result_.node = node;
    throw Violation{};
}

void Run::failElement(Schema_ErrorCode code, const XML_DOM_Node* node, const char* name,
                      const char* nameSpace)
{
    result_.elementName = name;
    result_.elementNamespace = nameSpace;
    fail(code, node);
}

void Run::failValue(const XML_DOM_Node* element)
{
    std::strcpy(result_.detail, values_.detail());
    fail(SCHEMA_ERROR_ELEMENT_VALUE, element);
}

// The document element is one occurrence of the first top-level element of its name; what stands
// beside it is not looked at. Bounds that are both 0 are those of a declaration without bounds.
void Run::document(const XML_DOM_Node* element)
{
    const Schema_ElementDecl* top = names_.findElement(element);
    if (!top) fail(SCHEMA_ERROR_DOCUMENT_ELEMENT, element);
    const bool unbounded = top->minOccurs == 0 && top->maxOccurs == 0;
    const uint32_t least = unbounded ? 1 : top->minOccurs;
    const uint32_t most = unbounded ? 1 : top->maxOccurs;

    const Schema_ElementDecl* decl = follow(top).decl;
    const bool matched =
        decl->abstract == 1 ? names_.standsFor(element, *decl) : names_.isCalled(element, *decl);
    if (!matched) {
        if (least == 0) return;
        if (decl->abstract == 1) fail(SCHEMA_ERROR_ELEMENT_UNEXPECTED, element);
        failElement(SCHEMA_ERROR_ELEMENT_EXPECTED, nullptr, decl->name, decl->namespaceName);
    }
    checkElement(element, decl);
    if (least > 1 || most < 1) failElement(SCHEMA_ERROR_OCCURRENCES, nullptr, decl->name);
}

void Run::checkElement(const XML_DOM_Node* element, const Schema_ElementDecl* decl)
{
    if (decl->abstract == 1) {
        const Schema_ElementDecl* substitute = names_.findSubstitute(element, *decl);
        if (!substitute) fail(SCHEMA_ERROR_ELEMENT_UNEXPECTED, element);
        decl = follow(substitute).decl;
    }
    if (!decl->type) return;
    if (decl->typeKind == SCHEMA_KIND_SIMPLE_TYPE) checkSimple(element, *decl);
    else checkComplex(element, *decl);
}

void Run::checkSimple(const XML_DOM_Node* element, const Schema_ElementDecl& decl)
{
    checkSimpleAttributes(element);
    if (decl.nillable == 1 && !XML_DOM_GetFirstChild(element)) return;

    if (const XML_DOM_Node* child = elementFrom(XML_DOM_GetFirstChild(element)))
        fail(SCHEMA_ERROR_ELEMENT_UNEXPECTED, child);
    const char* value = lastText(element);
    const bool valid = decl.fixed == 1
                           ? values_.checkFixed(decl.value, value)
                           : values_.check(static_cast<const Schema_SimpleType*>(decl.type), value);
    if (!valid) failValue(element);
}

void Run::checkComplex(const XML_DOM_Node* element, const Schema_ElementDecl& decl)
{
    const auto& type = *static_cast<const Schema_ComplexType*>(decl.type);
    checkBases(type);
    if (decl.nillable == 1 && !XML_DOM_GetFirstChild(element)) {
        checkComplexAttributes(element, type);
        return;
    }
    checkText(element, decl);
    if (decl.fixed == 1) {
        if (!values_.checkFixed(decl.value, XML_DOM_GetFirstTextChildValue(element)))
            failValue(element);
    } else {
        Content content{*this, element};
        checkContent(element, type, content);
        if (content.child()) fail(SCHEMA_ERROR_ELEMENT_UNEXPECTED, content.child());
    }
    checkComplexAttributes(element, type);
}

// Text where none may stand, and children where the type has no content model.
void Run::checkText(const XML_DOM_Node* element, const Schema_ElementDecl& decl)
{
    const auto& type = *static_cast<const Schema_ComplexType*>(decl.type);
    const bool simple =
        type.derivation && (type.derivation->kind == SCHEMA_KIND_SIMPLE_RESTRICTION ||
                            type.derivation->kind == SCHEMA_KIND_SIMPLE_EXTENSION);
    bool textAllowed = simple || type.mixed == 1;
    if (!type.derivation && !type.content) textAllowed = decl.fixed == 1;
    if (hasText(element) && !textAllowed) fail(SCHEMA_ERROR_TEXT, element);
    if (elementFrom(XML_DOM_GetFirstChild(element)) && !hasContent(type))
        fail(SCHEMA_ERROR_CHILD, element);
}

void Run::checkContent(const XML_DOM_Node* element, const Schema_ComplexType& type,
                       Content& content)
{
    if (!type.derivation) {
        if (type.content) content.match(*type.content);
        return;
    }
    const Schema_Derivation& derivation = *type.derivation;
    const bool simple = derivation.kind == SCHEMA_KIND_SIMPLE_RESTRICTION ||
                        derivation.kind == SCHEMA_KIND_SIMPLE_EXTENSION;
    const char* text = XML_DOM_GetFirstTextChildValue(element);
    if (derivation.kind != SCHEMA_KIND_COMPLEX_RESTRICTION) {
        if (const Schema_ComplexType* base = complexBase(derivation))
            checkContent(element, *base, content);
        else if (simple &&
                 !values_.check(static_cast<const Schema_SimpleType*>(derivation.base), text))
            failValue(element);
    }
    if (!simple && derivation.content) content.match(*derivation.content);
    if (derivation.kind == SCHEMA_KIND_SIMPLE_RESTRICTION &&
        !values_.checkFacets(derivation.facets, derivation.facetCount, text))
        failValue(element);
}

}  // namespace plain

uint32_t plainValidate(const XML_DOM_Node* documentElement, const Schema_Root* root,
                       Schema_ValidateResult* result)
{
    if (!documentElement || !root || !result) return XML_RET_FAIL;
    std::memset(result, 0, sizeof *result);
    try {
        plain::Run{*root, *result}.document(documentElement);
    } catch (const plain::Violation&) {
    } catch (const plain::BrokenSchema&) {
        std::memset(result, 0, sizeof *result);
        return XML_RET_FAIL;
    }
    return XML_RET_OK;
}
