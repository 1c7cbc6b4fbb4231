/**
 * @file
 * Events: a document read without a tree.
 */
#ifndef NETXML_CPP_READER_HPP
#define NETXML_CPP_READER_HPP

#include "netxml/cpp/source.hpp"

#include <cstddef>
#include <iterator>
#include <optional>

namespace netxml {
inline namespace face {

/** An attribute of a start tag. What there is not is the empty text. */
struct EventAttribute {
    std::string_view name;          /**< without its prefix */
    std::string_view prefix;        /**< as the document has it */
    std::string_view namespaceName; /**< what the prefix stands for */
    std::string_view value;         /**< with references resolved */
};

/** A namespace declaration of a start tag. */
struct EventDeclaration {
    std::string_view prefix;        /**< empty for the default namespace */
    std::string_view namespaceName; /**< empty where that is undeclared */
};

namespace detail {

// What the parser lists as so many texts an item.
template <class Item, unsigned Texts>
class EventList {
public:
    class const_iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Item;

        explicit const_iterator(const char* const* at) noexcept : at_{at} {}
        Item operator*() const noexcept { return read(at_, Item{}); }
        const_iterator& operator++() noexcept
        {
            at_ += Texts;
            return *this;
        }
        const_iterator operator++(int) noexcept
        {
            const const_iterator before = *this;
            at_ += Texts;
            return before;
        }
        friend bool operator==(const_iterator a, const_iterator b) noexcept
        {
            return a.at_ == b.at_;
        }
        friend bool operator!=(const_iterator a, const_iterator b) noexcept
        {
            return a.at_ != b.at_;
        }

    private:
        static EventDeclaration read(const char* const* texts, EventDeclaration) noexcept
        {
            return {viewOf(texts[0]), viewOf(texts[1])};
        }
        static EventAttribute read(const char* const* texts, EventAttribute) noexcept
        {
            return {viewOf(texts[0]),
                    viewOf(texts[1]),
                    viewOf(texts[2]),
                    {texts[3], static_cast<std::size_t>(texts[4] - texts[3])}};
        }

        const char* const* at_;
    };

    EventList(const char* const* texts, uint32_t count) noexcept : texts_{texts}, count_{count} {}
    const_iterator begin() const noexcept { return const_iterator{texts_}; }
    const_iterator end() const noexcept
    {
        return const_iterator{texts_ + std::size_t{count_} * Texts};
    }
    uint32_t size() const noexcept { return count_; }
    bool empty() const noexcept { return count_ == 0; }

private:
    const char* const* texts_;
    uint32_t count_;
};

}  // namespace detail

/** A start tag, during its event. What there is not is the empty text. */
struct StartTag {
    std::string_view name;                               /**< without its prefix */
    std::string_view prefix;                             /**< as the document has it */
    std::string_view namespaceName;                      /**< of its prefix, or the default one */
    detail::EventList<EventAttribute, 5> attributes;     /**< a range of them, in their order */
    detail::EventList<EventDeclaration, 2> declarations; /**< a range of them, in their order */

    /** The value of the attribute of that name in no namespace, if there is one. */
    std::optional<std::string_view> attribute(std::string_view wanted) const noexcept
    {
        for (const EventAttribute& attribute : attributes) {
            if (attribute.name == wanted && attribute.namespaceName.empty()) return attribute.value;
        }
        return std::nullopt;
    }
};

/** An end tag, during its event. What there is not is the empty text. */
struct EndTag {
    std::string_view name;          /**< without its prefix */
    std::string_view prefix;        /**< as the document has it */
    std::string_view namespaceName; /**< of its prefix, or the default one */
};

namespace detail {

// For an event: whether a handler has a member of its name, and one that takes its arguments.
#define NETXML_FACE_EVENT(Event, member, ...)                                                      \
    template <class Handler, class = void>                                                         \
    struct Names##Event : std::false_type {                                                        \
    };                                                                                             \
    template <class Handler>                                                                       \
    struct Names##Event<                                                                           \
        Handler, std::enable_if_t<std::is_member_function_pointer_v<decltype(&Handler::member)>>>  \
        : std::true_type {                                                                         \
    };                                                                                             \
    template <class Handler, class = void>                                                         \
    struct Takes##Event : std::false_type {                                                        \
        static_assert(!Names##Event<Handler>::value,                                               \
                      "the handler's " #member "() does not take what the event gives");           \
    };                                                                                             \
    template <class Handler>                                                                       \
    struct Takes##Event<Handler,                                                                   \
                        std::void_t<decltype(std::declval<Handler&>().member(__VA_ARGS__))>>       \
        : std::true_type {                                                                         \
    }

using TextEvent = std::string_view;
NETXML_FACE_EVENT(StartDocument, startDocument, );
NETXML_FACE_EVENT(EndDocument, endDocument, );
NETXML_FACE_EVENT(StartElement, startElement, std::declval<const StartTag&>());
NETXML_FACE_EVENT(EndElement, endElement, std::declval<const EndTag&>());
NETXML_FACE_EVENT(Text, text, TextEvent{});
NETXML_FACE_EVENT(CData, cdata, TextEvent{});
NETXML_FACE_EVENT(Comment, comment, TextEvent{});
NETXML_FACE_EVENT(Instruction, instruction, TextEvent{}, TextEvent{});
#undef NETXML_FACE_EVENT

// What the slots work on. They get it as the Error that takeError() fills.
template <class Handler>
struct Reading : Error {
    Handler* handler = nullptr;
    bool stopped = false;
};

// The slots of the parser for a handler; those it has no member for stay empty.
template <class Handler>
class Slots {
public:
    static XML_SAX_Handler make(Reading<Handler>& reading) noexcept
    {
        XML_SAX_Handler slots{};
        slots.userData = static_cast<Error*>(&reading);
        slots.error = takeError;
        if constexpr (TakesStartDocument<Handler>::value) slots.startDocument = startDocument;
        if constexpr (TakesEndDocument<Handler>::value) slots.endDocument = endDocument;
        if constexpr (TakesStartElement<Handler>::value) slots.startElementNs = startElement;
        if constexpr (TakesEndElement<Handler>::value) slots.endElementNs = endElement;
        if constexpr (TakesText<Handler>::value) slots.characters = text;
        if constexpr (TakesCData<Handler>::value) slots.cdata = cdata;
        if constexpr (TakesComment<Handler>::value) slots.comment = comment;
        if constexpr (TakesInstruction<Handler>::value) slots.processingInstruction = instruction;
        static_assert(TakesStartDocument<Handler>::value || TakesEndDocument<Handler>::value ||
                          TakesStartElement<Handler>::value || TakesEndElement<Handler>::value ||
                          TakesText<Handler>::value || TakesCData<Handler>::value ||
                          TakesComment<Handler>::value || TakesInstruction<Handler>::value,
                      "the handler has no member that an event would call");
        return slots;
    }

private:
    // Calls the handler. One that returns false stops the parse.
    template <class Call>
    static void call(XML_Parser* parser, Call&& event)
    {
        auto& reading =
            static_cast<Reading<Handler>&>(*static_cast<Error*>(parser->handler->userData));
        if constexpr (std::is_void_v<decltype(event(*reading.handler))>) {
            event(*reading.handler);
        } else if (!event(*reading.handler)) {
            reading.stopped = true;
            parser->error = XML_ERROR_INTERNAL;
        }
    }

    // Nothing may be thrown through the parser: noexcept ends the program instead.
    static void startDocument(XML_Parser* parser) noexcept
    {
        call(parser, [](Handler& handler) { return handler.startDocument(); });
    }
    static void endDocument(XML_Parser* parser) noexcept
    {
        call(parser, [](Handler& handler) { return handler.endDocument(); });
    }
    static void startElement(XML_Parser* parser, const char* name, const char* prefix,
                             const char* namespaceName, uint32_t declarationCount,
                             const char** declarations, uint32_t attributeCount, uint32_t,
                             const char** attributes) noexcept
    {
        const StartTag tag{viewOf(name),
                           viewOf(prefix),
                           viewOf(namespaceName),
                           {attributes, attributeCount},
                           {declarations, declarationCount}};
        call(parser, [&](Handler& handler) { return handler.startElement(tag); });
    }
    static void endElement(XML_Parser* parser, const char* name, const char* prefix,
                           const char* namespaceName) noexcept
    {
        const EndTag tag{viewOf(name), viewOf(prefix), viewOf(namespaceName)};
        call(parser, [&](Handler& handler) { return handler.endElement(tag); });
    }
    static void text(XML_Parser* parser, const char* text, uint32_t size) noexcept
    {
        call(parser, [&](Handler& handler) { return handler.text(TextEvent{text, size}); });
    }
    static void cdata(XML_Parser* parser, const char* text, uint32_t size) noexcept
    {
        call(parser, [&](Handler& handler) { return handler.cdata(TextEvent{text, size}); });
    }
    static void comment(XML_Parser* parser, const char* text) noexcept
    {
        call(parser, [&](Handler& handler) { return handler.comment(viewOf(text)); });
    }
    static void instruction(XML_Parser* parser, const char* target, const char* data) noexcept
    {
        call(parser,
             [&](Handler& handler) { return handler.instruction(viewOf(target), viewOf(data)); });
    }
};

template <class Source, class Handler>
Status readEvents(const Source& source, Handler& handler)
{
    Reading<Handler> reading;
    reading.handler = &handler;
    const XML_SAX_Handler slots = Slots<Handler>::make(reading);
    const uint32_t status = source.read(slots);
    Error& error = reading;
    if (reading.stopped) {
        error.kind = ErrorKind::Stopped;
        error.code = XML_ERROR_NONE;
        error.message = "the handler stopped";
        return std::move(error);
    }
    if (status == XML_RET_OK) return {};
    if (error.code != XML_ERROR_NONE) return std::move(error);
    return sourceFailure(source);
}

}  // namespace detail

/**
 * Reads a document and tells `handler` what is in it, in UTF-8. Nothing is converted or copied: all
 * that a handler is given is valid during that call only.
 *
 * The handler is an object with any of these members; each returns nothing, or false to stop:
 *
 * @code
 * startDocument();                              endDocument();
 * startElement(const netxml::StartTag& tag);    endElement(const netxml::EndTag& tag);
 * text(std::string_view text);                  cdata(std::string_view text);
 * comment(std::string_view text);               instruction(std::string_view target,
 *                                                           std::string_view data);
 * @endcode
 *
 * A member of one of these names that takes something else does not compile, nor does a handler
 * without any. A member that throws ends the program.
 *
 * Returns success, ErrorKind::Stopped with the place where the handler stopped, or what is wrong;
 * the handler may have had part of the document then.
 */
template <class Handler>
Status read(std::string_view text, Handler& handler)
{
    return detail::readEvents(detail::MemorySource{text}, handler);
}

/** The same for a text that lies in pieces. */
template <class Handler>
Status read(const Chunks& chunks, Handler& handler)
{
    return detail::readEvents(chunks, handler);
}

/** The same for literals: `netxml::read({"<a>", "</a>"}, handler)`. */
template <class Piece, class Handler, class = detail::IfLiterals<Piece>>
Status read(std::initializer_list<Piece> pieces, Handler& handler)
{
    return detail::readEvents(Chunks(pieces), handler);
}

/** The same for a file. */
template <class Handler>
Status readFile(const std::string& path, Handler& handler)
{
    return detail::readEvents(detail::FileSource{path}, handler);
}

}  // namespace face
}  // namespace netxml

#endif
