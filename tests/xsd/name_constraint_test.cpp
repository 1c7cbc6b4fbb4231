// Wildcards combined: compared with what each admits.
#include "xsd/name_constraint.hpp"

#include <gtest/gtest.h>

namespace netxml::xsd {
namespace {

using ConstraintKind = NamespaceConstraint::Kind;

bool admits(const NamespaceConstraint& constraint, const std::string& nameSpace)
{
    if (constraint.kind == ConstraintKind::Any) return true;
    if (constraint.kind == ConstraintKind::Not)
        return !nameSpace.empty() && nameSpace != constraint.excluded;
    return constraint.listed.contains(nameSpace);
}

const char* const kWritten[] = {
    "##any", "##other",     "##local",       "##targetNamespace",
    "urn:a", "urn:a urn:b", "##local urn:a", "##targetNamespace ##local",
    ""};
const char* const kNames[] = {"", "urn:t", "urn:a", "urn:b", "urn:c"};

TEST(NameConstraint, IntersectionAdmitsWhatBothAdmit)
{
    for (const char* first : kWritten) {
        for (const char* second : kWritten) {
            const auto a = readConstraint(first, "urn:t");
            const auto b = readConstraint(second, "urn:t");
            const auto both = intersection(a, b);
            for (const char* name : kNames)
                EXPECT_EQ(admits(both, name), admits(a, name) && admits(b, name))
                    << first << " and " << second << ": " << name;
        }
    }
}

// What no constraint can say exactly is said by the nearest that admits more.
TEST(NameConstraint, UnionAdmitsWhatOneAdmits)
{
    for (const char* first : kWritten) {
        for (const char* second : kWritten) {
            const auto a = readConstraint(first, "urn:t");
            const auto b = readConstraint(second, "urn:t");
            const auto either = unionOf(a, b);
            for (const char* name : kNames) {
                const bool one = admits(a, name) || admits(b, name);
                EXPECT_TRUE(!one || admits(either, name))
                    << first << " or " << second << ": " << name;
            }
        }
    }
}

TEST(NameConstraint, TextsSayTheSame)
{
    EXPECT_EQ(constraintTexts(readConstraint("##any", "urn:t")).front().constraint, "##any");
    const auto other = constraintTexts(readConstraint("##other", "urn:t"));
    EXPECT_EQ(other.front().constraint, "##other");
    EXPECT_EQ(other.front().targetNamespace, "urn:t");
    const auto listed =
        constraintTexts(readConstraint("urn:b ##local  ##targetNamespace", "urn:t"));
    ASSERT_EQ(listed.size(), 2u);
    EXPECT_EQ(listed[0].constraint, "urn:b urn:t");
    EXPECT_EQ(listed[1].constraint, "");
}

}  // namespace
}  // namespace netxml::xsd
