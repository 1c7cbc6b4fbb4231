#include "validation_run.hpp"

#include "schema_names.hpp"

#include <new>
#include <string>

namespace netxml::tool {
namespace {

// To validate all children from one on at once takes a look at each one before it. That is worth it
// where so many fewer were validated one by one before.
constexpr std::uint32_t kPassedForOne = 256;

XML_DOM_Node* elementFrom(XML_DOM_Node* node)
{
    while (node && XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT)
        node = XML_DOM_GetNextSibling(node);
    return node;
}

XML_DOM_Node* firstElement(const XML_DOM_Node* parent)
{
    return elementFrom(XML_DOM_GetFirstChild(parent));
}

XML_DOM_Node* nextElement(const XML_DOM_Node* element)
{
    return elementFrom(XML_DOM_GetNextSibling(element));
}

// The tree is this tool's own: only the library does not write to what it has validated.
XML_DOM_Node* ownNode(const XML_DOM_Node* node)
{
    return const_cast<XML_DOM_Node*>(node);
}

// How many steps lead from an element to a sibling behind it.
std::uint32_t stepsTo(const XML_DOM_Node* from, const XML_DOM_Node* to)
{
    std::uint32_t steps = 0;
    for (; from && from != to; from = nextElement(from)) ++steps;
    return steps;
}

// Of elements that lie so deep the library finds the default namespace by a walk over so many of
// those around them.
constexpr std::size_t kFar = 64;

// Declares the default namespace once more that is in scope in an element. An element without a
// prefix in it has that one.
void declareAgain(XML_DOM_Node* element)
{
    XML_DOM_Node* probe = XML_DOM_CreateElementNodeInner("probe");
    if (!probe || XML_DOM_AddChildNode(element, probe) != XML_RET_OK) {
        XML_DOM_DelNode(probe);
        throw std::bad_alloc{};
    }
    const std::string nameSpace{textOrEmpty(namespaceOf(probe))};
    XML_DOM_DelNode(probe);
    XML_DOM_AddNodeNameSpaceInner(element, nullptr, nameSpace.c_str(), 0);
}

}  // namespace

ValidationRun::ValidationRun(const TopLevelIndex& schema, XML_DOM_Node* documentElement)
    : schema_{schema}, documentElement_{documentElement}, validator_{schema.root()},
      shapeValidator_{schema.untyped()}, maker_{documentElement}
{
}

Findings ValidationRun::run(std::size_t limit)
{
    limit_ = limit;
    if (Schema_ValidateXml(documentElement_, &schema_.root(), &result_) != XML_RET_OK) {
        findings_.broken = true;
    } else if (result_.code != SCHEMA_VALID) {
        report();
        if (result_.node) follow(documentElement_, schema_.documentElement(documentElement_));
        while (!rests_.empty() && !findings_.more) goOn();
    }
    return std::move(findings_);
}

// Validation, and what it has found.

// Whether there is something to report.
bool ValidationRun::validate(XML_DOM_Node* element, const Schema_ElementDecl& decl)
{
    if (validator_.validate(element, decl, result_)) return result_.code != SCHEMA_VALID;
    findings_.broken = true;
    return false;
}

bool ValidationRun::validateLoosely(XML_DOM_Node* element, const Schema_ComplexType& type)
{
    Schema_ElementDecl decl{};
    decl.type = &type;
    decl.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    return validate(element, decl);
}

void ValidationRun::report()
{
    if (limit_ != 0 && findings_.violations.size() == limit_) findings_.more = true;
    else findings_.violations.push_back(maker_.make(result_));
}

// A child that has no place in its parent at all.
void ValidationRun::reportUnknown(const XML_DOM_Node* child)
{
    result_ = Schema_ValidateResult{};
    result_.code = SCHEMA_ERROR_ELEMENT_UNEXPECTED;
    result_.node = child;
    report();
}

// Whether an unknown child is a consequence of what has been reported: of all of them the first
// one.
bool ValidationRun::isExplained(Rest& rest, XML_DOM_Node* child)
{
    if (!rest.isExplained) return false;
    rest.isExplained = false;
    return !rest.missing || standsForMissing(rest, child);
}

// Tries whether the element that was missing still is when one stands before the child.
bool ValidationRun::standsForMissing(const Rest& rest, XML_DOM_Node* child)
{
    const Schema_ElementDecl& missing = *rest.missing;
    XML_DOM_Node* added = XML_DOM_CreateElementNodeInner(missing.name);
    const char* nameSpace = missing.namespaceName ? missing.namespaceName : "";
    if (!added || XML_DOM_AddNodeNameSpaceInner(added, nullptr, nameSpace, 0) != XML_RET_OK ||
        XML_DOM_InsertBeforeNode(child, added) != XML_RET_OK) {
        XML_DOM_DelNode(added);
        throw std::bad_alloc{};
    }
    const bool isMissing = violatesModel(rest) && result_.code == SCHEMA_ERROR_ELEMENT_EXPECTED &&
                           textOrEmpty(result_.elementName) == textOrEmpty(missing.name);
    XML_DOM_DelNode(added);
    return !isMissing;
}

// From a violation to what lies behind it.

// Notes what is left to do in each element from `top`, which was validated by `decl`, down to the
// one that the result is about.
void ValidationRun::follow(XML_DOM_Node* top, const Schema_ElementDecl* decl)
{
    XML_DOM_Node* node = ownNode(result_.node);
    if (result_.code == SCHEMA_ERROR_ELEMENT_UNEXPECTED) node = XML_DOM_GetNodeParent(node);
    std::vector<XML_DOM_Node*> path;  // upward
    for (; node && node != top; node = XML_DOM_GetNodeParent(node)) path.push_back(node);
    if (!node) return;
    for (std::size_t below = kFar; below < path.size(); below += kFar)
        declareAgain(path[path.size() - below]);
    for (; decl && !path.empty(); path.pop_back()) {
        KnownType* type = known(*decl);
        if (!type) return;
        pushFrom(node, *type, nextElement(path.back()));
        rests_.back().isModelOpen = true;
        decl = type->children.findAccepted(path.back()).decl;
        node = path.back();
    }
    if (decl) followAt(node, *decl);
}

// The element itself that has the violation. Attributes are checked last where the type is complex,
// and first where it is simple.
void ValidationRun::followAt(XML_DOM_Node* node, const Schema_ElementDecl& decl)
{
    KnownType* type = known(decl);
    switch (result_.code) {
    case SCHEMA_ERROR_ATTRIBUTE_MISSING:
    case SCHEMA_ERROR_ATTRIBUTE_VALUE:
    case SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED:
        validateOtherAttributes(node, type);
        if (!type && !findings_.more) validateValue(node, decl);
        break;
    case SCHEMA_ERROR_ELEMENT_EXPECTED:
    case SCHEMA_ERROR_OCCURRENCES:
    case SCHEMA_ERROR_CHILDREN:
    case SCHEMA_ERROR_CHILDREN_MISSING:
        if (!type) break;
        push(node, *type, firstElement(node), 0);
        explain(rests_.back());
        break;
    case SCHEMA_ERROR_ELEMENT_UNEXPECTED:
        if (type) pushFrom(node, *type, nextElement(result_.node));
        break;
    default:
        if (!type) break;
        push(node, *type, nullptr, 0);
        if (result_.code == SCHEMA_ERROR_TEXT && !type->isEmpty && decl.fixed != 1)
            rests_.back().withText = &decl;
        break;
    }
}

void ValidationRun::followChild(XML_DOM_Node* child, const KnownType& parent)
{
    follow(child, parent.children.findAccepted(child).decl);
}

void ValidationRun::pushFrom(XML_DOM_Node* element, KnownType& type, XML_DOM_Node* child)
{
    push(element, type, child, child ? stepsTo(firstElement(element), child) : 0);
}

void ValidationRun::push(XML_DOM_Node* element, KnownType& type, XML_DOM_Node* next,
                         std::uint32_t index)
{
    Rest rest;
    rest.element = element;
    rest.type = &type;
    rest.next = next;
    rest.index = index;
    rests_.push_back(rest);
}

// The rest of the innermost element, a step at a time.

void ValidationRun::goOn()
{
    Rest& rest = rests_.back();
    if (rest.isModelOpen) {
        validateModel(rest);
    } else if (rest.next && rest.type->children.isChoice() &&
               rest.streak >= rest.index / kPassedForOne) {
        validateRest(rest);
    } else if (rest.next) {
        validateNext(rest);
    } else {
        const Rest last = rest;
        rests_.pop_back();
        if (last.withText) validateWithText(last);
        else validateAttributes(last);
    }
}

// The order and number of all children. Unknown ones are found anyway.
void ValidationRun::validateModel(Rest& rest)
{
    rest.isModelOpen = false;
    const XML_DOM_Node* first = firstElement(rest.element);
    const bool isAlone = !rest.next && !nextElement(first);
    const Schema_ElementDecl* alone =
        isAlone ? rest.type->children.findAccepted(first).decl : nullptr;
    if (alone && rest.type->fulfilling.count(alone) != 0) return;
    if (!violatesModel(rest)) {
        if (alone) rest.type->fulfilling.insert(alone);
    } else if (result_.code != SCHEMA_ERROR_ELEMENT_UNEXPECTED) {
        report();
        explain(rest);
    } else if (rest.type->children.find(result_.node).kind != Declared::Kind::Unknown) {
        report();
    }
}

bool ValidationRun::violatesModel(const Rest& rest)
{
    const Schema_ComplexType* shape = rest.type->shape.type();
    if (!shape) return false;
    Schema_ElementDecl decl{};
    decl.type = shape;
    decl.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    if (shapeValidator_.validate(rest.element, decl, result_)) return result_.code != SCHEMA_VALID;
    findings_.broken = true;
    return false;
}

// The place of the result in the element is not told. The children before it are known, and if the
// one that stands there is not, that is all that is wrong.
void ValidationRun::explain(Rest& rest)
{
    rest.isExplained = true;
    if (result_.code == SCHEMA_ERROR_ELEMENT_EXPECTED)
        rest.missing = rest.type->children.singleCalled(result_.elementName);
}

// All children that are left at once, up to the next violation, and the attributes.
void ValidationRun::validateRest(Rest& rest)
{
    if (!validateLoosely(rest.element, rest.type->loose.behind(rest.index)) ||
        result_.node == rest.element) {
        const Rest last = rest;
        rests_.pop_back();
        if (result_.code != SCHEMA_VALID) reportAttribute(last);
        return;
    }
    XML_DOM_Node* child = ownNode(result_.node);
    while (XML_DOM_GetNodeParent(child) != rest.element) child = XML_DOM_GetNodeParent(child);
    rest.index += stepsTo(rest.next, child) + 1;
    rest.next = nextElement(child);
    rest.streak = 0;
    if (child == result_.node && result_.code == SCHEMA_ERROR_ELEMENT_UNEXPECTED) {
        if (!isExplained(rest, child)) reportUnknown(child);
        return;
    }
    report();
    followChild(child, *rest.type);
}

void ValidationRun::validateNext(Rest& rest)
{
    XML_DOM_Node* child = rest.next;
    rest.next = nextElement(child);
    ++rest.index;
    ++rest.streak;
    const Declared declared = rest.type->children.find(child);
    if (declared.kind == Declared::Kind::Unknown) {
        rest.streak = 0;
        if (!isExplained(rest, child)) reportUnknown(child);
    } else if (declared.kind == Declared::Kind::Checked && validate(child, *declared.decl)) {
        rest.streak = 0;
        report();
        follow(child, declared.decl);
    }
}

void ValidationRun::validateAttributes(const Rest& rest)
{
    const bool isBare = !XML_DOM_GetFirstAttr(rest.element);
    if (isBare && rest.type->isValidBare) return;
    if (validateLoosely(rest.element, rest.type->loose.attributesOnly())) reportAttribute(rest);
    else rest.type->isValidBare |= isBare;
}

void ValidationRun::reportAttribute(const Rest& rest)
{
    report();
    validateOtherAttributes(rest.element, rest.type);
}

// The attributes of an element but for the one that has been found, and so on. Without a type it is
// a simple one.
void ValidationRun::validateOtherAttributes(XML_DOM_Node* element, const KnownType* type)
{
    OtherAttributes others{schema_.root().attributeFormDefault};
    if (type) others.addType(type->type);
    else others.addCommon();
    while (!findings_.more && others.leaveOut(result_)) {
        if (!validateLoosely(element, others.type())) return;
        report();
    }
}

// An element with text where none may be: its content and attributes are validated as they are.
void ValidationRun::validateWithText(const Rest& rest)
{
    const Schema_ComplexType& type = rest.type->loose.withText();
    Schema_ElementDecl decl = *rest.withText;
    decl.type = &type;
    if (!validate(rest.element, decl)) return;
    report();
    follow(rest.element, rest.withText);
}

// An element of a simple type with a wrong attribute: its value. The complex type that stands for
// the simple one says in another way that there are elements.
void ValidationRun::validateValue(XML_DOM_Node* element, const Schema_ElementDecl& decl)
{
    const AnyAttributes values{*static_cast<const Schema_SimpleType*>(decl.type)};
    Schema_ElementDecl valued = decl;
    valued.type = &values.type();
    valued.typeKind = SCHEMA_KIND_COMPLEX_TYPE;
    if (!validate(element, valued)) return;
    if (result_.code == SCHEMA_ERROR_CHILD) {
        reportUnknown(firstElement(element));
        return;
    }
    report();
}

// What is known of a declaration's type; nothing for a simple one.
ValidationRun::KnownType* ValidationRun::known(const Schema_ElementDecl& decl)
{
    if (!decl.type || decl.typeKind != SCHEMA_KIND_COMPLEX_TYPE) return nullptr;
    const auto& type = *static_cast<const Schema_ComplexType*>(decl.type);
    std::unique_ptr<KnownType>& place = types_[&type];
    if (!place) place = std::make_unique<KnownType>(type, schema_);
    return place.get();
}

}  // namespace netxml::tool
