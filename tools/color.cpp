#include "color.hpp"

#include <cstdlib>
#include <unistd.h>

namespace netxml::tool {
namespace {

std::string_view environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

}  // namespace

std::string Palette::paint(const char* code, std::string_view text) const
{
    if (!on_) return std::string{text};
    return std::string{"\033["} + code + "m" + std::string{text} + "\033[0m";
}

bool wantsColor(ColorUse use, int descriptor)
{
    if (use != ColorUse::Auto) return use == ColorUse::Always;
    return environment("NO_COLOR").empty() && environment("TERM") != "dumb" &&
           isatty(descriptor) != 0;
}

}  // namespace netxml::tool
