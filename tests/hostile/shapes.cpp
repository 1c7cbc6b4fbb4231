#include "tests/hostile/shapes.hpp"

namespace {

std::string repeated(std::size_t n, const char* text)
{
    std::string all;
    for (std::size_t i = 0; i < n; ++i) all += text;
    return all;
}

std::string around(const char* before, const std::string& inside, const char* behind)
{
    std::string text = before;
    text += inside;
    return text += behind;
}

std::string nested(std::size_t n)
{
    return repeated(n, "<e>") + repeated(n, "</e>");
}
std::string neverClosed(std::size_t n)
{
    return repeated(n, "<e a='1'>");
}
std::string closedWrongly(std::size_t n)
{
    return repeated(n, "<e>") + repeated(n - 1, "</e>") + "</f>";
}
std::string nestedInANamespace(std::size_t n)
{
    return around("<p:e xmlns:p='u'>", repeated(n, "<p:e>") + repeated(n, "</p:e>"), "</p:e>");
}
std::string nestedInADefault(std::size_t n)
{
    return around("<e xmlns='u'>", repeated(n, "<e a='1'>t") + repeated(n, "</e>"), "</e>");
}
std::string siblings(std::size_t n)
{
    return around("<r>", repeated(n, "<e/>"), "</r>");
}
std::string siblingsWithAll(std::size_t n)
{
    return around("<r xmlns:p='u'>", repeated(n, "<p:e a='1' p:b='&lt;'>t<![CDATA[c]]></p:e>\n"),
                  "</r>");
}
std::string distinctSiblings(std::size_t n)
{
    std::string text = "<r>";
    for (std::size_t i = 0; i < n; ++i) text += "<e" + std::to_string(i) + "/>";
    return text + "</r>";
}
std::string attributes(std::size_t n)
{
    std::string text = "<r";
    for (std::size_t i = 0; i < n; ++i) text += " a" + std::to_string(i) + "='1'";
    return text + "/>";
}
std::string attributesInOneNamespace(std::size_t n)
{
    std::string text = "<r xmlns:p='urn:one' xmlns:q='urn:two'";
    for (std::size_t i = 0; i < n; ++i)
        text += (i % 2 == 0 ? " p:a" : " q:a") + std::to_string(i) + "='1'";
    return text + "/>";
}
std::string attributeInManyNamespaces(std::size_t n)
{
    std::string text = "<r";
    for (std::size_t i = 0; i < n; ++i) {
        const std::string number = std::to_string(i);
        text += " xmlns:p" + number + "='u" + number + "' p" + number + ":a='1'";
    }
    return text + "/>";
}
std::string attributeTwice(std::size_t n)
{
    std::string text = attributes(n);
    return text.replace(text.size() - 2, 2, " a0='2'/>");
}
std::string declarationsAndUses(std::size_t n)
{
    std::string text = "<r";
    for (std::size_t i = 0; i < n; ++i)
        text += " xmlns:p" + std::to_string(i) + "='u" + std::to_string(i) + "'";
    text += ">";
    for (std::size_t i = 0; i < n; ++i)
        text += "<p" + std::to_string(i) + ":c p" + std::to_string(n - 1 - i) + ":a='1'/>";
    return text + "</r>";
}
std::string prefixAtEachLevel(std::size_t n)
{
    std::string text = "<o xmlns:q='v'>";
    for (std::size_t i = 0; i < n; ++i)
        text += "<p:e xmlns:p='u" + std::to_string(i) + "'><q:x p:a=''/>";
    return text + repeated(n, "</p:e>") + "</o>";
}
std::string otherPrefixAtEachLevel(std::size_t n)
{
    std::string text = "<o xmlns:q='v'>";
    for (std::size_t i = 0; i < n; ++i)
        text += "<e xmlns:p" + std::to_string(i) + "='u'><q:x p0:a=''/>";
    return text + repeated(n, "</e>") + "</o>";
}
std::string text(std::size_t n)
{
    return around("<a>", std::string(n, 'x'), "</a>");
}
std::string textBeyondAscii(std::size_t n)
{
    return around("<a>", repeated(n, "\xE4\xB8\xAD"), "</a>");
}
std::string blanksInText(std::size_t n)
{
    return around("<a>x", std::string(n, ' '), "x</a>");
}
std::string blanksOnly(std::size_t n)
{
    return around("<a>", repeated(n, " \r\n"), "</a>");
}
std::string name(std::size_t n)
{
    const std::string long_(n, 'n');
    return around("<", long_ + "></" + long_, ">");
}
std::string prefix(std::size_t n)
{
    const std::string long_(n, 'p');
    return around("<", long_ + ":a xmlns:" + long_ + "='u' " + long_ + ":b=''", "/>");
}
std::string namespaceName(std::size_t n)
{
    return around("<p:a xmlns:p='", std::string(n, 'u'), "' p:b='' p:c=''/>");
}
std::string comment(std::size_t n)
{
    return around("<a><!--", std::string(n, 'x'), "--></a>");
}
std::string hyphens(std::size_t n)
{
    return around("<a><!--", repeated(n, "- "), "--></a>");
}
std::string value(std::size_t n)
{
    return around("<a b='", std::string(n, 'x'), "'/>");
}
std::string cdata(std::size_t n)
{
    return around("<a><![CDATA[", std::string(n, 'x'), "]]></a>");
}
std::string bracketsInCData(std::size_t n)
{
    return around("<a><![CDATA[", repeated(n, "]] >"), "]]></a>");
}
std::string instruction(std::size_t n)
{
    return around("<a><?p ", std::string(n, 'x'), "?></a>");
}
std::string questionMarks(std::size_t n)
{
    return around("<a><?p ", std::string(n, '?'), "?></a>");
}
std::string doctype(std::size_t n)
{
    return around("<!DOCTYPE a ", std::string(n, 'x'), "><a/>");
}
std::string bracketsInDoctype(std::size_t n)
{
    return around("<!DOCTYPE a [", repeated(n, "<!ENTITY e 'v'>"), "]><a/>");
}
std::string neverEndingDoctype(std::size_t n)
{
    return around("<!DOCTYPE a ", repeated(n, "[<"), "");
}
std::string references(std::size_t n)
{
    return around("<a>", repeated(n, "&#65;"), "</a>");
}
std::string referencesInAValue(std::size_t n)
{
    return around("<a b='", repeated(n, "&#x41;"), "'/>");
}
std::string entities(std::size_t n)
{
    return around("<a>", repeated(n, "&lt;x"), "</a>");
}
std::string digits(std::size_t n)
{
    return around("<a>&#", std::string(n, '0'), "65;</a>");
}
std::string tooManyDigits(std::size_t n)
{
    return around("<a>&#", std::string(n, '9'), ";</a>");
}
std::string comments(std::size_t n)
{
    return around("<a>", repeated(n, "<!--x-->"), "</a>");
}
std::string instructionsAround(std::size_t n)
{
    return around("", repeated(n, "<?p d?>\n"), "<a/>") + repeated(n, "<!--x-->\n");
}
std::string cdatas(std::size_t n)
{
    return around("<a>", repeated(n, "<![CDATA[x]]>t"), "</a>");
}
std::string blanksInATag(std::size_t n)
{
    return around("<a", repeated(n, "\r\n ") + "b" + std::string(n, ' ') + "=", "'v' />");
}

constexpr std::size_t kMega = 1000000;

}  // namespace

const std::vector<Shape>& hostileShapes()
{
    // clang-format off
    static const std::vector<Shape> shapes = {
        // name                                    make                       small   full     well-formed
        {"nested elements",                        nested,                    10000,  kMega,   true},
        {"nested elements that never close",       neverClosed,               10000,  kMega,   false},
        {"nested elements, the last closed wrong", closedWrongly,             10000,  200000,   false},
        {"nested elements of a namespace",         nestedInANamespace,        10000,  200000,   true, true},
        {"nested elements of a default namespace", nestedInADefault,          10000,  200000,   true},
        {"siblings",                               siblings,                  20000,  kMega,   true},
        {"siblings with all that there is",        siblingsWithAll,           5000,  50000,  true},
        {"siblings of as many names",              distinctSiblings,          10000,  200000,   true},
        {"attributes",                             attributes,                10000,  200000,  true},
        {"attributes of two namespaces",           attributesInOneNamespace,  5000,  200000,  true},
        {"one attribute in as many namespaces",    attributeInManyNamespaces, 5000,  200000,  true},
        {"an attribute that stands twice",         attributeTwice,            10000,  200000,  false},
        {"declarations and as many uses",          declarationsAndUses,       5000,  200000,  true, true},
        {"a prefix declared at each level",        prefixAtEachLevel,         2500,   20000,   true, true},
        {"another prefix declared at each level",  otherPrefixAtEachLevel,    2500,   20000,   true, true},
        {"text",                                   text,                      200000, 100*kMega, true},
        {"text beyond ASCII",                      textBeyondAscii,           100000, 2*kMega, true},
        {"blanks in text",                         blanksInText,              200000, 10*kMega, true},
        {"blanks only",                            blanksOnly,                100000, 2*kMega, true},
        {"a name",                                 name,                      200000, 100*kMega, true},
        {"a prefix",                               prefix,                    200000, 10*kMega, true},
        {"a namespace name",                       namespaceName,             200000, 10*kMega, true},
        {"a comment",                              comment,                   200000, 100*kMega, true},
        {"a comment of hyphens",                   hyphens,                   100000, kMega, true},
        {"an attribute value",                     value,                     200000, 100*kMega, true},
        {"a CDATA section",                        cdata,                     200000, 100*kMega, true},
        {"a CDATA section of brackets",            bracketsInCData,           50000,  kMega, true},
        {"a processing instruction",               instruction,               200000, 100*kMega, true},
        {"a processing instruction of marks",      questionMarks,             200000, 2*kMega, true},
        {"a document type declaration",            doctype,                   200000, 100*kMega, true},
        {"a document type with declarations",      bracketsInDoctype,         20000,  200000,   true},
        {"a document type that never ends",        neverEndingDoctype,        100000, kMega, false},
        {"character references",                   references,                50000,  10*kMega, true},
        {"character references in a value",        referencesInAValue,        50000,  kMega, true},
        {"entity references",                      entities,                  50000,  kMega, true},
        {"a reference of many digits",             digits,                    100000, kMega,   true},
        {"a reference beyond all characters",      tooManyDigits,             100000, kMega,   false},
        {"comments",                               comments,                  20000,  200000,   true},
        {"instructions and comments around",       instructionsAround,        20000,  200000,   true},
        {"CDATA sections and texts",               cdatas,                    20000,  200000,   true},
        {"blanks in a tag",                        blanksInATag,              100000, kMega, true},
    };
    // clang-format on
    return shapes;
}
