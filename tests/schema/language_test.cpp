// Language codes.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/plain_values.hpp"

#include "netxml/schema.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

TEST(LanguageHandler, TakesAllCodes)
{
    GuardedSpace space;
    EXPECT_EQ(plainLanguageCodes().size(), 122u);
    for (const char* code : plainLanguageCodes())
        EXPECT_EQ(Schema_LanguageHandler(space.text(code)), 1u) << code;
}

// Every text that is one step from a code is a code itself, or refused.
TEST(LanguageHandler, RefusesNearMisses)
{
    GuardedSpace space;
    const std::set<std::string> codes(plainLanguageCodes().begin(), plainLanguageCodes().end());
    EXPECT_EQ(codes.size(), 119u) << "\"no\", \"sr\" and \"es\" stand twice";
    const auto check = [&](const std::string& text) {
        EXPECT_EQ(Schema_LanguageHandler(space.text(text)), codes.contains(text) ? 1u : 0u) << text;
    };
    for (const std::string& code : codes) {
        for (std::size_t i = 0; i <= code.size(); ++i) {
            if (i < code.size()) check(std::string{code}.erase(i, 1));
            for (const char c : std::string{"abcdefghijklmnopqrstuvwxyzAEZ-_ \xFF"}) {
                check(std::string{code}.insert(i, 1, c));
                if (i < code.size()) check(std::string{code}.replace(i, 1, 1, c));
            }
        }
    }
}

// All pairs of letters, alone and as a region.
TEST(LanguageHandler, RefusesEveryOtherPair)
{
    const std::set<std::string> codes(plainLanguageCodes().begin(), plainLanguageCodes().end());
    for (char a = 'a'; a <= 'z'; ++a) {
        for (char b = 'a'; b <= 'z'; ++b) {
            const std::string pair{a, b};
            for (const char* before : {"", "en-", "es-", "ar-", "fr-", "zh-", "i-"}) {
                const std::string text = before + pair;
                ASSERT_EQ(Schema_LanguageHandler(text.c_str()), codes.contains(text) ? 1u : 0u)
                    << text;
            }
        }
    }
}

TEST(LanguageHandler, RefusesWhatIsNoCode)
{
    for (const char* text : {"", " ", "EN", "en-US", "En", "en_us", "en-", "-us", "en-us-", " en",
                             "en ", "english", "x-none", "en\n", "zz", "ar-s", "\xC3\xA9"})
        EXPECT_EQ(Schema_LanguageHandler(text), 0u) << text;
    EXPECT_EQ(Schema_LanguageHandler(nullptr), 0u);
}

}  // namespace
