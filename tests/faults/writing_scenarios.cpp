// Trees to strings and to callbacks.
#include "tests/faults/scenario.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

std::string mixedDocument()
{
    std::string text = "<r xmlns:p='urn:p'>";
    for (int i = 0; i < 60; ++i)
        text += "<p:e a='&lt;\xE4\xB8\xAD'>" + std::string(70, 't') +
                " \xE4\xB8\xAD\xE6\x96\x87 &amp;<![CDATA[x]]></p:e>";
    return text + "</r>";
}

uint32_t append(void* text, const char* bytes, size_t length)
{
    static_cast<std::string*>(text)->append(bytes, length);
    return 0;
}

// A node of a document in an encoding.
template <XML_Encoding encoding>
class WriteTrial : public Trial {
public:
    WriteTrial() { XML_DOM_SetEncoding(root_, encoding); }
    ~WriteTrial() override { XML_DOM_DelNode(root_); }
    std::string held() override
    {
        std::string text;
        XML_DOM_ScanTree(
            root_,
            [](XML_DOM_Node* node, void* into) {
                const char* value = XML_DOM_GetNodeValue(node);
                *static_cast<std::string*>(into) += value ? value : XML_DOM_GetNodeName(node);
                return uint32_t{0};
            },
            &text);
        return text;
    }

protected:
    XML_DOM_Node* root_ = treeOf(mixedDocument());
};

// A call that makes a string; untouched when it fails.
using MakeString = uint32_t (*)(const XML_DOM_Node* node, char** text, size_t* length);

template <XML_Encoding encoding, MakeString make>
class ToString : public WriteTrial<encoding> {
public:
    bool act() override
    {
        char untouched = 'x';
        text_ = &untouched;
        length_ = 0;
        if (make(this->root_, &text_, &length_) == XML_RET_OK) return true;
        EXPECT_EQ(text_, &untouched);
        return false;
    }
    std::string product() override { return taken(text_, length_); }

private:
    char* text_ = nullptr;
    size_t length_ = 0;
};

uint32_t whole(const XML_DOM_Node* node, char** text, size_t* length)
{
    return NOTED(XML_DOM_TranslateStr)(node, 0, text, length);
}
uint32_t children(const XML_DOM_Node* node, char** text, size_t* length)
{
    return NOTED(XML_DOM_TranslateStr4AllChild)(node, text, length);
}
uint32_t begin(const XML_DOM_Node* node, char** text, size_t* length)
{
    char* made = NOTED(XML_DOM_NodeBegin2Str)(node, 0, length);
    if (!made) return XML_RET_FAIL;
    *text = made;
    return XML_RET_OK;
}
uint32_t end(const XML_DOM_Node* node, char** text, size_t* length)
{
    char* made = NOTED(XML_DOM_NodeEnd2Str)(node, length);
    if (!made) return XML_RET_FAIL;
    *text = made;
    return XML_RET_OK;
}

// The callback may have had part of it when it fails.
template <XML_Encoding encoding>
class ToCallback : public WriteTrial<encoding> {
public:
    bool act() override
    {
        text_.clear();
        return NOTED(XML_DOM_OutPutTranslateStr)(this->root_, 0, append, &text_) == XML_RET_OK;
    }
    std::string product() override { return text_; }

private:
    std::string text_;
};

class Escape : public Trial {
public:
    bool act() override
    {
        text_.clear();
        return NOTED(XML_OutTextString)(" a<b&c ", append, &text_) == XML_RET_OK;
    }
    std::string product() override { return text_; }

private:
    std::string text_;
};

}  // namespace

std::vector<Scenario> writingScenarios()
{
    return {
        scenario<ToString<XML_ENCODING_UTF_8, whole>>("a string in UTF-8"),
        scenario<ToString<XML_ENCODING_UTF_16, whole>>("a string in UTF-16"),
        scenario<ToString<XML_ENCODING_GB18030, whole>>("a string in the tree's encoding"),
        scenario<ToString<XML_ENCODING_GBK, whole>>("a string in GBK"),
        scenario<ToString<XML_ENCODING_UTF_8, children>>("what is in a node in UTF-8"),
        scenario<ToString<XML_ENCODING_UCS_4BE, children>>("what is in a node in UCS-4BE"),
        scenario<ToString<XML_ENCODING_UTF_8, begin>>("a start tag in UTF-8"),
        scenario<ToString<XML_ENCODING_UTF_16LE, begin>>("a start tag in UTF-16LE"),
        scenario<ToString<XML_ENCODING_UTF_8, end>>("an end tag in UTF-8"),
        scenario<ToString<XML_ENCODING_UTF_32, end>>("an end tag in UTF-32"),
        scenario<ToCallback<XML_ENCODING_UTF_8>>("a callback in UTF-8"),
        scenario<ToCallback<XML_ENCODING_UTF_16>>("a callback in UTF-16"),
        scenario<Escape>("an escaped text"),
    };
}
