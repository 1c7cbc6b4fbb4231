#include "tests/support/event_log.hpp"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

std::string show(const char* text)
{
    return text ? "'" + std::string{text} + "'" : "null";
}

}  // namespace

struct EventLogSlots {
    static void startDocument(XML_Parser* p)
    {
        EventLog::of(p).note(p, "document encoding=" + std::to_string(p->encoding) +
                                    " version=" + p->version);
    }
    static void endDocument(XML_Parser* p) { EventLog::of(p).note(p, "end of document"); }
    static void characters(XML_Parser* p, const char* text, uint32_t length)
    {
        const bool terminated = text[length] == '\0';
        EventLog::of(p).note(p, "text '" + std::string(text, length) + "'" +
                                    (terminated ? "" : " not terminated"));
    }
    static void comment(XML_Parser* p, const char* text)
    {
        EventLog::of(p).note(p, "comment " + show(text));
    }
    static void cdata(XML_Parser* p, const char* text, uint32_t length)
    {
        EventLog::of(p).note(p, "cdata '" + std::string(text, length) + "'");
    }
    static void instruction(XML_Parser* p, const char* target, const char* data)
    {
        EventLog::of(p).note(p, "instruction " + show(target) + " " + show(data));
    }
    static void error(XML_Parser* p, const char* format, ...)
    {
        char text[512];
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        EventLog::of(p).error_ = p->error;
        EventLog::of(p).note(p, "error " + std::to_string(p->error) + " " + text);
    }
    static void start(XML_Parser* p, const char* local, const char* prefix, const char* name,
                      uint32_t declarationCount, const char** declarations, uint32_t attributeCount,
                      uint32_t defaulted, const char** attributes)
    {
        std::string line = "start " + show(local) + " " + show(prefix) + " " + show(name);
        for (uint32_t i = 0; i < declarationCount; ++i)
            line += " declares " + show(declarations[2 * i]) + "=" + show(declarations[2 * i + 1]);
        for (uint32_t i = 0; i < attributeCount; ++i) {
            const char** a = attributes + 5 * i;
            line +=
                " attribute " + show(a[0]) + " " + show(a[1]) + " " + show(a[2]) + "=" + show(a[3]);
            if (a[4] != a[3] + std::strlen(a[3])) line += " wrong end";
        }
        if (defaulted != 0) line += " defaulted";
        EventLog::of(p).note(p, line);
    }
    static void end(XML_Parser* p, const char* local, const char* prefix, const char* name)
    {
        EventLog::of(p).note(p, "end " + show(local) + " " + show(prefix) + " " + show(name));
    }
};

EventLog::EventLog()
{
    handler_.startDocument = EventLogSlots::startDocument;
    handler_.endDocument = EventLogSlots::endDocument;
    handler_.characters = EventLogSlots::characters;
    handler_.comment = EventLogSlots::comment;
    handler_.cdata = EventLogSlots::cdata;
    handler_.processingInstruction = EventLogSlots::instruction;
    handler_.error = EventLogSlots::error;
    handler_.startElementNs = EventLogSlots::start;
    handler_.endElementNs = EventLogSlots::end;
    handler_.userData = this;
}

EventLog& EventLog::of(XML_Parser* parser)
{
    return *static_cast<EventLog*>(parser->handler->userData);
}

void EventLog::note(XML_Parser* parser, const std::string& line)
{
    text_ +=
        std::to_string(parser->line) + ":" + std::to_string(parser->column) + " " + line + "\n";
    if (events_++ == failAt_) parser->error = failWith_;
}
