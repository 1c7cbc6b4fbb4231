// netxml validate: does a file fit its schema?
#include "caret.hpp"
#include "commands.hpp"
#include "source_tree.hpp"
#include "tree_text.hpp"

#include <limits>

namespace netxml::tool {
namespace {

constexpr std::uint32_t kLongestSentence = 16384;  // bytes; longer ones are cut

std::string sentenceOf(const Schema_ValidateResult& result)
{
    std::string sentence(kLongestSentence, '\0');
    Schema_GetErrorDesc(&result, kLongestSentence, sentence.data());
    return textOfTree(sentence.c_str());
}

Problem violation(SourceText& source, const Tree& tree, const Schema_ValidateResult& result)
{
    source.decode();
    Problem problem =
        problemAt(source.name(), source.text(), startTagOffset(source.text(), tree, result.node),
                  sentenceOf(result), ToolCode::NotValid);
    problem.violation = result.code;
    problem.path = shownPath(result.node);
    return problem;
}

Failure noVerdict(const SourceText& source)
{
    Problem problem;
    problem.file = source.name();
    problem.message = "internal error: no verdict: memory has run out, or the schema is broken.";
    problem.code = static_cast<std::uint32_t>(ToolCode::Internal);
    return Failure{Status::File, std::move(problem)};
}

// Tells the progress bar that the bytes have been gone over once more.
void countAll(SourceText& source)
{
    constexpr auto kEnd = std::numeric_limits<std::uint32_t>::max();
    if (const PlaceReached reached = source.reached()) reached(kEnd, kEnd);
}

}  // namespace

Outcome validateFile(const std::string& file, const Options& options, ProgressBar& progress)
{
    SourceText source{file, progress};
    source.parse(nullptr);
    const Tree tree = buildTree(source);
    Schema_ValidateResult result;
    if (Schema_ValidateXml(tree.get(), options.schemaRoot, &result) != XML_RET_OK)
        throw noVerdict(source);
    countAll(source);

    Outcome outcome;
    if (result.code != SCHEMA_VALID) {
        outcome.status = Status::Invalid;
        outcome.problems.push_back(violation(source, tree, result));
    } else if (!options.quiet) {
        outcome.output = source.name() + ": valid\n";
    }
    return outcome;
}

}  // namespace netxml::tool
