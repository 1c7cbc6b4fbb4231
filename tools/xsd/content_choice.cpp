#include "xsd/content_choice.hpp"

#include "xsd/model_automaton.hpp"
#include "xsd/model_check.hpp"

namespace netxml::xsd {
namespace {

// The forms that are tried, the one as written first.
std::vector<ContentModel> candidates(const ContentModel& written)
{
    std::vector<ContentModel> forms;
    const auto add = [&](const ContentModel& form) {
        if (isPlain(form) && groupDepth(form) <= kMostNestedGroups) forms.push_back(form);
    };
    add(written);
    if (const auto plain = plainForm(written)) add(*plain);
    return forms;
}

std::optional<ContentModel> rebuilt(const ContentModel& written)
{
    const auto automaton = automatonOf(written);
    if (!automaton) return std::nullopt;
    auto form = deterministicForm(*automaton);
    if (!form) return std::nullopt;
    if (isPlain(*form) && groupDepth(*form) <= kMostNestedGroups) return form;
    return plainForm(*form);
}

}  // namespace

ContentModel engineForm(const ContentModel& meant, Diagnostics& diagnostics)
{
    ContentModel written = simplified(meant);
    std::optional<std::string> difference;
    std::optional<ContentModel> nearest;
    const auto suits = [&](const ContentModel& form) {
        const bool sure = isPlain(form) && isDeterministic(withSmallCounts(form));
        const auto found = findDifference(written, form, sure ? 0 : kRandomWords);
        if (sure && found == kTooLarge) return true;
        if (found && !nearest) {
            nearest = form;
            difference = found;
        }
        return !found;
    };
    for (const ContentModel& form : candidates(written)) {
        if (suits(form)) return form;
    }
    if (const auto form = rebuilt(written); form && suits(*form)) return *form;

    if (!nearest && groupDepth(written) <= kMostNestedGroups) {
        nearest = written;
        difference = findDifference(written, written, kRandomWords);
        if (!difference) return written;
    }
    if (!nearest) {
        diagnostics.error(meant.place, "the groups of this content model lie more than " +
                                           std::to_string(kMostNestedGroups) +
                                           " one in another, and no flatter form was found.");
        return written;
    }
    diagnostics.approximate(meant.place, "the content model cannot be said in a form that the "
                                         "validator follows exactly: for one, " +
                                             *difference + ".");
    return *nearest;
}

}  // namespace netxml::xsd
