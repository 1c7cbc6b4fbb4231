// Conversions of whole texts by the C library's own converter, which the library's are compared
// with.
#pragma once

#include <string>
#include <string_view>

struct Conversion {
    enum class End { Done, Incomplete, Invalid };

    std::string output;  // of what could be converted
    End end = End::Done;
};

Conversion convertWhole(const char* target, const char* source, std::string_view text);

// The C library unloads what it needs for an encoding with the last converter, and loading it again
// takes longer than most inputs. One converter of each stays open.
void keepConvertersLoaded();
