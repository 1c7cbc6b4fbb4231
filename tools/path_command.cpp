// netxml path: what stands at a path.
#include "commands.hpp"
#include "location_path.hpp"
#include "markup.hpp"
#include "source_text.hpp"

#include <algorithm>

namespace netxml::tool {
namespace {

// Goes through the pieces of a text and collects the subtrees at a path, as they are written.
class Search {
public:
    Search(std::string_view text, const std::vector<PathStep>& steps)
        : pieces_{text}, steps_{steps}, counts_(steps.size(), 0)
    {
    }

    // The subtrees, each on lines of its own; empty when nothing is there.
    std::string run()
    {
        for (Piece piece; pieces_.next(piece);) {
            switch (piece.kind) {
            case PieceKind::StartTag: enter(piece.text); break;
            case PieceKind::EndTag: leave(piece.text); break;
            case PieceKind::EmptyTag:
                enter(piece.text);
                leave(piece.text);
                break;
            default: break;
            }
        }
        return std::move(found_);
    }
    // How many steps have been matched at most.
    std::size_t deepest() const { return deepest_; }

private:
    struct ScopedDeclaration {
        std::size_t depth;
        WrittenAttribute written;
    };

    static bool declares(const WrittenAttribute& attribute)
    {
        return attribute.name == "xmlns" || attribute.name.starts_with("xmlns:");
    }

    void enter(std::string_view tag)
    {
        if (matched_ == depth_ && depth_ < steps_.size() && matches(splitName(tagName(tag)).local))
            match(tag);
        TagAttributes attributes{tag};
        for (WrittenAttribute attribute; attributes.next(attribute);) {
            if (declares(attribute)) inScope_.push_back({depth_, attribute});
        }
        ++depth_;
    }

    // Counts the element among its siblings of that name.
    bool matches(std::string_view name)
    {
        const PathStep& step = steps_[depth_];
        if (name != step.name) return false;
        return ++counts_[depth_] == step.position || step.position == 0;
    }

    void match(std::string_view tag)
    {
        ++matched_;
        deepest_ = std::max(deepest_, matched_);
        if (matched_ == steps_.size()) {
            begin_ = tag;
            head_ = headOf(tag);
        } else {
            counts_[matched_] = 0;
        }
    }

    void leave(std::string_view tag)
    {
        --depth_;
        while (!inScope_.empty() && inScope_.back().depth == depth_) inScope_.pop_back();
        if (matched_ != depth_ + 1) return;
        if (matched_ == steps_.size()) {
            const char* rest = begin_.data() + tagNameEnd(begin_);
            found_ += head_;
            found_.append(rest, tag.data() + tag.size());
            found_ += '\n';
        }
        --matched_;
    }

    static std::size_t tagNameEnd(std::string_view tag)
    {
        const std::string_view name = tagName(tag);
        return static_cast<std::size_t>(name.data() - tag.data()) + name.size();
    }

    // A start tag up to its name, and the declarations that the subtree has from further above:
    // prefixes may also stand in values, so all that are in scope go with it.
    std::string headOf(std::string_view tag) const
    {
        std::string head{tag.substr(0, tagNameEnd(tag))};
        std::vector<std::string_view> known;
        TagAttributes attributes{tag};
        for (WrittenAttribute attribute; attributes.next(attribute);)
            known.push_back(attribute.name);
        for (auto scoped = inScope_.rbegin(); scoped != inScope_.rend(); ++scoped) {
            const WrittenAttribute& written = scoped->written;
            if (std::find(known.begin(), known.end(), written.name) != known.end()) continue;
            known.push_back(written.name);
            if (written.unquoted().empty()) continue;  // the default namespace, taken back
            head += ' ';
            head += written.name;
            head += '=';
            head += written.value;
        }
        return head;
    }

    Pieces pieces_;
    const std::vector<PathStep>& steps_;
    std::vector<std::size_t> counts_;  // by step: the siblings of its name met so far
    std::size_t depth_ = 0;
    std::size_t matched_ = 0;  // steps matched by the open elements, from the root on
    std::size_t deepest_ = 0;
    std::vector<ScopedDeclaration> inScope_;
    std::string_view begin_;  // the start tag of the subtree being collected
    std::string head_;
    std::string found_;
};

Failure nothingFound(const std::string& file, const Options& options,
                     const std::vector<PathStep>& steps, std::size_t matched)
{
    std::string above;
    for (std::size_t i = 0; i < matched; ++i) {
        above += '/';
        above += steps[i].text();
    }
    Problem problem;
    problem.file = file;
    problem.message = "nothing is at " + options.path + ": step " + std::to_string(matched + 1) +
                      ", \"" + steps[matched].text() + "\", matches nothing " +
                      (matched == 0 ? "as the root" : "in " + above) + ".";
    problem.code = static_cast<std::uint32_t>(ToolCode::NothingAtPath);
    return Failure{Status::Rejected, std::move(problem)};
}

}  // namespace

Outcome findInFile(const std::string& file, const Options& options, ProgressBar& progress)
{
    const std::vector<PathStep> steps = *readPath(options.path);  // the command line checked it
    SourceText source{file, progress};
    source.parse(nullptr);
    source.decode();
    Search search{source.text(), steps};
    Outcome outcome;
    outcome.output = search.run();
    if (outcome.output.empty()) throw nothingFound(source.name(), options, steps, search.deepest());
    return outcome;
}

}  // namespace netxml::tool
