#include "xsd/content_choice.hpp"

#include "xsd/model_automaton.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

// On such a form the engine says what the automaton says; of others documents must tell.
bool isSure(const ContentModel& form)
{
    return isPlain(form) && isDeterministic(withSmallCounts(form));
}

// The forms that are near what was written, the one as written first.
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

ContentModel engineForm(const ContentModel& meant, ModelChecks& checks, Diagnostics& diagnostics)
{
    ContentModel written = simplified(meant);
    std::optional<std::string> difference;
    std::optional<ContentModel> nearest;
    const auto suits = [&](const ContentModel& form, bool sure) {
        const auto& found = checks.difference(written, form, sure ? 0 : kRandomWords);
        if (sure && found == kTooLarge) return true;
        if (found && !nearest) {
            nearest = form;
            difference = found;
        }
        return !found;
    };
    std::vector<ContentModel> forms = candidates(written);
    const auto firstUncertain = std::stable_partition(forms.begin(), forms.end(), isSure);
    for (auto form = forms.begin(); form != firstUncertain; ++form) {
        if (suits(*form, true)) return *form;
    }
    const auto other = rebuilt(written);
    const bool otherIsSure = other && isSure(*other);
    if (otherIsSure && suits(*other, true)) return *other;
    for (auto form = firstUncertain; form != forms.end(); ++form) {
        if (suits(*form, false)) return *form;
    }
    if (other && !otherIsSure && suits(*other, false)) return *other;

    if (!nearest && groupDepth(written) <= kMostNestedGroups) {
        nearest = written;
        difference = checks.difference(written, written, kRandomWords);
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
