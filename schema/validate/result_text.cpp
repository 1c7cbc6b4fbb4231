// The sentence of a validation's result.
#include "netxml/dom.h"
#include "netxml/schema.h"
#include "support/format.hpp"

#include <cstdint>
#include <cstring>

namespace netxml {
namespace {

constexpr std::uint32_t kPathSize = 512;
constexpr std::uint32_t kSmallestBuffer = 512;

struct Sentence {
    const Schema_ValidateResult& result;
    const char* path;
    std::uint32_t size;
    char* buffer;

    void put(const char* form, std::initializer_list<FormatText> texts) const noexcept
    {
        formatTexts(buffer, size, form, texts);
    }
};

void elementExpected(const Sentence& s) noexcept
{
    s.put("Expecting element '%s':'%s' under element '%s'.",
          {s.result.elementNamespace, s.result.elementName, s.path});
}
void attributeMissing(const Sentence& s) noexcept
{
    s.put("The element '%s' should have an attribute '%s':'%s'.",
          {s.path, s.result.attrNamespace, s.result.attrName});
}
void elementValue(const Sentence& s) noexcept
{
    s.put("The value of element '%s' is invalid. %s", {s.path, s.result.detail});
}
void attributeValue(const Sentence& s) noexcept
{
    s.put("The value of attribute '%s':'%s' for element '%s' is invalid. %s",
          {s.result.attrNamespace, s.result.attrName, s.path, s.result.detail});
}
void occurrences(const Sentence& s) noexcept
{
    s.put("The number of occurrences of element '%s/%s' is invalid.",
          {s.path, s.result.elementName});
}
// Kept: ends at the last "/", so that the path is the parent's and its quote stays open.
void elementUnexpected(const Sentence& s) noexcept
{
    const char* namespaceName = nullptr;
    XML_DOM_GetNodeNameSpace(s.result.node, nullptr, &namespaceName);
    s.put("Unexpected element '%s':'%s' under element '%s'.",
          {namespaceName, XML_DOM_GetNodeName(s.result.node), s.path});
    if (char* slash = std::strrchr(s.buffer, '/')) *slash = '\0';
}
void attributeUnexpected(const Sentence& s) noexcept
{
    s.put("Unexpected attribute '%s':'%s' of element '%s'.",
          {s.result.attrNamespace, s.result.attrName, s.path});
}
void childrenInvalid(const Sentence& s) noexcept
{
    s.put("The child elements of '%s' are invalid.", {s.path});
}
void textUnexpected(const Sentence& s) noexcept
{
    s.put("Element '%s' can not have a textual child element.", {s.path});
}
void childUnexpected(const Sentence& s) noexcept
{
    s.put("Element '%s' can not have a child element.", {s.path});
}
void childrenMissing(const Sentence& s) noexcept
{
    s.put("Required child elements are missing for element '%s'.", {s.path});
}
void documentElement(const Sentence& s) noexcept
{
    s.put("%s", {"The root element of XML document is invalid."});
}

struct SentenceRow {
    Schema_ErrorCode code;
    void (*write)(const Sentence& sentence) noexcept;
};

// clang-format off
constexpr SentenceRow kSentences[] = {
    {SCHEMA_VALID,                      nullptr},
    {SCHEMA_ERROR_ELEMENT_EXPECTED,     elementExpected},
    {SCHEMA_ERROR_ATTRIBUTE_MISSING,    attributeMissing},
    {SCHEMA_ERROR_ELEMENT_VALUE,        elementValue},
    {SCHEMA_ERROR_ATTRIBUTE_VALUE,      attributeValue},
    {SCHEMA_ERROR_OCCURRENCES,          occurrences},
    {SCHEMA_ERROR_ELEMENT_UNEXPECTED,   elementUnexpected},
    {SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED, attributeUnexpected},
    {SCHEMA_ERROR_CHILDREN,             childrenInvalid},
    {SCHEMA_ERROR_TEXT,                 textUnexpected},
    {SCHEMA_ERROR_CHILD,                childUnexpected},
    {SCHEMA_ERROR_CHILDREN_MISSING,     childrenMissing},
    {SCHEMA_ERROR_DOCUMENT_ELEMENT,     documentElement},
};
// clang-format on
static_assert(sizeof kSentences / sizeof kSentences[0] == SCHEMA_ERROR_DOCUMENT_ELEMENT + 1);

}  // namespace
}  // namespace netxml

uint32_t Schema_GetErrorDesc(const Schema_ValidateResult* result, uint32_t size, char* buffer)
{
    using namespace netxml;
    if (!buffer || !result || size < kSmallestBuffer) return XML_RET_FAIL;
    if (result->code > SCHEMA_ERROR_DOCUMENT_ELEMENT) return XML_RET_FAIL;
    const SentenceRow& row = kSentences[result->code];
    if (!row.write) return XML_RET_OK;
    char path[kPathSize];
    path[0] = '\0';
    XML_DOM_GetXPath(result->node, sizeof path, path);
    row.write(Sentence{*result, path, size, buffer});
    return XML_RET_OK;
}
