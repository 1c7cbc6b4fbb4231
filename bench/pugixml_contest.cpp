// pugixml: it checks neither names nor characters, UTF-8, namespaces or duplicates in any mode. The
// fast mode leaves references and line ends as they are. The copy of the text that parsing destroys
// is made while the clock runs: the others leave the caller's bytes as they are.
#include "library_frame.hpp"

#include <pugixml.hpp>

namespace netxml::bench {
namespace {

void addNode(Tally& tally, const pugi::xml_node& node)
{
    tally.elements += node.type() == pugi::node_element;
    tally.add(node.value());
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        if (std::string_view{attribute.name()}.starts_with("xmlns")) continue;
        ++tally.attributes;
        tally.add(attribute.value());
    }
    for (const pugi::xml_node& child : node.children()) addNode(tally, child);
}

// Collects or counts what is written; the writer asks for virtual functions.
struct Collector : pugi::xml_writer {
    std::string text;
    void write(const void* data, std::size_t size) override
    {
        text.append(static_cast<const char*>(data), size);
    }
};
struct Counter : pugi::xml_writer {
    std::size_t size = 0;
    void write(const void*, std::size_t length) override { size += length; }
};

struct Pugixml {
    using Tree = std::unique_ptr<pugi::xml_document>;
    static constexpr bool kReadsGb18030 = false;

    static Tree build(const Memory& input) { return load(input, pugi::parse_default); }
    static Tree buildFast(const Memory& input)
    {
        return load(input, pugi::parse_minimal, pugi::encoding_utf8);
    }
    static Tree build(const File& input)
    {
        Tree tree = std::make_unique<pugi::xml_document>();
        if (!tree->load_file(input.path.c_str())) throw Refused{"pugixml refuses a document"};
        return tree;
    }

    static void count(const Tree& tree, Tally& tally) { addNode(tally, *tree); }
    static Tree copy(const Tree& tree)
    {
        Tree copy = std::make_unique<pugi::xml_document>();
        copy->reset(*tree);
        return copy;
    }
    static std::string write(const Tree& tree)
    {
        Collector collector;
        tree->save(collector, "", pugi::format_raw, pugi::encoding_utf8);
        return std::move(collector.text);
    }
    static std::size_t writeTo(const Tree& tree)
    {
        Counter counter;
        tree->save(counter, "", pugi::format_raw, pugi::encoding_utf8);
        return counter.size;
    }

private:
    static Tree load(const Memory& input, unsigned options,
                     pugi::xml_encoding encoding = pugi::encoding_auto)
    {
        Tree tree = std::make_unique<pugi::xml_document>();
        if (!tree->load_buffer(input.text.data(), input.text.size(), options, encoding))
            throw Refused{"pugixml refuses a document"};
        return tree;
    }
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runLibrary<netxml::bench::Pugixml>(argc, argv);
}
