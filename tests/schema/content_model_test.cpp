// Content models against lists of children: each row is a rule of matching.
#include "tests/support/failing_heap.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

struct ContentCase {
    const char* why;
    const char* model;
    const char* children;  // names with a space between
    Schema_ErrorCode code;
};

// clang-format off
constexpr ContentCase kContent[] = {
    // why                                             model                  children        code
    {"a sequence as it stands",                        "(a,b)",               "a b",          0},
    {"another element where one must come",            "(a,b)",               "a c",          1},
    {"nothing where one must come",                    "(a,b)",               "a",            5},
    {"one too many is left over",                      "(a,b)",               "a b b",        6},
    {"an empty element against a sequence",            "(a)",                 "",             5},
    {"an optional sequence may be missing",            "(a,b)?",              "",             0},
    {"an optional sequence that begins must end",      "(a,b)?",              "a",            5},
    {"what does not begin an optional sequence",       "(a,b)?",              "b",            6},
    {"a sequence repeats",                             "(a,b){1,3}",          "a b a b",      0},
    {"a sequence repeats as often as it may",          "(a,b){1,2}",          "a b a b a b",  6},
    {"a repetition must be whole",                     "(a,b)*",              "a b a",        5},
    {"a sequence repeats too rarely",                  "(a,b){2,3}",          "a b",          5},
    {"optional particles may all be missing",          "(a?,b?)",             "",             0},
    {"optional particles in their order",              "(a?,b?)",             "a b",          0},
    {"a pass of optional particles is one repetition", "(a?,b?)",             "b a",          6},
    {"an optional sequence of optional particles",     "(a?,b?)*",            "b a b b a",    0},
    {"unbounded particles in a sequence",              "(a*,b+,c?)",          "a a b b b c",  0},
    {"bounds of one particle",                         "(a{2,3})",            "a a a",        0},
    {"more than the bounds of one particle",           "(a{2,3})",            "a a a a",      6},
    {"fewer than the bounds of one particle",          "(a{2,3})",            "a",            5},
    {"a particle alone repeats with its sequence",     "(a{2,2}){1,3}",       "a a a a",      0},
    {"that does not share out evenly",                 "(a{2,2}){1,3}",       "a a a",        5},
    {"a choice of the first",                          "(a|b)",               "a",            0},
    {"a choice of the second",                         "(a|b)",               "b",            0},
    {"a choice is made once",                          "(a|b)",               "a b",          6},
    {"a choice is made once, also of the same",        "(a|b)",               "a a",          6},
    {"a choice must be made",                          "(a|b)",               "",             11},
    {"a choice of something else",                     "(a|b)",               "c",            11},
    {"an optional choice",                             "(a|b)?",              "",             0},
    {"a choice with something emptiable",              "(a?|b)",              "",             0},
    {"a choice repeats",                               "(a|b){1,3}",          "b a b",        0},
    {"a choice repeats as often as it may",            "(a|b){1,3}",          "b a b a",      6},
    {"a choice repeats too rarely",                    "(a|b){2,3}",          "b",            11},
    {"an unbounded choice",                            "(a|b)*",              "b a a b a",    0},
    {"a choice in a sequence is bounded by itself",    "((a|b),c)",           "a b c",        1},
    {"a choice in a sequence",                         "((a|b),c)",           "b c",          0},
    {"a repeated choice in a sequence",                "((a|b){2,2},c)",      "a b c",        0},
    {"a repeated choice in a sequence, bounded",       "((a|b){2,2},c)",      "a b a c",      1},
    {"an optional sequence in a sequence is bounded",  "((a?,b?),c)",         "a a c",        1},
    {"a choice of sequences",                          "((a,b)|(c,d))",       "c d",          0},
    {"a choice of sequences, begun and not ended",     "((a,b)|(c,d))",       "c a",          1},
    {"a choice of choices",                            "((a|b)|(c|d))*",      "d a b c",      0},
    {"six groups one in another",                      "((((((a))))))",       "a",            0},
    {"repetitions of the inmost of six groups",        "((((((a)))))){1,2}",  "a a",          0},
    {"repetitions of the inmost of six, bounded",      "((((((a)))))){1,2}",  "a a a",        6},
    {"an all group in another order",                  "(a&b&c)",             "c a b",        0},
    {"an all group with an optional particle",         "(a&b?)",              "a",            0},
    {"an all group lacks one",                         "(a&b)",               "a",            1},
    {"an all group has one twice",                     "(a&b)",               "a b a",        5},
    {"an all group and something else",                "(a&b)",               "a b c",        6},
    {"an empty element against an all group",          "(a&b)",               "",             1},
    {"an empty element against an optional all group", "(a&b)?",              "",             0},
    {"a particle that must not occur (Kept)",          "(a{0,0},b)",          "a b",          5},
    {"a particle that must not occur does not",        "(a{0,0},b)",          "b",            0},
    {"a particle of an all group that must not occur", "(a{0,0}&b)",          "a b",          5},
    {"a group that must not occur",                    "(a,(b|c){0,0})",      "a b",          5},
    {"a group that must not occur does not",           "(a,(b|c){0,0})",      "a",            0},
    {"a choice that must not occur, but must",         "((b|c){1,0})",        "",             11},
    {"an all group that must not occur, but must",     "((b&c){1,0},a?)",     "a",            1},
    {"a lax wildcard takes anything",                  "(a,#*)",              "a x y z",      0},
    {"a wildcard is bounded",                          "(#{1,2})",            "x y z",        6},
    {"a wildcard that must match",                     "(a,#)",               "a",            8},
    {"a strict wildcard asks for a declaration",       "(a,~)",               "a x",          8},
    {"a strict wildcard finds one",                    "(a,~)",               "a t",          0},
    {"a wildcard is greedy",                           "(#*,b)",              "a b",          5},
    {"an element before its wildcard",                 "(a?,#*)",             "a a",          0},
    {"a model without particles admits nothing",       "()",                  "a",            6},
    {"a model without particles",                      "()",                  "",             0},
    {"what fewer than a whole repetition may mean leaves room for another choice (Kept)",
                                                       "(a{1,2}|b)",          "a b",          0},
    {"what a pass has taken is a repetition",          "(a?,b+)",             "b a b",        6},
    {"also where nothing must come",                   "(a?,b*)",             "b a",          6},
    {"also before the next particle runs",             "(a*,b?)",             "a b b",        6},
    {"a group shares the repetition of its pass",      "(a?,(b)?)",           "a b b",        6},
    {"an all group alone in a sequence",               "((a&b))",             "b a",          0},
    {"an all group alone in a sequence, incomplete",   "((a&b))",             "b",            1},
    {"a run that is full ends, whatever it lacks",     "(a{2,0})",            "a b",          5},
    {"beyond its bound a group in a sequence is held by the sequence's own (Kept)",
                                                       "((a?,(#?)),b){1,2}",  "a a d",        1},
    {"a whole repetition leaves none",                 "(a{1,2}|b)",          "a a b",        6},
};
// clang-format on

std::string documentOf(const char* children)
{
    std::string document = "<r>";
    for (const char* c = children; *c != '\0'; ++c) {
        if (*c != ' ') document += std::string{"<"} + *c + "/>";
    }
    return document + "</r>";
}

TEST(ContentModel, FollowsTheRules)
{
    for (const ContentCase& row : kContent) {
        SCOPED_TRACE(testing::Message() << row.why << ": " << row.model << " <- " << row.children);
        SchemaKit kit;
        kit.add(kit.element("r", kit.complexType(kit.model(row.model))));
        kit.add(kit.element("t"));
        const std::string document = documentOf(row.children);
        EXPECT_EQ(kit.validate(document).code, row.code) << kit.sentence(document);
    }
}

// A particle without an upper bound, however many it asks for.
TEST(ContentModel, ParticlesWithoutAnUpperBound)
{
    struct Case {
        const char* model;
        int count;
        Schema_ErrorCode code;
    };
    for (const Case& row :
         {Case{"(a{3,})", 2, 5}, Case{"(a{3,})", 3, 0}, Case{"(a{3,})", 50, 0},
          Case{"(a{1000,})", 999, 5}, Case{"(a{1000,})", 1001, 0}, Case{"(a{1001,})", 1000, 5},
          Case{"(a{1001,})", 1001, 0}, Case{"(a{1001,})", 1500, 0}, Case{"(a{2,}){2,2}", 1, 5},
          Case{"(a{2,}){2,2}", 4, 0}}) {
        SchemaKit kit;
        kit.add(kit.element("r", kit.complexType(kit.model(row.model))));
        std::string document = "<r>";
        for (int i = 0; i < row.count; ++i) document += "<a/>";
        EXPECT_EQ(kit.validate(document + "</r>").code, row.code)
            << row.model << " <- " << row.count;
    }
}

TEST(ContentModel, RefusesSevenGroupsOneInAnother)
{
    SchemaKit kit;
    kit.add(kit.element("r", kit.complexType(kit.model("(((((((a)))))))"))));
    EXPECT_EQ(kit.sentence("<r><a/></r>"), "failed");
}

// So many particles that what was seen of each finds room on the heap only.
TEST(ContentModel, AnAllGroupWithoutMemoryIsNoVerdict)
{
    SchemaKit kit;
    Schema_ElementDecl* a = kit.element("a");
    a->minOccurs = 0;
    const std::vector<Schema_Object> particles(50000, {a, SCHEMA_KIND_ELEMENT});
    const Schema_ModelGroup model{particles.data(), 1, 1, 50000, SCHEMA_COMPOSITOR_ALL};
    kit.add(kit.element("r", kit.complexType(&model)));
    XML_DOM_Node* tree = treeOf("<r><a/></r>");
    std::size_t failures = 0;
    for (std::size_t allowed = 0;; ++allowed) {
        const FailingHeap heap{allowed};
        Schema_ValidateResult result;
        const uint32_t status = Schema_ValidateXml(tree, &kit.root(), &result);
        EXPECT_EQ(FailingHeap::liveBlocks(), 0);
        if (status == XML_RET_OK) {
            EXPECT_EQ(result.code, SCHEMA_VALID);
            break;
        }
        ++failures;
    }
    EXPECT_GT(failures, 0u);
    XML_DOM_DelNode(tree);
}

TEST(ContentModel, RefusesWhatIsNoModel)
{
    struct Broken {
        const char* why;
        void (*breakIt)(Schema_ModelGroup&, Schema_Object&);
    };
    // clang-format off
    constexpr Broken kBroken[] = {
        {"unknown compositor", [](Schema_ModelGroup& g, Schema_Object&) { g.compositor = 14; }},
        {"compositor 0", [](Schema_ModelGroup& g, Schema_Object&) { g.compositor = 0; }},
        {"particle without a record", [](Schema_ModelGroup&, Schema_Object& p) { p.def = nullptr; }},
        {"particle of another kind", [](Schema_ModelGroup&, Schema_Object& p) { p.kind = 5; }},
        {"no particles", [](Schema_ModelGroup& g, Schema_Object&) { g.particles = nullptr; }},
        {"a group in itself",
         [](Schema_ModelGroup& g, Schema_Object& p) { p = {&g, SCHEMA_KIND_MODEL_GROUP}; }},
    };
    // clang-format on
    for (const Broken& row : kBroken) {
        SCOPED_TRACE(row.why);
        SchemaKit kit;
        Schema_ModelGroup* model = kit.model("(a,b)");
        row.breakIt(*model, const_cast<Schema_Object&>(model->particles[1]));
        kit.add(kit.element("r", kit.complexType(model)));
        uint32_t status = XML_RET_OK;
        const Schema_ValidateResult result = kit.validate("<r><a/><b/></r>", &status);
        EXPECT_EQ(status, XML_RET_FAIL);
        EXPECT_EQ(result.code, SCHEMA_VALID) << "no verdict";
        EXPECT_EQ(result.node, nullptr);
    }
}

}  // namespace
