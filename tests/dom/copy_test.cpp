#include "dom/declaration_scope.hpp"
#include "dom/node.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

TEST(CopyNode, IsShallowAndDetached)
{
    XML_DOM_Node* root = treeOf(
        "<r xmlns:p='u' xmlns='d'><p:a p:x='1' y='2' xmlns:z='v'>t<b/></p:a>t<![CDATA[c]]></r>");
    XML_DOM_Node* a = XML_DOM_GetFirstChild(root);
    XML_DOM_Node* text = XML_DOM_GetNextSibling(a);
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CopyNode(a)),
              "<p:a xmlns:z=\"v\" xmlns:p=\"u\" p:x=\"1\" y=\"2\"/>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CopyNode(text)), "t");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CopyNode(XML_DOM_GetNextSibling(text))), "<![CDATA[c]]>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CopyNode(root)), "<r xmlns:p=\"u\" xmlns=\"d\"/>");
    EXPECT_EQ(XML_DOM_CopyNode(nullptr), nullptr);
    XML_DOM_DelNode(root);
}

TEST(CopyNode, DeclaresWhatOnlyAnAttributeNeeds)
{
    XML_DOM_Node* root = treeOf("<r xmlns:p='u'><a p:x='1' p:y='2' xml:lang='zh'/></r>");
    EXPECT_EQ(writtenAndDeleted(XML_DOM_CopyNode(XML_DOM_GetFirstChild(root))),
              "<a xmlns:p=\"u\" p:x=\"1\" p:y=\"2\" xml:lang=\"zh\"/>");
    XML_DOM_DelNode(root);
}

// What an element has declared is given back when it is left: its room serves the next one.
TEST(DeclarationScope, ManyElementsNeedTheRoomOfOne)
{
    XML_DOM_Node* root = treeOf("<r xmlns='d' xmlns:p='u' xmlns:q='v'/>");
    {
        netxml::DeclarationScope scope{nullptr};
        const FailingHeap heap{0};
        for (int i = 0; i < 1000; ++i) {
            ASSERT_TRUE(scope.enter(root, 1)) << i;
            ASSERT_TRUE(scope.holds("q"));
            scope.leave(1);
            ASSERT_FALSE(scope.holds("q"));
        }
        EXPECT_EQ(FailingHeap::allocations(), 0u);
    }
    XML_DOM_DelNode(root);
}

// Declarations in scope lie in room that costs no heap as long as they are few: with any number of
// them, and prefixes of any length, each kind of record is once the first that asks the heap.
TEST(CopySubTree, MemoryMayRunOutAtAnyRecord)
{
    for (int count = 0; count < 40; ++count) {
        std::string source = "<r xmlns='d'";
        std::string uses = "<e";
        for (int i = 0; i < count; ++i) {
            const std::string prefix =
                "p" + std::to_string(i) + std::string(static_cast<std::size_t>(i % 5) * 20, 'x');
            source += " xmlns:" + prefix + "='u" + std::to_string(i) + "'";
            uses += " " + prefix + ":a='1'";
        }
        uses += " xml:lang='zh'><f xmlns:q='v' q:b='2'/></e>";
        const std::string first = "<c" + source.substr(2) + "/>";
        XML_DOM_Node* from = treeOf(source + ">" + first + uses + "</r>");
        XML_DOM_Node* bare = treeOf("<t xmlns='o'/>");
        XML_DOM_Node* same = treeOf(source + "><in/></r>");
        XML_DOM_Node* inner = XML_DOM_GetFirstChild(same);
        for (XML_DOM_Node* target : {bare, inner}) {
            for (const std::size_t failures : {std::size_t{1}, FailingHeap::kForever}) {
                const std::string before = written(target);
                for (std::size_t allowed = 0;; ++allowed) {
                    ASSERT_LT(allowed, 200u);
                    const long blocks = heapLiveBlocks();
                    uint32_t status = XML_RET_FAIL;
                    bool refused = false;
                    {
                        const FailingHeap heap{allowed, failures};
                        status = XML_DOM_CopySubTree(target, from);
                        refused = FailingHeap::refused();
                    }
                    if (status == XML_RET_OK) {
                        ASSERT_NE(written(target), before);
                        while (XML_DOM_Node* child = XML_DOM_GetFirstChild(target))
                            XML_DOM_DelNode(child);
                    }
                    ASSERT_EQ(written(target), before) << count << ", after " << allowed;
                    ASSERT_EQ(heapLiveBlocks(), blocks);
                    if (!refused) break;
                }
            }
        }
        for (XML_DOM_Node* tree : {from, bare, same}) XML_DOM_DelNode(tree);
    }
}

// Strings that are blocks of their own wherever they may be one.
TEST(CopySubTree, TakesLongStringsAndElementsWithoutAName)
{
    const std::string longText(5000, 'x');
    XML_DOM_Node* from = treeOf("<r><" + longText + "/><e " + longText + "='1'/><e a='" + longText +
                                "'/><e xmlns:" + longText + "='u'/><e xmlns:p='" + longText +
                                "'/><e>" + longText + "</e></r>");
    XML_DOM_Node* unnamed = XML_DOM_CreateTextualNodeInner(XML_DOM_NODE_ELEMENT, "x", 1);
    ASSERT_EQ(XML_DOM_AddChildNode(from, unnamed), XML_RET_OK);
    XML_DOM_Node* target = treeOf("<r/>");
    ASSERT_EQ(XML_DOM_CopySubTree(target, from), XML_RET_OK);
    EXPECT_EQ(written(target), written(from));
    XML_DOM_DelNode(from);
    XML_DOM_DelNode(target);
}

TEST(CopyRoot, MakesANewDocument)
{
    const std::string source =
        "<?xml version='1.0' encoding='GBK'?><p:r xmlns:p='u' a='1'><b/></p:r>";
    XML_DOM_Node* root = treeOf(source);
    XML_DOM_Node* copy = XML_DOM_CopyRoot(XML_DOM_GetFirstChild(root));
    EXPECT_EQ(XML_DOM_GetRoot(copy), copy);
    EXPECT_EQ(XML_DOM_GetEncoding(copy), 8u);
    EXPECT_STREQ(XML_DOM_GetVersion(copy), "1.0");
    XML_DOM_DelNode(root);
    EXPECT_EQ(writtenAndDeleted(copy), "<p:r xmlns:p=\"u\" a=\"1\"/>");
    EXPECT_EQ(XML_DOM_CopyRoot(nullptr), nullptr);
    XML_DOM_Node* alone = XML_DOM_CreateElementNode("x");
    EXPECT_EQ(XML_DOM_CopyRoot(alone), nullptr) << "no document";
    XML_DOM_DelNode(alone);
}

struct SubTreeCase {
    const char* why;
    const char* destination;
    const char* source;
    const char* result;
};

// clang-format off
constexpr SubTreeCase kSubTrees[] = {
    {"children are appended in order", "<d><x/></d>", "<s><a>1<b/></a>t<![CDATA[c]]></s>", "<d><x/><a>1<b/></a>t<![CDATA[c]]></d>"},
    {"nothing to copy", "<d><x/></d>", "<s/>", "<d><x/></d>"},
    {"a declaration of the source's root is added where it is needed", "<d/>", "<s xmlns:p='u'><p:a><p:b p:x='1'/></p:a><p:c/></s>",
     "<d><p:a xmlns:p=\"u\"><p:b p:x=\"1\"/></p:a><p:c xmlns:p=\"u\"/></d>"},
    {"the destination's binding wins, even for another name", "<d xmlns:p='other'/>", "<s xmlns:p='u'><p:a/></s>",
     "<d xmlns:p=\"other\"><p:a/></d>"},
    {"own declarations are copied", "<d xmlns:p='other'/>", "<s><p:a xmlns:p='u'><p:b/></p:a></s>",
     "<d xmlns:p=\"other\"><p:a xmlns:p=\"u\"><p:b/></p:a></d>"},
    {"scopes end with their element", "<d/>", "<s xmlns:p='u'><a xmlns:p='v'><p:b/></a><p:c/></s>",
     "<d><a xmlns:p=\"v\"><p:b/></a><p:c xmlns:p=\"u\"/></d>"},
    {"a declaration serves all children, whatever the first of them declares", "<d/>",
     "<s><a xmlns:p='u'><p:b xmlns:q='v'/><p:c/></a></s>", "<d><a xmlns:p=\"u\"><p:b xmlns:q=\"v\"/><p:c/></a></d>"},
    {"a declaration added for an attribute serves the children", "<d/>", "<s xmlns:p='u'><a p:x='1'><p:b/></a></s>",
     "<d><a xmlns:p=\"u\" p:x=\"1\"><p:b/></a></d>"},
    {"xml needs none", "<d/>", "<s><xml:a xml:b='1'/></s>", "<d><xml:a xml:b=\"1\"/></d>"},
    {"unbound elements stay unbound", "<d xmlns='n'/>", "<s xmlns='m'><a/></s>", "<d xmlns=\"n\"><a/></d>"},
};
// clang-format on

TEST(CopySubTree, AppendsDeepCopies)
{
    for (const SubTreeCase& row : kSubTrees) {
        XML_DOM_Node* destination = treeOf(row.destination);
        XML_DOM_Node* source = treeOf(row.source);
        EXPECT_EQ(XML_DOM_CopySubTree(destination, source), XML_RET_OK) << row.why;
        XML_DOM_DelNode(source);
        EXPECT_EQ(writtenAndDeleted(destination), row.result) << row.why;
    }
}

TEST(CopySubTree, OntoItselfAndInsideItself)
{
    XML_DOM_Node* root = treeOf("<r><a><b/></a>t</r>");
    EXPECT_EQ(XML_DOM_CopySubTree(root, root), XML_RET_OK);
    EXPECT_EQ(written(root), "<r><a><b/></a>t<a><b/></a>t</r>");
    XML_DOM_Node* a = XML_DOM_GetFirstChild(root);
    EXPECT_EQ(XML_DOM_CopySubTree(XML_DOM_GetFirstChild(a), root), XML_RET_FAIL)
        << "inside the source";
    EXPECT_EQ(XML_DOM_CopySubTree(a, root), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_CopySubTree(root, a), XML_RET_OK) << "outwards";
    EXPECT_EQ(writtenAndDeleted(root), "<r><a><b/></a>t<a><b/></a>t<b/></r>");
}

TEST(CopySubTree, RefusesBadArguments)
{
    XML_DOM_Node* root = treeOf("<r>t</r>");
    EXPECT_EQ(XML_DOM_CopySubTree(nullptr, root), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_CopySubTree(root, nullptr), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_CopySubTree(XML_DOM_GetFirstChild(root), root), XML_RET_FAIL) << "no element";
    EXPECT_EQ(XML_DOM_CopySubTree(root, XML_DOM_GetFirstChild(root)), XML_RET_OK)
        << "text has no children";
    EXPECT_EQ(writtenAndDeleted(root), "<r>t</r>");
}

// A binding whose declaration is not in scope any more cannot be copied.
TEST(Copy, FailsForABindingThatCannotBeResolved)
{
    XML_DOM_Node* root = treeOf("<r xmlns:p='u'><x/><k/></r>");
    XML_DOM_Node* loose = XML_DOM_CreateElementNode("l");
    XML_DOM_Node* inner = XML_DOM_CreateElementNode("m");
    EXPECT_EQ(XML_DOM_AddNodeNameSpace(loose, "q", "v"), XML_RET_OK);
    EXPECT_EQ(XML_DOM_AddChildNode(loose, inner), XML_RET_OK);
    EXPECT_EQ(XML_DOM_SetNodeNameSpace(inner, "q"), XML_RET_OK);
    XML_DOM_Node* copy = XML_DOM_CopyNode(inner);
    EXPECT_EQ(written(copy), "<q:m xmlns:q=\"v\"/>");
    XML_DOM_DelNode(copy);
    // Moved by force to where nothing declares q; no public function takes a child out alive.
    loose->firstChild = loose->lastChild = nullptr;
    inner->parent = nullptr;
    EXPECT_EQ(XML_DOM_InsertBeforeNode(XML_DOM_GetFirstChild(root), inner), XML_RET_OK);
    EXPECT_EQ(XML_DOM_CopyNode(inner), nullptr);
    XML_DOM_Node* destination = treeOf("<d><last/></d>");
    EXPECT_EQ(XML_DOM_CopySubTree(destination, root), XML_RET_FAIL);
    EXPECT_EQ(writtenAndDeleted(destination), "<d><last/></d>") << "nothing of it stays";
    XML_DOM_Node* empty = treeOf("<d/>");
    EXPECT_EQ(XML_DOM_CopySubTree(empty, root), XML_RET_FAIL);
    EXPECT_EQ(XML_DOM_AddChildNode(empty, XML_DOM_CreateTextNode("t")), XML_RET_OK);
    EXPECT_EQ(writtenAndDeleted(empty), "<d>t</d>") << "nor in an empty one";
    XML_DOM_DelNode(root);
    XML_DOM_DelNode(loose);
}

TEST(Copy, LeavesNothingBehindWhicheverAllocationFails)
{
    std::string many = "<s xmlns:p='u'>";
    for (int i = 0; i < 40; ++i)
        many += "<p:a x" + std::to_string(i) + "='" + std::string(300, 'v') + "' xmlns:n" +
                std::to_string(i) + "='m'>" + std::string(i == 7 ? 9000 : 10, 't') + "</p:a>";
    many += "</s>";
    XML_DOM_Node* source = treeOf(many);
    XML_DOM_Node* destination = treeOf("<d><last/></d>");
    const std::string before = written(destination);
    std::size_t failures = 0;
    for (std::size_t allowed = 0;; ++allowed) {
        const FailingHeap heap{allowed};
        const uint32_t status = XML_DOM_CopySubTree(destination, source);
        if (status == XML_RET_OK) break;
        ++failures;
        ASSERT_EQ(FailingHeap::liveBlocks(), 0) << allowed;
    }
    EXPECT_GT(failures, 3u);
    EXPECT_EQ(written(destination).size(), before.size() + written(source).size() -
                                               std::string{"<s xmlns:p=\"u\"></s>"}.size() +
                                               40 * std::string{" xmlns:p=\"u\""}.size());
    for (std::size_t allowed = 0;; ++allowed) {
        const FailingHeap heap{allowed};
        XML_DOM_Node* copy = XML_DOM_CopyRoot(source);
        const bool made = copy != nullptr;
        XML_DOM_DelNode(copy);
        ASSERT_EQ(FailingHeap::liveBlocks(), 0) << allowed;
        if (made) break;
    }
    XML_DOM_DelNode(destination);
    XML_DOM_DelNode(source);
}

// A name that the first slab has no room for, so that a failure finds nothing laid out.
TEST(Copy, LeavesNothingBehindWhereTheFirstRecordDoesNotFit)
{
    for (const std::size_t size : {2000u, 5000u}) {
        XML_DOM_Node* source = treeOf("<a><" + std::string(size, 'n') + "/></a>");
        XML_DOM_Node* to = treeOf("<t/>");
        for (std::size_t allowed = 0;; ++allowed) {
            const FailingHeap heap{allowed};
            const uint32_t status = XML_DOM_CopySubTree(to, source);
            if (!FailingHeap::refused()) break;
            if (status == XML_RET_OK) continue;  // a block that only would have saved work
            EXPECT_EQ(status, XML_RET_FAIL);
            EXPECT_EQ(FailingHeap::liveBlocks(), 0) << size << " with " << allowed;
        }
        XML_DOM_DelNode(source);
        XML_DOM_DelNode(to);
    }
}

}  // namespace
