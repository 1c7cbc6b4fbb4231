// Is what the engine makes of a content model what XML Schema means by it?
#pragma once

#include "xsd/content_model.hpp"
#include "xsd/model_automaton.hpp"
#include "xsd/records.hpp"

#include <optional>
#include <string>

namespace netxml::xsd {

// Validates short documents by `model` with the engine, and compares the verdicts with those of the
// automaton of `meant`. Returns a document's children on which they differ, as in: "a a b" is
// accepted", or nothing. A model whose automaton is too large differs, for all that is known. Large
// counts are made small in both. Besides, so many random documents are tried.
inline constexpr const char* kTooLarge = "it is too large to be compared";
inline constexpr std::size_t kRandomWords = 20000;
std::optional<std::string> findDifference(const ContentModel& meant, const ContentModel& model,
                                          std::size_t randomCount = 0);

}  // namespace netxml::xsd
