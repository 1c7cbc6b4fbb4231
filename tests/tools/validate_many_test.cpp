// netxml validate goes on: all that is wrong with a document is reported, each mistake once.
#include "many_mistakes.hpp"
#include "tool_process.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <sstream>

namespace netxml::testing {
namespace {

// The violations of the text format, in the form of the table.
std::string violationsIn(const std::string& errors)
{
    constexpr std::string_view kError = ": error: ";
    constexpr std::string_view kNumber = ", violation ";
    std::string found;
    for (std::size_t at = 0; (at = errors.find(" [2006]\n  at ", at)) != std::string::npos; ++at) {
        const std::size_t begin = errors.rfind('\n', at) + 1;
        const std::size_t place = errors.find(':', begin) + 1;
        const std::size_t error = errors.find(kError, place);
        const std::size_t sentence = error + kError.size();
        const std::size_t number = errors.find(kNumber, at) + kNumber.size();
        found += errors.substr(place, error - place) + " " +
                 errors.substr(number, errors.find('\n', number) - number) + " " +
                 errors.substr(sentence, at - sentence) + "\n";
    }
    return found;
}

TEST(ValidateMany, EveryMistakeIsReportedOnce)
{
    for (const ManyMistakes& c : kManyMistakes) {
        const Ran ran = runValidate({"--max-errors=0", "-"}, {.input = c.text});
        EXPECT_EQ(ran.status, 3) << c.why;
        EXPECT_EQ(ran.out, "") << c.why;
        EXPECT_EQ(violationsIn(ran.err), c.found) << c.why;
    }
}

TEST(ValidateMany, TheTableHasEveryViolationInManyDocuments)
{
    std::set<std::string> met;
    for (const ManyMistakes& c : kManyMistakes) {
        std::istringstream lines{c.found};
        for (std::string line; std::getline(lines, line);) {
            const std::size_t code = line.find(' ') + 1;
            met.insert(line.substr(code, line.find(' ', code) - code));
        }
    }
    EXPECT_EQ(met.size(), 12u);
    EXPECT_GE(std::size(kManyMistakes), 25u);
}

// A document whose VLANs, each on a line of its own, all have a wrong number.
std::string wrongVlans(unsigned count, const char* separator = "\n")
{
    std::string text = std::string{NETWORK DEVICE "<vlans>"} + separator;
    for (unsigned i = 0; i < count; ++i)
        text += std::string{"<vlan id='0'><name>v</name></vlan>"} + separator;
    return text + "</vlans>" END;
}

std::string wrongVlan(unsigned number, const std::string& place)
{
    return place + " 4 The value of attribute '':'id' for element '/network/vlans[1]/vlan[" +
           std::to_string(number) + "]' is invalid. The value must be greater than 0.\n";
}

TEST(ValidateMany, TwentyThousandWrongSiblings)
{
    constexpr unsigned kCount = 20000;
    std::string expected;
    for (unsigned i = 1; i <= kCount; ++i) expected += wrongVlan(i, std::to_string(i + 1) + ":1");
    const Ran ran =
        runValidate({"--max-errors=0", "--error-format=text", "-"}, {.input = wrongVlans(kCount)});
    EXPECT_EQ(ran.status, 3);
    const std::string found = violationsIn(ran.err);
    EXPECT_TRUE(found == expected) << found.substr(0, 1000);
}

// Between wrong ones lie long rows of right ones: they are validated one by one and in one go.
TEST(ValidateMany, FewWrongOnesAmongManySiblings)
{
    for (const unsigned between : {1u, 2u, 10u, 100u, 999u, 2500u}) {
        std::string text = NETWORK DEVICE "<vlans>\n";
        std::string expected;
        for (unsigned i = 1; i <= 5000; ++i) {
            const bool wrong = i % between == 0;
            text += std::string{"<vlan id='"} + (wrong ? "0" : "1") + "'><name>v</name></vlan>\n";
            if (wrong) expected += wrongVlan(i, std::to_string(i + 1) + ":1");
            if (i == 4000) {
                text += "<van/>";
                expected += "4002:1 6 Unexpected element 'urn:example:network':'van' under "
                            "element '/network/vlans[1]\n";
            }
        }
        // The one behind the unknown one stands further right.
        if (4001 % between == 0) expected.replace(expected.find("4002:1 4"), 8, "4002:7 4");
        text += "</vlans><zone/>" END;
        expected += "5002:9 6 Unexpected element 'urn:example:network':'zone' under element "
                    "'/network\n";
        const Ran ran = runValidate({"--max-errors=0", "-"}, {.input = text});
        EXPECT_TRUE(violationsIn(ran.err) == expected) << between << "\n"
                                                       << ran.err.substr(0, 2000);
    }
}

TEST(ValidateMany, ManyOnOneLongLine)
{
    const std::string text = wrongVlans(3000, "");
    const Ran ran = runValidate({"--max-errors=0", "-"}, {.input = text});
    std::size_t found = 0;
    std::size_t column = std::string{NETWORK DEVICE "<vlans>"}.size() + 1;
    for (std::size_t at = 0; (at = ran.err.find("<stdin>:1:", at)) != std::string::npos; ++at) {
        EXPECT_EQ(std::stoul(ran.err.substr(at + 10)), column);
        column += std::string{"<vlan id='0'><name>v</name></vlan>"}.size();
        ++found;
    }
    EXPECT_EQ(found, 3000u);
    // The last one: the line is cut in front of it, and the caret stands below its tag.
    const std::size_t last = ran.err.rfind("\n...");
    ASSERT_NE(last, std::string::npos);
    const std::size_t end = ran.err.find('\n', last + 1);
    const std::string line = ran.err.substr(last + 1, end - last - 1);
    const std::string caret = ran.err.substr(end + 1, ran.err.find('\n', end + 1) - end - 1);
    ASSERT_FALSE(caret.empty());
    EXPECT_EQ(line.substr(caret.size() - 1, 6), "<vlan ") << line << "\n" << caret;
}

TEST(ValidateMany, DeepElementsDoNotRecur)
{
    std::string text = NETWORK DEVICE "<note>";
    std::string ends;
    constexpr unsigned kDepth = 3000;
    for (unsigned i = 0; i < kDepth; ++i) {
        text += "\n<emphasis bad=''>";
        ends += "<bad/></emphasis>";
    }
    const Ran ran = runValidate({"--max-errors=0", "-"}, {.input = text + ends + "</note>" END});
    unsigned attributes = 0;
    unsigned elements = 0;
    for (std::size_t at = 0; (at = ran.err.find(", violation ", at)) != std::string::npos; ++at) {
        attributes += ran.err.compare(at, 14, ", violation 7\n") == 0;
        elements += ran.err.compare(at, 14, ", violation 6\n") == 0;
    }
    EXPECT_EQ(attributes, kDepth);
    EXPECT_EQ(elements, kDepth);
}

// Far below the declaration of a namespace, with a prefix and without one.
TEST(ValidateMany, DeepElementsKeepTheirNamespaces)
{
    std::string text =
        "<n:network xmlns:n='urn:example:network' version='1.2'><n:device><n:hostname>a"
        "</n:hostname><n:model/></n:device><n:note>";
    std::string ends;
    for (unsigned i = 0; i < 300; ++i) {
        text += "<n:emphasis>";
        ends += "<n:code/><code/></n:emphasis>";
    }
    const Ran ran = runValidate({"--max-errors=0", "-"}, {.input = text + "\n<n:see>x</n:see>" +
                                                                   ends + "</n:note></n:network>"});
    const std::string found = violationsIn(ran.err);
    EXPECT_EQ(found.find("2:1 3 The value of element '/network/note[1]/emphasis[1]/"), 0u) << found;
    std::size_t unexpected = 0;
    for (std::size_t at = 0;
         (at = found.find(" 6 Unexpected element '':'code' ", at)) != std::string::npos; ++at)
        ++unexpected;
    EXPECT_EQ(unexpected, 300u);
    EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), 301);
}

std::string countOf(const std::string& errors)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = errors.find(" error: ", at)) != std::string::npos; ++at) ++count;
    return std::to_string(count);
}

constexpr const char* kMore = "<stdin>: warning: there are more violations; --max-errors is ";

struct LimitCase {
    const char* why;
    unsigned wrong;
    std::vector<std::string> options;
    const char* reported;
    const char* limit;  // what the last line says; empty for no such line
};

const LimitCase kLimits[] = {
    {"twenty is the default", 25, {}, "20", "20"},
    {"as many as the limit", 20, {}, "20", ""},
    {"one", 25, {"--max-errors=1"}, "1", "1"},
    {"one of one", 1, {"--max-errors", "1"}, "1", ""},
    {"another number", 25, {"--max-errors", "24"}, "24", "24"},
    {"all of them", 25, {"--max-errors", "25"}, "25", ""},
    {"no limit", 25, {"--max-errors=0"}, "25", ""},
};

TEST(ValidateMany, ALimitEndsTheRunAndSaysSo)
{
    for (const LimitCase& c : kLimits) {
        std::vector<std::string> arguments = c.options;
        arguments.push_back("-");
        const Ran ran = runValidate(arguments, {.input = wrongVlans(c.wrong)});
        EXPECT_EQ(ran.status, 3) << c.why;
        EXPECT_EQ(countOf(ran.err), c.reported) << c.why;
        const std::size_t more = ran.err.find(kMore);
        const std::string last = *c.limit ? std::string{kMore} + c.limit + ". [2007]\n" : "";
        EXPECT_EQ(more == std::string::npos ? "" : ran.err.substr(more), last) << c.why;
    }
}

TEST(ValidateMany, WithALimitOfOneItIsTheFirstViolationThatTheLibraryFinds)
{
    const char* document = "<network xmlns='urn:example:network'>" DEVICE "<clok/>" END;
    EXPECT_EQ(violationsIn(runValidate({"--max-errors=1", "-"}, {.input = document}).err),
              "1:93 6 Unexpected element 'urn:example:network':'clok' under element '/network\n");
    EXPECT_EQ(violationsIn(runValidate({"-"}, {.input = document}).err),
              "1:1 2 The element '/network' should have an attribute "
              "'urn:example:network':'version'.\n"
              "1:93 6 Unexpected element 'urn:example:network':'clok' under element '/network\n");
}

TEST(ValidateMany, ALimitThatIsNoNumberIsAMistake)
{
    for (const char* limit : {"-1", "x", "", "1.5", "4294967296"}) {
        const Ran ran = runValidate({std::string{"--max-errors="} + limit, "a.xml"});
        EXPECT_EQ(ran.status, 2) << limit;
        EXPECT_EQ(ran.err.find("netxml: --max-errors: "), 0u) << ran.err;
    }
}

TEST(ValidateMany, TheLimitIsARecordOfItsOwnInJson)
{
    const Ran ran =
        runValidate({"--error-format=json", "--max-errors=2", "-"}, {.input = wrongVlans(3)});
    const std::string vlan =
        ",\"column\":1,\"severity\":\"error\",\"message\":\"The value of attribute '':'id' for "
        "element '/network/vlans[1]/vlan[";
    const std::string rest = "]' is invalid. The value must be greater than 0.\",\"code\":2006,"
                             "\"violation\":4,\"path\":\"/network/vlans[1]/vlan[";
    EXPECT_EQ(ran.err, "{\"file\":\"<stdin>\",\"line\":2" + vlan + "1" + rest + "1]\"}\n" +
                           "{\"file\":\"<stdin>\",\"line\":3" + vlan + "2" + rest + "2]\"}\n" +
                           "{\"file\":\"<stdin>\",\"line\":0,\"column\":0,\"severity\":\"warning\","
                           "\"message\":\"there are more violations; --max-errors is 2.\","
                           "\"code\":2007}\n");
    EXPECT_EQ(ran.status, 3);
}

TEST(ValidateMany, TheLimitIsOfEachFileAndJobsChangeNothing)
{
    const TempDir dir;
    std::vector<std::string> arguments{"--max-errors=7", "-q"};
    for (unsigned i = 0; i < 40; ++i) {
        const std::string name = std::to_string(i) + ".xml";
        writeText(dir / name,
                  i < std::size(kManyMistakes) ? kManyMistakes[i].text : wrongVlans(i * 100));
        arguments.push_back(name);
    }
    const Ran one = runValidate(arguments, {.directory = dir.path()});
    EXPECT_EQ(one.status, 3);
    EXPECT_NE(one.err.find("39.xml: warning: there are more violations; "), std::string::npos);
    arguments.push_back("--jobs=4");
    const Ran several = runValidate(arguments, {.directory = dir.path()});
    EXPECT_EQ(several.status, one.status);
    EXPECT_EQ(several.out, one.out);
    EXPECT_TRUE(several.err == one.err);
}

// Sentences hold the first 511 bytes of a path, and the line below them its end.
TEST(ValidateMany, LongPathsAreCutAsTheLibraryCutsThem)
{
    std::string text = NETWORK DEVICE "<note>";
    std::string path = "/network/note[1]";
    for (int i = 0; i < 45; ++i) {
        text += "<emphasis>";
        path += "/emphasis[1]";
    }
    text += "<see/><bad/>";
    for (int i = 0; i < 45; ++i) text += "</emphasis>";
    const Ran ran = runValidate({"-"}, {.input = text + "</note>" END});
    const std::string place = "1:" + std::to_string(text.find("<see/>") + 1);
    const std::string next = "1:" + std::to_string(text.find("<bad/>") + 1);
    EXPECT_EQ(violationsIn(ran.err),
              place + " 3 The value of element '" + (path + "/see[1]").substr(0, 511) +
                  "' is invalid. anyURI cannot be empty.\n" + next +
                  " 6 Unexpected element 'urn:example:network':'bad' under element '" +
                  path.substr(0, path.substr(0, 511).rfind('/')) + "\n");
    EXPECT_NE(ran.err.find("\n  at " + path + "/see[1], violation 3\n"), std::string::npos);
}

// What has been found stands although the library fails later.
TEST(ValidateMany, AFailureLaterKeepsWhatWasFound)
{
    const Ran ran =
        runTool({"validate", "--schema", "interfaces", "-"},
                {.input = wrongVlans(3),
                 .environment = {"LD_PRELOAD=" NETXML_FAILING_SCHEMA,
                                 "ASAN_OPTIONS=verify_asan_link_order=0", "FAILING_AFTER=1"}});
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(violationsIn(ran.err), wrongVlan(1, "2:1"));
    EXPECT_NE(ran.err.find("<stdin>: error: internal error: no verdict: memory has run out, or the "
                           "schema is broken. [2099]\n"),
              std::string::npos)
        << ran.err;
}

}  // namespace
}  // namespace netxml::testing
