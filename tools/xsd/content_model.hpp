// Content models as terms, and how they are brought into a form that the engine reads as XML Schema
// means it.
//
// The engine runs particles greedily and only estimates how often a group was repeated. On models
// that are plain, and in which the next element tells where it belongs, that makes no difference.
// Plain is:
//
// - no part of a choice has a maxOccurs above 1;
// - such a part of a sequence stands beside another part that must occur; or it is an element or
//   wildcard, and neither the sequence nor a group around that repeats by it has a maxOccurs above
//   1.
#pragma once

#include "xsd/records.hpp"

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace netxml::xsd {

inline constexpr std::uint32_t kUnbounded = SCHEMA_UNBOUNDED;
inline constexpr unsigned kMostNestedGroups = 6;  // that the engine takes

struct ContentModel {
    enum class Kind { Element, Wildcard, Sequence, Choice, All };

    Kind kind = Kind::Sequence;
    std::uint32_t min = 1;
    std::uint32_t max = 1;
    const ElementRecord* element = nullptr;    // the declaration
    const WildcardRecord* wildcard = nullptr;  // of which the bounds do not count
    std::vector<ContentModel> parts;
    SourcePlace place;

    bool isLeaf() const { return kind == Kind::Element || kind == Kind::Wildcard; }
    bool isEmpty() const { return !isLeaf() && parts.empty(); }
};

// What two leaves have in common that match the same elements; a wildcard is as strict as the
// other. Declarations of one name in a model have one type.
using LeafKey = std::tuple<ContentModel::Kind, std::string_view, std::string_view, int>;
LeafKey leafKey(const ContentModel& leaf);

ContentModel group(ContentModel::Kind kind, std::vector<ContentModel> parts, std::uint32_t min = 1,
                   std::uint32_t max = 1);

// Whether no element at all fits, too.
bool isEmptiable(const ContentModel& model);
unsigned groupDepth(const ContentModel& model);
std::size_t termCount(const ContentModel& model);
bool isPlain(const ContentModel& model);
// How many leaves the model has when its counts are written out; SIZE_MAX for more than that.
std::size_t positionCount(const ContentModel& model);
// The same for two models that differ at most in what their elements hold and where they stand.
std::string keyText(const ContentModel& model);

// Leaves out what can never occur, alternatives that another one covers, and groups that only hold
// one thing. The result is a group. The language stays.
ContentModel simplified(const ContentModel& model);

// An equal model that is plain, or nothing when this way finds none.
std::optional<ContentModel> plainForm(const ContentModel& model);

}  // namespace netxml::xsd
