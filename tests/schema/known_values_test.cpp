// The memory of values that were found valid.
#include "schema/validate/known_values.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace netxml;
using Key = KnownValues::Key;

TEST(KnownValues, HoldsWhatWasAddedAndNothingElse)
{
    Schema_SimpleType one{};
    Schema_SimpleType other{};
    KnownValues known;
    EXPECT_FALSE(known.holds(Key{&one, ""}));
    known.add(Key{&one, "255.255.255.0"});
    EXPECT_TRUE(known.holds(Key{&one, "255.255.255.0"}));
    EXPECT_FALSE(known.holds(Key{&other, "255.255.255.0"}));
    EXPECT_FALSE(known.holds(Key{&one, "255.255.255."}));
    EXPECT_FALSE(known.holds(Key{&one, "255.255.255.00"}));
    known.add(Key{&one, ""});
    EXPECT_TRUE(known.holds(Key{&one, ""}));
}

TEST(KnownValues, LongValuesAreNotKept)
{
    Schema_SimpleType type{};
    KnownValues known;
    for (std::size_t size = 0; size < 60; ++size) {
        const std::string value(size, 'v');
        known.add(Key{&type, value.c_str()});
        EXPECT_EQ(known.holds(Key{&type, value.c_str()}), size < 24) << size;
    }
}

// Each takes the place of another one in time; none is ever mistaken for another one.
TEST(KnownValues, ManyValuesAreNeverMistaken)
{
    Schema_SimpleType types[3]{};
    KnownValues known;
    for (int i = 0; i < 10000; ++i) {
        const Schema_SimpleType* type = &types[i % 3];
        const std::string value = "value " + std::to_string(i);
        EXPECT_FALSE(known.holds(Key{type, value.c_str()}));
        known.add(Key{type, value.c_str()});
        EXPECT_TRUE(known.holds(Key{type, value.c_str()}));
    }
}

}  // namespace
