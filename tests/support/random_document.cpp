#include "tests/support/random_document.hpp"

std::string RandomDocument::name()
{
    static const char* const kNames[] = {
        "a",   "b",     "c",    "interface",        "x-1", "_y", "n.m",   "é", "配置", "名前",
        "xml", "xmlns", "xmlx", "\xF0\x90\x80\x80", "a·",  "Ａ", "config"};
    if (chance(60)) return std::string(pick(2000) + 1, 'n');
    if (chance(20)) return one(kNames) + one(kNames);
    return chance(2) ? one({"a", "b", "c"}) : one(kNames);
}

std::string RandomDocument::qualifiedName()
{
    if (chance(4)) return one({"p", "q", "r", "é", "p", "q", "r", "xml"}) + ":" + name();
    return name();
}

std::string RandomDocument::blanks()
{
    std::string result;
    const std::size_t count = chance(30) ? pick(300) : pick(2);
    for (std::size_t i = 0; i < count; ++i) result += one({" ", " ", "\t", "\n", "\r", "\r\n"});
    return result;
}

std::string RandomDocument::reference()
{
    if (chance(40))
        return one({"&#;", "&#0;", "&#x;", "&e;", "&lt", "&#x110000;", "&#xFFFE;", "&", "&#12"});
    return one({"&lt;", "&gt;", "&amp;", "&apos;", "&quot;", "&#65;", "&#x4e2d;", "&#32;", "&#xA;",
                "&#x10FFFF;", "&#4294967361;", "&#00000000065;"});
}

std::string RandomDocument::text()
{
    std::string result;
    const std::size_t pieces = pick(6);
    for (std::size_t i = 0; i < pieces; ++i) {
        result += one({"x", " ", "word ", "\n  ", "1500", "中文", "é", "]", "]]", ">", "\"", "'",
                       "\xF0\x9F\x98\x80"});
        if (chance(12)) result += reference();
        if (chance(25)) result += std::string(pick(1500), 't');
        if (chance(40)) result += blanks();
    }
    return result;
}

std::string RandomDocument::attributeValue()
{
    const std::string quote = one({"\"", "'"});
    std::string value;
    const std::size_t pieces = pick(3);
    for (std::size_t i = 0; i < pieces; ++i) {
        value += one({"v", "urn:x", " ", "\n", "值", "10.0.0.1", "]]>", ">"});
        if (chance(10)) value += reference();
        if (chance(60)) value += std::string(pick(1200), 'v');
    }
    return quote + value + quote;
}

std::string RandomDocument::attributes()
{
    std::string result;
    const std::size_t count = chance(40) ? pick(60) : pick(3);
    for (std::size_t i = 0; i < count; ++i) {
        result += chance(200) ? blanks() : " " + blanks();
        if (chance(8)) {
            result += one({"xmlns", "xmlns:s", "xmlns:t", "xmlns:é"}) + "=";
            result += one({"'urn:p'", "'urn:q'", "\"urn:p\"", "'urn:é'"});
        } else if (chance(60)) {
            result += one({"xmlns", "xmlns:xml", "xmlns:xmlns", "xmlns:p"}) + "=";
            result += one({"''", "'http://www.w3.org/XML/1998/namespace'",
                           "'http://www.w3.org/2000/xmlns/'"});
        } else {
            result += chance(30) ? qualifiedName() : chance(6) ? "xml:" + name() : name();
            if (!chance(20)) result += std::to_string(i);
            result += (chance(20) ? blanks() : "") + "=" + (chance(20) ? blanks() : "") +
                      attributeValue();
        }
    }
    return result + blanks();
}

std::string RandomDocument::comment()
{
    return "<!--" + text() + (chance(60) ? "--" : "") + (chance(60) ? "-" : "") + "-->";
}

std::string RandomDocument::instruction()
{
    return "<?" + (chance(60) ? "xml" : name()) + (chance(3) ? "" : " " + text()) + "?>";
}

std::string RandomDocument::declaration()
{
    std::string result =
        std::string{"<?xml"} + (chance(40) ? "" : one({" ", "\n"})) + "version" + one({"=", " = "});
    result += chance(30) ? one({"'1.1'", "'1.0\"", "1.0"}) : one({"'1.0'", "\"1.0\""});
    if (chance(2)) {
        result += (chance(40) ? "" : one({" ", "\n "})) + "encoding=";
        result += chance(5)
                      ? one({"'GB18030'", "'GBK'", "'GB2312'", "'UTF-16'", "'UTF'", "'ISO-8859-1'"})
                      : one({"'UTF-8'", "\"utf-8\""});
    }
    if (chance(4)) result += " standalone=" + (chance(20) ? "'maybe'" : one({"'yes'", "\"no\""}));
    return result + (chance(60) ? "" : one({"?>", " ?>", "\n?>"}));
}

std::string RandomDocument::doctype()
{
    return std::string{"<!DOCTYPE"} + (chance(40) ? "" : " ") + name() +
           one({"", " SYSTEM 'x.dtd'", " [<!ENTITY e 'x'>]", " [ ]] ", "[\n]\n"}) +
           (chance(40) ? "" : ">");
}

std::string RandomDocument::items()
{
    std::string result = blanks();
    while (chance(4)) result += (chance(2) ? comment() : instruction()) + blanks();
    return result;
}

std::string RandomDocument::content(int depth)
{
    std::string result;
    const std::size_t count = pick(4);
    for (std::size_t i = 0; i < count; ++i) {
        switch (pick(9)) {
        case 0: result += comment(); break;
        case 1: result += instruction(); break;
        case 2: result += "<![CDATA[" + text() + (chance(10) ? "<&" : "") + "]]>"; break;
        case 3:
        case 4: result += text(); break;
        case 5: result += blanks(); break;
        default: result += depth < 6 ? element(depth + 1) : text();
        }
    }
    return result;
}

std::string RandomDocument::element(int depth)
{
    const std::string tag = qualifiedName();
    std::string start = "<" + tag;
    // Mostly a prefix is declared where it is used.
    const std::size_t colon = tag.find(':');
    if (colon != std::string::npos && tag.compare(0, 3, "xml") != 0 && !chance(60))
        start += " xmlns:" + tag.substr(0, colon) + "='urn:" + tag.substr(0, 1) + "'";
    start += attributes();
    if (chance(4)) return start + "/>";
    std::string end = "</" + tag + (chance(10) ? blanks() : "") + ">";
    if (chance(300)) end = "</" + qualifiedName() + ">";
    return start + ">" + content(depth) + end;
}

void RandomDocument::damage(std::string& document)
{
    for (std::size_t count = pick(2) + 1; count != 0 && !document.empty(); --count) {
        const std::size_t at = pick(document.size() - 1);
        switch (pick(5)) {
        case 0: document.resize(at); break;
        case 1: document[at] = static_cast<char>(pick(255)); break;
        case 2: document.erase(at, pick(4) + 1); break;
        case 3:
            document.insert(
                at, one({"<", ">", "&", "\"", "]]>", "--", "<!--", "\xE4\xB8", "\x80", "\xC1\x81",
                         "\xFF", "\xF8\x90\x80\x80", "\xED\xA0\x80", "=", " ", "\r", "/"}));
            break;
        case 4: document.insert(at, document.substr(pick(document.size() - 1), pick(40))); break;
        default: document.insert(at, 1, '\0'); break;
        }
    }
}

std::string RandomDocument::next()
{
    std::string document = chance(3) ? declaration() : "";
    document += items();
    if (chance(6)) document += doctype() + items();
    if (!chance(100)) document += element(0);
    document += items();
    if (chance(100)) document += element(0);
    if (chance(3)) damage(document);
    return document;
}
