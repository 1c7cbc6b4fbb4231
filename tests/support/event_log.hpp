// A handler that writes every event down, with its line and column, as one text.
#pragma once

#include "netxml/netxml.h"

#include <string>

class EventLog {
public:
    EventLog();
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    const XML_SAX_Handler* handler() const { return &handler_; }
    XML_SAX_Handler& slots() { return handler_; }
    const std::string& text() const { return text_; }
    XML_ErrorCode error() const { return error_; }

    // Stores `code` in the parser at the n-th event (from 0).
    void failAt(int event, XML_ErrorCode code)
    {
        failAt_ = event;
        failWith_ = code;
    }
    int events() const { return events_; }

private:
    static EventLog& of(XML_Parser* parser);
    void note(XML_Parser* parser, const std::string& line);

    XML_SAX_Handler handler_{};
    std::string text_;
    XML_ErrorCode error_ = 0;
    int events_ = 0;
    int failAt_ = -1;
    XML_ErrorCode failWith_ = 0;

    friend struct EventLogSlots;
};
