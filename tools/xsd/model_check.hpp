// Is what the engine makes of a content model what XML Schema means by it?
#pragma once

#include "xsd/content_model.hpp"
#include "xsd/model_automaton.hpp"
#include "xsd/records.hpp"

#include <map>
#include <optional>
#include <string>

namespace netxml::xsd {

// What is said of a model whose automaton is too large, so that nothing is known of it.
inline constexpr const char* kTooLarge = "it is too large to be compared";
// How many random documents tell whether an uncertain form will do.
inline constexpr std::size_t kRandomWords = 20000;

// Validates short documents by `model` with the engine, and compares the verdicts with those of the
// automaton of `meant`. Returns children on which they differ, as in: "a a b" is accepted; or
// nothing. With `randomCount` so many random documents are tried besides; without, only a few
// altogether.
std::optional<std::string> findDifference(const ContentModel& meant, const ContentModel& model,
                                          std::size_t randomCount = 0);

// The same, and remembers what was found: a large schema says the same model in many types.
class ModelChecks {
public:
    const std::optional<std::string>&
    difference(const ContentModel& meant, const ContentModel& model, std::size_t randomCount);

private:
    std::map<std::string, std::optional<std::string>> known_;
};

}  // namespace netxml::xsd
