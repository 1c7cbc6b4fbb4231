// The same bytes as a block of memory, a list of chunks or a file, and conversions of whole texts.
#pragma once

#include "netxml/netxml.h"

#include <string>
#include <string_view>
#include <vector>

inline const uint8_t* bytesOf(std::string_view text)
{
    return reinterpret_cast<const uint8_t*>(text.data());
}

// A memory list over copies of pieces of a text, each in a heap block of its own size.
class ChunkList {
public:
    // Cuts after each of the given places (ascending, within the text).
    ChunkList(std::string_view text, const std::vector<std::size_t>& cuts);
    // Cuts into pieces of `size` bytes.
    ChunkList(std::string_view text, std::size_t size);
    ChunkList(const ChunkList&) = delete;
    ChunkList& operator=(const ChunkList&) = delete;

    const XML_IO_MemList* list() const { return &list_; }

private:
    void add(std::string_view piece);
    void link();

    XML_IO_MemList list_{};
    std::vector<std::vector<uint8_t>> pieces_;
    std::vector<XML_IO_MemChunk> chunks_;
};

// A file in the temporary directory, removed with its owner.
class TempFile {
public:
    explicit TempFile(std::string_view content = {});
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile();

    const char* path() const { return path_.c_str(); }
    std::string content() const;
    void remove() const;

private:
    std::string path_;
};

// Memory whose last byte is followed by a page that must not be touched; read-only once filled.
class GuardedBytes {
public:
    explicit GuardedBytes(std::string_view content);
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;
    ~GuardedBytes();

    const uint8_t* data() const { return data_; }
    std::size_t size() const { return size_; }

private:
    uint8_t* pages_;
    std::size_t pagesSize_;
    uint8_t* data_;
    std::size_t size_;
};

// A text in another encoding, by the C library's own converter; no mark unless the converter adds
// one.
std::string convertTo(const char* target, std::string_view text, const char* source = "UTF-8");

// A tree as text, without the declaration unless other flags are given.
std::string written(const XML_DOM_Node* node, uint32_t flags = XML_DOM_WRITE_NO_DECLARATION);

// The same, and the tree is gone; "NULL" without one.
std::string writtenAndDeleted(XML_DOM_Node* node);

// A tree from text that must be well-formed.
XML_DOM_Node* treeOf(std::string_view text);
