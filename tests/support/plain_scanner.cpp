#include "tests/support/plain_scanner.hpp"

#include "io/in_stream.hpp"

#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Code = uint32_t;

const char* const kEncodings[] = {"UTF-8",    "UTF-16LE", "UTF-16BE", "GB2312", "UTF-32LE",
                                  "UTF-32BE", "UTF-16",   "UTF-32",   "GBK",    "GB18030",
                                  "UCS-4",    "UCS-4BE",  "UCS-4LE"};

const std::map<Code, const char*> kTexts = {
    {2, "memory allocation failed."},
    {72, "start tag expected, '<' not found."},
    {4, "document is empty."},
    {5, "extra content at the end of the document."},
    {9, "invalid character."},
    {32, "unsupported encoding."},
    {33, "string not started expecting \" or '."},
    {34, "string not closed expecting \" or '."},
    {45, "comment not terminated."},
    {46, "no target name."},
    {47, "expecting an end tag for style-sheet."},
    {57, "parsing XML declaration: '?>' expected."},
    {61, "DOCTYPE improperly terminated."},
    {65, "expecting a space."},
    {25, "expecting a ';'."},
    {75, "expecting a '='."},
    {78, "standalone accepts only yes or no."},
    {80, "comment must not contain '--' (double-hyphen)."},
    {96, "missing version in text declaration."},
    {97, "unsupported version."},
    {42, "attribute redefined."},
    {63, "CData not finished."},
    {1, "internal error."},
    {68, "name required."},
    {35, "namespace declare error."},
    {76, "tag name mismatch."},
    {77, "tag not finished."},
    {26, "undeclared entity."},
    {62, "sequence ']]>' not allowed in content."},
    {201, "namespace prefix is not defined."},
    {1500, "transition IO stream enCoding error."},
    {38, "unescaped '<' not allowed in attributes values"},
};

struct PlainBinding {
    bool hasPrefix;
    std::string prefix;
    std::string name;
};

struct PlainAttribute {
    bool hasPrefix;
    std::string prefix;
    const char* name;  // namespace name, NULL for none
    std::string local;
    std::string value;
};

struct PlainElement {
    bool hasPrefix;
    std::string prefix;
    std::string local;
    std::size_t bindings;  // in scope before it
};

class PlainScanner {
public:
    PlainScanner(XML_IO_InStream* stream, const XML_SAX_Handler* handler) : s{stream}, h{handler}
    {
        p.handler = handler;
        p.stream = stream;
        p.line = 1;
        p.column = 1;
        p.version = "1.0";
        p.encoding = s->encoding;
    }

    uint32_t run()
    {
        Code code = document();
        if (status() == 2) code = 2;
        if (status() == 3) code = 32;
        if (status() == 4) code = 1500;
        if (code == 0) return XML_RET_OK;
        p.error = code;
        if (h && h->error) {
            const std::string text = excerpt();
            const auto found = kTexts.find(code);
            const char* message = found == kTexts.end() ? "unknown error occurred." : found->second;
            h->error(&p, "The Line %d Column %d :\"%s\", %s", static_cast<int>(p.line),
                     static_cast<int>(p.column), text.c_str(), message);
        }
        return XML_RET_FAIL;
    }

private:
    // -- the input
    // ---------------------------------------------------------------------------------
    uint32_t status() const { return static_cast<uint32_t>(s->status); }
    std::size_t left() const { return static_cast<std::size_t>(s->end - s->cursor); }
    bool ended() const { return left() == 0; }
    bool is(const char* text) const { return XML_IO_Strncmp(s, text, std::strlen(text)) == 1; }
    bool isBlank() const
    {
        return !ended() && (*s->cursor == ' ' || *s->cursor == '\t' || *s->cursor == '\r' ||
                            *s->cursor == '\n');
    }
    void advance()
    {
        const uint8_t b = *s->cursor;
        std::size_t step = 1;
        if (b >= 0x80) {
            const std::size_t steps[] = {2, 2, 3, 4};
            step = steps[(b >> 4) & 3];
            ++p.column;
        } else if (b == '\r' && left() >= 2 && s->cursor[1] == '\n') {
            ++p.column;
        } else if (b == '\r' || b == '\n') {
            ++p.line;
            p.column = 1;
        } else {
            ++p.column;
        }
        s->cursor += step < left() ? step : left();
        XML_IO_Grow(s);
    }
    void advance(int n)
    {
        while (n-- > 0) advance();
    }
    void mark() { s->mark = s->cursor; }
    void blanks(bool marking = true)
    {
        while (isBlank()) {
            advance();
            if (marking) mark();
        }
    }
    static bool within(uint32_t c, uint32_t a, uint32_t b) { return c >= a && c <= b; }
    static bool validCode(uint32_t c)
    {
        return c == 9 || c == 10 || c == 13 || within(c, 0x20, 0xD7FF) ||
               within(c, 0xE000, 0xFFFD) || within(c, 0x10000, 0x10FFFF);
    }
    static bool startCode(uint32_t c)
    {
        return within(c, 'A', 'Z') || c == '_' || within(c, 'a', 'z') || within(c, 0xC0, 0xD6) ||
               within(c, 0xD8, 0xF6) || within(c, 0xF8, 0x2FF) || within(c, 0x370, 0x37D) ||
               within(c, 0x37F, 0x1FFF) || within(c, 0x200C, 0x200D) || within(c, 0x2070, 0x218F) ||
               within(c, 0x2C00, 0x2FEF) || within(c, 0x3001, 0xD7FF) ||
               within(c, 0xF900, 0xFDCF) || within(c, 0xFDF0, 0xFFFD) ||
               within(c, 0x10000, 0xEFFFF);
    }
    static bool nameCode(uint32_t c)
    {
        return startCode(c) || c == '-' || c == '.' || within(c, '0', '9') || c == 0xB7 ||
               within(c, 0x300, 0x36F) || within(c, 0x203F, 0x2040);
    }
    uint32_t decode() const
    {
        constexpr uint32_t kNone = 0xFFFFFFFF;
        if (ended()) return kNone;
        const uint8_t* b = s->cursor;
        if (b[0] < 0x80) return b[0];
        if (b[0] < 0xC0 || left() < 2) return kNone;
        if (b[0] == 0xE0 && !within(b[1], 0xA0, 0xBF)) return kNone;
        if (b[0] == 0xED && !within(b[1], 0x80, 0x9F)) return kNone;
        if (b[0] == 0xF0 && !within(b[1], 0x90, 0xBF)) return kNone;
        if (b[0] == 0xF4 && !within(b[1], 0x80, 0x8F)) return kNone;
        if (!within(b[1], 0x80, 0xBF)) return kNone;
        const std::size_t length = b[0] < 0xE0 ? 2 : b[0] < 0xF0 ? 3 : 4;
        if (left() < length) return kNone;
        uint32_t c = b[0] & (length == 2 ? 0x1F : length == 3 ? 0x0F : 0x07);
        for (std::size_t i = 1; i < length; ++i) {
            if (!within(b[i], 0x80, 0xBF)) return kNone;
            c = c * 64 + (b[i] & 0x3F);
        }
        return c;
    }
    bool isValid() const { return validCode(decode()); }
    std::string fromMark() const
    {
        return {reinterpret_cast<const char*>(s->mark),
                static_cast<std::size_t>(s->cursor - s->mark)};
    }
    void copyCharacter(std::string& to)
    {
        const uint8_t b = *s->cursor;
        const std::size_t n = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
        to.append(reinterpret_cast<const char*>(s->cursor), n);
        advance();
    }
    std::string excerpt() const
    {
        if (s->base == s->end) return {};
        const uint8_t* start = s->cursor;
        for (int i = 0; i < 32 && start != s->base; ++i) --start;
        while (start != s->end && (*start & 0xC0) == 0x80) ++start;
        std::string text(reinterpret_cast<const char*>(start),
                         static_cast<std::size_t>(s->end - start));
        if (text.size() > 63) text.resize(63);
        for (std::size_t i = 1; i <= text.size() && i <= 4; ++i) {
            const auto b = static_cast<uint8_t>(text[text.size() - i]);
            if ((b & 0xC0) == 0x80) continue;
            const std::size_t announced = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
            if (announced > i) text.resize(text.size() - i);
            break;
        }
        return text.c_str();  // as far as a zero byte, as printf shows it
    }

    // -- the document
    // ------------------------------------------------------------------------------
    Code document()
    {
        if (s->encoding == 0 && left() >= 4) {
            XML_Encoding found = 0;
            if (is("<?xm")) found = 0;
            else if (std::memcmp(s->cursor, "<\0?\0", 4) == 0) found = 1;
            else if (std::memcmp(s->cursor, "\0<\0?", 4) == 0) found = 2;
            else if (std::memcmp(s->cursor, "<\0\0\0", 4) == 0) found = 4;
            else if (std::memcmp(s->cursor, "\0\0\0<", 4) == 0) found = 5;
            if (found != 0 && XML_IO_SwitchEncoding(s, found) != 0) return 1500;
        }
        Code code = is("<?xml") ? declaration() : 0;
        if (code != 0) return code;
        if (h && h->startDocument) {
            h->startDocument(&p);
            if (p.error != 0) return p.error;
        }
        if ((code = miscellaneous()) != 0) return code;
        if (is("<!DOCTYPE")) {
            if ((code = doctype()) != 0 || (code = miscellaneous()) != 0) return code;
        }
        blanks();
        if (ended()) return 4;
        if (*s->cursor != '<') return 72;
        if ((code = elements()) != 0) return code;
        blanks();
        if ((code = miscellaneous()) != 0) return code;
        blanks();
        if (!ended()) return 5;
        if (h && h->endDocument) {
            h->endDocument(&p);
            return p.error;
        }
        return 0;
    }

    Code opened(uint8_t& quote)
    {
        blanks();
        if (!is("=")) return 75;
        advance();
        blanks();
        if (!is("\"") && !is("'")) return 33;
        quote = *s->cursor;
        advance();
        return 0;
    }
    bool isByte(uint8_t byte) const { return !ended() && *s->cursor == byte; }

    Code declaration()
    {
        uint8_t quote = 0;
        Code code = 0;
        advance(5);
        if (!isBlank()) return 65;
        blanks();
        if (!is("version")) return 96;
        advance(7);
        if ((code = opened(quote)) != 0) return code;
        if (!is("1.0")) return 97;
        advance(3);
        if (!isByte(quote)) return 34;
        advance();
        bool blank = isBlank();
        blanks();
        if (is("?>")) return advance(2), 0;
        if (!blank) return 65;
        if (is("encoding")) {
            advance(8);
            if ((code = opened(quote)) != 0) return code;
            std::string value;
            while (!isByte(quote)) {
                if (ended()) return 34;
                encodingCharacter(quote, value);
            }
            const int found = encodingNamed(value);
            if (found < 0) return 32;
            advance();
            p.encoding = static_cast<XML_Encoding>(found);
            XML_IO_SwitchEncoding(s, p.encoding);
            blank = isBlank();
            blanks();
            if (is("?>")) return advance(2), 0;
            if (!blank) return 65;
        }
        if (!is("standalone")) return 57;
        advance(10);
        if ((code = opened(quote)) != 0) return code;
        if (is("yes")) advance(3);
        else if (is("no")) advance(2);
        else return 78;
        if (!isByte(quote)) return 34;
        advance();
        blanks();
        if (!is("?>")) return 57;
        advance(2);
        return 0;
    }
    // The value ends at the next byte that is the quote, also inside what a lead announces.
    void encodingCharacter(uint8_t quote, std::string& value)
    {
        const uint8_t b = *s->cursor;
        if (b < 0x80) {
            value.push_back(static_cast<char>(b));
            advance();
            return;
        }
        const std::size_t steps[] = {2, 2, 3, 4};
        const std::size_t step = steps[(b >> 4) & 3];
        std::size_t n = 0;
        do value.push_back(static_cast<char>(s->cursor[n++]));
        while (n < step && n < left() && s->cursor[n] != quote);
        s->cursor += n;
        ++p.column;
        XML_IO_Grow(s);
    }
    static int encodingNamed(const std::string& value)
    {
        for (int i = 0; i < 13; ++i) {
            if (strlen(kEncodings[i]) == value.size() &&
                strncasecmp(kEncodings[i], value.data(), value.size()) == 0)
                return i;
        }
        return -1;
    }

    Code miscellaneous()
    {
        for (;;) {
            blanks();
            Code code = 0;
            if (is("<!--")) code = comment();
            else if (is("<?")) code = instruction();
            else return 0;
            if (code != 0) return code;
        }
    }
    Code comment()
    {
        advance(4);
        mark();
        for (;;) {
            if (is("-->")) break;
            if (ended()) return 45;
            if (is("--")) return 80;
            if (!isValid()) return 9;
            advance();
        }
        const std::string text = fromMark();
        advance(3);
        if (!h || !h->comment) return 0;
        h->comment(&p, text.c_str());
        return p.error;
    }
    Code instruction()
    {
        advance(2);
        if (ended()) return 46;
        std::string target;
        if (const Code code = name(target)) return code;
        if (target == "xml") return 46;
        std::string data;
        const bool bare = is("?>");
        if (!bare) {
            if (!isBlank()) return 65;
            blanks();
            for (;;) {
                if (is("?>")) break;
                if (ended()) return 47;
                if (!isValid()) return 9;
                advance();
            }
            data = fromMark();
        }
        if (h && h->processingInstruction) {
            h->processingInstruction(&p, target.c_str(), bare ? nullptr : data.c_str());
            if (p.error != 0) return p.error;
        }
        advance(2);
        return 0;
    }
    Code doctype()
    {
        advance(9);
        if (!isBlank()) return 65;
        blanks();
        char terminator = '>';
        for (;;) {
            if (isByte(static_cast<uint8_t>(terminator))) {
                if (terminator == '>') break;
                advance();
                blanks();
                if (is(">")) break;
                continue;
            }
            if (ended()) return 61;
            if (!isValid()) return 9;
            if (is("[")) terminator = ']';
            advance();
        }
        advance();
        return 0;
    }

    // -- names and namespaces
    // ----------------------------------------------------------------------
    Code name(std::string& text)
    {
        if (!startCode(decode())) return 9;
        mark();
        while (!ended() && nameCode(decode())) advance();
        text = fromMark();
        return 0;
    }
    Code qualified(bool& hasPrefix, std::string& prefix, std::string& local)
    {
        hasPrefix = false;
        if (const Code code = name(local)) return code;
        if (!is(":")) return 0;
        advance();
        if (ended()) return 68;
        hasPrefix = true;
        prefix = local;
        return name(local);
    }
    // NULL when nothing is bound.
    const char* resolve(const std::string& prefix) const
    {
        for (auto b = bindings.rbegin(); b != bindings.rend(); ++b) {
            if (b->prefix == prefix) return b->name.c_str();
        }
        return prefix == "xml" ? "http://www.w3.org/XML/1998/namespace" : nullptr;
    }

    // -- elements
    // ----------------------------------------------------------------------------------
    Code elements()
    {
        Code code = startTag();
        while (code == 0 && !open.empty()) {
            if (is("</")) code = endTag();
            else if (ended()) code = 77;
            else if (is("<![CDATA[")) code = cdata();
            else if (is("<!--")) code = comment();
            else if (is("<?")) code = instruction();
            else if (is("<")) code = startTag();
            else code = characters();
        }
        return code;
    }
    Code startTag()
    {
        open.push_back({false, {}, {}, bindings.size()});
        const std::size_t scope = bindings.size();
        advance();
        if (ended()) return 77;
        PlainElement& element = open.back();
        Code code = qualified(element.hasPrefix, element.prefix, element.local);
        if (code != 0) return code;
        attributes.clear();
        for (;;) {
            if (is(">") || is("/>")) break;
            if (!ended() && !isBlank()) return 65;
            blanks();
            if (is(">") || is("/>")) break;
            if (ended()) return 77;
            if ((code = attribute(scope)) != 0) return code;
        }
        for (PlainAttribute& a : attributes) {
            a.name = a.hasPrefix ? resolve(a.prefix) : nullptr;
            if (a.hasPrefix && !a.name) return 201;
        }
        for (const PlainAttribute& a : attributes) {
            for (const PlainAttribute& b : attributes) {
                if (&a != &b && a.local == b.local &&
                    std::string_view{a.name ? a.name : ""} ==
                        std::string_view{b.name ? b.name : ""})
                    return 42;
            }
        }
        if (element.hasPrefix && !resolve(element.prefix)) return 201;
        if ((code = reportStart(scope)) != 0) return code;
        if (is("/>")) {
            advance(2);
            return closeElement();
        }
        advance();
        return 0;
    }
    Code attribute(std::size_t scope)
    {
        PlainAttribute a{};
        Code code = qualified(a.hasPrefix, a.prefix, a.local);
        if (code != 0) return code;
        blanks(false);
        if (!is("=")) return 75;
        advance();
        blanks();
        if (!is("\"") && !is("'")) return 33;
        const uint8_t quote = *s->cursor;
        advance();
        while (!isByte(quote)) {
            if (ended()) return 34;
            if (is("<")) return 38;
            if (is("&")) {
                if ((code = reference(a.value)) != 0) return code;
            } else {
                if (!isValid()) return 9;
                copyCharacter(a.value);
            }
        }
        advance();
        if ((a.hasPrefix ? a.prefix : a.local) != "xmlns") {
            attributes.push_back(a);
            return 0;
        }
        const PlainBinding binding{a.hasPrefix, a.hasPrefix ? a.local : "", a.value};
        if (XML_CheckNamespace(binding.hasPrefix ? binding.prefix.c_str() : nullptr,
                               binding.name.c_str()) != XML_RET_OK)
            return 35;
        for (std::size_t i = scope; i < bindings.size(); ++i) {
            if (bindings[i].prefix == binding.prefix) return 42;
        }
        bindings.push_back(binding);
        return 0;
    }
    Code reportStart(std::size_t scope)
    {
        if (!h || !h->startElementNs) return 0;
        std::vector<const char*> d;
        std::vector<const char*> a;
        for (std::size_t i = scope; i < bindings.size(); ++i) {
            d.push_back(bindings[i].hasPrefix ? bindings[i].prefix.c_str() : nullptr);
            d.push_back(bindings[i].name.c_str());
        }
        for (const PlainAttribute& x : attributes) {
            a.push_back(x.local.c_str());
            a.push_back(x.hasPrefix ? x.prefix.c_str() : nullptr);
            a.push_back(x.name);
            a.push_back(x.value.c_str());
            a.push_back(x.value.c_str() + x.value.size());
        }
        const PlainElement& e = open.back();
        h->startElementNs(&p, e.local.c_str(), e.hasPrefix ? e.prefix.c_str() : nullptr,
                          resolve(e.prefix), static_cast<uint32_t>(d.size() / 2), d.data(),
                          static_cast<uint32_t>(a.size() / 5), 0, a.data());
        return p.error;
    }
    bool follows(const std::string& text)
    {
        netxml::fillAhead(*s, text.size());
        return left() >= text.size() && std::memcmp(s->cursor, text.data(), text.size()) == 0;
    }
    void advanceOver(std::size_t bytes)
    {
        while (bytes != 0) {
            const uint8_t b = *s->cursor;
            bytes -= b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
            advance();
        }
    }
    Code endTag()
    {
        const PlainElement e = open.back();
        advance(2);
        if (e.hasPrefix) {
            if (!follows(e.prefix + ":")) return 76;
            advanceOver(e.prefix.size() + 1);
        }
        if (!follows(e.local)) return 76;
        advanceOver(e.local.size());
        blanks();
        if (!is(">")) return 77;
        advance();
        return closeElement();
    }
    Code closeElement()
    {
        const PlainElement e = open.back();
        if (h && h->endElementNs)
            h->endElementNs(&p, e.local.c_str(), e.hasPrefix ? e.prefix.c_str() : nullptr,
                            resolve(e.prefix));
        bindings.resize(e.bindings);
        open.pop_back();
        return p.error;
    }

    // -- text
    // --------------------------------------------------------------------------------------
    Code cdata()
    {
        advance(9);
        mark();
        while (!is("]]>")) {
            if (ended()) return 63;
            if (!isValid()) return 9;
            advance();
        }
        if (h && h->cdata) {
            const auto length = static_cast<uint32_t>(s->cursor - s->mark);
            h->cdata(&p, reinterpret_cast<const char*>(s->mark), length);
            if (p.error != 0) return p.error;
        }
        advance(3);
        return 0;
    }
    Code characters()
    {
        std::string text;
        std::size_t trailing = 0;
        blanks();
        while (!ended() && !is("<")) {
            if (is("]]>")) return 62;
            if (is("&")) {
                if (const Code code = reference(text)) return code;
                trailing = 0;
                continue;
            }
            if (!isValid()) return 9;
            trailing = isBlank() ? trailing + 1 : 0;
            copyCharacter(text);
        }
        text.resize(text.size() - trailing);
        if (text.empty() || !h || !h->characters) return 0;
        h->characters(&p, text.c_str(), static_cast<uint32_t>(text.size()));
        return p.error;
    }
    Code reference(std::string& to)
    {
        advance();
        if (is("#")) {
            const uint32_t base = is("#x") ? 16 : 10;
            advance(base == 16 ? 2 : 1);
            uint32_t value = 0;
            while (!ended() && digit(*s->cursor) < base) {
                value = value * base + digit(*s->cursor);
                advance();
            }
            if (!is(";")) return 25;
            advance();
            if (!validCode(value)) return 9;
            append(to, value);
            return 0;
        }
        const std::pair<const char*, char> entities[] = {
            {"lt;", '<'}, {"gt;", '>'}, {"amp;", '&'}, {"apos;", '\''}, {"quot;", '"'}};
        for (const auto& [entity, character] : entities) {
            if (!is(entity)) continue;
            advance(static_cast<int>(std::strlen(entity)));
            to.push_back(character);
            return 0;
        }
        return 26;
    }
    static uint32_t digit(uint8_t b)
    {
        if (within(b, '0', '9')) return b - static_cast<uint32_t>('0');
        if (within(b, 'a', 'f')) return b - static_cast<uint32_t>('a') + 10;
        if (within(b, 'A', 'F')) return b - static_cast<uint32_t>('A') + 10;
        return 99;
    }
    static void append(std::string& to, uint32_t c)
    {
        if (c < 0x80) {
            to.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            to.push_back(static_cast<char>(0xC0 | c >> 6));
            to.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            to.push_back(static_cast<char>(0xE0 | c >> 12));
            to.push_back(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
            to.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            to.push_back(static_cast<char>(0xF0 | c >> 18));
            to.push_back(static_cast<char>(0x80 | (c >> 12 & 0x3F)));
            to.push_back(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
            to.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }

    XML_IO_InStream* s;
    const XML_SAX_Handler* h;
    XML_Parser p{};
    std::vector<PlainBinding> bindings;
    std::vector<PlainElement> open;
    std::vector<PlainAttribute> attributes;
};

}  // namespace

uint32_t plainParse(XML_IO_InStream* stream, const XML_SAX_Handler* handler)
{
    return PlainScanner{stream, handler}.run();
}
