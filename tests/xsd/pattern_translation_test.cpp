// Expressions of XML Schema as POSIX ones: texts, mistakes, and what they match.
#include "xsd/pattern_translation.hpp"

#include "netxml/schema.h"
#include "recode.hpp"
#include "xsd/posix_class.hpp"

#include <gtest/gtest.h>
#include <random>

namespace netxml::xsd {
namespace {

std::string inTree(const std::string& utf8)
{
    return tool::recode(utf8, XML_ENCODING_UTF_8, XML_ENCODING_GB18030).value_or("?");
}

bool matches(const std::string& pattern, const std::string& utf8)
{
    const TranslatedPattern translated = translatePattern(pattern);
    EXPECT_EQ(translated.mistake, "") << pattern;
    return XML_IsMatchRegex(anchored(translated.expression).c_str(), inTree(utf8).c_str()) == 1;
}

struct TextRow {
    const char* pattern;
    const char* expression;  // anchored
};

TEST(PatternTranslation, WritesThese)
{
    const TextRow rows[] = {
        {"[a-z]+", "^[a-z]+$"},
        {"a|b", "^(a|b)$"},
        {"(a|b)c", "^(a|b)c$"},
        {"a|", "^(a)?$"},
        {"", "^$"},
        {"\\d{1,3}", "^[0-9]{1,3}$"},
        {"\\d{3}", "^[0-9]{3}$"},
        {"\\d{2,}", "^[0-9]{2,}$"},
        {"x{0}y", "^y$"},
        {"^a$", "^\\^a\\$$"},
        {"\\.\\*", "^\\.\\*$"},
        {"[\\]^-]", "^[]^-]$"},
        {"[\\^\\-]", "^[-^]$"},
        {"[\\[.]", "^[.[]$"},
        {"[a-z-[aeiou]]", "^[b-df-hj-np-tv-z]$"},
        {"[^\\n\\r]*", "^[^\n\r]*$"},
        {".*", "^[^\n\r]*$"},
        {"[^,]+x", "^[^,]+x$"},
        {"[\\s]", "^[\t\n\r ]$"},
        {"(((a)))", "^(((a)))$"},
    };
    for (const TextRow& row : rows) {
        const TranslatedPattern pattern = translatePattern(row.pattern);
        EXPECT_EQ(pattern.mistake, "") << row.pattern;
        EXPECT_EQ(pattern.difference, "") << row.pattern;
        EXPECT_EQ(anchored(pattern.expression), row.expression) << row.pattern;
    }
}

struct MistakeRow {
    const char* pattern;
    const char* mistake;
};

TEST(PatternTranslation, SaysWhatItCannotRead)
{
    const MistakeRow rows[] = {
        {"(a", "a \"(\" without its \")\", at character 3"},
        {"a)", "a \")\" without its \"(\", at character 2"},
        {"[a", "a \"[\" without its \"]\", at character 3"},
        {"*a", "a \"*\" that stands for nothing, at character 1"},
        {"a++", "a \"+\" that stands for nothing, at character 3"},
        {"a{2", "expected \"}\", at character 4"},
        {"a{x}", "expected a number, at character 3"},
        {"a{3,2}", "a count that ends below its begin, at character 7"},
        {"a{999}", "a count above 255, at character 7"},
        {"(([a-z]{200}){200})", "its counts come to too large an expression, at character 19"},
        {"\\q", "the escape \"\\q\", which there is not, at character 3"},
        {"a\\", "a backslash at the end, at character 3"},
        {"\\p{Q}", "the property \"Q\", which there is not, at character 6"},
        {"[z-a]", "a range that ends below its begin, at character 5"},
    };
    for (const MistakeRow& row : rows)
        EXPECT_EQ(translatePattern(row.pattern).mistake, row.mistake) << row.pattern;
}

struct MatchRow {
    const char* pattern;
    const char* text;
    bool match;
};

TEST(PatternTranslation, MatchesBeyondAsciiByCharacters)
{
    const MatchRow rows[] = {
        {".", "路", true},           {".", "路由", false},      {"..", "路由", true},
        {".{3}", "a路b", true},      {"[^a]", "路", true},      {"[^a]", "𠀀", true},
        {".", "𠀀", true},           {"..", "𠀀", false},       {"[^路]", "由", true},
        {"路+", "路路", true},       {"路+", "路由", false},    {"[路由]", "由", true},
        {"[路由]", "器", false},     {"[a路]{2}", "路a", true}, {"[^|]", "|", false},
        {"[^|]*", "丂|", false},     {"[^|]*", "丂丂", true},   {"\\i\\c*", "名-1", true},
        {"\\i\\c*", "1a", false},    {"\\p{L}+", "路x", true},  {"\\p{Nd}", "5", true},
        {"\\P{L}", "x", false},      {"\\S+", "路", true},      {"\\D", "路", true},
        {"[\\p{L}-]+", "a-b", true}, {"a.c", "a\nc", false},    {"\\w", "$", true},
        {"\\w", "-", false},
    };
    for (const MatchRow& row : rows)
        EXPECT_EQ(matches(row.pattern, row.text), row.match) << row.pattern << " " << row.text;
}

TEST(PatternTranslation, TellsWhereItAdmitsMore)
{
    EXPECT_NE(translatePattern("\\w").difference, "");
    EXPECT_NE(translatePattern("\\p{Lu}").difference, "");
    EXPECT_NE(translatePattern("[\\i]").difference, "");
    EXPECT_EQ(translatePattern("[A-Za-z0-9_.-]+").difference, "");
    EXPECT_TRUE(translatePattern("[A-Za-z]").ascii);
    EXPECT_FALSE(translatePattern("[^A-Za-z]").ascii);
    EXPECT_FALSE(translatePattern(".*").ascii);
}

// Every set of a few characters that are special somewhere, as a bracket.
TEST(PatternTranslation, BracketsMatchTheirCharactersOnly)
{
    const std::string special = "]-^[\\.*ab:=";
    for (unsigned set = 1; set != 1u << special.size(); ++set) {
        CodeSet codes;
        for (std::size_t i = 0; i != special.size(); ++i) {
            if ((set >> i & 1) != 0) codes.add(CodeSet::of(special.substr(i, 1)));
        }
        const std::string expression = "^" + posixClass(codes).text + "$";
        for (std::size_t i = 0; i != special.size(); ++i) {
            ASSERT_EQ(XML_IsMatchRegex(expression.c_str(), special.substr(i, 1).c_str()),
                      set >> i & 1)
                << expression << " " << special[i];
        }
        ASSERT_EQ(XML_IsMatchRegex(expression.c_str(), "_"), 0u) << expression;
    }
}

}  // namespace
}  // namespace netxml::xsd
