// netxml validate with schema documents: one row for each construct, and what is said of documents.
#include "tool_process.hpp"

#include <gtest/gtest.h>

namespace netxml::testing {
namespace {

constexpr const char* kSchemaStart =
    "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns='urn:t' targetNamespace='urn:t' "
    "elementFormDefault='qualified'>";

struct VerdictRow {
    const char* why;
    const char* schema;  // what stands in the schema
    const char* valid;   // documents, one a line; " xmlns='urn:t'" stands in the place of "@"
    const char* invalid;
};

const VerdictRow kVerdicts[] = {
    {"a sequence",
     "<xs:element name='r'><xs:complexType><xs:sequence><xs:element name='a' type='xs:int'/>"
     "<xs:element name='b' type='xs:string' minOccurs='0' maxOccurs='2'/></xs:sequence>"
     "</xs:complexType></xs:element>",
     "<r@><a>1</a></r>\n<r@><a>-7</a><b/><b>x</b></r>",
     "<r@/>\n<r@><a>x</a></r>\n<r@><a>1</a><b/><b/><b/></r>\n<r@><b/><a>1</a></r>\n<r><a>1</a></"
     "r>\n"
     "<r@><a>|1</a></r>"},
    {"a choice of counted elements",
     "<xs:element name='r'><xs:complexType><xs:choice><xs:element name='a' maxOccurs='2'/>"
     "<xs:element name='b'/></xs:choice></xs:complexType></xs:element>",
     "<r@><a/></r>\n<r@><a/><a/></r>\n<r@><b/></r>",
     "<r@/>\n<r@><a/><b/></r>\n<r@><a/><a/><b/></r>\n<r@><a/><a/><a/></r>\n<r@><b/><b/></r>"},
    {"an all group",
     "<xs:element name='r'><xs:complexType><xs:all><xs:element name='a'/><xs:element name='b' "
     "minOccurs='0'/></xs:all></xs:complexType></xs:element>",
     "<r@><a/></r>\n<r@><b/><a/></r>\n<r@><a/><b/></r>", "<r@/>\n<r@><b/></r>\n<r@><a/><a/></r>"},
    {"groups seven deep",
     "<xs:element name='r'><xs:complexType><xs:sequence><xs:choice><xs:sequence><xs:choice>"
     "<xs:sequence><xs:choice><xs:sequence minOccurs='0'><xs:element name='a'/><xs:element "
     "name='b'/></xs:sequence></xs:choice></xs:sequence></xs:choice></xs:sequence></xs:choice>"
     "</xs:sequence></xs:complexType></xs:element>",
     "<r@/>\n<r@><a/><b/></r>", "<r@><a/></r>\n<r@><b/></r>"},
    {"extension",
     "<xs:complexType name='B'><xs:sequence><xs:element name='a'/></xs:sequence>"
     "<xs:attribute name='x' use='required'/></xs:complexType><xs:element name='r'>"
     "<xs:complexType><xs:complexContent><xs:extension base='B'><xs:sequence><xs:element "
     "name='b'/></xs:sequence><xs:attribute name='y'/></xs:extension></xs:complexContent>"
     "</xs:complexType></xs:element>",
     "<r@ x='1'><a/><b/></r>\n<r@ x='1' y='2'><a/><b/></r>",
     "<r@><a/><b/></r>\n<r@ x='1'><a/></r>\n<r@ x='1'><b/><a/></r>\n<r@ x='1' z='2'><a/><b/></r>"},
    {"restriction with a prohibited attribute and a narrower wildcard",
     "<xs:complexType name='B'><xs:attribute name='x'/><xs:attribute name='y'/><xs:anyAttribute "
     "processContents='skip'/></xs:complexType><xs:element name='r'><xs:complexType>"
     "<xs:complexContent><xs:restriction base='B'><xs:attribute name='x' use='prohibited'/>"
     "</xs:restriction></xs:complexContent></xs:complexType></xs:element>",
     "<r@/>\n<r@ y='1'/>", "<r@ x='1'/>\n<r@ z='1'/>"},
    {"simple content, extended and restricted",
     "<xs:complexType name='B'><xs:simpleContent><xs:extension base='xs:decimal'><xs:attribute "
     "name='unit' use='required'/></xs:extension></xs:simpleContent></xs:complexType><xs:element "
     "name='r'><xs:complexType><xs:simpleContent><xs:restriction base='B'><xs:maxInclusive "
     "value='9.5'/></xs:restriction></xs:simpleContent></xs:complexType></xs:element>",
     "<r@ unit='m'>9.50</r>\n<r@ unit='m'>-100</r>",
     "<r@ unit='m'>9.51</r>\n<r@>1</r>\n<r@ unit='m'>x</r>\n<r@ unit='m'/>"},
    {"mixed, also without elements",
     "<xs:element name='r'><xs:complexType mixed='true'><xs:sequence><xs:element name='a' "
     "minOccurs='0'><xs:complexType mixed='true'/></xs:element></xs:sequence></xs:complexType>"
     "</xs:element>",
     "<r@>x</r>\n<r@>x<a>y</a>z</r>\n<r@/>", "<r@><a><b/></a></r>"},
    {"a substitution group with a plain head and a chain",
     "<xs:element name='h' type='xs:string'/><xs:element name='i' substitutionGroup='h'/>"
     "<xs:element name='j' substitutionGroup='i' type='xs:string'/><xs:element name='r'>"
     "<xs:complexType><xs:sequence><xs:element ref='h' maxOccurs='3'/></xs:sequence>"
     "</xs:complexType></xs:element>",
     "<r@><h/></r>\n<r@><i/><j/><h/></r>", "<r@/>\n<r@><k/></r>\n<r@><h/><h/><h/><h/></r>"},
    {"an abstract head",
     "<xs:element name='h' abstract='true'/><xs:element name='i' substitutionGroup='h' "
     "type='xs:int'/><xs:element name='r'><xs:complexType><xs:sequence><xs:element ref='h'/>"
     "</xs:sequence></xs:complexType></xs:element>",
     "<r@><i>1</i></r>", "<r@><h/></r>\n<r@><i>x</i></r>\n<h@/>"},
    {"wildcards of elements",
     "<xs:element name='k' type='xs:int'/><xs:element name='r'><xs:complexType><xs:sequence>"
     "<xs:any namespace='##other' processContents='lax' minOccurs='0'/><xs:any "
     "namespace='##targetNamespace' minOccurs='0'/></xs:sequence></xs:complexType></xs:element>",
     "<r@/>\n<r@><x xmlns='urn:o'/></r>\n<r@><k>1</k></r>",
     "<r@><x xmlns=''/></r>\n<r@><k>x</k></r>\n<r@><x/></r>"},
    {"a wildcard of no namespace and another one",
     "<xs:element name='r'><xs:complexType><xs:sequence><xs:any namespace='##local urn:o' "
     "processContents='skip' maxOccurs='2'/></xs:sequence></xs:complexType></xs:element>",
     "<r@><x xmlns=''/></r>\n<r@><x xmlns='urn:o'/><y xmlns=''/></r>",
     "<r@><x xmlns='urn:p'/></r>\n<r@/>"},
    {"attributes of no namespace and another one",
     "<xs:element name='r'><xs:complexType><xs:anyAttribute namespace='##local urn:o' "
     "processContents='skip'/></xs:complexType></xs:element>",
     "<r@ a='1'/>\n<r@ o:a='1' xmlns:o='urn:o'/>", "<r@ p:a='1' xmlns:p='urn:p'/>"},
    {"attributes about the schema on any element, and of xml:",
     "<xs:element name='r'><xs:complexType/></xs:element>",
     "<r@ xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:schemaLocation='urn:t t.xsd'/>\n"
     "<r@ xml:lang='en'/>",
     "<r@ lang='en'/>\n<r@ xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:other='1'/>"},
    {"unqualified elements and qualified attributes",
     "<xs:element name='r'><xs:complexType><xs:sequence><xs:element name='a' form='unqualified'/>"
     "</xs:sequence><xs:attribute name='x' form='qualified'/></xs:complexType></xs:element>",
     "<r@><a xmlns=''/></r>\n<t:r xmlns:t='urn:t' t:x='1'><a/></t:r>",
     "<r@><a/></r>\n<r@ x='1'><a xmlns=''/></r>"},
    {"references with a use of their own",
     "<xs:attribute name='x' type='xs:int'/><xs:element name='r'><xs:complexType>"
     "<xs:attribute ref='x' use='required'/></xs:complexType></xs:element><xs:element name='s'>"
     "<xs:complexType><xs:attribute ref='x'/></xs:complexType></xs:element>",
     "<t:r xmlns:t='urn:t' t:x='1'/>\n<s@/>\n<t:s xmlns:t='urn:t' t:x='1'/>",
     "<r@/>\n<t:r xmlns:t='urn:t' t:x='a'/>\n<t:s xmlns:t='urn:t' t:x='a'/>"},
    {"fixed and default values",
     "<xs:element name='r'><xs:complexType><xs:sequence><xs:element name='a' type='xs:int' "
     "fixed='7' minOccurs='0'/><xs:element name='b' type='xs:int' default='1' minOccurs='0'/>"
     "<xs:element name='c' type='xs:string' fixed='x' minOccurs='0'/></xs:sequence>"
     "<xs:attribute name='v' type='xs:string' fixed='1'/></xs:complexType></xs:element>",
     "<r@><a>7</a></r>\n<r@><a>07</a></r>\n<r@><a/></r>\n<r@><b/></r>\n<r@ v='1'><c>x</c></r>",
     "<r@><a>8</a></r>\n<r@><b>x</b></r>\n<r@><c>y</c></r>\n<r@ v='2'/>"},
    {"anyType and elements without a type",
     "<xs:element name='k' type='xs:int'/><xs:element name='r'/><xs:element name='s' "
     "type='xs:anyType'/>",
     "<r@ a='1'>x<b/>y</r>\n<s@><k>1</k></s>\n<r@/>", "<r@><k>x</k></r>\n<s@><k>x</k></s>"},
    {"lists",
     "<xs:simpleType name='L'><xs:list itemType='xs:unsignedByte'/></xs:simpleType><xs:element "
     "name='r'><xs:simpleType><xs:restriction base='L'><xs:minLength value='2'/><xs:maxLength "
     "value='3'/></xs:restriction></xs:simpleType></xs:element>",
     "<r@>1 2</r>\n<r@>1  2\n255</r>",
     "<r@/>\n<r@>1</r>\n<r@>1 2 3 4</r>\n<r@>1 256</r>\n<r@>1 x</r>"},
    {"unions, restricted",
     "<xs:simpleType name='U'><xs:union memberTypes='xs:int xs:boolean'/></xs:simpleType>"
     "<xs:element name='r'><xs:simpleType><xs:restriction base='U'><xs:pattern value='[0-9]|true'/>"
     "</xs:restriction></xs:simpleType></xs:element>",
     "<r@>7</r>\n<r@>true</r>", "<r@>77</r>\n<r@>false</r>\n<r@>x</r>"},
    {"patterns of one step are alternatives, those of two are not",
     "<xs:simpleType name='P'><xs:restriction base='xs:string'><xs:pattern value='a.*'/>"
     "<xs:pattern value='b.*'/></xs:restriction></xs:simpleType><xs:element name='r'>"
     "<xs:simpleType><xs:restriction base='P'><xs:pattern value='.*z'/></xs:restriction>"
     "</xs:simpleType></xs:element>",
     "<r@>az</r>\n<r@>b-z</r>", "<r@>a</r>\n<r@>cz</r>\n<r@>xaz</r>"},
    {"numbers of any size",
     "<xs:element name='r'><xs:simpleType><xs:restriction base='xs:integer'><xs:minInclusive "
     "value='-1'/></xs:restriction></xs:simpleType></xs:element><xs:element name='d'>"
     "<xs:simpleType><xs:restriction base='xs:decimal'><xs:totalDigits value='4'/>"
     "<xs:fractionDigits value='2'/></xs:restriction></xs:simpleType></xs:element><xs:element "
     "name='e'><xs:simpleType><xs:restriction base='xs:decimal'><xs:enumeration value='1.5'/>"
     "<xs:enumeration value='-2'/></xs:restriction></xs:simpleType></xs:element>",
     "<r@>123456789012345678901234567890</r>\n<r@>-1</r>\n<d@>12.34</d>\n<d@>0012.340</d>\n"
     "<e@>01.50</e>\n<e@>-2.0</e>",
     "<r@>-2</r>\n<r@>-123456789012345678901234567890</r>\n<d@>123.45</d>\n<d@>1.234</d>\n"
     "<e@>2</e>"},
    {"dates and times",
     "<xs:element name='d' type='xs:date'/><xs:element name='t' type='xs:dateTime'/><xs:element "
     "name='u' type='xs:duration'/><xs:element name='g' type='xs:gDay'/>",
     "<d@>2024-02-29</d>\n<d@>12000-02-29Z</d>\n<d@>-0004-12-31+14:00</d>\n"
     "<t@>2024-01-01T24:00:00</t>\n<t@>2024-01-01T23:59:59.5-13:59</t>\n<u@>P1Y</u>\n"
     "<u@>-PT1.5S</u>\n<g@>---31</g>",
     "<d@>2023-02-29</d>\n<d@>1900-02-29</d>\n<d@>0000-01-01</d>\n<d@>2024-13-01</d>\n"
     "<d@>2024-01-01+14:01</d>\n<t@>2024-01-01</t>\n<t@>2024-01-01T24:00:01</t>\n<u@>P</u>\n"
     "<u@>P1YT</u>\n<g@>---32</g>"},
    {"names and identifiers",
     "<xs:element name='n' type='xs:NCName'/><xs:element name='k' type='xs:NMTOKEN'/><xs:element "
     "name='l' type='xs:language'/><xs:element name='h' type='xs:hexBinary'/><xs:element name='b' "
     "type='xs:base64Binary'/><xs:element name='u' type='xs:anyURI'/>",
     "<n@>a-1</n>\n<n@>路由</n>\n<k@>1:a</k>\n<l@>zh-Hant-TW</l>\n<h@>0aFF</h>\n<h@/>\n"
     "<b@>QUJD\nREVG</b>\n<u@>urn:ietf:params:netconf:base:1.0</u>",
     "<n@>1a</n>\n<n@>a:b</n>\n<k@>a b</k>\n<l@>english_</l>\n<h@>abc</h>\n<b@>QUJ</b>"},
};

std::string withNamespace(std::string line)
{
    const std::size_t at = line.find('@');
    if (at != std::string::npos) line.replace(at, 1, " xmlns='urn:t'");
    return line;
}

std::vector<std::string> documentsIn(std::string lines)
{
    std::vector<std::string> documents;
    // A document may have a line feed of its own: the next one begins with "<" and ends its line.
    for (std::size_t at = 0; at < lines.size();) {
        std::size_t end = lines.find("\n<", at);
        if (end == std::string::npos) end = lines.size();
        documents.push_back(withNamespace(lines.substr(at, end - at)));
        at = end + 1;
    }
    return documents;
}

void check(const VerdictRow& row, const std::string& schema, const char* lines, int status)
{
    for (const std::string& document : documentsIn(lines)) {
        const Ran ran = runTool({"validate", "-q", "--schema", schema, "-"}, {.input = document});
        EXPECT_EQ(ran.status, status) << row.why << "\n" << document << "\n" << ran.err;
    }
}

TEST(SchemaVerdict, IsThatOfXmlSchema)
{
    const TempDir directory;
    const std::string schema = directory / "t.xsd";
    for (const VerdictRow& row : kVerdicts) {
        writeText(schema, std::string{kSchemaStart} + row.schema + "</xs:schema>");
        const Ran compiled = runTool({"schema", "compile", "--list-outputs", schema});
        EXPECT_EQ(compiled.status, 0) << row.why << compiled.err;
        check(row, schema, row.valid, 0);
        check(row, schema, row.invalid, 3);
    }
}

struct MessageRow {
    const char* message;  // in the place of "@" the namespace
    const char* sentence;
};

// What can be wrong with messages of a management protocol, one each.
const MessageRow kMessages[] = {
    {"<rpc@><close-session/></rpc>",
     "1:1: error: The element '/rpc' should have an attribute '':'message-id'. [2006]"},
    {"<rpc@ message-id='1'/>",
     "1:1: error: Required child elements are missing for element '/rpc'. [2006]"},
    {"<rpc@ message-id='1'><close-session>x</close-session></rpc>",
     "1:69: error: Element '/rpc/close-session[1]' can not have a textual child element. [2006]"},
    {"<rpc@ message-id='1'><lock><target/></lock></rpc>",
     "1:75: error: Required child elements are missing for element '/rpc/lock[1]/target[1]'. "
     "[2006]"},
    {"<hello@/>", "1:1: error: The number of occurrences of element '/hello/capabilities' is "
                  "invalid. [2006]"},
    {"<hello@><capabilities><capability/></capabilities></hello>",
     "1:70: error: The value of element '/hello/capabilities[1]/capability[1]' is invalid. The "
     "length must be greater than or equal to 1. [2006]"},
    {"<hello xmlns='urn:other'/>",
     "1:1: error: The root element of XML document is invalid. [2006]"},
};

TEST(SchemaVerdict, SaysWhatIsWrongWithAMessageAndWhere)
{
    for (const MessageRow& row : kMessages) {
        std::string message = row.message;
        if (const std::size_t at = message.find('@'); at != std::string::npos)
            message.replace(at, 1, " xmlns='urn:ietf:params:xml:ns:netconf:base:1.0'");
        const Ran ran =
            runTool({"validate", "--schema", NETXML_AGENT_SCHEMA, "-"}, {.input = message});
        EXPECT_EQ(ran.status, 3) << message;
        EXPECT_EQ(ran.err.substr(0, ran.err.find('\n')), std::string{"<stdin>:"} + row.sentence)
            << message;
    }
}

}  // namespace
}  // namespace netxml::testing
