// What schema documents may hold, and how much.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

Ran compiled(const std::string& body)
{
    const TempDir directory;
    writeText(directory / "t.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' "
                                   "xmlns='urn:t' targetNamespace='urn:t'>\n" +
                                       body + "\n</xs:schema>");
    return runTool({"schema", "compile", "t.xsd"}, {.directory = directory.path().string()});
}

std::string firstLine(const std::string& text)
{
    return text.substr(0, text.find('\n'));
}

struct MistakeRow {
    const char* body;
    const char* problem;  // behind "t.xsd:2:"
};

const MistakeRow kMistakes[] = {
    {"<xs:simpleType name='A'><xs:restriction base='xs:string'><xs:maxLenght value='3'/>"
     "</xs:restriction></xs:simpleType>",
     "58: error: \"maxLenght\" cannot stand in \"restriction\"; expected simpleType, group, all, "
     "choice, sequence, attribute, attributeGroup, anyAttribute, minExclusive, minInclusive, "
     "maxExclusive, maxInclusive, totalDigits, fractionDigits, length, minLength, maxLength, "
     "enumeration, whiteSpace or pattern. [2020]"},
    {"<xs:complexType name='A'><xs:sequense/></xs:complexType>",
     "26: error: \"sequense\" cannot stand in \"complexType\"; expected simpleContent, "
     "complexContent, group, all, choice, sequence, attribute, attributeGroup or anyAttribute. "
     "[2020]"},
    {"<xs:complexType name='A'><xs:sequence><xs:elment name='b'/></xs:sequence></xs:complexType>",
     "39: error: \"elment\" cannot stand in \"sequence\"; expected element, group, choice, "
     "sequence "
     "or any. [2020]"},
    {"<xs:complexType name='A'><xs:sequence/><assert test='1'/></xs:complexType>",
     "40: error: \"assert\" cannot stand in \"complexType\"; expected simpleContent, "
     "complexContent, group, all, choice, sequence, attribute, attributeGroup or anyAttribute. "
     "[2020]"},
    {"<xs:import namespace='urn:z'><xs:element name='a'/></xs:import>",
     "30: error: \"element\" cannot stand in \"import\"; expected an annotation. [2020]"},
    {"<xs:override schemaLocation='x'/>",
     "1: error: \"override\" cannot stand at the top of a schema. [2020]"},
    {"<xs:complexType name='A'><xs:attribute name='b' use='requierd'/></xs:complexType>",
     "26: error: \"use\" is \"requierd\"; expected optional, required or prohibited. [2020]"},
    {"<xs:complexType name='A' mixed='yes'/>",
     "1: error: \"mixed\" is \"yes\"; expected true, false, 1 or 0. [2020]"},
    {"<xs:complexType name='A'><xs:sequence><xs:any processContents='Lax'/></xs:sequence>"
     "</xs:complexType>",
     "39: error: \"processContents\" is \"Lax\"; expected strict, lax or skip. [2020]"},
    {"<xs:complexType name='A'><xs:attribute name='b' form=''/></xs:complexType>",
     "26: error: \"form\" is \"\"; expected qualified or unqualified. [2020]"},
    {"<xs:simpleType name='A'><xs:restriction base='xs:string'><xs:maxLength value='abc'/>"
     "</xs:restriction></xs:simpleType>",
     "58: error: \"maxLength\" is \"abc\"; expected a number. [2020]"},
    {"<xs:simpleType name='A'><xs:restriction base='xs:int'><xs:totalDigits value='-1'/>"
     "</xs:restriction></xs:simpleType>",
     "55: error: \"totalDigits\" is \"-1\"; expected a number. [2020]"},
    {"<xs:simpleType name='A'><xs:restriction base='xs:string'><xs:whiteSpace value='trim'/>"
     "</xs:restriction></xs:simpleType>",
     "58: error: \"whiteSpace\" is \"trim\"; expected preserve, replace or collapse. [2020]"},
    {"<xs:complexType name='A'><xs:sequence><xs:any notNamespace='urn:x'/></xs:sequence>"
     "</xs:complexType>",
     "39: error: \"any\" has no attribute \"notNamespace\"; it has namespace, processContents, "
     "minOccurs or maxOccurs. [2020]"},
    {"<xs:complexType name='A'><xs:simpleContent base='b'/></xs:complexType>",
     "26: error: \"simpleContent\" has no attribute \"base\". [2020]"},
    {"<xs:element name='a' type='xs:int'><xs:simpleType><xs:restriction base='xs:int'/>"
     "</xs:simpleType></xs:element>",
     "36: error: \"simpleType\" stands in \"element\" beside the attribute \"type\"; only one of "
     "them may be there. [2020]"},
    {"<xs:element name='a'><xs:complexType/><xs:simpleType><xs:restriction base='xs:int'/>"
     "</xs:simpleType></xs:element>",
     "39: error: \"simpleType\" stands in \"element\" beside \"complexType\"; only one of them may "
     "be there. [2020]"},
    {"<xs:complexType name='A'><xs:sequence/><xs:choice/></xs:complexType>",
     "40: error: \"choice\" stands in \"complexType\" beside \"sequence\"; only one of them may be "
     "there. [2020]"},
    {"<xs:group name='A'><xs:sequence/><xs:choice/></xs:group>",
     "34: error: \"choice\" stands in \"group\" beside \"sequence\"; only one of them may be "
     "there. [2020]"},
    {"<xs:complexType name='A'><xs:attribute name='b'/><xs:attribute name='b'/></xs:complexType>",
     "50: error: the attribute \"b\" is declared here already. [2020]"},
    {"<xs:group name='unused'><xs:sequence><xs:element ref='no'/></xs:sequence></xs:group>",
     "38: error: the element \"{urn:t}no\" is not declared. [2020]"},
    {"<xs:element name='a' substitutionGroup='no'/>",
     "1: error: the element \"{urn:t}no\" is not declared. [2020]"},
    {"<xs:group name='g'><xs:sequence/></xs:group><xs:complexType name='A'><xs:group ref='g' "
     "minOccurs='5' maxOccurs='2'/></xs:complexType>",
     "70: error: \"maxOccurs\" is below \"minOccurs\". [2020]"},
    {"<xs:complexType name='A'><xs:sequence><xs:any minOccurs='2'/></xs:sequence></xs:complexType>",
     "39: error: \"maxOccurs\" is below \"minOccurs\". [2020]"},
    {"<xs:simpleType name='A'><xs:list itemType='B'/></xs:simpleType><xs:simpleType name='B'>"
     "<xs:list itemType='xs:int'/></xs:simpleType>",
     "25: error: the items of a list cannot be lists themselves. [2020]"},
};

TEST(SchemaGrammar, NothingMisspeltIsPassedOver)
{
    for (const MistakeRow& row : kMistakes) {
        const Ran ran = compiled(row.body);
        EXPECT_EQ(ran.status, 5) << row.body;
        EXPECT_EQ(firstLine(ran.err), std::string{"t.xsd:2:"} + row.problem) << row.body;
    }
}

TEST(SchemaGrammar, WhatMayStandThereIsTaken)
{
    const char* bodies[] = {
        "<xs:annotation id='i'><xs:appinfo source='s'><x xmlns='urn:x' y='z'/></xs:appinfo>"
        "<xs:documentation xml:lang='en'><xs:nothing/></xs:documentation></xs:annotation>",
        "<xs:notation name='n' public='p' system='s'/>",
        "<xs:element name='a' xmlns:v='urn:v' v:note='of another namespace' id='i' final='' "
        "block='extension'/>",
        "<xs:simpleType name='A' final='#all'><xs:restriction base='xs:string'><xs:whiteSpace "
        "value=' collapse ' fixed='true'/><xs:maxLength value=' +3 ' id='x'/></xs:restriction>"
        "</xs:simpleType>",
        "<xs:complexType name='A' abstract='0'><xs:annotation/><xs:choice id='c'/><xs:attribute "
        "name='b' form='qualified' use='prohibited'/><xs:anyAttribute namespace='##other' "
        "processContents='lax'/></xs:complexType>",
        "<xs:complexType name='A'><xs:complexContent mixed='true'><xs:restriction "
        "base='xs:anyType'><xs:sequence/></xs:restriction></xs:complexContent></xs:complexType>",
    };
    for (const char* body : bodies) {
        const Ran ran = compiled(body);
        EXPECT_EQ(ran.status, 0) << body;
        EXPECT_EQ(ran.err, "") << body;
    }
}

// "<BEGIN 0 MIDDLE 1 END>...", each referring to the next, and what comes behind the last.
std::string chain(unsigned count, const std::string& begin, const std::string& middle,
                  const std::string& end, const std::string& last)
{
    std::string text;
    for (unsigned i = 0; i != count; ++i) {
        text += begin + std::to_string(i) + middle;
        for (std::size_t at = 0; (at = text.find('%', at)) != std::string::npos;)
            text.replace(at, 1, std::to_string(i + 1));
        text += end;
    }
    return text + begin + std::to_string(count) + last;
}

// Each of these says exponentially more than is written.
TEST(SchemaGrammar, WhatRefersTwiceToTheNextOneEnds)
{
    const std::string user = "<xs:element name='r'><xs:complexType>";
    const Ran groups = compiled(chain(18, "<xs:group name='g",
                                      "'><xs:sequence><xs:group ref='g%'/><xs:group ref='g%'/>",
                                      "</xs:sequence></xs:group>", "'><xs:sequence/></xs:group>") +
                                user + "<xs:group ref='g0'/></xs:complexType></xs:element>");
    EXPECT_EQ(groups.status, 5);
    EXPECT_NE(groups.err.find("error: with the groups that it refers to, this content model has "
                              "more than 100000 particles. [2020]\n"),
              std::string::npos)
        << groups.err;

    const Ran attributes =
        compiled(chain(40, "<xs:attributeGroup name='g",
                       "'><xs:attributeGroup ref='g%'/><xs:attributeGroup ref='g%'/>",
                       "</xs:attributeGroup>", "'><xs:attribute name='a'/></xs:attributeGroup>") +
                 user + "<xs:attributeGroup ref='g0'/></xs:complexType></xs:element>");
    EXPECT_EQ(attributes.status, 0) << attributes.err;

    const std::string type = "'><xs:restriction base='xs:string'><xs:pattern value='a'/>"
                             "</xs:restriction></xs:simpleType>";
    const std::string list = "<xs:element name='r'><xs:simpleType><xs:list itemType='g0'/>"
                             "</xs:simpleType></xs:element>";
    const Ran unions =
        compiled(chain(40, "<xs:simpleType name='g", "'><xs:union memberTypes='g% g%'/>",
                       "</xs:simpleType>", type) +
                 list);
    EXPECT_EQ(unions.status, 0);
    EXPECT_EQ(unions.err, "");

    // With a type of their own between them no two members are the same.
    const Ran wider =
        compiled(chain(40, "<xs:simpleType name='g",
                       "'><xs:union memberTypes='g%'><xs:simpleType><xs:union memberTypes='g%'/>"
                       "</xs:simpleType></xs:union>",
                       "</xs:simpleType>", type) +
                 list);
    EXPECT_EQ(wider.status, 0);
    EXPECT_NE(wider.err.find("warning: the items of this list are not checked in full: their type "
                             "cannot be said by one expression. [2021]\n"),
              std::string::npos)
        << wider.err;
}

TEST(SchemaGrammar, ExpressionsThatAreTooLargeAreTold)
{
    std::string nested = "a+";
    for (int i = 0; i != 25; ++i) nested = "(" + nested + ")+";
    const auto restricted = [](const std::string& facets) {
        return "<xs:simpleType name='A'><xs:restriction base='xs:NMTOKEN'>" + facets +
               "</xs:restriction></xs:simpleType>";
    };
    const Ran one = compiled(restricted("<xs:pattern value='" + nested + "'/>"));
    EXPECT_EQ(one.status, 0);
    EXPECT_NE(one.err.find("warning: this pattern is not checked: its counts come to too large an "
                           "expression, at character "),
              std::string::npos)
        << one.err;

    std::string patterns;
    std::string values;
    for (int i = 1000; i != 1500; ++i) {
        patterns += "<xs:pattern value='code" + std::to_string(i) + "'/>";
        values += "<xs:enumeration value='code-" + std::to_string(i) + "'/>";
    }
    const Ran several = compiled(restricted(patterns));
    EXPECT_EQ(several.status, 0);
    EXPECT_EQ(
        firstLine(several.err),
        "t.xsd:2:59: warning: this pattern is not checked: with the others beside it it comes "
        "to too large an expression. [2021]");
    const Ran list = compiled(restricted(values) +
                              "<xs:simpleType name='L'><xs:list itemType='A'/></xs:simpleType>");
    EXPECT_EQ(list.status, 0);
    EXPECT_NE(list.err.find("warning: the items of this list are not checked in full: their type "
                            "cannot be said by one expression. [2021]\n"),
              std::string::npos)
        << list.err;
}

TEST(SchemaGrammar, AllGroupsAreTakenAsTheyAre)
{
    std::string elements;
    for (int i = 0; i != 500; ++i)
        elements += "<xs:element name='e" + std::to_string(i) + "' minOccurs='0'/>";
    const Ran ran =
        compiled("<xs:complexType name='A'><xs:all>" + elements + "</xs:all></xs:complexType>");
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.err, "");
}

}  // namespace
}  // namespace netxml::testing
