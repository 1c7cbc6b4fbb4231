// The events of a document as one record, and the comparison of another document with it.
#pragma once

#include "read_events.hpp"

namespace netxml::tool {

// Writes every event, with all its texts, behind the one before. Texts carry their lengths, so two
// records are equal exactly when the events are.
class EventRecord : public Events {
public:
    void startElement(const EventName& name, std::span<const EventDeclaration> declarations,
                      std::span<const EventAttribute> attributes) override;
    void endElement(const EventName& name) override;
    void characters(std::string_view text) override { put('t', {text}); }
    void cdata(std::string_view text) override { put('c', {text}); }
    void comment(std::string_view text) override { put('!', {text}); }
    void instruction(std::string_view target, std::string_view data) override
    {
        put('?', {target, data});
    }

    const std::string& bytes() const { return bytes_; }

protected:
    // Called after each event with what it added.
    virtual void added(std::string_view) {}

    std::string bytes_;

private:
    void put(char kind, std::initializer_list<std::string_view> texts);
    void append(char kind, std::initializer_list<std::string_view> texts);
};

// True when `bytes` parses to exactly the recorded events.
bool hasEvents(std::string_view bytes, const EventRecord& record, const PlaceReached& reached = {});

}  // namespace netxml::tool
