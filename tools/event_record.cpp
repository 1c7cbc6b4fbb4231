#include "event_record.hpp"

namespace netxml::tool {
namespace {

struct Differs {};  // ends a comparison

// Compares each event with the record as it comes, and forgets it.
class Comparison : public EventRecord {
public:
    explicit Comparison(std::string_view expected) : expected_{expected} {}
    bool complete() const { return expected_.empty(); }

private:
    void added(std::string_view event) override
    {
        if (!expected_.starts_with(event)) throw Differs{};
        expected_.remove_prefix(event.size());
        bytes_.clear();
    }

    std::string_view expected_;
};

}  // namespace

void EventRecord::append(char kind, std::initializer_list<std::string_view> texts)
{
    bytes_ += kind;
    for (const std::string_view text : texts) {
        const std::size_t size = text.size();
        bytes_.append(reinterpret_cast<const char*>(&size), sizeof size);
        bytes_ += text;
    }
}

void EventRecord::put(char kind, std::initializer_list<std::string_view> texts)
{
    const std::size_t before = bytes_.size();
    append(kind, texts);
    added(std::string_view{bytes_}.substr(before));
}

void EventRecord::startElement(const EventName& name,
                               std::span<const EventDeclaration> declarations,
                               std::span<const EventAttribute> attributes)
{
    const std::size_t before = bytes_.size();
    append('<', {name.local, name.prefix, name.nameSpace});
    for (const EventDeclaration& d : declarations) append('n', {d.prefix, d.nameSpace});
    for (const EventAttribute& a : attributes)
        append('a', {a.name.local, a.name.prefix, a.name.nameSpace, a.value});
    added(std::string_view{bytes_}.substr(before));
}

void EventRecord::endElement(const EventName& name)
{
    put('>', {name.local, name.prefix, name.nameSpace});
}

bool hasEvents(std::string_view bytes, const EventRecord& record, const PlaceReached& reached)
{
    Comparison comparison{record.bytes()};
    try {
        return !readEvents(bytes, &comparison, reached).failure && comparison.complete();
    } catch (const Differs&) {
        return false;
    }
}

}  // namespace netxml::tool
