// Where a contestant reads a document from.
#pragma once

#include "documents.hpp"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace netxml::bench {

class Memory {
public:
    explicit Memory(const Document& document) : text{document.text} {}
    explicit Memory(const std::string& bytes) : text{bytes} {}

    const std::uint8_t* bytes() const { return reinterpret_cast<const std::uint8_t*>(text.data()); }
    template <class Integer>
    Integer sizeAs() const
    {
        return static_cast<Integer>(text.size());
    }

    const std::string& text;
};

// The document in pieces, each a block of its own, as a network delivers it.
class Chunks {
public:
    Chunks(const Document& document, std::size_t size)
    {
        for (std::size_t at = 0; at < document.text.size(); at += size)
            pieces.push_back(document.text.substr(at, size));
    }

    std::vector<std::string> pieces;
};

template <std::size_t Size>
class ChunksOf : public Chunks {
public:
    explicit ChunksOf(const Document& document) : Chunks{document, Size} {}
};

// The document in a file, which lives as long as this record.
class File {
public:
    explicit File(const Document& document)
        : path{std::filesystem::temp_directory_path() /
               ("netxml-bench-" + std::to_string(getpid()) + ".xml")}
    {
        std::ofstream{path, std::ios::binary} << document.text;
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { std::filesystem::remove(path); }

    const std::string path;
};

}  // namespace netxml::bench
