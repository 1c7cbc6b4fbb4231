// netxml validate: verdicts, places, several files, encodings, and what is no verdict.
#include "tool_process.hpp"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace netxml::testing {
namespace {

constexpr const char* kDocuments = NETXML_EXAMPLE_DOCUMENTS;

Ran validateText(const std::string& text)
{
    return runValidate({"-"}, {.input = text});
}

// A document of the schema whose device has this model.
std::string documentWith(const std::string& model)
{
    return "<network xmlns='urn:example:network' version='1.2'><device><hostname>a</hostname>"
           "<model>" +
           model + "</model></device></network>";
}

struct BrokenCase {
    const char* file;
    const char* place;
    const char* sentence;
    const char* path;
    int violation;
    const char* sourceLine;
};

// clang-format off
const BrokenCase kBroken[] = {
    {"broken-01-model-missing.xml", "4:3",
     "Expecting element 'urn:example:network':'model' under element '/network/device[1]'.",
     "/network/device[1]", 1, "  <device>\n  ^\n"},
    {"broken-02-vlan-without-id.xml", "12:5",
     "The element '/network/vlans[1]/vlan[2]' should have an attribute "
     "'urn:example:network':'id'.",
     "/network/vlans[1]/vlan[2]", 2, "    <vlan>\n    ^\n"},
    {"broken-03-small-mtu.xml", "11:7",
     "The value of element '/network/interfaces[1]/ethernet[1]/mtu[1]' is invalid. "
     "The value must be greater than or equal to 68.",
     "/network/interfaces[1]/ethernet[1]/mtu[1]", 3, "      <mtu>67</mtu>\n      ^\n"},
    {"broken-04-interface-name.xml", "10:5",
     "The value of attribute '':'name' for element '/network/interfaces[1]/ethernet[2]' is "
     "invalid. The value does not match the regular expression.",
     "/network/interfaces[1]/ethernet[2]", 4, "    <ethernet name=\"eth0\"/>\n    ^\n"},
    {"broken-05-mask-missing.xml", "11:9",
     "The number of occurrences of element "
     "'/network/interfaces[1]/vlanInterface[1]/ipv4[1]/address[1]/mask' is invalid.",
     "/network/interfaces[1]/vlanInterface[1]/ipv4[1]/address[1]", 5,
     "        <address>\n        ^\n"},
    {"broken-06-unknown-element.xml", "11:7",
     "Unexpected element 'urn:example:network':'\xE5\xB8\xA6\xE5\xAE\xBD' under element "
     "'/network/interfaces[1]/ethernet[1]",
     "/network/interfaces[1]/ethernet[1]/\xE5\xB8\xA6\xE5\xAE\xBD[1]", 6,
     "      <\xE5\xB8\xA6\xE5\xAE\xBD>1000</\xE5\xB8\xA6\xE5\xAE\xBD>\n      ^\n"},
    {"broken-07-loopback-slot.xml", "9:5",
     "Unexpected attribute '':'slot' of element '/network/interfaces[1]/loopback[1]'.",
     "/network/interfaces[1]/loopback[1]", 7,
     "    <loopback name=\"lo0\" slot=\"0\">\n    ^\n"},
    {"broken-08-extension-unknown.xml", "8:3",
     "The child elements of '/network/extensions[1]' are invalid.",
     "/network/extensions[1]", 8, "  <extensions>\n  ^\n"},
    {"broken-09-text-between.xml", "8:3",
     "Element '/network/vlans[1]' can not have a textual child element.",
     "/network/vlans[1]", 9, "  <vlans>\n  ^\n"},
    {"broken-10-not-empty.xml", "11:7",
     "Element '/network/vlans[1]/vlan[1]/isolated[1]' can not have a child element.",
     "/network/vlans[1]/vlan[1]/isolated[1]", 10, "      <isolated>\n      ^\n"},
    {"broken-11-no-condition.xml", "12:9",
     "Required child elements are missing for element "
     "'/network/accessLists[1]/accessList[1]/rule[1]/match[1]'.",
     "/network/accessLists[1]/accessList[1]/rule[1]/match[1]", 11,
     "        <match/>\n        ^\n"},
    {"broken-12-another-root.xml", "3:1", "The root element of XML document is invalid.",
     "/config", 12,
     "<config xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.0\">\n^\n"},
};
// clang-format on

TEST(Validate, TellsTheViolationThePlaceAndThePath)
{
    for (const BrokenCase& c : kBroken) {
        const Ran ran = runValidate({c.file}, {.directory = kDocuments});
        EXPECT_EQ(ran.status, 3) << c.file;
        EXPECT_EQ(ran.out, "") << c.file;
        EXPECT_EQ(ran.err, std::string{c.file} + ":" + c.place + ": error: " + c.sentence +
                               " [2006]\n  at " + c.path + ", violation " +
                               std::to_string(c.violation) + "\n" + c.sourceLine);
    }
}

TEST(Validate, WritesViolationsAsJson)
{
    for (const BrokenCase& c : kBroken) {
        const Ran ran = runValidate({"--error-format=json", c.file}, {.directory = kDocuments});
        const std::string place = c.place;
        const std::size_t colon = place.find(':');
        EXPECT_EQ(ran.err, std::string{"{\"file\":\""} + c.file + "\",\"line\":" +
                               place.substr(0, colon) + ",\"column\":" + place.substr(colon + 1) +
                               ",\"severity\":\"error\",\"message\":\"" + c.sentence +
                               "\",\"code\":2006,\"violation\":" + std::to_string(c.violation) +
                               ",\"path\":\"" + c.path + "\"}\n");
        EXPECT_EQ(ran.status, 3) << c.file;
    }
}

TEST(Validate, AcceptsTheValidDocuments)
{
    unsigned count = 0;
    for (const auto& entry : std::filesystem::directory_iterator{kDocuments}) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with("valid-")) continue;
        const Ran ran = runValidate({name}, {.directory = kDocuments});
        EXPECT_EQ(ran.status, 0) << name << ": " << ran.err;
        EXPECT_EQ(ran.out, name + ": valid\n");
        EXPECT_EQ(ran.err, "");
        ++count;
    }
    EXPECT_GE(count, 4u);
}

TEST(Validate, ColorsTheFirstLineOnly)
{
    const Ran ran = runValidate({"--color=always", "-"}, {.input = "<a/>"});
    EXPECT_EQ(ran.err, "\033[1m<stdin>:1:1:\033[0m \033[1;31merror:\033[0m The root element of XML "
                       "document is invalid. [2006]\n  at /a, violation 12\n"
                       "<a/>\n\033[1;32m^\033[0m\n");
}

struct PlaceCase {
    const char* why;
    std::string text;
    const char* place;
    const char* path;
};

const PlaceCase kPlaces[] = {
    {"tags in comments, instructions and CDATA sections are none",
     "<?xml version='1.0'?><!--<a/>--><!DOCTYPE network [<!ELEMENT network ANY>]><?p <a/>?>\n"
     "<network xmlns='urn:example:network' version='1.2'><device><hostname>a</hostname>\n"
     "<model><![CDATA[<a><b/>]]></model><!-- <c> --><?q <d/> ?>\n"
     "  <assetNumber>7</assetNumber></device></network>",
     "4:3", "/network/device[1]/assetNumber[1]"},
    {"a sign in a value ends no tag",
     "<network xmlns='urn:example:network' version='1.2' changedBy='a>b'/>", "1:1", "/network"},
    {"columns are characters",
     "<network xmlns='urn:example:network' version='1.2'><device><hostname>a</hostname>\n"
     "<model>\xE4\xBA\xA4\xE6\x8D\xA2\xE6\x9C\xBA \xF0\x9F\x8C\x90</model><assetNumber/>"
     "</device></network>",
     "2:21", "/network/device[1]/assetNumber[1]"},
    {"a carriage return ends a line, with a line feed or without",
     "<network xmlns='urn:example:network' version='1.2'>\r<device>\r\n<hostname>a</hostname>\r"
     "<model/>\n<x/></device></network>",
     "5:1", "/network/device[1]/x[1]"},
    {"an element with a prefix and blanks in its tag",
     "<n:network xmlns:n='urn:example:network' version='1.2'><n:device\n><n:hostname\t>a"
     "</n:hostname><n:model/><p:x\n xmlns:p='urn:p' /></n:device></n:network>",
     "2:39", "/network/device[1]/x[1]"},
    {"a later one of many siblings",
     "<network xmlns='urn:example:network' version='1.2'><device><hostname>a</hostname><model/>"
     "</device><vlans><vlan id='1'><name>a</name></vlan>\n<vlan id='2'><name>b</name></vlan>\n"
     "<vlan id='4095'><name>c</name></vlan><vlan/></vlans></network>",
     "3:1", "/network/vlans[1]/vlan[3]"},
};

TEST(Validate, FindsTheElementInTheSource)
{
    for (const PlaceCase& c : kPlaces) {
        const Ran ran = validateText(c.text);
        EXPECT_EQ(ran.status, 3) << c.why;
        EXPECT_EQ(ran.err.find(std::string{"<stdin>:"} + c.place + ": error: "), 0u)
            << c.why << "\n"
            << ran.err;
        EXPECT_NE(ran.err.find(std::string{"\n  at "} + c.path + ", violation "), std::string::npos)
            << c.why << "\n"
            << ran.err;
    }
}

TEST(Validate, TheEncodingOfTheFileDoesNotMatter)
{
    const TempDir dir;
    const std::string broken = "broken-06-unknown-element.xml";
    const Ran expected = runValidate({broken}, {.directory = kDocuments});
    ASSERT_EQ(expected.status, 3);
    for (const char* encoding : {"UTF-8", "GB2312", "GBK", "GB18030", "UTF-16", "UTF-32"}) {
        const std::string source = std::string{kDocuments} + "/" + broken;
        ASSERT_EQ(runTool({"convert", "--to", encoding, source, "-o", dir / broken}).status, 0);
        const Ran ran = runValidate({broken}, {.directory = dir.path()});
        EXPECT_EQ(ran.status, 3) << encoding;
        EXPECT_EQ(ran.err, expected.err) << encoding;
    }
}

// The engine quotes 401 bytes of a value: here, 200 characters and a half.
TEST(Validate, ACharacterThatTheLibraryCutsIsReplaced)
{
    struct {
        const char* why;
        const char* before;
        const char* character;  // of 2 or 4 bytes in GB18030
        unsigned quoted;
    } const cases[] = {
        {"one byte of two", "", "\xE4\xB8\xAD", 200},
        {"one byte of four", "", "\xF0\x9F\x8C\x90", 100},
        {"two bytes of four", "abc", "\xF0\x9F\x8C\x90", 99},
        {"three bytes of four", "ab", "\xF0\x9F\x8C\x90", 99},
    };
    for (const auto& c : cases) {
        std::string value = c.before;
        for (int i = 0; i < 300; ++i) value += c.character;
        std::string quoted = c.before;
        for (unsigned i = 0; i < c.quoted; ++i) quoted += c.character;
        std::string document = documentWith("a");
        document.insert(document.find("</device>"),
                        "<temperatureLimit>" + value + "</temperatureLimit>");
        const Ran ran = validateText(document);
        EXPECT_EQ(ran.status, 3) << c.why;
        EXPECT_NE(ran.err.find("' is invalid. " + quoted +
                               "\xEF\xBF\xBD is an invalid value of short type value. [2006]\n"),
                  std::string::npos)
            << c.why << "\n"
            << ran.err;
    }
}

TEST(Validate, AnOverLongPathIsShownFromItsEnd)
{
    std::string notes;
    std::string ends;
    for (int i = 0; i < 20000; ++i) {
        notes += "<emphasis>";
        ends += "</emphasis>";
    }
    std::string document = documentWith("a");
    document.insert(document.find("</network>"),
                    "<note>" + notes + "<see>x</see>" + ends + "</note>");
    const Ran ran = runValidate({"-"}, {.input = document, .before = [] {
                                            const rlimit stack{262144, 262144};
                                            setrlimit(RLIMIT_STACK, &stack);
                                        }});
    EXPECT_EQ(ran.status, 3);
    const std::size_t at = ran.err.find("\n  at .../emphasis[1]/emphasis[1]/");
    ASSERT_NE(at, std::string::npos) << ran.err;
    const std::size_t end = ran.err.find("/emphasis[1]/see[1], violation 3\n", at);
    ASSERT_NE(end, std::string::npos) << ran.err;
    EXPECT_LT(end - at, 1000u);
    EXPECT_EQ(ran.err.find("<stdin>:1:" + std::to_string(document.find("<see>") + 1) + ": error"),
              0u)
        << ran.err.substr(0, 100);
}

TEST(Validate, ASchemaThatCannotBeReadIsAStatusOfItsOwn)
{
    for (const char* name : {"routers", "Interfaces", "no-such.xsd"}) {
        const Ran ran = runTool({"validate", "--schema", name, "a.xml"});
        EXPECT_EQ(ran.status, 5) << name;
        EXPECT_EQ(ran.err,
                  std::string{name} + ": error: cannot open: No such file or directory. [2010]\n");
    }
    EXPECT_EQ(runTool({"validate", "a.xml"}).err,
              "netxml: --schema is required\nTry \"netxml --help\".\n");
}

class ValidateFiles : public ::testing::Test {
protected:
    void SetUp() override
    {
        writeText(dir_ / "good.xml", documentWith("a"));
        writeText(dir_ / "invalid.xml", "<a/>");
        writeText(dir_ / "bad.xml", "<a>");
        std::filesystem::create_directories(dir_.path() / "sub");
        writeText(dir_ / "sub/b.xsd", "<b/>");
        writeText(dir_ / "sub/z.xml", documentWith("z"));
        writeText(dir_ / "sub/notes.txt", "no XML");
    }
    Ran run(std::vector<std::string> arguments)
    {
        return runValidate(std::move(arguments), {.directory = dir_.path()});
    }
    TempDir dir_;
};

constexpr const char* kInvalid = "invalid.xml:1:1: error: The root element of XML document is "
                                 "invalid. [2006]\n  at /a, violation 12\n<a/>\n^\n";
constexpr const char* kBad = "bad.xml:1:4: error: tag not finished. [77]\n<a>\n   ^\n";

TEST_F(ValidateFiles, TheLargestStatusCounts)
{
    EXPECT_EQ(run({"good.xml"}).status, 0);
    EXPECT_EQ(run({"good.xml", "bad.xml"}).status, 1);
    EXPECT_EQ(run({"invalid.xml", "bad.xml", "good.xml"}).status, 3);
    EXPECT_EQ(run({"missing.xml", "invalid.xml", "bad.xml"}).status, 4);
    EXPECT_EQ(run({"sub"}).status, 4);
}

TEST_F(ValidateFiles, EachFileIsReported)
{
    const Ran ran = run({"good.xml", "invalid.xml", "missing.xml", "bad.xml", "good.xml"});
    EXPECT_EQ(ran.out, "good.xml: valid\ngood.xml: valid\n");
    EXPECT_EQ(ran.err, std::string{kInvalid} +
                           "missing.xml: error: cannot open: No such file or directory. [2010]\n" +
                           kBad);
}

TEST_F(ValidateFiles, QuietPrintsErrorsOnly)
{
    const Ran ran = run({"-q", "good.xml", "invalid.xml"});
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ran.err, kInvalid);
}

TEST_F(ValidateFiles, RecursiveTakesTheKnownEndingsInOrder)
{
    const Ran ran = run({"--recursive", "sub", "good.xml"});
    EXPECT_EQ(ran.status, 3);
    EXPECT_EQ(ran.out, "sub/z.xml: valid\ngood.xml: valid\n");
    EXPECT_EQ(ran.err.find("sub/b.xsd:1:1: error: The root element"), 0u) << ran.err;
}

TEST_F(ValidateFiles, JobsKeepTheOrderOfTheFiles)
{
    std::vector<std::string> arguments{"--jobs=4"};
    std::string out;
    std::string places;
    for (int i = 0; i < 60; ++i) {
        const std::string name = std::to_string(i) + ".xml";
        std::string document = documentWith("a");
        // Large and small ones by turns, so that they are not done in order.
        std::string vlans = "<vlans>\n";
        for (int v = 0; v < (i % 3 == 0 ? 3000 : 1); ++v)
            vlans += "<vlan id='7'><name>v</name></vlan>\n";
        if (i % 7 == 0) vlans += "<vlan id='0'><name>v</name></vlan>";
        document.insert(document.find("</network>"), vlans + "</vlans>");
        writeText(dir_ / name, document);
        arguments.push_back(name);
        if (i % 7 == 0) places += name + (i % 3 == 0 ? ":3002:1" : ":3:1") + "\n";
        else out += name + ": valid\n";
    }
    const Ran ran = run(arguments);
    EXPECT_EQ(ran.status, 3);
    EXPECT_EQ(ran.out, out);
    std::string found;
    for (std::size_t at = 0; (at = ran.err.find(": error", at)) != std::string::npos; ++at) {
        const std::size_t begin = ran.err.rfind('\n', at) + 1;
        found += ran.err.substr(begin, at - begin) + "\n";
    }
    EXPECT_EQ(found, places);
}

// Runs the tool with a library that fails.
Ran validateFailing(const std::vector<std::string>& files, std::vector<std::string> environment)
{
    environment.push_back("LD_PRELOAD=" NETXML_FAILING_SCHEMA);
    environment.push_back("ASAN_OPTIONS=verify_asan_link_order=0");
    std::vector<std::string> arguments{"validate", "--schema", "interfaces"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    return runTool(arguments, {.input = documentWith("a"), .environment = environment});
}

TEST(Validate, NoVerdictIsAnErrorOfItsOwn)
{
    const Ran ran = validateFailing({"-"}, {});
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.out, "");
    EXPECT_EQ(ran.err, "<stdin>: error: internal error: no verdict: memory has run out, or the "
                       "schema is broken. [2099]\n");
}

TEST(Validate, ASchemaThatCannotBeRegisteredEndsTheRun)
{
    const Ran ran = validateFailing({"-", "/nowhere/a.xml"}, {"FAILING_REGISTRATION=1"});
    EXPECT_EQ(ran.status, 4);
    EXPECT_EQ(ran.err,
              "interfaces: error: cannot use this schema: Cannot allocate memory. [2010]\n");
}

// What the parser accepts but no tree can hold is no verdict on the schema.
TEST(Validate, BytesThatAreNoTextAreAnError)
{
    const Ran ran = validateText("<a>\n<b>\xC1\x81</b></a>");
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.err, "<stdin>:2:4: error: bytes that are no text in UTF-8. [2004]\n"
                       "<b>\xEF\xBF\xBD</b></a>\n   ^\n");
}

TEST(Validate, ACharacterThatTreesLackIsAnError)
{
    const std::string character = "\xEE\x9E\x8D";
    const Ran lacking =
        runTool({"convert", "--to=GB18030", "-"}, {.input = "<a><!--" + character + "--></a>"});
    if (lacking.status == 0) GTEST_SKIP() << "iconv has them all here";

    const std::string message =
        ": error: the character U+E78D does not exist in GB18030, which trees are in. [2002]\n";
    Ran ran = validateText("<a>\n<b>x" + character + "</b></a>");
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.err, "<stdin>:2:5" + message + "<b>x" + character + "</b></a>\n    ^\n");
    ran = validateText("<a>\n<b>x&#xE78D;</b></a>");
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.err.find("<stdin>:2:"), 0u) << ran.err;
    EXPECT_NE(ran.err.find(message), std::string::npos) << ran.err;
    ran = validateText("<a b='" + character + "'/>");
    EXPECT_EQ(ran.err.find("<stdin>:1:7" + message), 0u) << ran.err;
}

}  // namespace
}  // namespace netxml::testing
