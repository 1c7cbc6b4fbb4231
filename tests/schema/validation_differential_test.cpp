// Validation against the plain rules: the same status and the same result, for random schemas and
// documents. What differs is made as small as possible and shown.
//
// NETXML_TEST_SCHEMAS sets the number of pairs, NETXML_TEST_SEED the seed, NETXML_TEST_FIRST the
// number of the first pair, NETXML_TEST_DIFFERENCES after how many differences to end;
// NETXML_TEST_VERBOSE prints how often each code occurs.
//
// Some schemas are broken at one place. The library looks at the whole of a content model before it
// uses it, the plain rules only at what they come by; so where a content model is broken, the
// library may give up where the plain rules reach a verdict. Everything else must be the same.
#include "tests/support/plain_validator.hpp"
#include "tests/support/random_schema.hpp"
#include "tests/support/shrink_schema.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace {

constexpr unsigned kBrokenPercent = 4;
constexpr unsigned kLongPercent = 4;
constexpr unsigned kListPercent = 35;

struct Outcome {
    uint32_t status = 0;
    Schema_ValidateResult result{};
};

bool sameText(const char* a, const char* b)
{
    return a && b ? std::string_view{a} == b : a == b;
}

// Every field, and nothing left behind the end of the sentence.
bool same(const Outcome& a, const Outcome& b)
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

std::string shown(const Outcome& outcome)
{
    const Schema_ValidateResult& result = outcome.result;
    char path[512] = "";
    XML_DOM_GetXPath(result.node, sizeof path, path);
    return "status " + std::to_string(outcome.status) + " code " + std::to_string(result.code) +
           " node " + (result.node ? path : "NULL") + " element " + shown(result.elementName) +
           " in " + shown(result.elementNamespace) + " attribute " + shown(result.attrName) +
           " in " + shown(result.attrNamespace) + " detail " + shown(result.detail);
}

// One schema with one document, as both see it.
class Pair {
public:
    explicit Pair(std::uint64_t seed)
    {
        Random random{seed};
        SchemaMaker maker{random, graph_};
        maker.make();
        if (random.percent(kLongPercent) && !maker.oneModel()) lengthenSchema(random, graph_);
        InstanceMaker instances{random, graph_};
        instance_ =
            random.percent(kListPercent) ? instances.makeList(addList(graph_)) : instances.make();
        belowRoot_ = random.percent(4);
        modelBroken_ = broken_ = maker.tooDeep();
        if (random.percent(kBrokenPercent)) {
            broken_ = true;
            modelBroken_ |= breakSchema(random, graph_);
        }
    }

    bool agree()
    {
        const RegisteredSchema schema{graph_};
        const Tree tree{instance_.build()};
        engine_.result.code = plain_.result.code = 99;
        const XML_DOM_Node* element = subject(tree.get());
        engine_.status = Schema_ValidateXml(element, schema.root(), &engine_.result);
        plain_.status = plainValidate(element, schema.root(), &plain_.result);
        tolerated_ = modelBroken_ && engine_.status != XML_RET_OK && plain_.status == XML_RET_OK;
        const bool agreed = tolerated_ || same(engine_, plain_);
        if (!agreed) difference_ = "netxml: " + shown(engine_) + "\nplain:  " + shown(plain_);
        return agreed;
    }

    // What the smallest pair looks like about which the two differ.
    std::string explain()
    {
        shrinkPair(graph_, instance_, [&] { return !agree(); });
        agree();
        return graph_.text() + "\n" + instance_.text() + "\n" + difference_ + "\n";
    }

    const Outcome& plain() const { return plain_; }
    bool broken() const { return broken_; }
    bool tolerated() const { return tolerated_; }

private:
    struct Delete {
        void operator()(XML_DOM_Node* node) const { XML_DOM_DelNode(node); }
    };
    using Tree = std::unique_ptr<XML_DOM_Node, Delete>;

    const XML_DOM_Node* subject(const XML_DOM_Node* root) const
    {
        if (!belowRoot_) return root;
        const XML_DOM_Node* node = XML_DOM_GetFirstChild(root);
        while (node && XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT)
            node = XML_DOM_GetNextSibling(node);
        return node ? node : root;
    }

    SchemaGraph graph_;
    Instance instance_;
    bool belowRoot_ = false;    // the first child is validated, in the place of the root
    bool broken_ = false;       // the schema, at some place
    bool modelBroken_ = false;  // and perhaps within a content model
    bool tolerated_ = false;
    Outcome engine_;
    Outcome plain_;
    std::string difference_;
};

struct Histogram {
    std::uint64_t codes[13] = {};
    std::uint64_t failed = 0;
    std::uint64_t broken = 0;
    std::uint64_t tolerated = 0;

    void count(const Pair& pair)
    {
        broken += pair.broken();
        tolerated += pair.tolerated();
        if (pair.plain().status == XML_RET_OK) ++codes[pair.plain().result.code];
        else ++failed;
    }
    void print() const
    {
        for (unsigned code = 0; code < 13; ++code)
            std::printf("code %2u: %llu\n", code, static_cast<unsigned long long>(codes[code]));
        std::printf("failed: %llu; broken schemas: %llu, of them one-sided: %llu\n",
                    static_cast<unsigned long long>(failed),
                    static_cast<unsigned long long>(broken),
                    static_cast<unsigned long long>(tolerated));
    }
};

std::uint64_t setting(const char* name, std::uint64_t otherwise)
{
    const char* value = std::getenv(name);
    return value ? std::strtoull(value, nullptr, 10) : otherwise;
}

// Each pair has a seed of its own, so that one alone can be run again.
std::uint64_t seedOf(std::uint64_t seed, std::uint64_t number)
{
    std::uint64_t mixed = seed * 0x9E3779B97F4A7C15u + number;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    return mixed ^ (mixed >> 31);
}

TEST(ValidationDifferential, EngineAgreesWithThePlainRules)
{
    const std::uint64_t seed = setting("NETXML_TEST_SEED", std::random_device{}());
    const std::uint64_t count = setting("NETXML_TEST_SCHEMAS", 20000);
    const std::uint64_t first = setting("NETXML_TEST_FIRST", 0);
    const std::uint64_t most = setting("NETXML_TEST_DIFFERENCES", 1);
    std::printf("seed %llu, %llu pairs\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(count));
    Histogram histogram;
    std::uint64_t differences = 0;
    for (std::uint64_t i = first; i < first + count && differences < most; ++i) {
        Pair pair{seedOf(seed, i)};
        const bool agreed = pair.agree();
        histogram.count(pair);
        if (agreed) continue;
        ++differences;
        ADD_FAILURE() << "seed " << seed << " pair " << i << (pair.broken() ? " (broken)" : "")
                      << "\n"
                      << pair.explain();
    }
    if (std::getenv("NETXML_TEST_VERBOSE")) histogram.print();
    if (differences != 0 || count < 20000) return;
    // Every outcome must be met, valid documents often.
    EXPECT_GT(histogram.codes[0], count / 5);
    EXPECT_LT(histogram.codes[0], count * 3 / 5);
    for (unsigned code = 1; code < 13; ++code) EXPECT_GT(histogram.codes[code], 0u) << code;
    EXPECT_GT(histogram.failed, 0u);
}

}  // namespace
