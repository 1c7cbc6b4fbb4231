// Checking elements by their declarations, one in another, without recursion.
#pragma once

#include "dom/slab.hpp"
#include "schema/validate/attribute_rules.hpp"
#include "schema/validate/content_check.hpp"

#include <cstdint>

namespace netxml {

class ElementCheck {
public:
    ElementCheck(const Schema_Root& root, const XML_DOM_Node* documentElement) noexcept
        : wide_{documentElement}, elements_{root}, values_{memory_, kept_},
          attributes_{root, values_, memory_, verdict_}, facts_{values_, kept_}, content_{elements_,
                                                                                          facts_,
                                                                                          memory_,
                                                                                          kept_,
                                                                                          verdict_}
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
    static constexpr std::size_t kInlineMemory = std::size_t{8} * 1024;
    static constexpr std::size_t kInlineKept = std::size_t{8} * 1024;

    bool checkDocument(const XML_DOM_Node* documentElement) noexcept;
    bool unmatched(const Schema_ElementDecl& decl, const XML_DOM_Node* node) noexcept;
    bool checkTree(const Schema_ElementDecl& decl, const Subject& subject) noexcept;
    MatchStep takeKnown(OpenElement& element) noexcept;
    MatchStep advance(OpenElement& element) noexcept;
    Begun begin(const ElementFacts& facts, const Subject& subject) noexcept;
    Begun beginDeclared(const Schema_ElementDecl& decl, const Subject& subject) noexcept;
    bool checkSimple(const Schema_ElementDecl& decl, const XML_DOM_Node* node) noexcept;
    Begun beginComplex(const Schema_ElementDecl& decl, const Subject& subject,
                       TypeFacts& facts) noexcept;
    Begun open(const Schema_ElementDecl& decl, const Subject& subject, TypeFacts& facts) noexcept;
    bool checkKindsOfChildren(const Schema_ElementDecl& decl, const XML_DOM_Node* node,
                              const TypeFacts& facts) noexcept;
    bool checkAttributes(const XML_DOM_Node* node, TypeFacts& facts) noexcept;
    bool checkFixed(const Schema_ElementDecl& decl, const XML_DOM_Node* node,
                    const char* text) noexcept;
    bool checkPart(OpenElement& element, ContentPart& part) noexcept;
    bool close() noexcept;
    bool judge(SimpleValue::Outcome outcome, const XML_DOM_Node* node) noexcept;
    bool invalidValue(const XML_DOM_Node* node) noexcept;

    const WideStrings wide_;
    Verdict verdict_;
    InlineChunkStack<kInlineMemory> memory_;
    InlineChunkStack<kInlineKept> kept_;  // for as long as the run
    ElementMatch elements_;
    SimpleValue values_;
    AttributeRules attributes_;
    ElementFactsTable facts_;
    ContentCheck content_;
    OpenElement* innermost_ = nullptr;
};

}  // namespace netxml
