// netxml tree: an outline of a file.
#include "commands.hpp"
#include "source_text.hpp"
#include "utf8_text.hpp"

#include <algorithm>
#include <unistd.h>
#include <unordered_map>

namespace netxml::tool {
namespace {

constexpr std::size_t kLongestValue = 72;         // characters of a value that are shown
constexpr std::size_t kDeepestIndentation = 100;  // levels; deeper ones stay there
constexpr std::size_t kLongestPath = 1000;        // bytes; of a longer one the end is shown

// A value in quotes on one line.
std::string shown(std::string_view value)
{
    std::string result = "\"";
    for (std::size_t count = 0; !value.empty(); ++count) {
        if (count == kLongestValue) return result + "\"...";
        const Character character = firstCharacter(value);
        switch (character.code) {
        case '\n': result += "\\n"; break;
        case '\r': result += "\\r"; break;
        case '\t': result += "\\t"; break;
        case '"': result += "\\\""; break;
        case '\\': result += "\\\\"; break;
        default: result += printable(value.substr(0, character.size));
        }
        value.remove_prefix(character.size);
    }
    return result + "\"";
}

std::string qualified(const EventName& name)
{
    std::string result{name.prefix};
    if (!result.empty()) result += ':';
    return result += name.local;
}

class Outline : public Events {
public:
    Outline(std::string& out, const Palette& palette) : out_{out}, palette_{palette} {}

    void startElement(const EventName& name, std::span<const EventDeclaration> declarations,
                      std::span<const EventAttribute> attributes) override
    {
        step(name.local);
        std::string rest = palette_.name(qualified(name));
        if (!name.nameSpace.empty()) rest += " {" + printable(name.nameSpace) + "}";
        line("element", rest + " " + shownPath());
        levels_.push_back({path_.size(), {}});
        for (const EventDeclaration& d : declarations)
            named("namespace", d.prefix.empty() ? "(default)" : std::string{d.prefix}, d.nameSpace);
        for (const EventAttribute& a : attributes)
            named("attribute", qualified(a.name), a.value, a.name.nameSpace);
    }
    void endElement(const EventName&) override
    {
        levels_.pop_back();
        path_.resize(levels_.empty() ? 0 : levels_.back().pathSize);
    }
    void characters(std::string_view text) override { valued("text", text); }
    void cdata(std::string_view text) override { valued("cdata", text); }
    void comment(std::string_view text) override { valued("comment", text); }
    void instruction(std::string_view target, std::string_view data) override
    {
        named("instruction", std::string{target}, data);
    }

private:
    struct Level {
        std::size_t pathSize;                                   // of the element
        std::unordered_map<std::string, std::size_t> children;  // met so far, by name
    };

    // Appends an element's step to the path: its position among the siblings of the same name.
    void step(std::string_view name)
    {
        path_ += '/';
        path_ += name;
        if (levels_.empty()) return;
        const std::size_t position = ++levels_.back().children[std::string{name}];
        path_ += '[';
        path_ += std::to_string(position) + "]";
    }
    std::string shownPath() const
    {
        if (path_.size() <= kLongestPath) return path_;
        const std::size_t slash = path_.find('/', path_.size() - kLongestPath);
        return "..." + path_.substr(std::min(slash, path_.size()));
    }
    void line(const char* kind, const std::string& rest)
    {
        out_.append(2 * std::min(levels_.size(), kDeepestIndentation), ' ');
        out_ += palette_.kind(kind) + " " + rest + "\n";
    }
    void valued(const char* kind, std::string_view value)
    {
        line(kind, palette_.value(shown(value)));
    }
    void named(const char* kind, const std::string& name, std::string_view value,
               std::string_view nameSpace = {})
    {
        std::string rest = palette_.name(name);
        if (!nameSpace.empty()) rest += " {" + printable(nameSpace) + "}";
        line(kind, rest + " " + palette_.value(shown(value)));
    }

    std::string& out_;
    Palette palette_;
    std::string path_;
    std::vector<Level> levels_;
};

}  // namespace

Outcome outlineFile(const std::string& file, const Options& options, ProgressBar& progress)
{
    SourceText source{file, progress};
    Outcome outcome;
    if (options.files.size() > 1 || options.recursive) outcome.output = source.name() + ":\n";
    Outline outline{outcome.output, Palette{wantsColor(options.color, STDOUT_FILENO)}};
    source.parse(&outline);
    return outcome;
}

}  // namespace netxml::tool
