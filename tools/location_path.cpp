#include "location_path.hpp"

#include <algorithm>
#include <charconv>

namespace netxml::tool {
namespace {

// Reads "[2]" at the end of a step and takes it off; false when the brackets hold no position.
bool takePosition(PathStep& step)
{
    const std::size_t open = step.name.find('[');
    if (open == std::string::npos) return true;
    const char* begin = step.name.data() + open + 1;
    const char* end = step.name.data() + step.name.size() - 1;
    if (begin > end || *end != ']') return false;
    const auto [stop, error] = std::from_chars(begin, end, step.position);
    if (error != std::errc{} || stop != end || step.position == 0) return false;
    step.name.resize(open);
    return true;
}

}  // namespace

std::string PathStep::text() const
{
    return position == 0 ? name : name + "[" + std::to_string(position) + "]";
}

std::optional<std::vector<PathStep>> readPath(const std::string& text)
{
    std::vector<PathStep> steps;
    if (text.empty() || text[0] != '/') return std::nullopt;
    for (std::size_t at = 1; at <= text.size();) {
        const std::size_t slash = std::min(text.find('/', at), text.size());
        PathStep step{text.substr(at, slash - at)};
        if (!takePosition(step) || step.name.empty()) return std::nullopt;
        if (step.name.find_first_of(":[]@*() \t\r\n\"'<>&") != std::string::npos)
            return std::nullopt;
        steps.push_back(std::move(step));
        at = slash + 1;
    }
    return steps;
}

}  // namespace netxml::tool
