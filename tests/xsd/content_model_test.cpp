// Content models and their forms for the engine: the language stays, and the engine follows it.
#include "xsd/content_model.hpp"

#include "xsd/content_choice.hpp"
#include "xsd/model_automaton.hpp"
#include "xsd/model_check.hpp"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace netxml::xsd {
namespace {

using Kind = ContentModel::Kind;

// A sanitizer makes a round many times as long.
#ifdef __SANITIZE_ADDRESS__
constexpr unsigned kShare = 5;
#else
constexpr unsigned kShare = 1;
#endif

// The elements "a" to "d".
const ElementRecord* elementOf(char name)
{
    static ElementRecord records[4];
    ElementRecord& record = records[name - 'a'];
    record.name = std::string(1, name);
    return &record;
}

// Reads "(a,(b|c){2,3}?)", with the quantifiers ?, *, + and {m,n}.
class Reader {
public:
    explicit Reader(const std::string& text) : at_{text.c_str()} {}

    ContentModel term()
    {
        ContentModel model;
        if (*at_ == '(') {
            ++at_;
            while (*at_ != ')') {
                model.parts.push_back(term());
                if (*at_ == '|') model.kind = Kind::Choice;
                if (*at_ == '|' || *at_ == ',') ++at_;
            }
        } else {
            model.kind = Kind::Element;
            model.element = elementOf(*at_);
        }
        ++at_;
        quantify(model);
        return model;
    }

private:
    void quantify(ContentModel& model)
    {
        if (*at_ == '?' || *at_ == '*') model.min = 0;
        if (*at_ == '*' || *at_ == '+') model.max = kUnbounded;
        if (*at_ == '?' || *at_ == '*' || *at_ == '+') ++at_;
        if (*at_ != '{') return;
        model.min = number();
        model.max = number();
        ++at_;
    }
    std::uint32_t number()
    {
        ++at_;
        std::uint32_t value = 0;
        for (; *at_ >= '0' && *at_ <= '9'; ++at_) value = value * 10 + std::uint32_t(*at_ - '0');
        return value;
    }

    const char* at_;
};

ContentModel model(const std::string& text)
{
    return Reader{text}.term();
}

std::string textOf(const ContentModel& m)
{
    std::string text;
    if (m.isLeaf()) text = m.element->name;
    for (const ContentModel& part : m.parts)
        text += (text.empty() ? "" : m.kind == Kind::Choice ? "|" : ",") + textOf(part);
    if (!m.isLeaf()) text = "(" + text + ")";
    if (m.min == 1 && m.max == 1) return text;
    return text + "{" + std::to_string(m.min) + "," +
           (m.max == kUnbounded ? "*" : std::to_string(m.max)) + "}";
}

bool sameLanguage(const ContentModel& a, const ContentModel& b)
{
    const auto first = automatonOf(a);
    const auto second = automatonOf(b);
    if (!first || !second) return false;
    // Both are minimal; their words tell a difference.
    for (const auto* side : {&*first, &*second}) {
        const auto* other = side == &*first ? &*second : &*first;
        for (const std::vector<int>& word : testWords(*side)) {
            std::vector<int> mapped;
            for (const int symbol : word)
                mapped.push_back(other->symbolOf(side->symbols[std::size_t(symbol)]));
            if (side->accepts(word) != other->accepts(mapped)) return false;
        }
    }
    return first->states.size() == second->states.size();
}

ContentModel formOf(const ContentModel& written, Diagnostics& diagnostics)
{
    ModelChecks checks;
    return engineForm(written, checks, diagnostics);
}

ContentModel formOf(const std::string& written, Diagnostics& diagnostics)
{
    return formOf(model(written), diagnostics);
}

struct PlainRow {
    const char* text;
    bool plain;
};

TEST(ContentModel, TellsPlainModels)
{
    const PlainRow rows[] = {
        {"(a,b?,c*)", true},         {"(a|b|c)", true},          {"(a|b)*", true},
        {"(a{1,2}|b)", false},       {"((a,a*)|b)", true},       {"(a?,b+)", true},
        {"((a,b)*)", false},         {"(a,(b,c)*)", true},       {"((b,c)*,d?)", false},
        {"(a{1,3}|b?){1,2}", false}, {"((a{2,3})){2,2}", false}, {"(a?,(b*)?)", true},
        {"(a+){1,2}", false},
    };
    for (const PlainRow& row : rows) EXPECT_EQ(isPlain(model(row.text)), row.plain) << row.text;
}

struct FormRow {
    const char* written;
    const char* form;
};

TEST(ContentModel, IsBroughtIntoTheseForms)
{
    const FormRow rows[] = {
        {"(a,b?,c*)", "(a,b{0,1},c{0,*})"},
        {"(a{1,2}|b)", "((a,a{0,1})|b)"},
        {"(a*|b)", "((a,a{0,*}){0,1}|b)"},
        {"(a*,a)", "(a,a{0,*})"},
        {"((a,b)|(a,c))", "(a,(b|c))"},
        {"((a,b)*)", "(a,b){0,*}"},
        {"((b,c)*,d?)", "(((b,c),(b,c){0,*}){0,1},d{0,1})"},
        {"(a?,b?)*", "(a{0,1},b{0,1}){0,*}"},
        {"(a?,b{0,5})*", "(a|b){0,*}"},
        {"((((((((a,b?)))))))?,c)", "((a,b{0,1}){0,1},c)"},
        {"((a+)+)", "(a{1,*})"},
        {"(a|b|a)", "(a|b)"},
        {"((a|b)|(b|c))*", "(a|b|c){0,*}"},
        {"((a|a),b)", "(a,b)"},
        {"(a|a?|b)", "(a|b){0,1}"},
        {"(a|(b?,a*)|b)", "(b{0,1},a{0,*})"},
        {"(((b|c)*,a?)|a)", "(((b|c),(b|c){0,*}){0,1},a{0,1})"},
        {"(a{1,9999}|b)", "((a,a{0,9998})|b)"},
        {"(a{0,9999},b{5,100000})", "(a{0,9999},b{5,100000})"},
        {"(a|(b,a?)|c)", "(a|(b,a{0,1})|c)"},
        {"(a|(a,b)?|(a{2,3},c?))", "(a,((a,((a,c{0,1})|c){0,1})|b){0,1}){0,1}"},
    };
    for (const FormRow& row : rows) {
        Diagnostics diagnostics{false};
        EXPECT_EQ(textOf(formOf(row.written, diagnostics)), row.form) << row.written;
        EXPECT_TRUE(diagnostics.problems().empty()) << row.written;
    }
}

// Random numbers of 32 bits.
class Draw {
public:
    explicit Draw(unsigned seed) : engine_{seed} {}
    std::uint32_t operator()() { return static_cast<std::uint32_t>(engine_()); }

private:
    std::mt19937 engine_;
};

ContentModel randomModel(Draw& random, unsigned depth)
{
    ContentModel result;
    if (depth == 0 || random() % 3 == 0) {
        result.kind = Kind::Element;
        result.element = elementOf(static_cast<char>('a' + random() % 4));
    } else {
        result.kind = random() % 2 == 0 ? Kind::Sequence : Kind::Choice;
        const unsigned count = 1 + random() % 3;
        for (unsigned i = 0; i != count; ++i)
            result.parts.push_back(randomModel(random, depth - 1));
    }
    switch (random() % 6) {
    case 0: result.min = 0; break;
    case 1: result.min = 0, result.max = kUnbounded; break;
    case 2: result.max = kUnbounded; break;
    case 3: result.min = random() % 3, result.max = result.min + 1 + random() % 2; break;
    default: break;
    }
    return result;
}

TEST(ContentModel, FormsKeepTheLanguageOfRandomModels)
{
    Draw random{1};
    unsigned plain = 0;
    unsigned rebuilt = 0;
    for (int i = 0; i != 1500 / int{kShare}; ++i) {
        const ContentModel written = group(Kind::Sequence, {randomModel(random, 3)});
        EXPECT_TRUE(sameLanguage(written, simplified(written))) << textOf(written);
        const auto form = plainForm(simplified(written));
        if (form && termCount(*form) < 100) {
            ++plain;
            EXPECT_TRUE(isPlain(*form));
            EXPECT_TRUE(sameLanguage(written, *form)) << textOf(written) << " " << textOf(*form);
        }
        const auto automaton = automatonOf(written);
        if (!automaton) continue;
        const auto other = deterministicForm(*automaton);
        if (other && termCount(*other) < 100) {
            ++rebuilt;
            EXPECT_TRUE(sameLanguage(written, *other)) << textOf(written) << " " << textOf(*other);
        }
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(plain, 700u / kShare);
    EXPECT_GT(rebuilt, 500u / kShare);
}

TEST(ContentModel, WhatWasFoundOfAModelIsRemembered)
{
    const char* texts[] = {"(a)",        "(b)",        "(a|b)",     "(a,b)",        "((a),b)",
                           "(a{1,2})",   "(a{1,3})",   "(a{0,2})",  "((a|b)*,a)",   "(a,(a|b)*)",
                           "(a{1,2}|b)", "(a|b{1,2})", "((a,b)|c)", "((a,b)|(a,c))"};
    std::set<std::string> keys;
    ModelChecks checks;
    for (const char* text : texts) {
        const ContentModel written = model(text);
        EXPECT_TRUE(keys.insert(keyText(written)).second) << text;
        for (const std::size_t count : {0u, 200u}) {
            const auto found = findDifference(written, written, count);
            EXPECT_EQ(checks.difference(written, written, count), found) << text;
            EXPECT_EQ(&checks.difference(written, written, count),
                      &checks.difference(model(text), model(text), count));
        }
    }
}

// Words of all lengths up to six: the engine says what the automaton says, unless a message told
// that it does not.
TEST(ContentModel, TheEngineFollowsTheFormOfRandomModels)
{
    Draw random{2};
    unsigned exact = 0;
    for (int i = 0; i != 60 / int{kShare}; ++i) {
        const ContentModel written = group(Kind::Sequence, {randomModel(random, 3)});
        Diagnostics diagnostics{false};
        const ContentModel form = formOf(written, diagnostics);
        if (!diagnostics.problems().empty()) continue;
        ++exact;
        const auto difference = findDifference(written, form, 500);
        EXPECT_FALSE(difference) << textOf(written) << " as " << textOf(form) << ": "
                                 << *difference;
    }
    EXPECT_GT(exact, 40u / kShare);
}

TEST(ContentModel, AModelWithoutAnExactFormIsReportedWithAnExample)
{
    // After an "a" nothing tells whether it was the last but one.
    Diagnostics diagnostics{false};
    formOf("((a|b)*,a,(a|b))", diagnostics);
    ASSERT_EQ(diagnostics.problems().size(), 1u);
    EXPECT_EQ(diagnostics.problems()[0].message.find(
                  "the content model cannot be said in a form that the validator follows exactly: "
                  "for one, \""),
              0u)
        << diagnostics.problems()[0].message;
    EXPECT_FALSE(diagnostics.failed());
    Diagnostics strict{true};
    formOf("((a|b)*,a,(a|b))", strict);
    EXPECT_TRUE(strict.failed());
}

}  // namespace
}  // namespace netxml::xsd
