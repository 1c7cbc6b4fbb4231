#include "element_validator.hpp"

#include "netxml/parser.h"

#include <new>
#include <string>

namespace netxml::tool {
namespace {

// A declaration that is put in front of the top-level ones must not be found for other elements, by
// a wildcard say. So the element gets a name of its own as long as it is validated.
constexpr const char* kOwnName = "netxml-element-that-is-validated";

class OtherName {
public:
    explicit OtherName(XML_DOM_Node* element)
        : element_{element}, name_{XML_DOM_GetNodeName(element)}
    {
        // What the library does not take as a name could not be given back.
        if (XML_CheckQName(name_.c_str()) == XML_RET_OK) give(kOwnName);
    }
    const char* current() const { return XML_DOM_GetNodeName(element_); }
    void giveBack()
    {
        if (current() != name_) give(name_.c_str());
    }

private:
    void give(const char* name)
    {
        if (XML_DOM_SetNodeName(element_, name) != XML_RET_OK) throw std::bad_alloc{};
    }

    XML_DOM_Node* element_;
    const std::string name_;
};

}  // namespace

// Only the list of elements is another one; the library does not change what it is given.
ElementValidator::ElementValidator(const Schema_Root& root) : root_{root}
{
    elements_.reserve(std::size_t{root.elements.count} + 1);
    elements_.push_back(&decl_);
    elements_.insert(elements_.end(), root.elements.items,
                     root.elements.items + root.elements.count);
    root_.elements.items = elements_.data();
    root_.elements.count = root_.elements.capacity = static_cast<std::uint32_t>(elements_.size());
}

bool ElementValidator::validate(XML_DOM_Node* element, const Schema_ElementDecl& decl,
                                Schema_ValidateResult& result)
{
    OtherName name{element};
    decl_ = decl;
    decl_.name = name.current();
    decl_.namespaceName = "##any";
    decl_.form = SCHEMA_FORM_QUALIFIED;
    decl_.minOccurs = decl_.maxOccurs = 1;
    decl_.substitutionGroupName = decl_.substitutionGroupNamespace = nullptr;
    decl_.abstract = 0;  // a substitute may be
    const bool judged = Schema_ValidateXml(element, &root_, &result) == XML_RET_OK;
    const bool namesElement = judged && result.elementName && result.elementName == name.current();
    name.giveBack();
    if (namesElement) result.elementName = XML_DOM_GetNodeName(element);
    return judged;
}

}  // namespace netxml::tool
