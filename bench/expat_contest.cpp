// Expat, with namespaces: events only. The fast mode uses one parser for all documents.
#include "library_frame.hpp"

#include <expat.h>

#include <fstream>

namespace netxml::bench {
namespace {

class CountingParser {
public:
    CountingParser() { begin(); }

    // Makes the parser as new, for another document.
    void reset()
    {
        XML_ParserReset(parser_.get(), nullptr);
        elements_ = 0;
        begin();
    }
    void parse(std::string_view text, bool last)
    {
        if (XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), last) !=
            XML_STATUS_OK)
            throw Refused{"Expat refuses a document"};
    }
    std::size_t elements() const { return elements_; }

private:
    void begin()
    {
        XML_SetUserData(parser_.get(), &elements_);
        XML_SetElementHandler(
            parser_.get(),
            [](void* data, const XML_Char*, const XML_Char**) {
                ++*static_cast<std::size_t*>(data);
            },
            [](void*, const XML_Char*) {});
        XML_SetCharacterDataHandler(parser_.get(), [](void*, const XML_Char*, int) {});
    }

    std::unique_ptr<XML_ParserStruct, FreeBy<XML_ParserFree>> parser_{
        XML_ParserCreateNS(nullptr, '|')};
    std::size_t elements_ = 0;
};

struct Expat {
    static constexpr bool kReadsGb18030 = false;

    static std::size_t events(const Memory& input)
    {
        CountingParser parser;
        parser.parse(input.text, true);
        return parser.elements();
    }
    static std::size_t eventsFast(const Memory& input)
    {
        static CountingParser parser;
        parser.reset();
        parser.parse(input.text, true);
        return parser.elements();
    }
    static std::size_t events(const Chunks& input)
    {
        CountingParser parser;
        for (const std::string& piece : input.pieces) parser.parse(piece, false);
        parser.parse({}, true);
        return parser.elements();
    }
    static std::size_t events(const File& input)
    {
        constexpr std::size_t kBlock = 65536;
        CountingParser parser;
        std::ifstream file{input.path, std::ios::binary};
        std::string block(kBlock, '\0');
        while (file.read(block.data(), kBlock) || file.gcount() != 0)
            parser.parse({block.data(), static_cast<std::size_t>(file.gcount())}, false);
        parser.parse({}, true);
        return parser.elements();
    }
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runLibrary<netxml::bench::Expat>(argc, argv);
}
