// Copies of nodes, of documents and of what lies in a node.
#include "tests/faults/scenario.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

// Many records and declarations, a value that is a block of its own, bindings from above.
std::string manyRecords()
{
    std::string text = "<r xmlns='urn:d' xmlns:p='urn:p'><p:s>";
    for (int i = 0; i < 40; ++i) {
        const std::string n = std::to_string(i);
        text += "<p:e xmlns:q" + n + "='urn:" + n + "' q" + n + ":a='1' p:b='2'><c q" + n +
                ":d=''/>" + std::string(i % 20 == 5 ? 5000 : 3, 't') + "</p:e>";
    }
    return text + "</p:s></r>";
}

class CopyTrial : public Trial {
public:
    ~CopyTrial() override
    {
        XML_DOM_DelNode(target_);
        XML_DOM_DelNode(source_);
    }
    std::string held() override { return dump(source_) + dump(target_); }

protected:
    XML_DOM_Node* source_ = treeOf(manyRecords());
    XML_DOM_Node* target_ = treeOf("<t xmlns:p='urn:other'><a/></t>");
};

// A call that makes a new node.
template <XML_DOM_Node* (*copy)(const XML_DOM_Node* source)>
class CopyToNew : public CopyTrial {
public:
    bool act() override
    {
        copy_ = copy(source_);
        return copy_ != nullptr;
    }
    std::string product() override
    {
        const std::string text = dump(copy_);
        XML_DOM_DelNode(copy_);
        return text;
    }

private:
    XML_DOM_Node* copy_ = nullptr;
};

// What is in the source, or in what is copied into itself, goes to the end of the target.
template <bool intoItself>
class CopyInto : public CopyTrial {
public:
    bool act() override
    {
        XML_DOM_Node* target = intoItself ? source_ : target_;
        const uint32_t status = NOTED(XML_DOM_CopySubTree)(target, source_);
        EXPECT_TRUE(status == XML_RET_OK || status == XML_RET_FAIL);
        return status == XML_RET_OK;
    }
    std::string product() override { return held(); }
};

XML_DOM_Node* copyNode(const XML_DOM_Node* source)
{
    const XML_DOM_Node* section = XML_DOM_GetFirstChild(source);
    return NOTED(XML_DOM_CopyNode)(XML_DOM_GetFirstChild(section));
}
XML_DOM_Node* copyRoot(const XML_DOM_Node* source)
{
    return NOTED(XML_DOM_CopyRoot)(source);
}

}  // namespace

std::vector<Scenario> copyingScenarios()
{
    return {
        scenario<CopyToNew<copyNode>>("a copy of a node"),
        scenario<CopyToNew<copyRoot>>("a copy of a root"),
        scenario<CopyInto<false>>("a copy of what is in a node"),
        scenario<CopyInto<true>>("a copy into itself"),
    };
}
