// Tracing on standard output.
#include "netxml/dom.h"
#include "netxml/schema.h"
#include "support/format.hpp"

#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace netxml {
namespace {

constexpr std::size_t kTextSize = 1024;
constexpr std::size_t kTracedPathSize = 512;

std::uint16_t enabled;
std::uint32_t indent;

bool isOn() noexcept
{
    return enabled == 1;
}

void startLine() noexcept
{
    std::fputs("\r\n", stdout);
    for (std::uint32_t level = 0; level < indent; ++level) std::fputs("  ", stdout);
}

// Prints a text as vprintf() would, cut to the buffer that the interface promises.
void print(const char* format, va_list arguments) noexcept
{
    char text[kTextSize];
    std::vsnprintf(text, sizeof text, format, arguments);
    std::fputs(text, stdout);
}

}  // namespace
}  // namespace netxml

using namespace netxml;

uint16_t Schema_Debug_Enable(uint16_t value)
{
    const uint16_t previous = enabled;
    enabled = value;
    return previous;
}

void Schema_Debug_BlankAdd(void)
{
    ++indent;
}

void Schema_Debug_BlankSub(void)
{
    --indent;
}

void Schema_Debug_ShowMsg(const char* format, ...)
{
    if (!isOn() || !format) return;
    va_list arguments;
    va_start(arguments, format);
    print(format, arguments);
    va_end(arguments);
}

void Schema_Debug_ShowMsgLine(const char* format, ...)
{
    if (!isOn() || !format) return;
    startLine();
    va_list arguments;
    va_start(arguments, format);
    print(format, arguments);
    va_end(arguments);
}

void Schema_Debug_ShowNode(const XML_DOM_Node* node, const char* function)
{
    if (!isOn() || !node) return;
    char path[kTracedPathSize];
    path[0] = '\0';
    XML_DOM_GetXPath(node, sizeof path, path);
    char text[kTextSize];
    formatTexts(text, sizeof text, "[%s], Value=[%s]",
                {path, XML_DOM_GetFirstTextChildValue(node)});
    const char* namespaceName = nullptr;
    XML_DOM_GetNodeNameSpace(node, nullptr, &namespaceName);
    startLine();
    std::printf("func=%s,current node=%s,ns=[%s],addr=[%lu]", function ? function : "", text,
                namespaceName ? namespaceName : "",
                static_cast<unsigned long>(reinterpret_cast<uintptr_t>(node)));
}

void Schema_Debug_ListTopObjects(const Schema_Root* root)
{
    if (!root) return;
    Schema_Debug_ShowMsg("\r\nTop Elements count=%u\r\n", root->elements.count);
    for (uint32_t i = 0; i < root->elements.count; ++i) {
        const auto* element = static_cast<const Schema_ElementDecl*>(root->elements.items[i]);
        if (!element) continue;
        Schema_Debug_ShowMsg("[%s][%s]\r\n", element->namespaceName ? element->namespaceName : "",
                             element->name ? element->name : "");
    }
}
