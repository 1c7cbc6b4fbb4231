#include "read_events.hpp"

#include <cstdarg>
#include <exception>
#include <utility>
#include <vector>

namespace netxml::tool {
namespace {

std::string_view viewOf(const char* text)
{
    return text ? std::string_view{text} : std::string_view{};
}

// What the callbacks share.
class Reading {
public:
    Reading(Events* events, const PlaceReached& reached) : events_{events}, reached_{reached} {}

    static Reading& of(const XML_Parser* parser)
    {
        return *static_cast<Reading*>(parser->handler->userData);
    }

    // Runs one event. No exception may pass the library's frames: it is kept, and the parse
    // stopped.
    template <class Deliver>
    void event(XML_Parser* parser, Deliver deliver)
    {
        encoding_ = parser->encoding;
        try {
            if (reached_ && ++count_ % kEventsBetween == 0) reached_(parser->line, parser->column);
            if (events_) deliver(*events_);
        } catch (...) {
            thrown_ = std::current_exception();
            parser->error = XML_ERROR_INTERNAL;
        }
    }
    void fail(const XML_Parser* parser, int line, int column, const char* message)
    {
        encoding_ = parser->encoding;
        failure_ = ParseFailure{static_cast<std::uint32_t>(line),
                                static_cast<std::uint32_t>(column), parser->error, message};
    }
    ParseResult finish(std::uint32_t status)
    {
        if (thrown_) std::rethrow_exception(thrown_);
        if (status != XML_RET_OK && !failure_)  // the one failure that is not reported
            failure_ = ParseFailure{1, 1, XML_ERROR_MEMORY, "memory allocation failed."};
        return {std::move(failure_), encoding_};
    }

    std::vector<EventDeclaration> declarations;  // kept here to be allocated once
    std::vector<EventAttribute> attributes;

private:
    static constexpr std::uint32_t kEventsBetween = 256;

    Events* events_;
    const PlaceReached& reached_;
    std::uint32_t count_ = 0;
    XML_Encoding encoding_ = XML_ENCODING_UTF_8;
    std::optional<ParseFailure> failure_;
    std::exception_ptr thrown_;
};

void onStartDocument(XML_Parser* parser)
{
    Reading::of(parser).event(parser, [](Events&) {});
}

void onStart(XML_Parser* parser, const char* local, const char* prefix, const char* nameSpace,
             std::uint32_t declarationCount, const char** declarations,
             std::uint32_t attributeCount, std::uint32_t, const char** attributes)
{
    Reading& reading = Reading::of(parser);
    reading.event(parser, [&](Events& events) {
        reading.declarations.clear();
        for (const char** d = declarations; d != declarations + std::size_t{2} * declarationCount;
             d += 2)
            reading.declarations.push_back({viewOf(d[0]), viewOf(d[1])});
        reading.attributes.clear();
        for (const char** a = attributes; a != attributes + std::size_t{5} * attributeCount;
             a += 5) {
            reading.attributes.push_back({{viewOf(a[0]), viewOf(a[1]), viewOf(a[2])},
                                          {a[3], static_cast<std::size_t>(a[4] - a[3])}});
        }
        events.startElement({viewOf(local), viewOf(prefix), viewOf(nameSpace)},
                            reading.declarations, reading.attributes);
    });
}

void onEnd(XML_Parser* parser, const char* local, const char* prefix, const char* nameSpace)
{
    Reading::of(parser).event(parser, [&](Events& events) {
        events.endElement({viewOf(local), viewOf(prefix), viewOf(nameSpace)});
    });
}

void onCharacters(XML_Parser* parser, const char* text, std::uint32_t length)
{
    Reading::of(parser).event(parser, [&](Events& e) { e.characters({text, length}); });
}

void onCData(XML_Parser* parser, const char* text, std::uint32_t length)
{
    Reading::of(parser).event(parser, [&](Events& e) { e.cdata({text, length}); });
}

void onComment(XML_Parser* parser, const char* text)
{
    Reading::of(parser).event(parser, [&](Events& e) { e.comment(viewOf(text)); });
}

void onInstruction(XML_Parser* parser, const char* target, const char* data)
{
    Reading::of(parser).event(parser,
                              [&](Events& e) { e.instruction(viewOf(target), viewOf(data)); });
}

// The arguments behind the format are line, column, excerpt and message.
void onError(XML_Parser* parser, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int line = va_arg(arguments, int);
    const int column = va_arg(arguments, int);
    static_cast<void>(va_arg(arguments, const char*));
    const char* message = va_arg(arguments, const char*);
    va_end(arguments);
    Reading::of(parser).fail(parser, line, column, message);
}

}  // namespace

// The document is given as a list of one chunk: a chunk's length has 64 bits.
ParseResult readEvents(std::string_view bytes, Events* events, const PlaceReached& reached)
{
    Reading reading{events, reached};
    XML_SAX_Handler handler{};
    handler.userData = &reading;
    handler.startDocument = onStartDocument;
    handler.error = onError;
    if (events || reached) handler.startElementNs = onStart;
    if (events) {
        handler.endElementNs = onEnd;
        handler.characters = onCharacters;
        handler.cdata = onCData;
        handler.comment = onComment;
        handler.processingInstruction = onInstruction;
    }
    XML_IO_MemChunk chunk{nullptr, bytes.size(),
                          reinterpret_cast<const std::uint8_t*>(bytes.data())};
    const XML_IO_MemList list{&chunk};
    return reading.finish(XML_Parser_ByMemList(&list, &handler));
}

}  // namespace netxml::tool
