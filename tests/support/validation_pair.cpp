#include "tests/support/validation_pair.hpp"

#include "tests/support/plain_validator.hpp"
#include "tests/support/shrink_schema.hpp"

#include <cstring>
#include <memory>
#include <string_view>

namespace {

constexpr unsigned kBrokenPercent = 4;
constexpr unsigned kLongPercent = 4;
constexpr unsigned kListPercent = 35;

bool sameText(const char* a, const char* b)
{
    return a && b ? std::string_view{a} == b : a == b;
}

// Every field, and nothing left behind the end of the sentence.
bool same(const ValidationOutcome& a, const ValidationOutcome& b)
{
    return a.status == b.status && a.result.code == b.result.code &&
           a.result.node == b.result.node && sameText(a.result.elementName, b.result.elementName) &&
           sameText(a.result.elementNamespace, b.result.elementNamespace) &&
           sameText(a.result.attrName, b.result.attrName) &&
           sameText(a.result.attrNamespace, b.result.attrNamespace) &&
           std::memcmp(a.result.detail, b.result.detail, sizeof a.result.detail) == 0;
}

std::string shown(const char* text)
{
    return text ? "\"" + std::string{text} + "\"" : "NULL";
}

std::string shown(const ValidationOutcome& outcome)
{
    const Schema_ValidateResult& result = outcome.result;
    char path[512] = "";
    XML_DOM_GetXPath(result.node, sizeof path, path);
    return "status " + std::to_string(outcome.status) + " code " + std::to_string(result.code) +
           " node " + (result.node ? path : "NULL") + " element " + shown(result.elementName) +
           " in " + shown(result.elementNamespace) + " attribute " + shown(result.attrName) +
           " in " + shown(result.attrNamespace) + " detail " + shown(result.detail);
}

struct Delete {
    void operator()(XML_DOM_Node* node) const { XML_DOM_DelNode(node); }
};
using Tree = std::unique_ptr<XML_DOM_Node, Delete>;

}  // namespace

ValidationPair::ValidationPair(Random& random)
{
    SchemaMaker maker{random, graph_};
    maker.make();
    if (random.percent(kLongPercent) && !maker.oneModel()) lengthenSchema(random, graph_);
    InstanceMaker instances{random, graph_};
    instance_ =
        random.percent(kListPercent) ? instances.makeList(addList(graph_)) : instances.make();
    belowRoot_ = random.percent(4);
    modelBroken_ = broken_ = maker.tooDeep();
    if (random.percent(kBrokenPercent)) breakOnce(random);
}

void ValidationPair::breakOnce(Random& random)
{
    broken_ = true;
    modelBroken_ |= breakSchema(random, graph_);
}

bool ValidationPair::agree(const Look& look)
{
    const RegisteredSchema schema{graph_};
    const Tree tree{instance_.build()};
    engine_.result.code = plain_.result.code = 99;
    const XML_DOM_Node* element = subject(tree.get());
    engine_.status = Schema_ValidateXml(element, schema.root(), &engine_.result);
    if (look) look(element, schema.root(), engine_);
    plain_.status = plainValidate(element, schema.root(), &plain_.result);
    tolerated_ = modelBroken_ && engine_.status != XML_RET_OK && plain_.status == XML_RET_OK;
    const bool agreed = tolerated_ || same(engine_, plain_);
    if (!agreed) difference_ = "netxml: " + shown(engine_) + "\nplain:  " + shown(plain_);
    return agreed;
}

std::string ValidationPair::explain()
{
    shrinkPair(graph_, instance_, [&] { return !agree(); });
    agree();
    return graph_.text() + "\n" + instance_.text() + "\n" + difference_ + "\n";
}

const XML_DOM_Node* ValidationPair::subject(const XML_DOM_Node* root) const
{
    if (!belowRoot_) return root;
    const XML_DOM_Node* node = XML_DOM_GetFirstChild(root);
    while (node && XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT)
        node = XML_DOM_GetNextSibling(node);
    return node ? node : root;
}
