// What only looks: accessors, comparisons and checks. Most never call what can fail.
#include "tests/faults/scenario.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

constexpr char kDocument[] =
    "<r xmlns='urn:d' xmlns:p='urn:p'><p:a p:x='1' y='2'>text<![CDATA[data]]></p:a><b/></r>";

uint32_t countNode(XML_DOM_Node*, void* count)
{
    ++*static_cast<int*>(count);
    return 0;
}

class Walk : public Trial {
public:
    ~Walk() override { XML_DOM_DelNode(root_); }
    bool act() override
    {
        seen_.clear();
        const XML_DOM_Node* a = NOTED(XML_DOM_GetFirstChild)(root_);
        add(NOTED(XML_DOM_GetNodeName)(a));
        add(NOTED(XML_DOM_GetNodeName)(NOTED(XML_DOM_GetNextSibling)(a)));
        add(NOTED(XML_DOM_GetNodeName)(NOTED(XML_DOM_GetNodeParent)(a)));
        add(NOTED(XML_DOM_GetNodeName)(NOTED(XML_DOM_GetRoot)(a)));
        add(NOTED(XML_DOM_GetNodeValue)(XML_DOM_GetFirstChild(a)));
        add(NOTED(XML_DOM_GetFirstTextChildValue)(a));
        add(NOTED(XML_DOM_GetFirstCDataChildValue)(a));
        add(NOTED(XML_DOM_GetVersion)(a));
        add(NOTED(XML_DOM_EncodingEnumToStr)(NOTED(XML_DOM_GetEncoding)(a)));
        seen_ += std::to_string(NOTED(XML_DOM_GetNodeType)(a));
        const XML_DOM_Attr* x = NOTED(XML_DOM_GetFirstAttr)(a);
        add(NOTED(XML_DOM_GetAttrValByHandle)(x));
        add(NOTED(XML_DOM_GetAttrValByHandle)(NOTED(XML_DOM_GetNextAttr)(x)));
        add(NOTED(XML_DOM_GetNodeAttrValByName)(a, "y"));
        add(NOTED(XML_DOM_GetNodeNsAttribute)(a, "urn:p", "x"));
        const char* first = nullptr;
        const char* second = nullptr;
        EXPECT_EQ(NOTED(XML_DOM_GetAttrNameSpace)(x, &first, &second), XML_RET_OK);
        add(first);
        add(second);
        EXPECT_EQ(NOTED(XML_DOM_GetNodeNameSpace)(a, &first, &second), XML_RET_OK);
        add(first);
        add(second);
        char path[64] = "";
        const size_t length = NOTED(XML_DOM_GetXPath)(a, sizeof path, path);
        EXPECT_EQ(length, std::string{path}.size());
        add(path);
        int count = 0;
        EXPECT_EQ(NOTED(XML_DOM_ScanTree)(root_, countNode, &count), XML_RET_OK);
        seen_ += std::to_string(count) + std::to_string(NOTED(XML_Strcmp)("a", "b")) +
                 std::to_string(NOTED(XML_DOM_EncodingStrToEnum)("gbk")) +
                 std::to_string(NOTED(XML_CheckNamespace)("p", "urn:p")) +
                 std::to_string(NOTED(XML_CheckQName)("name"));
        return true;
    }
    std::string held() override { return dump(root_); }
    std::string product() override { return seen_; }

private:
    void add(const char* text) { seen_ += std::string{text ? text : "-"} + ";"; }

    XML_DOM_Node* root_ = treeOf(kDocument);
    std::string seen_;
};

// A name beyond ASCII is converted to be judged.
class CheckName : public Trial {
public:
    bool act() override
    {
        status_ = NOTED(XML_CheckQName)("\xD6\xD0\xCE\xC4");
        EXPECT_TRUE(status_ == XML_RET_OK || status_ == XML_RET_FAIL);
        return status_ == XML_RET_OK;
    }
    std::string product() override { return std::to_string(status_); }

private:
    uint32_t status_ = 0;
};

}  // namespace

std::vector<Scenario> walkingScenarios()
{
    return {scenario<Walk>("accessors"), scenario<CheckName>("a name beyond ASCII")};
}
