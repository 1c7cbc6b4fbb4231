#include "xsd/schema_grammar.hpp"

#include "xsd/value_pattern.hpp"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace netxml::xsd {
namespace {

// What several elements have in common. Words lie between blanks.
constexpr std::string_view kBounds = "minOccurs maxOccurs";
constexpr std::string_view kModels = "group all choice sequence";
constexpr std::string_view kAttributeUses = "attribute attributeGroup anyAttribute";
constexpr std::string_view kFacets =
    "minExclusive minInclusive maxExclusive maxInclusive totalDigits fractionDigits length "
    "minLength maxLength enumeration whiteSpace pattern";

// An element with the attributes and the children that it may have; `id` and annotations may stand
// everywhere.
struct ElementRow {
    std::string_view name;
    std::string_view attributes;
    std::string_view children;
    bool bounds = false;
    bool models = false;
    bool uses = false;
    bool facets = false;
};

constexpr ElementRow kElements[] = {
    {"schema",
     "targetNamespace version finalDefault blockDefault attributeFormDefault elementFormDefault",
     "include import redefine simpleType complexType group attributeGroup element attribute "
     "notation"},
    {"include", "schemaLocation", ""},
    {"import", "namespace schemaLocation", ""},
    {"redefine", "schemaLocation", "simpleType complexType group attributeGroup"},
    {"annotation", "", "appinfo documentation"},
    {"notation", "name public system", ""},
    {.name = "element",
     .attributes = "name ref type substitutionGroup default fixed nillable abstract final block "
                   "form",
     .children = "simpleType complexType unique key keyref",
     .bounds = true},
    {"attribute", "name ref type use default fixed form", "simpleType"},
    {.name = "complexType",
     .attributes = "name mixed abstract final block",
     .children = "simpleContent complexContent",
     .models = true,
     .uses = true},
    {"simpleContent", "", "restriction extension"},
    {"complexContent", "mixed", "restriction extension"},
    {.name = "restriction",
     .attributes = "base",
     .children = "simpleType",
     .models = true,
     .uses = true,
     .facets = true},
    {.name = "extension", .attributes = "base", .children = "", .models = true, .uses = true},
    {.name = "group", .attributes = "name ref", .children = "all choice sequence", .bounds = true},
    {.name = "all", .attributes = "", .children = "element", .bounds = true},
    {.name = "choice",
     .attributes = "",
     .children = "element group choice sequence any",
     .bounds = true},
    {.name = "sequence",
     .attributes = "",
     .children = "element group choice sequence any",
     .bounds = true},
    {.name = "any", .attributes = "namespace processContents", .children = "", .bounds = true},
    {"anyAttribute", "namespace processContents", ""},
    {.name = "attributeGroup", .attributes = "name ref", .children = "", .uses = true},
    {"simpleType", "name final", "restriction list union"},
    {"list", "itemType", "simpleType"},
    {"union", "memberTypes", "simpleType"},
    {"unique", "name", "selector field"},
    {"key", "name", "selector field"},
    {"keyref", "name refer", "selector field"},
    {"selector", "xpath", ""},
    {"field", "xpath", ""},
};
constexpr ElementRow kFacet{"", "value fixed", ""};

struct ValueRow {
    std::string_view element;  // empty: any
    std::string_view attribute;
    std::string_view values;  // empty: a number
};

constexpr ValueRow kValues[] = {
    {"", "form", "qualified unqualified"},
    {"", "elementFormDefault", "qualified unqualified"},
    {"", "attributeFormDefault", "qualified unqualified"},
    {"", "use", "optional required prohibited"},
    {"", "processContents", "strict lax skip"},
    {"", "mixed", "true false 1 0"},
    {"", "abstract", "true false 1 0"},
    {"", "nillable", "true false 1 0"},
    {"whiteSpace", "value", "preserve replace collapse"},
    {"totalDigits", "value", ""},
    {"fractionDigits", "value", ""},
    {"length", "value", ""},
    {"minLength", "value", ""},
    {"maxLength", "value", ""},
};

bool hasWord(std::string_view words, std::string_view word)
{
    for (std::size_t at = words.find(word); at != std::string_view::npos;
         at = words.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || words[at - 1] == ' ') && (end == words.size() || words[end] == ' '))
            return true;
    }
    return false;
}

// The words of a row and those that it shares with others.
std::string together(std::string_view own, bool more, std::string_view common)
{
    std::string result{own};
    if (more) result.append(result.empty() ? "" : " ").append(common);
    return result;
}

std::string attributesOf(const ElementRow& row)
{
    return together(row.attributes, row.bounds, kBounds);
}

std::string childrenOf(const ElementRow& row)
{
    const std::string models = together(row.children, row.models, kModels);
    return together(together(models, row.uses, kAttributeUses), row.facets, kFacets);
}

// "a, b or c".
std::string listed(std::string_view words)
{
    std::string result;
    while (!words.empty()) {
        const std::size_t end = std::min(words.find(' '), words.size());
        const bool last = end == words.size();
        result += (result.empty() ? "" : last ? " or " : ", ");
        result += words.substr(0, end);
        words.remove_prefix(last ? end : end + 1);
    }
    return result;
}

const ElementRow* rowOf(const SchemaNode& node)
{
    if (node.name.nameSpace != kSchemaNamespace) return nullptr;
    if (hasWord(kFacets, node.name.local)) return &kFacet;
    const auto* row =
        std::find_if(std::begin(kElements), std::end(kElements), [&](const ElementRow& candidate) {
            return candidate.name == node.name.local;
        });
    return row == std::end(kElements) ? nullptr : row;
}

bool isNumber(std::string_view text)
{
    if (text.starts_with('+')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

class Grammar {
public:
    explicit Grammar(Diagnostics& diagnostics) : diagnostics_{diagnostics} {}

    void check(const SchemaNode& root)
    {
        std::vector<const SchemaNode*> open{&root};
        while (!open.empty()) {
            const SchemaNode& node = *open.back();
            open.pop_back();
            const ElementRow* row = rowOf(node);
            if (!row) continue;  // its parent said so
            checkAttributes(node, *row);
            if (node.is("annotation")) continue;
            const std::string children = childrenOf(*row);
            for (const SchemaNode* child : node.children) {
                if (checkChild(node, children, *child)) open.push_back(child);
            }
            checkTogether(node, row->models || node.is("group"));
        }
    }

private:
    void checkAttributes(const SchemaNode& node, const ElementRow& row)
    {
        const std::string known = attributesOf(row);
        for (const SchemaNode::Attribute& attribute : node.attributes) {
            if (!attribute.name.nameSpace.empty()) continue;
            const std::string& name = attribute.name.local;
            if (name != "id" && !hasWord(known, name)) {
                diagnostics_.error(node.place,
                                   "\"" + node.name.local + "\" has no attribute \"" + name + "\"" +
                                       (known.empty() ? "." : "; it has " + listed(known) + "."));
                continue;
            }
            checkValue(node, name, attribute.value);
        }
    }

    void checkValue(const SchemaNode& node, const std::string& name, const std::string& written)
    {
        const auto* row =
            std::find_if(std::begin(kValues), std::end(kValues), [&](const ValueRow& candidate) {
                return candidate.attribute == name &&
                       (candidate.element.empty() || candidate.element == node.name.local);
            });
        if (row == std::end(kValues)) return;
        const std::string value = collapsed(written);
        const bool number = row->values.empty();
        if (number ? isNumber(value) : !value.empty() && hasWord(row->values, value)) return;
        const std::string& what = row->element.empty() ? name : node.name.local;
        diagnostics_.error(node.place, "\"" + what + "\" is \"" + written + "\"; expected " +
                                           (number ? "a number" : listed(row->values)) + ".");
    }

    bool checkChild(const SchemaNode& node, const std::string& children, const SchemaNode& child)
    {
        const bool known =
            child.is("annotation") || (rowOf(child) && hasWord(children, child.name.local));
        if (known) return true;
        const bool isTop = node.is("schema") && child.name.nameSpace == kSchemaNamespace;
        if (isTop) return false;  // said where top-level declarations are read
        diagnostics_.error(child.place,
                           "\"" + child.name.local + "\" cannot stand in \"" + node.name.local +
                               "\"; expected " +
                               (children.empty() ? "an annotation" : listed(children)) + ".");
        return false;
    }

    // What excludes each other.
    void checkTogether(const SchemaNode& node, bool oneModel)
    {
        const bool declares = node.is("element") || node.is("attribute");
        const SchemaNode* model = nullptr;
        const SchemaNode* type = nullptr;
        for (const SchemaNode* child : node.children) {
            const bool isModel = rowOf(*child) && hasWord(kModels, child->name.local);
            const bool isType = child->is("simpleType") || child->is("complexType");
            if (isModel && oneModel) {
                if (model) refuse(*child, *model, node);
                model = child;
            }
            if (isType && declares) {
                if (type) refuse(*child, *type, node);
                type = child;
            }
        }
        if (!type || !declares) return;
        for (const char* name : {"type", "ref"}) {
            if (node.find(name))
                diagnostics_.error(type->place, "\"" + type->name.local + "\" stands in \"" +
                                                    node.name.local + "\" beside the attribute \"" +
                                                    name + "\"; only one of them may be there.");
        }
    }

    void refuse(const SchemaNode& second, const SchemaNode& first, const SchemaNode& in)
    {
        diagnostics_.error(second.place, "\"" + second.name.local + "\" stands in \"" +
                                             in.name.local + "\" beside \"" + first.name.local +
                                             "\"; only one of them may be there.");
    }

    Diagnostics& diagnostics_;
};

}  // namespace

void checkGrammar(const SchemaFile& file, Diagnostics& diagnostics)
{
    Grammar{diagnostics}.check(file.root());
}

}  // namespace netxml::xsd
