// TinyXML-2: it checks tags against each other, but neither UTF-8 nor namespaces or duplicates. The
// fast mode leaves references as they are.
#include "library_frame.hpp"

#include <tinyxml2.h>

namespace netxml::bench {
namespace {

void addNode(Tally& tally, const tinyxml2::XMLNode* node)
{
    if (const tinyxml2::XMLText* text = node->ToText()) tally.add(text->Value());
    if (const tinyxml2::XMLElement* element = node->ToElement()) {
        ++tally.elements;
        for (const auto* attribute = element->FirstAttribute(); attribute;
             attribute = attribute->Next()) {
            if (std::string_view{attribute->Name()}.starts_with("xmlns")) continue;
            ++tally.attributes;
            tally.add(attribute->Value());
        }
    }
    for (const auto* child = node->FirstChild(); child; child = child->NextSibling())
        addNode(tally, child);
}

// The printer keeps its text, and has no way to give it away; so it is the text.
struct PrintedText {
    std::unique_ptr<tinyxml2::XMLPrinter> printer;
    operator std::string_view() const
    {
        return {printer->CStr(), static_cast<std::size_t>(printer->CStrSize()) - 1};
    }
};

// What is written goes here instead of into the printer's buffer.
class CountingPrinter : public tinyxml2::XMLPrinter {
public:
    CountingPrinter() : XMLPrinter{nullptr, true} {}
    std::size_t size = 0;

protected:
    void Print(const char*, ...) override {}  // used for values that are no text
    void Write(const char*, std::size_t length) override { size += length; }
    void Putc(char) override { ++size; }
};

struct TinyXml2 {
    using Tree = std::unique_ptr<tinyxml2::XMLDocument>;
    static constexpr bool kReadsGb18030 = false;

    static Tree build(const Memory& input) { return parse(input, true); }
    static Tree buildFast(const Memory& input) { return parse(input, false); }
    static Tree build(const File& input)
    {
        Tree tree = std::make_unique<tinyxml2::XMLDocument>();
        const tinyxml2::XMLError error = tree->LoadFile(input.path.c_str());
        return accepted(std::move(tree), error);
    }

    static void count(const Tree& tree, Tally& tally) { addNode(tally, tree.get()); }
    static Tree copy(const Tree& tree)
    {
        Tree copy = std::make_unique<tinyxml2::XMLDocument>();
        tree->DeepCopy(copy.get());
        return copy;
    }
    static PrintedText write(const Tree& tree)
    {
        PrintedText text{std::make_unique<tinyxml2::XMLPrinter>(nullptr, true)};
        tree->Print(text.printer.get());
        return text;
    }
    static std::size_t writeTo(const Tree& tree)
    {
        CountingPrinter printer;
        tree->Print(&printer);
        return printer.size;
    }

private:
    static Tree accepted(Tree tree, tinyxml2::XMLError error)
    {
        if (error != tinyxml2::XML_SUCCESS) throw Refused{"TinyXML-2 refuses a document"};
        return tree;
    }
    static Tree parse(const Memory& input, bool references)
    {
        Tree tree = std::make_unique<tinyxml2::XMLDocument>(references);
        const tinyxml2::XMLError error = tree->Parse(input.text.data(), input.text.size());
        return accepted(std::move(tree), error);
    }
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runLibrary<netxml::bench::TinyXml2>(argc, argv);
}
