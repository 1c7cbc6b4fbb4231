#include "xsd/content_choice.hpp"

#include "xsd/model_automaton.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

using Kind = ContentModel::Kind;

// A model with more leaves than this is tried with small counts in place of its own.
constexpr std::size_t kMostTriedPositions = 400;
constexpr std::size_t kMostRebuiltStates = 300;

// A form of a model, and the same form of the model with small counts.
struct Form {
    ContentModel model;
    ContentModel tried;
};

// On such a form the engine says what the automaton says; of others documents must tell.
bool isSure(const Form& form)
{
    const ContentModel& model = form.model;
    if (model.kind == Kind::All)
        return std::all_of(model.parts.begin(), model.parts.end(),
                           [](const ContentModel& part) { return part.isLeaf() && part.max <= 1; });
    return isPlain(model) && isDeterministic(withSmallCounts(model));
}

bool isNestedTooDeep(const ContentModel& model)
{
    return groupDepth(model) > kMostNestedGroups;
}

// The forms that are near what was written, the one as written first.
std::vector<Form> nearForms(const Form& written)
{
    std::vector<Form> forms;
    if (isPlain(written.model) && !isNestedTooDeep(written.model)) forms.push_back(written);
    const auto plain = plainForm(written.model);
    const auto tried = plainForm(written.tried);
    if (plain && tried) forms.push_back({*plain, *tried});
    return forms;
}

// From the automaton; only where the counts are small, for it writes them out.
std::optional<Form> rebuilt(const ContentModel& written)
{
    if (positionCount(written) > kMostTriedPositions) return std::nullopt;
    const auto automaton = automatonOf(written);
    if (!automaton || automaton->states.size() > kMostRebuiltStates) return std::nullopt;
    auto form = deterministicForm(*automaton);
    if (form && (!isPlain(*form) || isNestedTooDeep(*form))) form = plainForm(*form);
    if (!form) return std::nullopt;
    return Form{*form, *form};
}

}  // namespace

ContentModel engineForm(const ContentModel& meant, ModelChecks& checks, Diagnostics& diagnostics)
{
    Form written{simplified(meant), {}};
    const bool large = positionCount(written.model) > kMostTriedPositions;
    written.tried = large ? withSmallCounts(written.model) : written.model;
    std::optional<std::string> difference;
    std::optional<ContentModel> nearest;
    const auto suits = [&](const Form& form, bool sure) {
        const auto& found = checks.difference(written.tried, form.tried, sure ? 0 : kRandomWords);
        if (sure && found == kTooLarge) return true;
        if (found && !nearest) {
            nearest = form.model;
            difference = found;
        }
        return !found;
    };
    std::vector<Form> forms = nearForms(written);
    const auto firstUncertain = std::stable_partition(forms.begin(), forms.end(), isSure);
    for (auto form = forms.begin(); form != firstUncertain; ++form) {
        if (suits(*form, true)) return form->model;
    }
    const auto other = rebuilt(written.model);
    const bool otherIsSure = other && isSure(*other);
    if (otherIsSure && suits(*other, true)) return other->model;
    for (auto form = firstUncertain; form != forms.end(); ++form) {
        if (suits(*form, false)) return form->model;
    }
    if (other && !otherIsSure && suits(*other, false)) return other->model;

    if (!nearest && !isNestedTooDeep(written.model)) {
        nearest = written.model;
        difference = checks.difference(written.tried, written.tried, kRandomWords);
        if (!difference) return written.model;
    }
    if (!nearest) {
        diagnostics.error(meant.place, "the groups of this content model lie more than " +
                                           std::to_string(kMostNestedGroups) +
                                           " one in another, and no flatter form was found.");
        return written.model;
    }
    diagnostics.approximate(meant.place, "the content model cannot be said in a form that the "
                                         "validator follows exactly: for one, " +
                                             *difference + ".");
    return *nearest;
}

}  // namespace netxml::xsd
