#include "dom/make.hpp"

#include <cstring>

namespace netxml {
namespace {

// The strings of a record about to be made: which lie behind it, and which had to become heap
// blocks.
class RecordStrings {
public:
    RecordStrings(Arena* arena, std::string_view first, std::string_view second) noexcept
        : arena_{arena}, first_{first}, second_{second}
    {
        ok_ = place(first_, firstBlock_) && place(second_, secondBlock_);
        inline_ = ok_ ? inlineSize(first_, firstBlock_) + inlineSize(second_, secondBlock_) : 0;
    }
    bool ok() const noexcept { return ok_; }
    std::size_t inlineSize() const noexcept { return inline_; }

    // Writes the strings behind a record and hands the heap blocks over to it.
    void store(char* behind, Home& home, const char*& first, const char*& second) noexcept
    {
        first = put(behind, first_, firstBlock_);
        second = put(behind, second_, secondBlock_);
        if (firstBlock_) home.bits |= Home::kFirstString;
        if (secondBlock_) home.bits |= Home::kSecondString;
        handOver(firstBlock_);
        handOver(secondBlock_);
    }

private:
    using Block = heap::Owned<char>;
    static constexpr std::size_t kLargest = SIZE_MAX / 4;  // no text of that size exists, and sums
                                                           // of two with a record do not wrap
    static bool place(std::string_view text, Block& block) noexcept
    {
        if (text.size() > kLargest) return false;
        if (text.size() <= Arena::kLongText) return true;
        block.reset(heap::copyText(text.data(), text.size()));
        return block != nullptr;
    }
    // The block is the record's from here on.
    void handOver(Block& block) noexcept
    {
        char* string = block.release();
        if (string && arena_) arena_->noteHeapString(string);
    }
    static std::size_t inlineSize(std::string_view text, const Block& block) noexcept
    {
        return !text.data() || block ? 0 : text.size() + 1;
    }
    static const char* put(char*& behind, std::string_view text, const Block& block) noexcept
    {
        if (!text.data()) return nullptr;
        if (block) return block.get();
        char* start = behind;
        std::memcpy(start, text.data(), text.size());
        start[text.size()] = '\0';
        behind += text.size() + 1;
        return start;
    }

    Arena* arena_;
    std::string_view first_;
    std::string_view second_;
    Block firstBlock_;
    Block secondBlock_;
    std::size_t inline_ = 0;
    bool ok_ = false;
};

// A zero-filled record with its strings behind it; the two string fields are filled.
template <class Record>
Record* makeRecord(Arena* arena, std::string_view first, std::string_view second,
                   const char* Record::*firstField, const char* Record::*secondField) noexcept
{
    RecordStrings strings{arena, first, second};
    if (!strings.ok()) return nullptr;
    Home home{};
    void* block = nullptr;
    if (arena) block = arena->record(sizeof(Record), strings.inlineSize(), home);
    else block = heap::allocate(sizeof(Record) + strings.inlineSize());
    if (!block) return nullptr;
    Record* record = new (block) Record{};
    record->home = home;
    strings.store(reinterpret_cast<char*>(record + 1), record->home, record->*firstField,
                  record->*secondField);
    return record;
}

}  // namespace

XML_DOM_Node* makeElement(Arena* arena, std::string_view name) noexcept
{
    XML_DOM_Node* node = makeRecord(arena, name, {}, &XML_DOM_Node::name, &XML_DOM_Node::value);
    if (node) node->type = XML_DOM_NODE_ELEMENT;
    return node;
}

XML_DOM_Node* makeTextual(Arena* arena, XML_DOM_NodeType type, std::string_view value) noexcept
{
    XML_DOM_Node* node = makeRecord(arena, {}, value, &XML_DOM_Node::name, &XML_DOM_Node::value);
    if (node) node->type = type;
    return node;
}

XML_DOM_Attr* makeAttr(Arena* arena, std::string_view name, std::string_view value) noexcept
{
    return makeRecord(arena, name, value, &XML_DOM_Attr::name, &XML_DOM_Attr::value);
}

XML_DOM_NsDecl* makeDecl(Arena* arena, std::string_view prefix, std::string_view name) noexcept
{
    return makeRecord(arena, prefix, name, &XML_DOM_NsDecl::prefix, &XML_DOM_NsDecl::name);
}

XML_DOM_Document* makeDocument(Arena* arena, XML_DOM_Node* root) noexcept
{
    Home home{};
    void* block = arena ? arena->record(sizeof(XML_DOM_Document), 0, home)
                        : heap::allocate(sizeof(XML_DOM_Document));
    if (!block) return nullptr;
    return new (block) XML_DOM_Document{root, kVersion, XML_ENCODING_UTF_8, home};
}

bool replaceString(const char*& string, Home& home, std::uint32_t which, const char* text) noexcept
{
    char* copy = heap::copyText(text, std::strlen(text));
    if (!copy) return false;
    if (home.owns(which)) heap::release(const_cast<char*>(string));
    string = copy;
    home.bits |= which;
    return true;
}

}  // namespace netxml
