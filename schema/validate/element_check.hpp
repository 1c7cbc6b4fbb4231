// Checking elements by their declarations, one in another, without recursion.
#pragma once

#include "schema/validate/attribute_rules.hpp"
#include "schema/validate/content_matcher.hpp"

#include <cstdint>

namespace netxml {

class ElementCheck {
public:
    explicit ElementCheck(const Schema_Root& root) noexcept
        : elements_{root}, values_{memory_},
          attributes_{root, values_, memory_, verdict_}, content_{elements_, memory_, verdict_}
    {
    }

    // Checks the document element with all below it, and reports what was found.
    std::uint32_t run(const XML_DOM_Node* documentElement, Schema_ValidateResult& result) noexcept;

private:
    // How the check of an element began.
    enum class [[nodiscard]] Begun{
        Done,  // the element is accepted as a whole
        Open,  // its content is to be checked: it is the innermost open element now
        Stop   // a violation or failure is recorded
    };
    static constexpr std::size_t kInlineMemory = std::size_t{10} * 1024;

    bool checkDocument(const XML_DOM_Node* documentElement) noexcept;
    bool unmatched(const Schema_ElementDecl& decl, const XML_DOM_Node* node) noexcept;
    bool checkTree(const Schema_ElementDecl& decl, const Subject& subject) noexcept;
    Begun begin(const Schema_ElementDecl& decl, const Subject& subject) noexcept;
    bool checkSimple(const Schema_ElementDecl& decl, const XML_DOM_Node* node) noexcept;
    Begun beginComplex(const Schema_ElementDecl& decl, const Subject& subject) noexcept;
    Begun open(const Schema_ElementDecl& decl, const Subject& subject) noexcept;
    bool checkKindsOfChildren(const Schema_ElementDecl& decl, const XML_DOM_Node* node,
                              const ContentPlan& plan) noexcept;
    bool checkFixed(const Schema_ElementDecl& decl, const XML_DOM_Node* node,
                    const char* text) noexcept;
    bool finishContent(OpenElement& element, bool& child) noexcept;
    bool checkPart(OpenElement& element, const ContentPart& part) noexcept;
    bool close() noexcept;
    bool judge(SimpleValue::Outcome outcome, const XML_DOM_Node* node) noexcept;
    bool invalidValue(const XML_DOM_Node* node) noexcept;

    Verdict verdict_;
    InlineChunkStack<kInlineMemory> memory_;
    ElementMatch elements_;
    SimpleValue values_;
    AttributeRules attributes_;
    ContentMatcher content_;
    OpenElement* innermost_ = nullptr;
};

}  // namespace netxml
