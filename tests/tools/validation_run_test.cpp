// How validation goes on, in this process: documents with one mistake, and random schemas.
//
// NETXML_TEST_SEED sets the seed.
#include "interfaces_schema.h"
#include "tests/support/random.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/validation_pair.hpp"
#include "tools/validation_run.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>

using namespace netxml::tool;

namespace {

struct DeleteTree {
    void operator()(XML_DOM_Node* root) const { XML_DOM_DelNode(root); }
};
using Tree = std::unique_ptr<XML_DOM_Node, DeleteTree>;

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kShare = 5;  // a sanitizer makes a round many times as long
#else
constexpr std::size_t kShare = 1;
#endif
constexpr std::size_t kRounds = 20000 / kShare;

std::uint64_t chosenSeed()
{
    const char* seed = std::getenv("NETXML_TEST_SEED");
    const std::uint64_t chosen = seed ? std::strtoull(seed, nullptr, 10) : std::random_device{}();
    std::printf("seed %llu\n", static_cast<unsigned long long>(chosen));
    return chosen;
}

std::string listOf(const Findings& findings)
{
    std::string list;
    for (const Violation& v : findings.violations) {
        char path[2048];
        XML_DOM_GetXPath(v.node, sizeof path, path);
        list += std::to_string(v.code) + " " + sentenceWithPath(v, path) + " @" + path + "\n";
    }
    return list + (findings.more ? "more\n" : "") + (findings.broken ? "broken\n" : "");
}

std::string outline(const XML_DOM_Node* node)
{
    std::string text;
    XML_DOM_ScanTree(
        const_cast<XML_DOM_Node*>(node),
        [](XML_DOM_Node* n, void* to) -> uint32_t {
            const char* nameSpace = nullptr;
            XML_DOM_GetNodeNameSpace(n, nullptr, &nameSpace);
            const char* name = XML_DOM_GetNodeName(n);
            const char* value = XML_DOM_GetNodeValue(n);
            *static_cast<std::string*>(to) += std::string{name ? name : "-"} + "{" +
                                              (nameSpace ? nameSpace : "-") + "}" +
                                              (value ? value : "-") + "\n";
            return 0;
        },
        &text);
    return text;
}

// Documents of the example schema, changed in one place or several.

constexpr const char* kDocuments[] = {"/valid-01-minimal.xml", "/valid-02-access-switch.xml",
                                      "/valid-03-router.xml", "/valid-04-prefixes-gb18030.xml"};

Tree parse(const char* document)
{
    char error[256] = "";
    Tree tree{XML_DOM_BuildTreeByFile((std::string{NETXML_EXAMPLE_DOCUMENTS} + document).c_str(),
                                      sizeof error, error)};
    EXPECT_TRUE(tree) << error;
    return tree;
}

std::vector<XML_DOM_Node*> elementsOf(XML_DOM_Node* root)
{
    std::vector<XML_DOM_Node*> elements;
    XML_DOM_ScanTree(
        root,
        [](XML_DOM_Node* n, void* to) -> uint32_t {
            if (XML_DOM_GetNodeType(n) == XML_DOM_NODE_ELEMENT)
                static_cast<std::vector<XML_DOM_Node*>*>(to)->push_back(n);
            return 0;
        },
        &elements);
    return elements;
}

struct Mistake {
    enum Kind {
        Rename,
        Delete,
        StrangerBefore,
        StrangerIn,
        Value,
        NoAttribute,
        OneMoreAttribute,
        TextIn,
        Exchange,
        Kinds
    };

    Kind kind;
    std::size_t element;  // its number in the document
    const char* value;

    bool isAboutSiblings() const
    {
        return kind == Rename || kind == Delete || kind == StrangerBefore || kind == Exchange;
    }
    std::string text() const
    {
        return std::to_string(kind) + " at element " + std::to_string(element);
    }
    // False where the element does not allow for it.
    bool make(XML_DOM_Node* at) const;
};

bool Mistake::make(XML_DOM_Node* at) const
{
    XML_DOM_Node* child = XML_DOM_GetFirstChild(at);
    const bool isText = child && XML_DOM_GetNodeType(child) == XML_DOM_NODE_TEXT;
    if (isAboutSiblings() && !XML_DOM_GetNodeParent(at)) return false;
    switch (kind) {
    case Rename: return XML_DOM_SetNodeName(at, "zzz") == XML_RET_OK;
    case Delete: XML_DOM_DelNode(at); return true;
    case StrangerBefore:
        return XML_DOM_InsertBeforeNode(at, XML_DOM_CreateElementNode("zzz")) == XML_RET_OK;
    case StrangerIn:
        return !isText && XML_DOM_AddChildNode(at, XML_DOM_CreateElementNode("zzz")) == XML_RET_OK;
    case Value:
        return isText && !XML_DOM_GetNextSibling(child) &&
               XML_DOM_SetNodeValue(child, value) == XML_RET_OK;
    case NoAttribute:
        for (const char* name :
             {"version", "id", "name", "vendor", "number", "role", "direction", "process"}) {
            if (!XML_DOM_GetNodeAttrValByName(at, name)) continue;
            XML_DOM_DelAttr(at, nullptr, name);
            return true;
        }
        return false;
    case OneMoreAttribute: return XML_DOM_AddAttr(at, nullptr, "zzz", "1") != nullptr;
    case TextIn:
        return !isText && XML_DOM_AddChildNode(at, XML_DOM_CreateTextNode("zzz")) == XML_RET_OK;
    default: {
        XML_DOM_Node* next = XML_DOM_GetNextSibling(at);
        if (!next || XML_DOM_GetNodeType(next) != XML_DOM_NODE_ELEMENT) return false;
        XML_DOM_Node* copy = XML_DOM_CopyNode(next);
        if (!copy || XML_DOM_InsertBeforeNode(at, copy) != XML_RET_OK ||
            XML_DOM_CopySubTree(copy, next) != XML_RET_OK)
            return false;
        XML_DOM_DelNode(next);
        return true;
    }
    }
}

Mistake randomMistake(Random& random, std::size_t elements)
{
    return {static_cast<Mistake::Kind>(random.below(Mistake::Kinds)), random.below(elements),
            random.one({"?", "-99999999999999999999", "x y"})};
}

class ExampleSchema {
public:
    ExampleSchema()
    {
        EXPECT_EQ(Schema_InitRoot(&root_), XML_RET_OK);
        EXPECT_EQ(interfaces_schema_register(&root_), XML_RET_OK);
    }
    ExampleSchema(const ExampleSchema&) = delete;
    ExampleSchema& operator=(const ExampleSchema&) = delete;
    ~ExampleSchema()
    {
        interfaces_schema_deregister(&root_);
        Schema_ExitRoot(&root_);
    }
    const Schema_Root& root() const { return root_; }

private:
    Schema_Root root_{};
};

TEST(ValidationRun, OneMistakeIsReportedOnce)
{
    const ExampleSchema schema;
    const TopLevelIndex top{schema.root()};
    const std::uint64_t seed = chosenSeed();
    unsigned codes[13] = {};
    const std::size_t rounds = randomRounds(kRounds);
    for (std::size_t i = 0; i < rounds; ++i) {
        Random random{seed + i};
        const char* file = random.one({kDocuments[0], kDocuments[1], kDocuments[2], kDocuments[3]});
        const Tree tree = parse(file);
        ASSERT_TRUE(tree);
        const std::vector<XML_DOM_Node*> elements = elementsOf(tree.get());
        const Mistake mistake = randomMistake(random, elements.size());
        if (!mistake.make(elements[mistake.element])) continue;
        Schema_ValidateResult result;
        ASSERT_EQ(Schema_ValidateXml(tree.get(), &schema.root(), &result), XML_RET_OK);
        ++codes[result.code];
        const Findings findings = ValidationRun{top, tree.get()}.run(0);
        const std::string where = "seed " + std::to_string(seed + i) + " " + file + ": " +
                                  mistake.text() + "\n" + listOf(findings);
        EXPECT_FALSE(findings.broken || findings.more) << where;
        EXPECT_EQ(findings.violations.size(), result.code == SCHEMA_VALID ? 0u : 1u) << where;
        if (result.code == SCHEMA_VALID || findings.violations.empty()) continue;
        EXPECT_EQ(findings.violations[0].code, result.code) << where;
        EXPECT_EQ(findings.violations[0].node, result.node) << where;
        char sentence[16384] = "";
        char path[512];
        Schema_GetErrorDesc(&result, sizeof sentence, sentence);
        XML_DOM_GetXPath(result.node, sizeof path, path);
        EXPECT_EQ(sentenceWithPath(findings.violations[0], path), sentence) << where;
    }
    if (rounds < kRounds) return;
    for (const unsigned code : {1u, 2u, 3u, 5u, 6u, 7u, 8u, 9u, 10u, 11u})
        EXPECT_GT(codes[code], 0u) << "code " << code << " was never met";
}

// The sentences without positions, which change with the siblings, sorted.
std::multiset<std::string> sentencesOf(const Findings& findings)
{
    std::multiset<std::string> sentences;
    for (const Violation& v : findings.violations) {
        char path[2048];
        XML_DOM_GetXPath(v.node, sizeof path, path);
        std::string sentence = sentenceWithPath(v, path);
        for (std::size_t at = 0; (at = sentence.find('[', at)) != std::string::npos;)
            sentence.erase(at, sentence.find(']', at) + 1 - at);
        sentences.insert(std::move(sentence));
    }
    return sentences;
}

bool isIn(const XML_DOM_Node* node, const XML_DOM_Node* ancestor)
{
    for (; node; node = XML_DOM_GetNodeParent(node)) {
        if (node == ancestor) return true;
    }
    return false;
}

// Mistakes of which none hides or changes another one: each in the content or attributes of an
// element of its own, and none within what is renamed, deleted or moved.
std::vector<Mistake> independentMistakes(Random& random, const std::vector<XML_DOM_Node*>& elements)
{
    std::vector<Mistake> mistakes;
    std::set<const XML_DOM_Node*> owners;
    std::vector<const XML_DOM_Node*> places;
    std::vector<const XML_DOM_Node*> lost;
    for (const std::size_t wanted = random.between(2, 8); mistakes.size() < wanted;) {
        const Mistake mistake = randomMistake(random, elements.size());
        const XML_DOM_Node* place = elements[mistake.element];
        const XML_DOM_Node* owner =
            mistake.isAboutSiblings() ? XML_DOM_GetNodeParent(place) : place;
        const XML_DOM_Node* next = XML_DOM_GetNextSibling(place);
        const bool hides = std::any_of(places.begin(), places.end(), [&](const auto* other) {
            return isIn(other, place) || (next && isIn(other, next));
        });
        const bool hidden = std::any_of(lost.begin(), lost.end(),
                                        [&](const auto* other) { return isIn(place, other); });
        if ((mistake.isAboutSiblings() && hides) || hidden) {
            if (random.percent(5)) break;
            continue;
        }
        if (!owners.insert(owner).second) continue;
        mistakes.push_back(mistake);
        places.push_back(place);
        if (mistake.isAboutSiblings()) {
            lost.push_back(place);
            if (next) lost.push_back(next);
        }
    }
    return mistakes;
}

TEST(ValidationRun, SeveralMistakesAreReportedLikeEachAlone)
{
    const ExampleSchema schema;
    const TopLevelIndex top{schema.root()};
    const std::uint64_t seed = chosenSeed();
    std::size_t reports = 0;
    const std::size_t rounds = randomRounds(3000 / kShare);
    for (std::size_t i = 0; i < rounds && !HasFailure(); ++i) {
        Random random{seed + i};
        const char* file = random.one({kDocuments[1], kDocuments[2]});
        const Tree together = parse(file);
        ASSERT_TRUE(together);
        const std::vector<XML_DOM_Node*> elements = elementsOf(together.get());
        std::multiset<std::string> expected;
        std::vector<Mistake> made;
        std::string what;
        for (const Mistake& mistake : independentMistakes(random, elements)) {
            const Tree alone = parse(file);
            ASSERT_TRUE(alone);
            if (!mistake.make(elementsOf(alone.get())[mistake.element])) continue;
            made.push_back(mistake);
            what += mistake.text() + ", ";
            expected.merge(sentencesOf(ValidationRun{top, alone.get()}.run(0)));
        }
        for (const Mistake& mistake : made) mistake.make(elements[mistake.element]);
        const Findings findings = ValidationRun{top, together.get()}.run(0);
        EXPECT_EQ(sentencesOf(findings), expected)
            << "seed " << seed + i << " " << file << ": " << what << "\n"
            << listOf(findings);
        reports += findings.violations.size();
    }
    EXPECT_GT(reports, rounds);
}

// Random schemas, many of them ambiguous and some broken.

TEST(ValidationRun, RandomSchemas)
{
    const std::uint64_t seed = chosenSeed();
    std::size_t several = 0;
    const std::size_t rounds = randomRounds(kRounds);
    for (std::size_t i = 0; i < rounds; ++i) {
        Random random{seed + i};
        ValidationPair pair{random};
        pair.agree([&](const XML_DOM_Node* node, const Schema_Root* root,
                       const ValidationOutcome& outcome) {
            const std::string before = outline(node);
            const TopLevelIndex top{*root};
            auto* element = const_cast<XML_DOM_Node*>(node);
            const Findings all = ValidationRun{top, element}.run(0);
            const std::string where = "seed " + std::to_string(seed + i) + "\n" + listOf(all) +
                                      pair.graph().text() + pair.instance().text();
            EXPECT_EQ(outline(node), before) << where;
            EXPECT_FALSE(all.more) << where;
            if (outcome.status != XML_RET_OK) {
                EXPECT_TRUE(all.broken && all.violations.empty()) << where;
                return;
            }
            EXPECT_EQ(all.violations.empty(), outcome.result.code == SCHEMA_VALID) << where;
            if (all.violations.empty()) return;
            EXPECT_EQ(all.violations[0].code, outcome.result.code) << where;
            if (outcome.result.node) {
                EXPECT_EQ(all.violations[0].node, outcome.result.node) << where;
            }
            std::set<std::string> once;
            for (const Violation& v : all.violations) {
                char path[2048];
                XML_DOM_GetXPath(v.node, sizeof path, path);
                EXPECT_TRUE(once.insert(sentenceWithPath(v, path) + path).second) << where;
            }
            several += all.violations.size() > 1;

            const std::size_t limit = 1 + random.below(all.violations.size());
            const Findings some = ValidationRun{top, element}.run(limit);
            EXPECT_EQ(some.violations.size(), limit) << where;
            EXPECT_EQ(some.more, limit < all.violations.size()) << where;
            for (std::size_t v = 0; v < some.violations.size(); ++v) {
                EXPECT_EQ(some.violations[v].node, all.violations[v].node) << where;
                EXPECT_EQ(some.violations[v].sentence, all.violations[v].sentence) << where;
            }
        });
        if (HasFailure()) break;
    }
    if (rounds == kRounds) {
        EXPECT_GT(several, 100u);
    }
}

// Schemas that the example does not have.

class Continued : public ::testing::Test {
protected:
    std::string listFor(std::string_view document)
    {
        char error[256] = "";
        const Tree tree{XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                                               static_cast<uint32_t>(document.size()), sizeof error,
                                               error)};
        EXPECT_TRUE(tree) << error;
        const TopLevelIndex top{kit_.root()};
        return listOf(ValidationRun{top, tree.get()}.run(0));
    }
    SchemaKit kit_;
};

// A local element and a top-level one of the same name: what a wildcard in the local one finds is
// the top-level one, or nothing.
TEST_F(Continued, ADeclarationIsNotFoundForOtherElementsOfItsName)
{
    Schema_ElementDecl* number = kit_.simpleElement("n", Schema_BLDIN_int());
    Schema_ElementDecl* box = kit_.element("box", kit_.complexType(kit_.model("(m?,#*)")));
    Schema_ModelGroup* content = kit_.model("(b*)");
    box->maxOccurs = SCHEMA_UNBOUNDED;
    box->minOccurs = 0;
    Schema_Object boxes[2];
    boxes[0] = {number, SCHEMA_KIND_ELEMENT};
    boxes[1] = {box, SCHEMA_KIND_ELEMENT};
    content->particles = boxes;
    content->particleCount = 2;
    kit_.add(kit_.element("top", kit_.complexType(content)));
    EXPECT_EQ(listFor("<top><n>x</n><box><box><q/><zz a='1'/></box></box>"
                      "<box a='1'><box a='2'/></box></top>"),
              "3 The value of element '/top/n[1]' is invalid. x is an invalid value of int type "
              "value. @/top/n[1]\n"
              "7 Unexpected attribute '':'a' of element '/top/box[2]'. @/top/box[2]\n");
}

// Two elements of one name that differ: nobody can tell which one a child is.
TEST_F(Continued, ElementsThatAreAmbiguousAreNotChecked)
{
    Schema_Object particles[4];
    particles[0] = {kit_.simpleElement("n", Schema_BLDIN_int()), SCHEMA_KIND_ELEMENT};
    particles[1] = {kit_.simpleElement("s", Schema_BLDIN_string()), SCHEMA_KIND_ELEMENT};
    particles[2] = {kit_.simpleElement("n", Schema_BLDIN_string()), SCHEMA_KIND_ELEMENT};
    particles[3] = {kit_.simpleElement("i", Schema_BLDIN_int()), SCHEMA_KIND_ELEMENT};
    Schema_ModelGroup* content = kit_.model("(a)");
    content->particles = particles;
    content->particleCount = 4;
    kit_.add(kit_.element("top", kit_.complexType(content)));
    EXPECT_EQ(listFor("<top><n>x</n><s/><n>y</n><i>z</i></top>"),
              "3 The value of element '/top/n[1]' is invalid. x is an invalid value of int type "
              "value. @/top/n[1]\n"
              "3 The value of element '/top/i[1]' is invalid. z is an invalid value of int type "
              "value. @/top/i[1]\n");
}

struct ModelCase {
    const char* model;
    const char* children;
    const char* found;  // codes
};

// What follows from a violation is not reported, and what does not is.
const ModelCase kModels[] = {
    {"(a,b)", "<a/><x/>", "1"},
    {"(a,b)", "<x/><b/>", "1"},
    {"(a,b)", "<b/><x/>", "1 6"},
    {"(a,b)", "<x/><x/>", "1 6"},
    {"(a,b)", "<a/>", "5"},
    {"(a|b)", "<x/>", "11"},
    {"(a|b)", "<x/><y/>", "11 6"},
    {"(a|b)", "<a/><b/>", "6"},
    {"(a{2,2},b)", "<x/><b/>", "1"},
    {"(a{2,2},b)", "<a/><x/><b/>", "1"},
    {"(a&b)", "<b/><x/>", "1"},
    {"(a&b)", "<a/><a/><b/>", "5"},
    {"(a,b?,c?)", "<c/><b/><a/>", "1"},
    {"(a*,b)", "<b/><a/><x/><y/>", "6 6 6"},
    {"(~,b)", "<x/><b/>", "8"},
    {"(a,(b|c),d)", "<a/><d/><x/>", "11"},
};

TEST_F(Continued, ConsequencesAreNotReported)
{
    for (const ModelCase& c : kModels) {
        SchemaKit kit;
        kit.add(kit.element("top", kit.complexType(kit.model(c.model))));
        const std::string text = std::string{"<top>"} + c.children + "</top>";
        char error[256] = "";
        const Tree tree{XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(text.data()),
                                               static_cast<uint32_t>(text.size()), sizeof error,
                                               error)};
        ASSERT_TRUE(tree) << error;
        const TopLevelIndex top{kit.root()};
        std::string codes;
        for (const Violation& v : ValidationRun{top, tree.get()}.run(0).violations)
            codes += (codes.empty() ? "" : " ") + std::to_string(v.code);
        EXPECT_EQ(codes, c.found) << c.model << " " << c.children;
    }
}

}  // namespace
