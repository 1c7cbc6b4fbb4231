// Documents made to be expensive, of any size.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

struct Shape {
    const char* name;
    std::string (*make)(std::size_t n);
    std::size_t small;  // large enough that work grows like the size
    std::size_t full;   // tried once
    bool wellFormed;
    // The exported callbacks look prefixes up in the tree as it stands, since their caller may have
    // changed it: from the element up to the declaration, each time. (Kept)
    bool climbs = false;
};

// For the reports of GoogleTest.
inline void PrintTo(const Shape& shape, std::ostream* out)
{
    *out << shape.name;
}

const std::vector<Shape>& hostileShapes();
