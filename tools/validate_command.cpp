// netxml validate: does a file fit its schema, and where does it not?
#include "caret.hpp"
#include "commands.hpp"
#include "source_tree.hpp"
#include "tree_text.hpp"
#include "validation_run.hpp"

#include <algorithm>
#include <limits>

namespace netxml::tool {
namespace {

// In the order of the document; of those about one element the one that was found first.
void sortByPlace(std::vector<Violation>& violations, const ElementPlaces& places)
{
    std::stable_sort(violations.begin(), violations.end(),
                     [&](const Violation& a, const Violation& b) {
                         return places.offsetOf(a.node) < places.offsetOf(b.node);
                     });
}

void addViolations(Outcome& outcome, SourceText& source, const Tree& tree,
                   std::vector<Violation> violations)
{
    source.decode();
    std::vector<const XML_DOM_Node*> elements;
    elements.reserve(violations.size());
    for (const Violation& violation : violations) elements.push_back(violation.node);
    const ElementPlaces places{source.text(), tree, elements};
    sortByPlace(violations, places);

    PlaceFinder finder{source.text()};
    for (const Violation& violation : violations) {
        const XML_DOM_Node* element = violation.node;
        const std::string path = places.beginningOfPath(element, kPathInSentence);
        const Place place = finder.at(places.offsetOf(element));
        Problem problem =
            problemAt(source.name(), finder, place, textOfTree(sentenceWithPath(violation, path)),
                      ToolCode::NotValid);
        problem.violation = violation.code;
        problem.path = places.shownPath(element);
        outcome.problems.push_back(std::move(problem));
    }
}

Problem withoutPlace(const SourceText& source, ToolCode code, std::string message)
{
    Problem problem;
    problem.file = source.name();
    problem.message = std::move(message);
    problem.code = static_cast<std::uint32_t>(code);
    return problem;
}

Problem noVerdict(const SourceText& source)
{
    return withoutPlace(source, ToolCode::Internal,
                        "internal error: no verdict: memory has run out, or the schema is broken.");
}

Problem moreViolations(const SourceText& source, std::size_t limit)
{
    Problem problem =
        withoutPlace(source, ToolCode::MoreViolations,
                     "there are more violations; --max-errors is " + std::to_string(limit) + ".");
    problem.severity = Problem::Severity::Warning;
    return problem;
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
    Findings findings = ValidationRun{*options.schema, tree.get()}.run(options.maxErrors);
    countAll(source);

    Outcome outcome;
    if (!findings.violations.empty()) {
        outcome.status = Status::Invalid;
        addViolations(outcome, source, tree, std::move(findings.violations));
    } else if (!findings.broken && !options.quiet) {
        outcome.output = source.name() + ": valid\n";
    }
    if (findings.more) outcome.problems.push_back(moreViolations(source, options.maxErrors));
    if (findings.broken) {
        outcome.problems.push_back(noVerdict(source));
        outcome.worsen(Status::File);
    }
    return outcome;
}

}  // namespace netxml::tool
