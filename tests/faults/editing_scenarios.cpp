// Making nodes, linking, changing and deleting them. Whatever fails leaves the tree as it was.
#include "tests/faults/scenario.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

constexpr char kName[] = "\xD6\xD0";  // beyond ASCII: checked by a converter

// One call that makes a detached node.
template <XML_DOM_Node* (*make)()>
class Create : public Trial {
public:
    bool act() override
    {
        node_ = make();
        return node_ != nullptr;
    }
    std::string product() override
    {
        const std::string text = dump(node_);
        XML_DOM_DelNode(node_);
        return text;
    }

private:
    XML_DOM_Node* node_ = nullptr;
};

XML_DOM_Node* elementInner()
{
    return NOTED(XML_DOM_CreateElementNodeInner)(kName);
}
XML_DOM_Node* element()
{
    return NOTED(XML_DOM_CreateElementNode)(kName);
}
XML_DOM_Node* textInner()
{
    return NOTED(XML_DOM_CreateTextualNodeInner)(XML_DOM_NODE_TEXT, "text", 4);
}
XML_DOM_Node* text()
{
    return NOTED(XML_DOM_CreateTextNode)(kName);
}
XML_DOM_Node* cdata()
{
    return NOTED(XML_DOM_CreateCDataNode)("data");
}
XML_DOM_Node* elementWithText()
{
    return NOTED(XML_DOM_CreateElementWithText)(kName, "text");
}
XML_DOM_Node* elementWithCData()
{
    return NOTED(XML_DOM_CreateElementWithCData)(kName, "data");
}

// A tree of the parser's, one node of it that is edited, and a detached node.
struct Edited {
    XML_DOM_Node* root;
    XML_DOM_Node* child;  // <p:a>
    XML_DOM_Node* text;   // in it
    XML_DOM_Node* loose;
};

constexpr char kDocument[] =
    "<r xmlns='urn:d' xmlns:p='urn:p' xmlns:q='urn:q'><p:a p:x='1' y='2'>text</p:a><b/></r>";

// One call that changes a tree. `change` gives what it returned as a status.
template <uint32_t (*change)(const Edited&)>
class Edit : public Trial {
public:
    Edit()
    {
        tree_.root = treeOf(kDocument);
        tree_.child = XML_DOM_GetFirstChild(tree_.root);
        tree_.text = XML_DOM_GetFirstChild(tree_.child);
        tree_.loose = XML_DOM_CreateElementNodeInner("loose");
    }
    ~Edit() override
    {
        if (!XML_DOM_GetNodeParent(tree_.loose)) XML_DOM_DelNode(tree_.loose);
        XML_DOM_DelNode(tree_.root);
    }
    bool act() override
    {
        const uint32_t status = change(tree_);
        EXPECT_TRUE(status == XML_RET_OK || status == XML_RET_FAIL);
        return status == XML_RET_OK;
    }
    std::string held() override
    {
        std::string text = dump(tree_.root);
        if (!XML_DOM_GetNodeParent(tree_.loose)) text += dump(tree_.loose);
        return text;
    }
    std::string product() override { return held(); }

private:
    Edited tree_{};
};

uint32_t statusOf(const void* made)
{
    return made ? XML_RET_OK : XML_RET_FAIL;
}

uint32_t setRoot(const Edited& t)
{
    return NOTED(XML_DOM_SetRoot)(t.loose);
}
uint32_t setVersion(const Edited& t)
{
    return NOTED(XML_DOM_SetVersion)(t.root, "1.0");
}
uint32_t setEncoding(const Edited& t)
{
    return NOTED(XML_DOM_SetEncoding)(t.root, 9);
}
uint32_t addChild(const Edited& t)
{
    return NOTED(XML_DOM_AddChildNode)(t.child, t.loose);
}
uint32_t insert(const Edited& t)
{
    return NOTED(XML_DOM_InsertBeforeNode)(t.child, t.loose);
}
uint32_t setValue(const Edited& t)
{
    return NOTED(XML_DOM_SetNodeValue)(t.text, "another value, and longer");
}
uint32_t setLongValue(const Edited& t)
{
    return NOTED(XML_DOM_SetNodeValue)(t.text, std::string(9000, 'v').c_str());
}
uint32_t setName(const Edited& t)
{
    return NOTED(XML_DOM_SetNodeName)(t.child, kName);
}
uint32_t addAttrInner(const Edited& t)
{
    return statusOf(NOTED(XML_DOM_AddAttrInner)(t.child, "z", "3"));
}
uint32_t addAttr(const Edited& t)
{
    return statusOf(NOTED(XML_DOM_AddAttr)(t.child, "q", kName, "3"));
}
uint32_t deleteAttr(const Edited& t)
{
    NOTED(XML_DOM_DelAttr)(t.child, "p", "x");
    return XML_RET_OK;
}
uint32_t deleteNode(const Edited& t)
{
    NOTED(XML_DOM_DelNode)(t.child);
    return XML_RET_OK;
}
uint32_t declare(const Edited& t)
{
    return NOTED(XML_DOM_AddNodeNameSpace)(t.child, "n", "urn:n");
}
uint32_t redeclare(const Edited& t)
{
    return NOTED(XML_DOM_SetNodeDefineNsVal)(t.root, "p", "urn:another-and-longer");
}
uint32_t declareInner(const Edited& t)
{
    return NOTED(XML_DOM_AddNodeNameSpaceInner)(t.child, nullptr, "urn:n", 1);
}
uint32_t bind(const Edited& t)
{
    return NOTED(XML_DOM_SetNodeNameSpace)(t.child, "q");
}
uint32_t bindAttr(const Edited& t)
{
    return NOTED(XML_DOM_SetAttrNsInner)(XML_DOM_GetFirstAttr(t.child), "q");
}

}  // namespace

std::vector<Scenario> editingScenarios()
{
    return {
        scenario<Create<elementInner>>("an unchecked element"),
        scenario<Create<element>>("an element"),
        scenario<Create<textInner>>("a piece of text"),
        scenario<Create<text>>("a text"),
        scenario<Create<cdata>>("a CDATA section"),
        scenario<Create<elementWithText>>("an element with a text"),
        scenario<Create<elementWithCData>>("an element with a CDATA section"),
        scenario<Edit<setRoot>>("a document for an element"),
        scenario<Edit<setVersion>>("a version"),
        scenario<Edit<setEncoding>>("an encoding"),
        scenario<Edit<addChild>>("a last child"),
        scenario<Edit<insert>>("a child in front"),
        scenario<Edit<setValue>>("another value"),
        scenario<Edit<setLongValue>>("a long value"),
        scenario<Edit<setName>>("another name"),
        scenario<Edit<addAttrInner>>("an unchecked attribute"),
        scenario<Edit<addAttr>>("an attribute"),
        scenario<Edit<deleteAttr>>("an attribute less"),
        scenario<Edit<deleteNode>>("a node less"),
        scenario<Edit<declare>>("a declaration"),
        scenario<Edit<redeclare>>("another name for a declaration"),
        scenario<Edit<declareInner>>("an unchecked declaration"),
        scenario<Edit<bind>>("another binding"),
        scenario<Edit<bindAttr>>("another binding of an attribute"),
    };
}
