// What a validation run has found so far: at most one violation, or that it cannot go on.
#pragma once

#include "netxml/schema.h"

#include <cstdint>

namespace netxml {

// The size of the buffer into which the checks of values write their sentence.
inline constexpr std::uint32_t kDetailSize = 512;

class Verdict {
public:
    bool stopped() const noexcept { return failed_ || result_.code != SCHEMA_VALID; }

    // Records the violation; nothing may be recorded before. The fields that a code does not name
    // stay NULL. Both return false, so that a check can end with them.
    bool violate(Schema_ErrorCode code, const XML_DOM_Node* node) noexcept;
    bool violate(const Schema_ValidateResult& violation) noexcept;

    // Records that memory ran out or that the schema is broken. Returns false.
    bool fail() noexcept
    {
        failed_ = true;
        return false;
    }

    // Copies the result out and gives the status of the run.
    std::uint32_t report(Schema_ValidateResult& result) const noexcept;

private:
    Schema_ValidateResult result_{};
    bool failed_ = false;
};

}  // namespace netxml
