#include "schema/validate/element_check.hpp"

#include "schema/validate/declaration.hpp"
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

// Whether an element has a text that is surely valid, and nothing else.
bool isSurelyValid(const ElementFacts& facts, const XML_DOM_Node* node) noexcept
{
    const XML_DOM_Node* child = node->firstChild;
    return facts.plan && !node->firstAttr && child && child->type == XML_DOM_NODE_TEXT &&
           !child->nextSibling && facts.plan->holds(orEmpty(child->value));
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
    Begun begun = beginDeclared(decl, subject);
    while (begun != Begun::Stop && innermost_) {
        OpenElement& element = *innermost_;
        MatchStep step = takeKnown(element);
        bool isSure = false;  // takeKnown() has asked that of its child
        if (step == MatchStep::Stop) {
            step = advance(element);
            if (step == MatchStep::Stop) return false;
            isSure = step == MatchStep::Check && isSurelyValid(*element.facts, element.child.node);
        }
        if (step == MatchStep::Check) {
            begun = isSure ? Begun::Done : begin(*element.facts, element.child);
            if (begun == Begun::Done) content_.accepted(element);
        } else {
            if (!close()) return false;
            if (innermost_) content_.accepted(*innermost_);
        }
    }
    return begun != Begun::Stop;
}

// Takes the children that are known at their place and surely valid: most of a document. Goes to
// the first that is not, or to the end of the content; Stop where what comes is not known.
MatchStep ElementCheck::takeKnown(OpenElement& element) noexcept
{
    if (!element.way.isKnown()) return MatchStep::Stop;
    ContentState* state = element.way.state;
    Subject child = element.child;
    const ContentStep* step = nullptr;
    for (; child; state = step->next, child = nextSubject(child, element.defaultNamespace)) {
        step = content_.find(*state, child, wide_.has(child.node->home, Home::kFirstString));
        if (!step || !step->wanted) break;
        if (isSurelyValid(*step->wanted, child.node)) continue;
        element.facts = step->wanted;
        element.way.next = step->next;
        break;
    }
    element.way.state = state;
    element.child = child;
    if (child) return step && step->wanted ? MatchStep::Check : MatchStep::Stop;
    return state->mayEnd && !element.parts ? MatchStep::Ended : MatchStep::Stop;
}

// Goes on with an element's content to the next child that is to be checked, or to its end.
MatchStep ElementCheck::advance(OpenElement& element) noexcept
{
    for (;;) {
        const MatchStep step = content_.advance(element);
        ContentPart* part = element.parts;
        if (step != MatchStep::Ended || !part) return step;
        element.parts = part->next;
        if (!checkPart(element, *part)) return MatchStep::Stop;
    }
}

bool ElementCheck::checkPart(OpenElement& element, ContentPart& part) noexcept
{
    if (part.model) return content_.begin(element, part);
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
    if (!checkAttributes(element.node, *element.type)) return false;
    const ChunkStack::Mark mark = element.memory;
    innermost_ = element.outer;
    memory_.release(mark);
    return true;
}

ElementCheck::Begun ElementCheck::begin(const ElementFacts& facts, const Subject& subject) noexcept
{
    if (facts.used && facts.type) return beginComplex(*facts.used, subject, *facts.type);
    return beginDeclared(*facts.decl, subject);
}

// An abstract declaration gives way to the substitute that the element names.
ElementCheck::Begun ElementCheck::beginDeclared(const Schema_ElementDecl& decl,
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
    if (used && !used->type) return Begun::Done;
    if (used && used->typeKind == SCHEMA_KIND_SIMPLE_TYPE)
        return checkSimple(*used, subject.node) ? Begun::Done : Begun::Stop;
    const ElementFacts* facts = used ? facts_.of(*used) : nullptr;
    if (facts) return beginComplex(*used, subject, *facts->type);
    verdict_.fail();
    return Begun::Stop;
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
                                               const Subject& subject, TypeFacts& facts) noexcept
{
    const XML_DOM_Node* node = subject.node;
    if (!facts.sound) {
        verdict_.fail();
        return Begun::Stop;
    }
    if (decl.nillable == 1 && !node->firstChild)
        return checkAttributes(node, facts) ? Begun::Done : Begun::Stop;
    if (!checkKindsOfChildren(decl, node, facts)) return Begun::Stop;
    return open(decl, subject, facts);
}

// Lays the element's record on the stack. An element with a fixed text is done at once: once the
// kinds of its children are right, its content is not matched.
ElementCheck::Begun ElementCheck::open(const Schema_ElementDecl& decl, const Subject& subject,
                                       TypeFacts& facts) noexcept
{
    const XML_DOM_Node* node = subject.node;
    if (decl.fixed == 1) {
        const bool valid = checkFixed(decl, node, firstText(node)) && checkAttributes(node, facts);
        return valid ? Begun::Done : Begun::Stop;
    }
    const ChunkStack::Mark mark = memory_.mark();
    auto* element = static_cast<OpenElement*>(memory_.allocate(sizeof(OpenElement)));
    if (!element) {
        verdict_.fail();
        return Begun::Stop;
    }
    element->outer = innermost_;
    element->memory = mark;
    element->node = node;
    element->defaultNamespace = subject.defaultNamespace;
    element->type = &facts;
    element->parts = facts.parts;
    element->child = makeSubject(elementFrom(node->firstChild), subject.defaultNamespace);
    element->way.part = nullptr;
    element->frame = nullptr;
    element->run.active = false;
    if (facts.isLong) {
        const ContentPlan plan = planContent(*facts.type, memory_);
        if (!plan.made) {
            verdict_.fail();
            return Begun::Stop;
        }
        element->parts = plan.first;
    }
    if (facts.parts && content_.beginKnown(*element, *facts.parts))
        element->parts = facts.parts->next;
    innermost_ = element;
    return Begun::Open;
}

// Text only where there may be one, elements only where there is a content model.
bool ElementCheck::checkKindsOfChildren(const Schema_ElementDecl& decl, const XML_DOM_Node* node,
                                        const TypeFacts& facts) noexcept
{
    const bool textAllowed = facts.hasText || (facts.hasFixedText && decl.fixed == 1);
    if (!textAllowed && hasText(node)) return verdict_.violate(SCHEMA_ERROR_TEXT, node);
    if (!facts.hasModel && elementFrom(node->firstChild))
        return verdict_.violate(SCHEMA_ERROR_CHILD, node);
    return true;
}

// Whether a type lets an element stand without attributes is the same for all its elements.
bool ElementCheck::checkAttributes(const XML_DOM_Node* node, TypeFacts& facts) noexcept
{
    const bool isBare = !node->firstAttr;
    if (isBare && facts.isValidBare) return true;
    if (!attributes_.checkComplex(node, *facts.type)) return false;
    facts.isValidBare |= isBare;
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
    return netxml::ElementCheck{*root, documentElement}.run(documentElement, *result);
}
