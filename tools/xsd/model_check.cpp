#include "xsd/model_check.hpp"

#include "netxml/dom.h"
#include "netxml/parser.h"
#include "xsd/group_record.hpp"
#include "xsd/runtime_schema.hpp"

#include <memory>

namespace netxml::xsd {
namespace {

using Kind = ContentModel::Kind;

struct DeleteTree {
    void operator()(XML_DOM_Node* root) const { XML_DOM_DelNode(root); }
};
using Tree = std::unique_ptr<XML_DOM_Node, DeleteTree>;

constexpr std::size_t kLongestWord = 40;
constexpr std::size_t kFewWords = 40;

// Stands for whatever a wildcard takes.
constexpr const char* kOtherName = "any-other-element";
constexpr const char* kOtherNamespace = "urn:any-other-namespace";

// The namespace of an element that a wildcard matches and no declaration of the model has.
std::string namespaceFor(const WildcardRecord& wildcard)
{
    if (wildcard.constraint == "##any" || wildcard.constraint == "##other") return kOtherNamespace;
    return wildcard.constraint.substr(0, wildcard.constraint.find(' '));
}

// A model whose elements are not looked into, with names for what wildcards take.
ContentModel bare(const ContentModel& model, SchemaRecords& records)
{
    ContentModel result = model;
    if (model.kind == Kind::Element) {
        ElementRecord& element = records.elements.emplace_back();
        element.name = model.element->name;
        element.nameSpace = model.element->nameSpace;
        element.form = model.element->form;
        result.element = &element;
    } else if (model.kind == Kind::Wildcard) {
        WildcardRecord& wildcard = records.wildcards.emplace_back(*model.wildcard);
        wildcard.processContents = SCHEMA_PROCESS_SKIP;
        result.wildcard = &wildcard;
    }
    for (ContentModel& part : result.parts) part = bare(part, records);
    return result;
}

struct Child {
    std::string name;
    std::string nameSpace;
};

Child childFor(const ContentModel& symbol)
{
    if (symbol.kind == Kind::Wildcard) return {kOtherName, namespaceFor(*symbol.wildcard)};
    const bool qualified = symbol.element->form != SCHEMA_FORM_UNQUALIFIED;
    return {symbol.element->name, qualified ? symbol.element->nameSpace : std::string{}};
}

std::string escapedAttribute(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '&') result += "&amp;";
        else if (c == '<') result += "&lt;";
        else if (c == '"') result += "&quot;";
        else result += c;
    }
    return result;
}

// Whether the engine accepts a document element with these children; nothing when it fails.
std::optional<bool> engineAccepts(const Schema_Root* root, const std::vector<Child>& children)
{
    std::string text = "<document>";
    for (const Child& child : children)
        text += "<" + child.name + " xmlns=\"" + escapedAttribute(child.nameSpace) + "\"/>";
    text += "</document>";
    char report[256] = "";
    const Tree tree{XML_DOM_BuildTreeByMem(reinterpret_cast<const std::uint8_t*>(text.data()),
                                           static_cast<std::uint32_t>(text.size()), sizeof report,
                                           report)};
    Schema_ValidateResult result;
    if (!tree || Schema_ValidateXml(tree.get(), root, &result) != XML_RET_OK) return std::nullopt;
    return result.code == SCHEMA_VALID;
}

}  // namespace

std::optional<std::string> findDifference(const ContentModel& meant, const ContentModel& model,
                                          std::size_t randomCount)
{
    const auto automaton = automatonOf(meant);
    if (!automaton) return kTooLarge;
    SchemaRecords records;
    ComplexTypeRecord& type = records.complexTypes.emplace_back();
    ElementRecord& document = records.elements.emplace_back();
    document.name = "document";
    document.complexType = &type;
    type.content = groupRecord(bare(model, records), records);
    records.topElements = {&document};
    const RuntimeSchema schema{records};

    std::vector<Child> children;
    for (const ContentModel& symbol : automaton->symbols) children.push_back(childFor(symbol));
    std::vector<std::vector<int>> words =
        testWords(*automaton, randomCount == 0 ? kFewWords : kMostTestWords);
    const auto more = randomWords(*automaton, randomCount, kLongestWord);
    words.insert(words.end(), more.begin(), more.end());
    for (const std::vector<int>& word : words) {
        std::vector<Child> content;
        std::string shown;
        for (const int symbol : word) {
            content.push_back(children[static_cast<std::size_t>(symbol)]);
            shown += (shown.empty() ? "" : " ") + content.back().name;
        }
        const auto verdict = engineAccepts(schema.root(), content);
        if (verdict && *verdict == automaton->accepts(word)) continue;
        if (shown.empty()) shown = "no elements";
        return "\"" + shown + "\" is " + (verdict && *verdict ? "accepted" : "refused");
    }
    return std::nullopt;
}

const std::optional<std::string>& ModelChecks::difference(const ContentModel& meant,
                                                          const ContentModel& model,
                                                          std::size_t randomCount)
{
    const std::string key =
        keyText(meant) + "\n" + keyText(model) + "\n" + std::to_string(randomCount);
    const auto known = known_.find(key);
    if (known != known_.end()) return known->second;
    return known_.emplace(key, findDifference(meant, model, randomCount)).first->second;
}

}  // namespace netxml::xsd
