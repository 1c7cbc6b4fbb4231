// XML text to events.
#include "parser/driver.hpp"
#include "parser/handler_sink.hpp"

namespace netxml {

extern template ParseError Scanner<HandlerSink>::plainContent(bool atRoot) noexcept;

namespace {

auto delivering(const XML_SAX_Handler* handler) noexcept
{
    return [handler](XML_IO_InStream& stream) {
        HandlerSink sink{handler};
        return runParse(stream, handler, sink);
    };
}

}  // namespace
}  // namespace netxml

using namespace netxml;

uint32_t XML_Parser_ByMem(const uint8_t* data, uint32_t length, const XML_SAX_Handler* handler)
{
    return parseMemory(data, length, delivering(handler));
}

uint32_t XML_Parser_ByMemList(const XML_IO_MemList* list, const XML_SAX_Handler* handler)
{
    return parseMemoryList(list, delivering(handler));
}

uint32_t XML_Parser_ByFile(const char* path, const XML_SAX_Handler* handler)
{
    return parseFile(path, delivering(handler));
}
