// Content along what is already known: what elements of one type have taught each other, also while
// one is still open around another, changes no verdict.
#include "tests/support/schema_kit.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

// Elements "a" to "z" and "e", all of one type, whose model may hold each of them.
class KnownContent : public testing::Test {
protected:
    void allOfOneType(std::string_view notation, std::string_view base = {})
    {
        Schema_ComplexType* type = kit.complexType(kit.model(notation));
        bind(type->content, type);
        if (!base.empty()) {
            auto* derivation = kit.make<Schema_Derivation>();
            Schema_ComplexType* first = kit.complexType(kit.model(base));
            bind(first->content, type);
            derivation->kind = SCHEMA_KIND_COMPLEX_EXTENSION;
            derivation->base = first;
            derivation->baseKind = SCHEMA_KIND_COMPLEX_TYPE;
            derivation->content = type->content;
            type->content = nullptr;
            type->derivation = derivation;
        }
        kit.add(kit.element("r", type));
    }

    SchemaKit kit;

private:
    static void bind(const Schema_ModelGroup* group, const Schema_ComplexType* type)
    {
        for (uint32_t i = 0; i < group->particleCount; ++i) {
            const Schema_Object& particle = group->particles[i];
            if (particle.kind == SCHEMA_KIND_MODEL_GROUP)
                bind(static_cast<const Schema_ModelGroup*>(particle.def), type);
            else if (particle.kind == SCHEMA_KIND_ELEMENT)
                const_cast<Schema_ElementDecl*>(
                    static_cast<const Schema_ElementDecl*>(particle.def))
                    ->type = type;
        }
    }
};

std::string empty(char name)
{
    return std::string{"<"} + name + "/>";
}

// Each time an element inside has gone two steps further than the one around it, which follows and
// then has to go its own way, from its first child on.
TEST_F(KnownContent, AnElementMayReturnToItsFirstChildAgainAndAgain)
{
    std::string model = "(";
    for (char name = 'a'; name <= 'y'; ++name) model += std::string(1, name) + "*,";
    allOfOneType(model + "z*)");
    std::string way;  // each child once, as far as the outer element has come
    std::string outer;
    for (char name = 'a'; name + 3 <= 'y'; name = static_cast<char>(name + 4)) {
        const std::string next = empty(static_cast<char>(name + 1));
        const std::string afterNext = empty(static_cast<char>(name + 2));
        way += empty(name) + next + afterNext;
        outer += empty(name) + "<" + name + ">" + way + "</" + name + ">" + next + afterNext;
    }
    EXPECT_EQ(kit.sentence("<r>" + outer + "</r>"), "valid");
    EXPECT_EQ(kit.sentence("<r>" + outer + "<z/></r>"), "valid");
    EXPECT_NE(kit.sentence("<r>" + outer + "<a/></r>"), "valid") << "behind the last one";
    EXPECT_NE(kit.sentence("<r>" + outer + outer + "</r>"), "valid");
}

// Where the content of a base ends: taught by the element inside, met by the one around it.
TEST_F(KnownContent, TheEndOfAPartMayBeKnownAlready)
{
    allOfOneType("(n?)", "(a*)");
    EXPECT_EQ(kit.sentence("<r><a><a/><n/></a><n/></r>"), "valid");
    EXPECT_EQ(kit.sentence("<r><a><a/></a><n/></r>"), "valid");
    EXPECT_NE(kit.sentence("<r><a><a/><n/></a><n/><n/></r>"), "valid");
    EXPECT_NE(kit.sentence("<r><a><a/><n/></a><n/><a/></r>"), "valid");
}

// More elements may end a part than are kept.
TEST_F(KnownContent, MoreEndsOfAPartThanAreKept)
{
    allOfOneType("(b|c|d|e|f|g|h|i|j|k|l|m|n|o|p|q|s|t|u|v|w|x|y|z)?", "(a?)");
    std::string document = "<r><a>";
    std::string end = "</a></r>";
    for (char name = 'b'; name <= 'z'; ++name) {
        if (name == 'r') continue;
        document += std::string{"<"} + name + ">";
        end = std::string{"</"} + name + ">" + end;
    }
    EXPECT_EQ(kit.sentence(document + end), "valid");
    EXPECT_NE(kit.sentence(document + "<b/><c/>" + end), "valid");
}

// More states than are kept in all: every type has a long way of its own.
TEST_F(KnownContent, MoreStatesThanAreKept)
{
    std::string outer = "(";
    std::string document = "<r>";
    for (char name = 'a'; name <= 'y'; ++name) outer += std::string(1, name) + ",";
    Schema_ModelGroup* list = kit.model(outer + "z)");
    std::string way;
    std::string children;
    for (int i = 0; i < 60; ++i) {
        const std::string name =
            std::string(1, static_cast<char>('a' + i / 26)) + static_cast<char>('a' + i % 26);
        way += (i == 0 ? "" : ",") + name;
        children += "<" + name + "/>";
    }
    for (uint32_t i = 0; i < list->particleCount; ++i) {
        const char name = static_cast<char>('a' + i);
        const_cast<Schema_ElementDecl*>(
            static_cast<const Schema_ElementDecl*>(list->particles[i].def))
            ->type = kit.complexType(kit.model("(" + way + ")"));
        document += std::string{"<"} + name + ">" + children + "</" + name + ">";
    }
    kit.add(kit.element("r", kit.complexType(list)));
    EXPECT_EQ(kit.sentence(document + "</r>"), "valid");
    const std::size_t last = document.rfind("<az/>");
    EXPECT_NE(kit.sentence(document.substr(0, last) + document.substr(last + 5) + "</r>"), "valid");
}

// Names are compared to their ends, also those that are alike for long.
TEST_F(KnownContent, LongNamesThatBeginAlike)
{
    const std::string alike(20, 'a');
    Schema_ModelGroup* list = kit.model("(e*)");
    const_cast<Schema_ElementDecl*>(static_cast<const Schema_ElementDecl*>(list->particles[0].def))
        ->type = kit.complexType(kit.model("(" + alike + "b," + alike + "c)"));
    kit.add(kit.element("r", kit.complexType(list)));
    const auto element = [&alike](const char* end) {
        return "<e><" + alike + "b/><" + alike + end + "/></e>";
    };
    const std::string known = element("c") + element("c");
    EXPECT_EQ(kit.sentence("<r>" + known + "</r>"), "valid");
    for (const char* end : {"", "b", "d", "cc"})
        EXPECT_NE(kit.sentence("<r>" + known + element(end) + "</r>"), "valid") << end;
}

}  // namespace
