#include "schema/validate/value_plan.hpp"

#include <cstring>

namespace netxml {
namespace {

bool isDigitsWithin(const char* value, DigitRange range) noexcept
{
    std::int64_t number;
    return readDigits(value, number) && number >= range.minimum && number <= range.maximum;
}

bool isAny(const ValuePlan* member, const char* value) noexcept
{
    while (member && !member->holds(value)) member = member->next;
    return member != nullptr;
}

}  // namespace

bool ValueTest::holds(const char* value, std::size_t size) const noexcept
{
    if (pattern) return pattern->matches(value) == Pattern::Answer::Yes;
    for (std::size_t i = 0; i < count; ++i) {
        if (texts[i].size == size && std::memcmp(texts[i].data, value, size) == 0) return true;
    }
    return false;
}

bool ValuePlan::holds(const char* value) const noexcept
{
    const std::size_t size = sized ? std::strlen(value) : 0;
    if (size < shortest || size > longest) return false;
    if (numeric && !isDigitsWithin(value, digits)) return false;
    if (rule && !rule(kind, value)) return false;
    if (network && Schema_checkZynBltInType(network, value, 0, nullptr) != 1) return false;
    if (members && !isAny(members, value)) return false;
    for (const ValueTest* test = tests; test; test = test->next) {
        if (!test->holds(value, size)) return false;
    }
    return true;
}

}  // namespace netxml
