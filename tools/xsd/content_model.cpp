#include "xsd/content_model.hpp"

#include <algorithm>
#include <cstdint>
#include <set>

namespace netxml::xsd {
namespace {

using Kind = ContentModel::Kind;

constexpr std::size_t kMostTerms = 4000;

std::uint32_t times(std::uint32_t a, std::uint32_t b)
{
    if (a == 0 || b == 0) return 0;
    if (a == kUnbounded || b == kUnbounded || a > kUnbounded / b) return kUnbounded;
    return a * b;
}

bool isEmptiableOnce(const ContentModel& model)
{
    if (model.isLeaf()) return false;
    if (model.kind == Kind::Choice)
        return model.parts.empty() ||
               std::any_of(model.parts.begin(), model.parts.end(), isEmptiable);
    return std::all_of(model.parts.begin(), model.parts.end(), isEmptiable);
}

// Whether every part but one may be absent.
bool standsAlone(const ContentModel& sequence, const ContentModel& part)
{
    return std::all_of(
        sequence.parts.begin(), sequence.parts.end(),
        [&](const ContentModel& other) { return &other == &part || isEmptiable(other); });
}

// `repeats`: a group around that repeats by this one may occur several times.
bool isPlainGroup(const ContentModel& model, bool repeats)
{
    if (model.kind == Kind::All) return true;
    repeats = repeats || model.max > 1;
    for (const ContentModel& part : model.parts) {
        const bool alone = model.kind == Kind::Choice || standsAlone(model, part);
        if (part.max > 1) {
            if (model.kind == Kind::Choice) return false;
            if (alone && (!part.isLeaf() || repeats)) return false;
        }
        if (!part.isLeaf() && !isPlainGroup(part, alone && repeats)) return false;
    }
    return true;
}

// Whether so many times {min,max} leaves no number out between the least and the most: what one
// time more begins with must join what one time less ends with.
bool leavesNoGap(std::uint32_t times, const ContentModel& inner)
{
    if (times == 0) return inner.min <= 1;
    if (inner.max == kUnbounded) return true;
    return (std::uint64_t{times} + 1) * inner.min <= std::uint64_t{times} * inner.max + 1;
}

// Whether one element that such a leaf matches fits the model, and nothing else is needed.
bool acceptsOne(const ContentModel& model, const LeafKey& leaf)
{
    if (model.max == 0 || (model.min > 1 && !isEmptiableOnce(model))) return false;
    if (model.isLeaf()) return leafKey(model) == leaf;
    const auto accepts = [&](const ContentModel& part) { return acceptsOne(part, leaf); };
    if (model.kind == Kind::Choice)
        return std::any_of(model.parts.begin(), model.parts.end(), accepts);
    return std::any_of(model.parts.begin(), model.parts.end(), [&](const ContentModel& part) {
        return accepts(part) && standsAlone(model, part);
    });
}

// Takes out the single elements of a choice that another alternative accepts, too.
void dropCoveredLeaves(ContentModel& choice)
{
    std::set<LeafKey> seen;
    std::erase_if(choice.parts, [&](const ContentModel& part) {
        return part.isLeaf() && part.min == 1 && part.max == 1 &&
               !seen.insert(leafKey(part)).second;
    });
    std::vector<ContentModel> others;
    std::copy_if(choice.parts.begin(), choice.parts.end(), std::back_inserter(others),
                 [](const ContentModel& part) { return !part.isLeaf() || part.max > 1; });
    std::erase_if(choice.parts, [&](const ContentModel& part) {
        if (!part.isLeaf() || part.min != 1 || part.max != 1) return false;
        const LeafKey key = leafKey(part);
        return std::any_of(others.begin(), others.end(),
                           [&](const ContentModel& other) { return acceptsOne(other, key); });
    });
}

// A group around one part, as one term; nothing when the two say more than one can.
std::optional<ContentModel> merged(const ContentModel& outer, const ContentModel& inner)
{
    const bool fixed = outer.min == outer.max;
    ContentModel result = inner;
    result.min = times(outer.min, inner.min);
    result.max = times(outer.max, inner.max);
    if (fixed || leavesNoGap(outer.min, inner)) return result;
    if (outer.min != 0 || (outer.max != 1 && !leavesNoGap(1, inner))) return std::nullopt;
    // None at all, or once and more.
    result.min = inner.min;
    return group(Kind::Sequence, {result}, 0, 1);
}

void appendPart(ContentModel& to, ContentModel part)
{
    const bool sameKind = part.kind == to.kind && part.kind != Kind::All && !part.isLeaf();
    if (sameKind && part.min == 1 && part.max == 1) {
        for (ContentModel& inner : part.parts) to.parts.push_back(std::move(inner));
    } else {
        to.parts.push_back(std::move(part));
    }
}

ContentModel simplifiedTerm(const ContentModel& model)
{
    if (model.isLeaf()) return model;
    ContentModel result = model;
    result.parts.clear();
    for (const ContentModel& part : model.parts) {
        if (part.max == 0) continue;
        ContentModel inner = simplifiedTerm(part);
        if (!inner.isEmpty()) {
            appendPart(result, std::move(inner));
        } else if (model.kind == Kind::Choice) {
            result.min = 0;  // nothing at all was one of the alternatives
        }
    }
    if (result.isEmpty()) return ContentModel{};
    if (result.kind == Kind::Choice) dropCoveredLeaves(result);
    if (result.kind == Kind::Sequence && isEmptiableOnce(result) && result.min == 0 &&
        result.max == 1)
        result.min = 1;
    if (result.parts.size() != 1 || result.kind == Kind::All) return result;
    if (result.min == 0 && result.max == 1 && result.parts.front().min > 1) return result;
    return merged(result, result.parts.front()).value_or(result);
}

// What repeats without a limit may lose what makes its parts absent or repeated: (a?, b*)* is
// (a | b)*. This is the star normal form of regular expressions.
ContentModel withoutInnerStars(const ContentModel& model)
{
    ContentModel result = model;
    if (model.min > 1) return result;
    result.min = result.max = 1;
    if (result.isLeaf() || result.kind == Kind::All) return result;
    if (result.kind == Kind::Sequence) {
        if (!isEmptiableOnce(result)) return result;
        result.kind = Kind::Choice;
    }
    std::vector<ContentModel> parts;
    parts.swap(result.parts);
    for (const ContentModel& part : parts) appendPart(result, withoutInnerStars(part));
    return result;
}

ContentModel starNormal(const ContentModel& model)
{
    ContentModel result = model;
    for (ContentModel& part : result.parts) part = starNormal(part);
    if (result.isLeaf() || result.max != kUnbounded || result.kind == Kind::All) return result;
    const bool emptiable = isEmptiable(result);
    if (!emptiable && result.min > 1) return result;
    ContentModel once = result;
    once.min = once.max = 1;
    const std::uint32_t min = emptiable ? 0 : result.min;
    result = withoutInnerStars(once);
    result.min = min;
    result.max = kUnbounded;
    return result;
}

// x{m,n} as (x, x{m-1,n-1}), absent as a whole where m is 0: its second part stands beside one that
// must occur.
ContentModel unrolled(const ContentModel& part)
{
    ContentModel first = part;
    first.min = first.max = 1;
    ContentModel rest = part;
    rest.min = part.min == 0 ? 0 : part.min - 1;
    rest.max = part.max == kUnbounded ? kUnbounded : part.max - 1;
    return group(Kind::Sequence, {first, rest}, part.min == 0 ? 0 : 1, 1);
}

// Unrolls the parts that keep a model from being plain.
ContentModel unrolledWhereNeeded(const ContentModel& model, bool repeats)
{
    if (model.isLeaf() || model.kind == Kind::All) return model;
    repeats = repeats || model.max > 1;
    ContentModel result = model;
    for (std::size_t i = 0; i != model.parts.size(); ++i) {
        const ContentModel& part = model.parts[i];
        ContentModel& to = result.parts[i];
        const bool choice = model.kind == Kind::Choice;
        const bool alone = choice || standsAlone(model, part);
        const bool unroll = part.max > 1 && alone && (choice || !part.isLeaf() || repeats) &&
                            !isEmptiableOnce(part);
        if (unroll) to = unrolled(part);
        to = unrolledWhereNeeded(to, alone && repeats);
        if (termCount(result) > kMostTerms) return result;
    }
    return result;
}

}  // namespace

LeafKey leafKey(const ContentModel& leaf)
{
    if (leaf.kind == Kind::Element)
        return {leaf.kind, leaf.element->name, leaf.element->nameSpace,
                static_cast<int>(leaf.element->form)};
    return {leaf.kind, leaf.wildcard->constraint, leaf.wildcard->targetNamespace,
            static_cast<int>(leaf.wildcard->processContents)};
}

ContentModel group(Kind kind, std::vector<ContentModel> parts, std::uint32_t min, std::uint32_t max)
{
    ContentModel result;
    result.kind = kind;
    result.min = min;
    result.max = max;
    result.parts = std::move(parts);
    return result;
}

bool isEmptiable(const ContentModel& model)
{
    return model.min == 0 || isEmptiableOnce(model);
}

unsigned groupDepth(const ContentModel& model)
{
    if (model.isLeaf()) return 0;
    unsigned deepest = 0;
    for (const ContentModel& part : model.parts) deepest = std::max(deepest, groupDepth(part));
    return deepest + 1;
}

std::size_t termCount(const ContentModel& model)
{
    std::size_t count = 1;
    for (const ContentModel& part : model.parts) count += termCount(part);
    return count;
}

std::size_t positionCount(const ContentModel& model)
{
    const std::size_t copies = model.max == kUnbounded ? std::max(model.min, 1u) : model.max;
    std::size_t count = model.isLeaf() ? 1 : 0;
    for (const ContentModel& part : model.parts) {
        const std::size_t more = positionCount(part);
        count = more > SIZE_MAX - count ? SIZE_MAX : count + more;
    }
    return copies != 0 && count > SIZE_MAX / copies ? SIZE_MAX : count * copies;
}

bool isPlain(const ContentModel& model)
{
    return isPlainGroup(model, false);
}

std::string keyText(const ContentModel& model)
{
    std::string text = std::to_string(static_cast<int>(model.kind));
    if (model.isLeaf()) {
        const auto [kind, name, nameSpace, how] = leafKey(model);
        text += " " + std::to_string(name.size()) + ":" + std::string{name};
        text += " " + std::to_string(nameSpace.size()) + ":" + std::string{nameSpace};
        text += " " + std::to_string(how);
    }
    for (const ContentModel& part : model.parts) text += "(" + keyText(part);
    return text + "{" + std::to_string(model.min) + "," + std::to_string(model.max) + "}";
}

ContentModel simplified(const ContentModel& model)
{
    ContentModel result = simplifiedTerm(model);
    if (result.isLeaf()) return group(Kind::Sequence, {result});
    return result;
}

std::optional<ContentModel> plainForm(const ContentModel& model)
{
    ContentModel result = simplified(starNormal(model));
    result = unrolledWhereNeeded(result, false);
    if (termCount(result) > kMostTerms) return std::nullopt;
    if (!isPlain(result) || groupDepth(result) > kMostNestedGroups) return std::nullopt;
    return result;
}

}  // namespace netxml::xsd
