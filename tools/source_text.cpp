#include "source_text.hpp"

#include "caret.hpp"
#include "input_file.hpp"
#include "utf8_text.hpp"

#include <algorithm>

namespace netxml::tool {
namespace {

constexpr std::size_t kBlock = 65536;

// The line that each block of the bytes begins in. Other bytes that look like a line feed, in
// UTF-16 say, make it an estimate.
std::vector<std::uint32_t> linesOfBlocks(std::string_view bytes)
{
    std::vector<std::uint32_t> lines;
    std::uint32_t line = 1;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(kBlock, bytes.size()))) {
        lines.push_back(line);
        const std::string_view block = bytes.substr(0, kBlock);
        line += static_cast<std::uint32_t>(std::count(block.begin(), block.end(), '\n'));
    }
    return lines;
}

}  // namespace

SourceText::SourceText(const std::string& path, ProgressBar& progress)
    : name_{path == "-" ? kStandardInput : path}, progress_{&progress}
{
    InputFile file = readFile(path, name_, progress);
    bytes_ = std::move(file.bytes);
    counted_ = file.regular;
    start_ = startOf(bytes_);
}

SourceText::SourceText(std::string name, std::string bytes, ProgressBar& progress)
    : name_{std::move(name)}, bytes_{std::move(bytes)}, start_{startOf(bytes_)},
      progress_{&progress}, counted_{false}
{
}

PlaceReached SourceText::reached()
{
    if (!counted_ || !progress_->enabled()) return {};
    if (lines_.empty()) lines_ = linesOfBlocks(bytes_);
    return [this, told = std::uint64_t{0}](std::uint32_t line, std::uint32_t column) mutable {
        // The last block that begins before this line; a long line spans several.
        const auto block = std::lower_bound(lines_.begin(), lines_.end(), line) - lines_.begin();
        const std::uint64_t byLine =
            block == 0 ? 0 : static_cast<std::uint64_t>(block - 1) * kBlock;
        const std::uint64_t now = std::min<std::uint64_t>(byLine + column, bytes_.size());
        if (now <= told) return;
        progress_->add(now - told);
        told = now;
    };
}

Problem SourceText::problemWith(const ParseFailure& failure) const
{
    Problem problem;
    problem.file = name_;
    problem.line = failure.line;
    problem.column = failure.column;
    problem.message = failure.message;
    problem.code = failure.code;
    const std::string_view content = bytes().substr(start_.markSize);
    if (encoding_ == XML_ENCODING_UTF_8) showPlace(problem, content);
    else showPlace(problem, recodeBeginning(content, encoding_));
    return problem;
}

void SourceText::parse(Events* events)
{
    const ParseResult result = readEvents(bytes_, events, reached());
    const auto encoding = encodingOf(start_, result.encoding);
    encoding_ = encoding.value_or(start_.encoding);
    encodingChanges_ = !encoding;
    if (result.failure) throw Failure{Status::Rejected, problemWith(*result.failure)};
}

Problem SourceText::brokenText() const
{
    const std::string_view content = bytes().substr(start_.markSize);
    const std::string message =
        std::string{"bytes that are no text in "} + XML_DOM_EncodingEnumToStr(encoding_) + ".";
    if (encoding_ == XML_ENCODING_UTF_8) {
        return problemAt(name_, content, findBrokenCharacter(content), message,
                         ToolCode::NotInEncoding);
    }
    const std::string good = recodeBeginning(content, encoding_);
    return problemAt(name_, good, good.size(), message, ToolCode::NotInEncoding);
}

void SourceText::decode()
{
    if (encodingChanges_) {
        throw Failure{Status::Rejected,
                      problemAt(name_, {}, 0,
                                "the text changes its encoding inside the XML declaration.",
                                ToolCode::EncodingChanges)};
    }
    if (encoding_ == XML_ENCODING_UTF_8) return;
    auto text = recode(bytes().substr(start_.markSize), encoding_, XML_ENCODING_UTF_8);
    if (!text) throw Failure{Status::Rejected, brokenText()};
    decoded_ = std::move(*text);
}

bool SourceText::isBroken() const
{
    const std::string_view content = bytes().substr(start_.markSize);
    if (encoding_ == XML_ENCODING_UTF_8)
        return findBrokenCharacter(content) != std::string_view::npos;
    return !recode(content, encoding_, XML_ENCODING_UTF_8);
}

void SourceText::refuseBrokenText() const
{
    if (isBroken()) throw Failure{Status::Rejected, brokenText()};
}

void SourceText::warnOfBrokenText(Outcome& outcome) const
{
    if (encodingChanges_ || !isBroken()) return;
    outcome.problems.push_back(brokenText());
    outcome.problems.back().severity = Problem::Severity::Warning;
}

}  // namespace netxml::tool
