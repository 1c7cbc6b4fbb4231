// The documents that are measured: made from a seed, so that they are the same everywhere.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace netxml::bench {

struct Document {
    std::string name;
    std::string text;      // UTF-8 unless the name says otherwise
    std::size_t elements;  // what every contestant must count
};

// The names of all documents that are made here.
std::vector<std::string> documentNames();

// Makes a document by its name. Throws std::invalid_argument for an unknown one.
Document makeDocument(std::string_view name);

}  // namespace netxml::bench
