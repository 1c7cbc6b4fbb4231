// Whatever a document is made of: twice as much of it costs twice the work, of everything that the
// library does with documents, on the stack of a small device. Work is counted, never timed.
#include "tests/hostile/shapes.hpp"
#include "tests/hostile/work_count.hpp"
#include "tests/support/callback_tree.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/small_stack.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <optional>

namespace {

// A little more than twice: sizes of numbers, and tables that double at one size and not at
// another.
constexpr double kMost = 2.3;

// Asks for the place of every event, as a handler may.
struct Places {
    static void at(XML_Parser* parser)
    {
        auto& sum = *static_cast<std::uint64_t*>(parser->handler->userData);
        sum += parser->line + parser->column;
    }
    static void text(XML_Parser* parser, const char*, uint32_t) { at(parser); }
    static void note(XML_Parser* parser, const char*) { at(parser); }
    static void instruction(XML_Parser* parser, const char*, const char*) { at(parser); }
    static void error(XML_Parser* parser, const char*, ...) { at(parser); }
    static void start(XML_Parser* parser, const char*, const char*, const char*, uint32_t,
                      const char**, uint32_t, uint32_t, const char**)
    {
        at(parser);
    }
    static void end(XML_Parser* parser, const char*, const char*, const char*) { at(parser); }

    Places()
    {
        handler.characters = text;
        handler.comment = note;
        handler.cdata = text;
        handler.processingInstruction = instruction;
        handler.error = error;
        handler.startElementNs = start;
        handler.endElementNs = end;
        handler.userData = &sum;
    }

    XML_SAX_Handler handler{};
    std::uint64_t sum = 0;
};

// A document in the forms that the tasks take it in; what they make is released in between.
class Subject {
public:
    explicit Subject(const Shape& shape, std::size_t n) : text{shape.make(n)}
    {
        char error[300] = "";
        tree = XML_DOM_BuildTreeByMem(bytesOf(text), size(), sizeof error, error);
        EXPECT_EQ(tree != nullptr, shape.wellFormed) << error;
    }
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    ~Subject() { XML_DOM_DelNode(tree); }

    uint32_t size() const { return static_cast<uint32_t>(text.size()); }

    std::string text;
    XML_DOM_Node* tree = nullptr;
};

struct Task {
    const char* name;
    bool needsTree;
    std::uint64_t (*work)(Subject& subject);
};

std::uint64_t eventsOfABlock(Subject& s)
{
    Places places;
    return workOf([&] { XML_Parser_ByMem(bytesOf(s.text), s.size(), &places.handler); });
}
std::uint64_t eventsOfChunks(Subject& s)
{
    const ChunkList chunks{s.text, 4096};
    Places places;
    return workOf([&] { XML_Parser_ByMemList(chunks.list(), &places.handler); });
}
std::uint64_t eventsOfAFile(Subject& s)
{
    const TempFile file{s.text};
    return workOf([&] { XML_Parser_ByFile(file.path(), nullptr); });
}
std::uint64_t eventsOfUtf16(Subject& s)
{
    const std::string wide = "\xFF\xFE" + convertTo("UTF-16LE", s.text);
    const ChunkList chunks{wide, 4096};
    return workOf([&] { XML_Parser_ByMemList(chunks.list(), nullptr); });
}
std::uint64_t treeOfABlock(Subject& s)
{
    return workOf(
        [&] { XML_DOM_DelNode(XML_DOM_BuildTreeByMem(bytesOf(s.text), s.size(), 0, nullptr)); });
}
std::uint64_t treeOfChunks(Subject& s)
{
    const ChunkList chunks{s.text, 4096};
    return workOf([&] { XML_DOM_DelNode(XML_DOM_BuildTreeByMemList(chunks.list(), 0, nullptr)); });
}
std::uint64_t treeOfUtf16(Subject& s)
{
    const std::string wide = "\xFF\xFE" + convertTo("UTF-16LE", s.text);
    return workOf([&] {
        XML_DOM_DelNode(
            XML_DOM_BuildTreeByMem(bytesOf(wide), static_cast<uint32_t>(wide.size()), 0, nullptr));
    });
}
std::uint64_t treeThroughCallbacks(Subject& s)
{
    const CallbackTree tree;
    const std::uint64_t work =
        workOf([&] { XML_Parser_ByMem(bytesOf(s.text), s.size(), tree.handler()); });
    XML_DOM_DelNode(tree.root());
    return work;
}
std::uint64_t toAString(Subject& s)
{
    char* text = nullptr;
    const std::uint64_t work =
        workOf([&] { EXPECT_EQ(XML_DOM_TranslateStr(s.tree, 0, &text, nullptr), XML_RET_OK); });
    heapReleaseHandedOut(text);
    return work;
}
std::uint64_t toAStringInUtf16(Subject& s)
{
    XML_DOM_SetEncoding(s.tree, XML_ENCODING_UTF_16);
    const std::uint64_t work = toAString(s);
    XML_DOM_SetEncoding(s.tree, XML_ENCODING_UTF_8);
    return work;
}
std::uint64_t toACallback(Subject& s)
{
    const XML_DOM_Write take = [](void*, const char*, size_t) { return uint32_t{0}; };
    return workOf(
        [&] { EXPECT_EQ(XML_DOM_OutPutTranslateStr(s.tree, 0, take, nullptr), XML_RET_OK); });
}
std::uint64_t copied(Subject& s)
{
    XML_DOM_Node* copy = nullptr;
    const std::uint64_t work = workOf([&] {
        copy = XML_DOM_CopyRoot(s.tree);
        EXPECT_EQ(XML_DOM_CopySubTree(copy, s.tree), XML_RET_OK);
    });
    XML_DOM_DelNode(copy);
    return work;
}
// To where nothing is declared; and then record by record away again.
std::uint64_t copiedElsewhereAndDeleted(Subject& s)
{
    XML_DOM_Node* target = treeOf("<t/>");
    return workOf([&] {
        EXPECT_EQ(XML_DOM_CopySubTree(target, s.tree), XML_RET_OK);
        XML_DOM_DelNode(XML_DOM_GetFirstChild(target));
        XML_DOM_DelNode(target);
    });
}
std::uint64_t visited(Subject& s)
{
    XML_DOM_Node* last = nullptr;
    const XML_DOM_Visit visit = [](XML_DOM_Node* node, void* into) {
        *static_cast<XML_DOM_Node**>(into) = node;
        return uint32_t{0};
    };
    return workOf([&] {
        EXPECT_EQ(XML_DOM_ScanTree(s.tree, visit, &last), XML_RET_OK);
        std::array<char, 512> path{};
        EXPECT_NE(XML_DOM_GetXPath(last, path.size(), path.data()), 0u);
    });
}
// Against a schema that takes any attributes, any text and any elements, one in another.
std::uint64_t validated(Subject& s)
{
    SchemaKit kit;
    auto* any = kit.make<Schema_AttributeWildcard>();
    any->namespaceName = "##any";
    any->processContents = SCHEMA_PROCESS_LAX;
    Schema_ComplexType* type = kit.complexType(kit.model("(#*)"));
    type->anyAttribute = any;
    type->mixed = 1;
    std::array<Schema_ElementDecl*, 5> declarations{};
    const char* name = XML_DOM_GetNodeName(s.tree);
    const char* space = nullptr;
    XML_DOM_GetNodeNameSpace(s.tree, nullptr, &space);
    for (Schema_ElementDecl*& declaration : declarations) {
        declaration = kit.element(name, type);
        declaration->namespaceName = space;
        kit.add(declaration);
        name = "other";
    }
    Schema_ValidateResult result;
    const std::uint64_t work =
        workOf([&] { EXPECT_EQ(Schema_ValidateXml(s.tree, &kit.root(), &result), XML_RET_OK); });
    EXPECT_EQ(result.code, SCHEMA_VALID);
    return work;
}

constexpr Task kTasks[] = {
    {"events of a block", false, eventsOfABlock},
    {"events of chunks", false, eventsOfChunks},
    {"events of a file", false, eventsOfAFile},
    {"events of UTF-16", false, eventsOfUtf16},
    {"a tree of a block", false, treeOfABlock},
    {"a tree of chunks", false, treeOfChunks},
    {"a tree of UTF-16", false, treeOfUtf16},
    {"a tree through the callbacks", false, treeThroughCallbacks},
    {"a string", true, toAString},
    {"a string in UTF-16", true, toAStringInUtf16},
    {"a callback", true, toACallback},
    {"a copy", true, copied},
    {"a copy elsewhere, deleted", true, copiedElsewhereAndDeleted},
    {"a visit and a path", true, visited},
    {"a validation", true, validated},
};

std::string testName(const testing::TestParamInfo<Shape>& info)
{
    std::string name = info.param.name;
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    }
    return name;
}

class Growth : public testing::TestWithParam<Shape> {};

TEST_P(Growth, IsThatOfTheSize)
{
    const Shape& shape = GetParam();
    onSmallStack([&shape] {
        Subject once{shape, shape.small};
        Subject twice{shape, 2 * shape.small};
        for (const Task& task : kTasks) {
            if (task.needsTree && !once.tree) continue;
            if (shape.climbs && task.work == treeThroughCallbacks) continue;
            const std::uint64_t small = task.work(once);
            const std::uint64_t large = task.work(twice);
            EXPECT_GT(small, 0u) << task.name;
            const double ratio = static_cast<double>(large) / static_cast<double>(small);
            EXPECT_LE(ratio, kMost) << task.name << ": " << small << ", then " << large;
        }
    });
}

// Once at the size that an attacker would take, with the same work for each piece.
TEST_P(Growth, GoesOnToTheFullSize)
{
    const Shape& shape = GetParam();
    onSmallStack([&shape] {
        const long before = heapLiveBlocks();
        const double pieces = static_cast<double>(shape.full) / static_cast<double>(shape.small);
        std::optional<Subject> small;
        std::optional<Subject> full;
        small.emplace(shape, shape.small);
        full.emplace(shape, shape.full);
        for (const char* name : {"events of a block", "a tree of a block", "a string"}) {
            for (const Task& task : kTasks) {
                if (std::string_view{task.name} != name || (task.needsTree && !full->tree))
                    continue;
                const double expected = pieces * static_cast<double>(task.work(*small));
                EXPECT_LE(static_cast<double>(task.work(*full)), expected * kMost / 2) << task.name;
            }
        }
        small.reset();
        full.reset();
        EXPECT_EQ(heapLiveBlocks(), before);
    });
}

INSTANTIATE_TEST_SUITE_P(Documents, Growth, testing::ValuesIn(hostileShapes()), testName);

}  // namespace
