#include "schema/validate/element_check.hpp"

#include "schema/validate/declaration.hpp"
#include "schema/validate/derivation.hpp"
#include "support/bounded.hpp"

#include <cstdint>

namespace netxml {
namespace {

const char* firstText(const XML_DOM_Node* node) noexcept
{
    return XML_DOM_GetFirstTextChildValue(node);
}

// Kept: of several texts the last one counts, and a CDATA section is none.
const char* lastText(const XML_DOM_Node* node) noexcept
{
    const char* text = nullptr;
    for (const XML_DOM_Node* child = node->firstChild; child; child = child->nextSibling) {
        if (child->type == XML_DOM_NODE_TEXT) text = child->value;
    }
    return text;
}

bool hasText(const XML_DOM_Node* node) noexcept
{
    for (const XML_DOM_Node* child = node->firstChild; child; child = child->nextSibling) {
        if (child->type == XML_DOM_NODE_TEXT || child->type == XML_DOM_NODE_CDATA) return true;
    }
    return false;
}

}  // namespace

std::uint32_t ElementCheck::run(const XML_DOM_Node* documentElement,
                                Schema_ValidateResult& result) noexcept
{
    checkDocument(documentElement);
    return verdict_.report(result);
}

// The document element is one occurrence of the first top-level declaration of its name. A
// declaration without any bounds asks for exactly one.
bool ElementCheck::checkDocument(const XML_DOM_Node* node) noexcept
{
    if (node->type != XML_DOM_NODE_ELEMENT)
        return verdict_.violate(SCHEMA_ERROR_DOCUMENT_ELEMENT, node);
    const XML_DOM_NsDecl* inherited = findDeclaration(node->parent, nullptr);
    const Subject subject = makeSubject(node, inherited ? inherited->name : nullptr);
    const Schema_ElementDecl* top = elements_.topLevel(subject);
    if (!top) return verdict_.violate(SCHEMA_ERROR_DOCUMENT_ELEMENT, node);
    const Schema_ElementDecl* decl = resolve(top);
    if (!decl) return verdict_.fail();

    const bool unbound = top->minOccurs == 0 && top->maxOccurs == 0;
    const std::uint32_t min = unbound ? 1 : top->minOccurs;
    const std::uint32_t max = unbound ? 1 : top->maxOccurs;
    if (!elements_.matchesGlobally(*decl, subject)) return min == 0 || unmatched(*decl, node);
    if (!checkTree(*decl, subject)) return false;
    if (occurs(1, min, max)) return true;
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_OCCURRENCES;
    violation.elementName = decl->name;
    return verdict_.violate(violation);
}

// The document element is not what its declaration leads to: another name, or an abstract head.
bool ElementCheck::unmatched(const Schema_ElementDecl& decl, const XML_DOM_Node* node) noexcept
{
    if (decl.abstract == 1) return verdict_.violate(SCHEMA_ERROR_ELEMENT_UNEXPECTED, node);
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_ELEMENT_EXPECTED;
    violation.elementName = decl.name;
    violation.elementNamespace = decl.namespaceName;
    return verdict_.violate(violation);
}

// The loop that stands for recursion: goes into each child that is to be checked, and back.
bool ElementCheck::checkTree(const Schema_ElementDecl& decl, const Subject& subject) noexcept
{
    Begun begun = begin(decl, subject);
    while (begun != Begun::Stop && innermost_) {
        bool child = false;
        if (!finishContent(*innermost_, child)) return false;
        if (child) {
            begun = begin(*innermost_->wanted, innermost_->child);
            if (begun == Begun::Done) content_.accepted(*innermost_);
        } else {
            if (!close()) return false;
            if (innermost_) content_.accepted(*innermost_);
        }
    }
    return begun != Begun::Stop;
}

// Goes on with an element's content until a child is to be checked (`child`), or to its end.
bool ElementCheck::finishContent(OpenElement& element, bool& child) noexcept
{
    for (;;) {
        const MatchStep step = content_.advance(element);
        child = step == MatchStep::Check;
        if (step != MatchStep::Ended) return child;
        const ContentPart* part = element.parts;
        if (!part) return true;
        element.parts = part->next;
        if (!checkPart(element, *part)) return false;
    }
}

bool ElementCheck::checkPart(OpenElement& element, const ContentPart& part) noexcept
{
    if (part.model) return content_.begin(element, *part.model);
    const char* text = firstText(element.node);
    if (part.value) return judge(values_.check(*part.value, text), element.node);
    return judge(values_.checkFacets(part.restricts->facets, part.restricts->facetCount, text),
                 element.node);
}

// The end of the innermost element: nothing may be left over, and the attributes must be right.
bool ElementCheck::close() noexcept
{
    const OpenElement& element = *innermost_;
    if (element.child) return verdict_.violate(SCHEMA_ERROR_ELEMENT_UNEXPECTED, element.child.node);
    if (!attributes_.checkComplex(element.node, *element.type)) return false;
    const ChunkStack::Mark mark = element.memory;
    innermost_ = element.outer;
    memory_.release(mark);
    return true;
}

// An abstract declaration gives way to the substitute that the element names.
ElementCheck::Begun ElementCheck::begin(const Schema_ElementDecl& decl,
                                        const Subject& subject) noexcept
{
    const Schema_ElementDecl* used = resolve(&decl);
    if (used && used->abstract == 1) {
        used = elements_.substitute(*used, subject);
        if (!used) {
            verdict_.violate(SCHEMA_ERROR_ELEMENT_UNEXPECTED, subject.node);
            return Begun::Stop;
        }
        used = resolve(used);
    }
    if (!used) {
        verdict_.fail();
        return Begun::Stop;
    }
    if (!used->type) return Begun::Done;
    if (used->typeKind == SCHEMA_KIND_SIMPLE_TYPE)
        return checkSimple(*used, subject.node) ? Begun::Done : Begun::Stop;
    return beginComplex(*used, subject);
}

bool ElementCheck::checkSimple(const Schema_ElementDecl& decl, const XML_DOM_Node* node) noexcept
{
    if (!attributes_.checkSimple(node)) return false;
    if (decl.nillable == 1 && !node->firstChild) return true;
    if (const XML_DOM_Node* child = elementFrom(node->firstChild))
        return verdict_.violate(SCHEMA_ERROR_ELEMENT_UNEXPECTED, child);
    const char* text = lastText(node);
    if (decl.fixed == 1) return checkFixed(decl, node, text);
    return judge(values_.check(*static_cast<const Schema_SimpleType*>(decl.type), text), node);
}

ElementCheck::Begun ElementCheck::beginComplex(const Schema_ElementDecl& decl,
                                               const Subject& subject) noexcept
{
    const XML_DOM_Node* node = subject.node;
    const auto& type = *static_cast<const Schema_ComplexType*>(decl.type);
    if (!basesAreSound(type)) {
        verdict_.fail();
        return Begun::Stop;
    }
    if (decl.nillable == 1 && !node->firstChild)
        return attributes_.checkComplex(node, type) ? Begun::Done : Begun::Stop;
    return open(decl, subject);
}

// Lays the plan of the content and the element's record on the stack. An element with a fixed text
// is done at once: once the kinds of its children are right, its content is not matched.
ElementCheck::Begun ElementCheck::open(const Schema_ElementDecl& decl,
                                       const Subject& subject) noexcept
{
    const XML_DOM_Node* node = subject.node;
    const auto& type = *static_cast<const Schema_ComplexType*>(decl.type);
    const ChunkStack::Mark mark = memory_.mark();
    const ContentPlan plan = planContent(type, memory_);
    if (!plan.made) {
        verdict_.fail();
        return Begun::Stop;
    }
    if (!checkKindsOfChildren(decl, node, plan)) return Begun::Stop;
    if (decl.fixed == 1) {
        memory_.release(mark);
        const bool valid =
            checkFixed(decl, node, firstText(node)) && attributes_.checkComplex(node, type);
        return valid ? Begun::Done : Begun::Stop;
    }
    auto* element = static_cast<OpenElement*>(memory_.allocate(sizeof(OpenElement)));
    if (!element) {
        verdict_.fail();
        return Begun::Stop;
    }
    *element = OpenElement{};
    element->outer = innermost_;
    element->memory = mark;
    element->node = node;
    element->defaultNamespace = subject.defaultNamespace;
    element->type = &type;
    element->parts = plan.first;
    element->child = makeSubject(elementFrom(node->firstChild), subject.defaultNamespace);
    innermost_ = element;
    return Begun::Open;
}

// Text only where the content is simple or mixed, elements only where there is a content model.
// An element without either may have a text that is fixed.
bool ElementCheck::checkKindsOfChildren(const Schema_ElementDecl& decl, const XML_DOM_Node* node,
                                        const ContentPlan& plan) noexcept
{
    const auto& type = *static_cast<const Schema_ComplexType*>(decl.type);
    bool textAllowed = type.mixed == 1;
    if (type.derivation) textAllowed |= hasSimpleContent(*type.derivation);
    else if (!type.content) textAllowed = decl.fixed == 1;
    if (!textAllowed && hasText(node)) return verdict_.violate(SCHEMA_ERROR_TEXT, node);
    if (!plan.hasModel && elementFrom(node->firstChild))
        return verdict_.violate(SCHEMA_ERROR_CHILD, node);
    return true;
}

bool ElementCheck::checkFixed(const Schema_ElementDecl& decl, const XML_DOM_Node* node,
                              const char* text) noexcept
{
    return values_.equals(text, decl.value) || invalidValue(node);
}

bool ElementCheck::judge(SimpleValue::Outcome outcome, const XML_DOM_Node* node) noexcept
{
    switch (outcome) {
    case SimpleValue::Outcome::Valid: return true;
    case SimpleValue::Outcome::Invalid: return invalidValue(node);
    case SimpleValue::Outcome::Broken: break;
    }
    return verdict_.fail();
}

bool ElementCheck::invalidValue(const XML_DOM_Node* node) noexcept
{
    Schema_ValidateResult violation{};
    violation.code = SCHEMA_ERROR_ELEMENT_VALUE;
    violation.node = node;
    copyBounded(violation.detail, sizeof violation.detail, values_.detail());
    return verdict_.violate(violation);
}

}  // namespace netxml

uint32_t Schema_ValidateXml(const XML_DOM_Node* documentElement, const Schema_Root* root,
                            Schema_ValidateResult* result)
{
    if (!documentElement || !root || !result) return XML_RET_FAIL;
    return netxml::ElementCheck{*root}.run(documentElement, *result);
}
