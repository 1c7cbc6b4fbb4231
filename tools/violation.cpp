#include "violation.hpp"

#include <cstring>
#include <new>

namespace netxml::tool {
namespace {

constexpr std::uint32_t kLongestSentence = 16384;  // bytes; longer ones are cut

// A character that no document has.
constexpr const char* kMarkName = "\x01";
constexpr std::string_view kMark = "/\x01";

std::string sentenceOf(const Schema_ValidateResult& result)
{
    std::string sentence(kLongestSentence, '\0');
    Schema_GetErrorDesc(&result, kLongestSentence, sentence.data());
    sentence.resize(std::strlen(sentence.c_str()));
    sentence.shrink_to_fit();
    return sentence;
}

}  // namespace

ViolationMaker::ViolationMaker(const XML_DOM_Node* documentElement)
    : documentElement_{documentElement}, mark_{XML_DOM_CreateElementNodeInner(kMarkName)}
{
    if (!mark_) throw std::bad_alloc{};
}

// An unexpected element is named, too: its name and namespace are given to a child of the mark.
Violation ViolationMaker::make(const Schema_ValidateResult& result) const
{
    Violation violation{result.node, result.code, {}};
    Schema_ValidateResult marked = result;
    if (!result.node) {
        violation.node = documentElement_;
    } else if (result.code != SCHEMA_ERROR_ELEMENT_UNEXPECTED) {
        marked.node = mark_.get();
    } else {
        const char* nameSpace = nullptr;
        XML_DOM_GetNodeNameSpace(result.node, nullptr, &nameSpace);
        XML_DOM_Node* named = XML_DOM_CreateElementNodeInner(XML_DOM_GetNodeName(result.node));
        std::unique_ptr<XML_DOM_Node, DeleteNode> owner{named};
        if (!named || XML_DOM_AddChildNode(mark_.get(), named) != XML_RET_OK)
            throw std::bad_alloc{};
        if (nameSpace && XML_DOM_AddNodeNameSpaceInner(named, nullptr, nameSpace, 0) != XML_RET_OK)
            throw std::bad_alloc{};
        marked.node = named;
        violation.sentence = sentenceOf(marked);
        return violation;
    }
    violation.sentence = sentenceOf(marked);
    return violation;
}

// Kept: the sentence on an unexpected element ends with its path up to the last "/".
std::string sentenceWithPath(const Violation& violation, std::string_view path)
{
    std::string sentence = violation.sentence;
    const std::size_t at = sentence.rfind(kMark);
    if (at == std::string::npos) return sentence;
    path = path.substr(0, kPathInSentence);
    if (violation.code == SCHEMA_ERROR_ELEMENT_UNEXPECTED) path = path.substr(0, path.rfind('/'));
    return sentence.replace(at, kMark.size(), path);
}

}  // namespace netxml::tool
