// Expat, with namespaces: events only.
#include "contest.hpp"

#include <expat.h>

#include <stdexcept>

namespace netxml::bench {
namespace {

class Events : public Work {
public:
    explicit Events(const Document& document) : document_{document} {}
    void run() override
    {
        elements_ = 0;
        XML_Parser parser = XML_ParserCreateNS(nullptr, '|');
        XML_SetUserData(parser, &elements_);
        XML_SetElementHandler(
            parser,
            [](void* data, const XML_Char*, const XML_Char**) {
                ++*static_cast<std::size_t*>(data);
            },
            [](void*, const XML_Char*) {});
        XML_SetCharacterDataHandler(parser, [](void*, const XML_Char*, int) {});
        const XML_Status status = XML_Parse(parser, document_.text.data(),
                                            static_cast<int>(document_.text.size()), XML_TRUE);
        XML_ParserFree(parser);
        if (status != XML_STATUS_OK) throw std::runtime_error{"Expat refuses a document"};
    }
    void check() override { requireSame(elements_, document_.elements, "elements"); }

private:
    const Document& document_;
    std::size_t elements_ = 0;
};

constexpr Operation kOperations[] = {
    {"events",
     [](const Document& document) -> std::unique_ptr<Work> {
         return std::make_unique<Events>(document);
     }},
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runContest(argc, argv, netxml::bench::kOperations);
}
