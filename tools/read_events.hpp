// One parse of a document in memory, with its events as calls of a C++ interface.
#pragma once

#include "netxml/parser.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace netxml::tool {

// A name as an event has it; empty where there is none.
struct EventName {
    std::string_view local;
    std::string_view prefix;
    std::string_view nameSpace;
};

struct EventDeclaration {
    std::string_view prefix;
    std::string_view nameSpace;
};

struct EventAttribute {
    EventName name;
    std::string_view value;
};

// The texts are valid during the call only.
class Events {
public:
    virtual ~Events() = default;
    virtual void startElement(const EventName&, std::span<const EventDeclaration>,
                              std::span<const EventAttribute>)
    {
    }
    virtual void endElement(const EventName&) {}
    virtual void characters(std::string_view) {}
    virtual void cdata(std::string_view) {}
    virtual void comment(std::string_view) {}
    virtual void instruction(std::string_view /*target*/, std::string_view /*data*/) {}
};

struct ParseFailure {
    std::uint32_t line;
    std::uint32_t column;
    std::uint32_t code;
    std::string message;
};

struct ParseResult {
    std::optional<ParseFailure> failure;
    XML_Encoding encoding;  // as XML_Parser::encoding last showed it
};

// Told the place reached, now and then.
using PlaceReached = std::function<void(std::uint32_t line, std::uint32_t column)>;

// Parses `bytes`. Without events only the verdict is found. What an event throws ends the parse and
// comes out here. An empty `reached` is not called.
ParseResult readEvents(std::string_view bytes, Events* events, const PlaceReached& reached = {});

}  // namespace netxml::tool
