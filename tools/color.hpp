// Colours of a terminal, where they are wanted.
#pragma once

#include "options.hpp"

#include <string>
#include <string_view>

namespace netxml::tool {

class Palette {
public:
    explicit Palette(bool on) : on_{on} {}

    std::string place(std::string_view text) const { return paint("1", text); }
    std::string error(std::string_view text) const { return paint("1;31", text); }
    std::string warning(std::string_view text) const { return paint("1;35", text); }
    std::string caret(std::string_view text) const { return paint("1;32", text); }
    std::string kind(std::string_view text) const { return paint("2", text); }
    std::string name(std::string_view text) const { return paint("36", text); }
    std::string value(std::string_view text) const { return paint("32", text); }

private:
    std::string paint(const char* code, std::string_view text) const;

    bool on_;
};

// Whether to colour what goes to a descriptor. Of itself only on a terminal, unless NO_COLOR is set
// or the terminal is a dumb one.
bool wantsColor(ColorUse use, int descriptor);

}  // namespace netxml::tool
