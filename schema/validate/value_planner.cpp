// Making the plans of types.
#include "schema/validate/value_plan.hpp"

#include "support/text.hpp"

#include <algorithm>
#include <cstring>

namespace netxml {
namespace {

// A list of facets that may not be there.
struct Facets {
    const Schema_Facet* first;
    std::uint32_t count;

    const Schema_Facet* begin() const noexcept { return first; }
    const Schema_Facet* end() const noexcept { return first + count; }
};

class Planner {
public:
    Planner(ChunkStack& kept, PatternCache& patterns) noexcept : kept_{kept}, patterns_{patterns} {}

    // nullptr when the type has something that no plan can say, or memory runs out.
    ValuePlan* make(const Schema_SimpleType& type) noexcept { return make(type, true); }

private:
    static constexpr unsigned kMostLevels = 16;
    // Members, tests and the texts of enumerations altogether: what many share they must not each
    // have a copy of.
    static constexpr std::size_t kMostRecords = 1024;

    // Calls itself through addMembers(), once: the members of a union that is a member have no
    // plan.
    ValuePlan* make(const Schema_SimpleType& type, bool unions) noexcept
    {
        auto* plan = record<ValuePlan>();
        if (!plan) return nullptr;
        *plan = ValuePlan{};
        plan->longest = SIZE_MAX;
        plan->digits = DigitRange{0, INT64_MAX};
        return fill(*plan, type, unions) ? plan : nullptr;
    }

    // Goes to the bases with the facets of each type.
    bool fill(ValuePlan& plan, const Schema_SimpleType& type, bool unions) noexcept
    {
        const Schema_SimpleType* t = &type;
        for (unsigned level = 0; t && level < kMostLevels; ++level, t = t->members[0]) {
            if (t->memberCount > 1) return unions && addMembers(plan, *t);
            if (t->kind != SCHEMA_BUILTIN_NONE) return addKind(plan, t->kind);
            plan.network = Schema_FoundZynBltInType(t->name, t->namespaceName);
            if (plan.network) return true;
            if (!t->members || !addFacets(plan, *t)) return false;
        }
        return false;
    }

    static bool addKind(ValuePlan& plan, Schema_BuiltinKind kind) noexcept
    {
        plan.kind = kind;
        if (kind == SCHEMA_BUILTIN_STRING || kind == SCHEMA_BUILTIN_ANY_SIMPLE_TYPE) return true;
        if (isIntegerKind(kind)) {
            const DigitRange range = digitRange(kind);
            between(plan, range.minimum, range.maximum);
            return true;
        }
        plan.sized = true;
        plan.shortest = std::max<std::size_t>(plan.shortest, 1);
        const BuiltinType* row = builtinType(kind);
        plan.rule = row ? row->rule : nullptr;
        return plan.rule != nullptr;
    }

    bool addMembers(ValuePlan& plan, const Schema_SimpleType& type) noexcept
    {
        if (!type.members) return false;
        for (std::uint32_t i = type.memberCount; i-- > 0;) {
            ValuePlan* member = type.members[i] ? make(*type.members[i], false) : nullptr;
            if (!member) return false;
            member->next = plan.members;
            plan.members = member;
        }
        return true;
    }

    bool addFacets(ValuePlan& plan, const Schema_SimpleType& type) noexcept
    {
        if (type.facetCount != 0 && !type.facets) return false;
        const Facets facets{type.facets, type.facetCount};
        std::size_t enumerated = 0;
        for (const Schema_Facet& facet : facets) {
            if (facet.kind == SCHEMA_FACET_ENUMERATION) ++enumerated;
            if (!addFacet(plan, facet)) return false;
        }
        return enumerated == 0 || addEnumeration(plan, facets, enumerated);
    }

    bool addFacet(ValuePlan& plan, const Schema_Facet& facet) noexcept
    {
        switch (facet.kind) {
        case SCHEMA_FACET_LENGTH:
        case SCHEMA_FACET_MIN_LENGTH:
        case SCHEMA_FACET_MAX_LENGTH: return addLength(plan, facet);
        case SCHEMA_FACET_MIN_INCLUSIVE:
        case SCHEMA_FACET_MIN_EXCLUSIVE:
        case SCHEMA_FACET_MAX_INCLUSIVE:
        case SCHEMA_FACET_MAX_EXCLUSIVE: return addBound(plan, facet);
        case SCHEMA_FACET_PATTERN: return addPattern(plan, orEmpty(facet.value));
        case SCHEMA_FACET_TOTAL_DIGITS: return false;
        case SCHEMA_FACET_ENUMERATION: return facet.baseKind != SCHEMA_BUILTIN_DURATION;
        default: return true;  // always satisfied
        }
    }

    static bool addLength(ValuePlan& plan, const Schema_Facet& facet) noexcept
    {
        std::int64_t length;
        if (!readDigits(orEmpty(facet.value), length)) return false;
        const auto bytes = static_cast<std::uint64_t>(length);
        if (bytes > SIZE_MAX) return false;
        const auto size = static_cast<std::size_t>(bytes);
        plan.sized = true;
        if (facet.kind != SCHEMA_FACET_MAX_LENGTH) plan.shortest = std::max(plan.shortest, size);
        if (facet.kind != SCHEMA_FACET_MIN_LENGTH) plan.longest = std::min(plan.longest, size);
        return true;
    }

    static bool addBound(ValuePlan& plan, const Schema_Facet& facet) noexcept
    {
        std::int64_t bound;
        if (!isIntegerKind(facet.baseKind) || !readDigits(orEmpty(facet.value), bound))
            return false;
        switch (facet.kind) {
        case SCHEMA_FACET_MIN_INCLUSIVE: between(plan, bound, INT64_MAX); break;
        case SCHEMA_FACET_MIN_EXCLUSIVE: between(plan, bound + 1, INT64_MAX); break;
        case SCHEMA_FACET_MAX_INCLUSIVE: between(plan, 0, bound); break;
        default: between(plan, 0, bound - 1); break;
        }
        return true;
    }

    static void between(ValuePlan& plan, std::int64_t minimum, std::int64_t maximum) noexcept
    {
        plan.numeric = true;
        plan.digits.minimum = std::max(plan.digits.minimum, minimum);
        plan.digits.maximum = std::min(plan.digits.maximum, maximum);
    }

    bool addPattern(ValuePlan& plan, const char* text) noexcept
    {
        auto* test = record<ValueTest>();
        Pattern* pattern = patterns_.find(text);
        if (!test || !pattern) return false;
        *test = ValueTest{plan.tests, pattern, nullptr, 0};
        plan.tests = test;
        return true;
    }

    // Texts that are the same are the same number, too.
    bool addEnumeration(ValuePlan& plan, Facets facets, std::size_t count) noexcept
    {
        auto* test = record<ValueTest>();
        auto* texts = record<ValueTest::Text>(count);
        if (!test || !texts) return false;
        *test = ValueTest{plan.tests, nullptr, texts, count};
        plan.tests = test;
        plan.sized = true;
        for (const Schema_Facet& facet : facets) {
            if (facet.kind != SCHEMA_FACET_ENUMERATION) continue;
            const char* text = orEmpty(facet.value);
            *texts++ = {text, std::strlen(text)};
        }
        return true;
    }

    template <class Record>
    Record* record(std::size_t count = 1) noexcept
    {
        if (count > kMostRecords - records_) return nullptr;
        records_ += count;
        return static_cast<Record*>(kept_.allocate(count * sizeof(Record)));
    }

    ChunkStack& kept_;
    PatternCache& patterns_;
    std::size_t records_ = 0;
};

}  // namespace

// That there is no plan is kept, too.
const ValuePlan* ValuePlans::add(const Schema_SimpleType& type) noexcept
{
    const ChunkStack::Mark mark = kept_.mark();
    const ValuePlan* made = Planner{kept_, patterns_}.make(type);
    const ValuePlan** place = plans_.add(&type);
    if (made && place) {
        *place = made;
        return made;
    }
    kept_.release(mark);
    return nullptr;
}

}  // namespace netxml
