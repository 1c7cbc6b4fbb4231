#include "schema/validate/verdict.hpp"

#include <cstdint>

namespace netxml {

bool Verdict::violate(Schema_ErrorCode code, const XML_DOM_Node* node) noexcept
{
    result_.code = code;
    result_.node = node;
    return false;
}

bool Verdict::violate(const Schema_ValidateResult& violation) noexcept
{
    result_ = violation;
    return false;
}

std::uint32_t Verdict::report(Schema_ValidateResult& result) const noexcept
{
    result = failed_ ? Schema_ValidateResult{} : result_;
    return failed_ ? XML_RET_FAIL : XML_RET_OK;
}

}  // namespace netxml
