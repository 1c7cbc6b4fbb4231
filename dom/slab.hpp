// Slabs: the blocks that a parse or a copy lays records and strings into, in document order.
//
// A slab counts its living records and goes back to the heap with the last of them, whichever
// thread owns the tree that this one has come into by then; hence the atomic count. The first slab
// of an arena outlives the others, so that each can find the arena's state there.
//
// As long as nothing of an arena was edited, the tree under its root is exactly what the arena
// holds, and deleting that root releases the slabs without visiting a single record.
#pragma once

#include "dom/node.hpp"
#include "support/heap.hpp"
#include "support/span.hpp"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace netxml {

// The strings of an arena's records that are heap blocks, as long as nothing was edited: so that
// these can go without a look at the records, too.
struct LongStrings {
    static constexpr std::size_t kMost = 62;
    LongStrings* older;
    std::size_t count;
    char* strings[kMost];
};

struct Slab {
    std::atomic<std::uint32_t> living;  // records; in the first slab, the other slabs count too
    bool edited;                        // of the first slab: the arena is no longer one whole tree
    Slab* first;
    Slab* next;
    LongStrings* longStrings;  // of the first slab
};
inline constexpr std::size_t kSlabHeader = (sizeof(Slab) + 7) / 8 * 8;

// The slab that a record with this home lies in.
inline Slab* slabAt(const void* record, Home home) noexcept
{
    char* bytes = static_cast<char*>(const_cast<void*>(record));
    return reinterpret_cast<Slab*>(bytes - home.slabOffset());
}
template <class Record>
Slab* slabOf(Record* record) noexcept
{
    return slabAt(record, record->home);
}

// Tells from which strings under a node whole blocks may be read: those of a slab, since behind
// each of them there is room for one, as long as nobody has edited the arena. Of an edited one the
// neighbour may be another tree's, in another thread's hands.
class WideStrings {
public:
    explicit WideStrings(const XML_DOM_Node* top) noexcept
        : whole_{top->home.inSlab() && !slabOf(top)->first->edited}
    {
    }
    // The declaration of `xml` may be bound, and lies in no slab.
    bool has(Home home, std::uint32_t string) const noexcept
    {
        return whole_ && home.inSlab() && !home.owns(string);
    }

private:
    bool whole_;
};

// To be called before a record's links or strings change. Only a tree that is still whole is
// written to, and that one has a single owner.
template <class Record>
void markEdited(Record* record) noexcept
{
    if (!record->home.inSlab()) return;
    Slab* first = slabOf(record)->first;
    if (!first->edited) first->edited = true;
}

// True when all slabs of the record's arena may go with this root.
inline bool isWholeArena(const XML_DOM_Node* root) noexcept
{
    return root->home.inSlab() && root->document && !slabOf(root)->first->edited;
}

// Releases every slab of an arena, with the strings that lie beside them.
void releaseArena(Slab* first) noexcept;

// Takes `count` records off a slab's count, and releases the slab with the last.
void dropRecords(Slab* slab, std::uint32_t count) noexcept;

// What is left of the slab at hand: behind `end` there is still room for a block (kSpanSlack), so
// that strings may be copied and read in blocks. Whoever lays many records may do it in a copy of
// his own, which stays in registers, and put that back.
struct SlabRoom {
    char* cursor = nullptr;
    char* end = nullptr;
    char* begin = nullptr;      // of the slab
    std::uint32_t records = 0;  // in the slab

    bool holds(std::size_t bytes) const noexcept
    {
        return static_cast<std::size_t>(end - cursor) >= bytes;
    }
    // A record of `total` bytes, which must be there; `home` receives what the record has to keep.
    void* take(std::size_t total, Home& home) noexcept
    {
        char* block = cursor;
        cursor += total;
        ++records;
        home.bits = Home::bitsOf(static_cast<std::uint32_t>(block - begin));
        return block;
    }
};

// Lays out records and strings while a tree is being built.
class Arena {
public:
    static constexpr std::size_t kSlabSize =
        std::size_t{64} * 1024 - 64;  // with the heap's own header: 64 KiB
    static constexpr std::size_t kSmallestSlab = 1024;
    static constexpr std::size_t kLongText =
        std::size_t{4} * 1024;  // longer strings are heap blocks of their own

    // `expected` is a guess of what the whole tree takes. Nothing is allocated before it is needed.
    explicit Arena(std::size_t expected) noexcept : expected_{expected} {}
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    // What a record (8-byte aligned) with `textSize` bytes behind it takes.
    static constexpr std::size_t sizeOf(std::size_t size, std::size_t textSize) noexcept
    {
        return (size + textSize + 7) & ~std::size_t{7};
    }
    // A record with `textSize` bytes behind it, not initialised, or nullptr.
    void* record(std::size_t size, std::size_t textSize, Home& home) noexcept
    {
        const std::size_t total = sizeOf(size, textSize);
        if (!room_.holds(total) && !nextSlab(total)) return nullptr;
        return room_.take(total, home);
    }
    // The slab at hand; the first one is made for it, if memory is to be had.
    SlabRoom& room() noexcept
    {
        if (!first_) static_cast<void>(nextSlab(0));
        return room_;
    }
    // To be called when a string of a record is a heap block. Where that cannot be written down,
    // deletion visits the records.
    void noteHeapString(char* string) noexcept;

    // Ends the building: the records belong to the tree from here on. `wholeTree` says that they
    // are one document and nothing else.
    void seal(bool wholeTree) noexcept;
    // Ends it without a tree: whatever was laid out goes.
    void abandon() noexcept;

private:
    bool nextSlab(std::size_t needed) noexcept;

    SlabRoom room_;
    bool edited_ = false;
    Slab* first_ = nullptr;
    LongStrings* longStrings_ = nullptr;
    std::size_t expected_;   // of what is not allocated yet
    std::size_t total_ = 0;  // of what is
};

}  // namespace netxml
