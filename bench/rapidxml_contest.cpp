// RapidXML: it checks next to nothing, as pugixml. It parses in place and destroys the text, so the
// copy of it is made while the clock runs. The fast mode leaves references as they are and ends no
// text by a zero. There is no copy of a tree that would not share the text of the first.
#include "library_frame.hpp"

#include <iterator>
#include <rapidxml/rapidxml.hpp>

// The functions of its printer call each other, and are not declared before.
namespace rapidxml::internal {
// clang-format off
template <class Out, class Ch> Out print_children(Out, const xml_node<Ch>*, int, int);
template <class Out, class Ch> Out print_attributes(Out, const xml_node<Ch>*, int);
template <class Out, class Ch> Out print_data_node(Out, const xml_node<Ch>*, int, int);
template <class Out, class Ch> Out print_cdata_node(Out, const xml_node<Ch>*, int, int);
template <class Out, class Ch> Out print_element_node(Out, const xml_node<Ch>*, int, int);
template <class Out, class Ch> Out print_declaration_node(Out, const xml_node<Ch>*, int, int);
template <class Out, class Ch> Out print_comment_node(Out, const xml_node<Ch>*, int, int);
template <class Out, class Ch> Out print_doctype_node(Out, const xml_node<Ch>*, int, int);
template <class Out, class Ch> Out print_pi_node(Out, const xml_node<Ch>*, int, int);
// clang-format on
}  // namespace rapidxml::internal
#include <rapidxml/rapidxml_print.hpp>

namespace netxml::bench {
namespace {

// The nodes point into the text.
struct InPlace {
    std::vector<char> text;
    rapidxml::xml_document<> document;
};

void addNode(Tally& tally, const rapidxml::xml_node<>* node)
{
    tally.elements += node->type() == rapidxml::node_element;
    if (node->type() == rapidxml::node_data || node->type() == rapidxml::node_cdata)
        tally.add(node->value(), node->value_size());
    for (const auto* attribute = node->first_attribute(); attribute;
         attribute = attribute->next_attribute()) {
        if (std::string_view{attribute->name(), attribute->name_size()}.starts_with("xmlns"))
            continue;
        ++tally.attributes;
        tally.add(attribute->value(), attribute->value_size());
    }
    for (const auto* child = node->first_node(); child; child = child->next_sibling())
        addNode(tally, child);
}

struct RapidXml {
    using Tree = std::unique_ptr<InPlace>;
    static constexpr bool kReadsGb18030 = false;

    static Tree build(const Memory& input) { return parse<rapidxml::parse_default>(input); }
    static Tree buildFast(const Memory& input) { return parse<rapidxml::parse_fastest>(input); }

    static void count(const Tree& tree, Tally& tally) { addNode(tally, &tree->document); }
    static std::string write(const Tree& tree)
    {
        std::string text;
        rapidxml::print(std::back_inserter(text), tree->document, rapidxml::print_no_indenting);
        return text;
    }

private:
    template <int Flags>
    static Tree parse(const Memory& input)
    {
        Tree tree = std::make_unique<InPlace>();
        tree->text.reserve(input.text.size() + 1);
        tree->text.assign(input.text.begin(), input.text.end());
        tree->text.push_back('\0');
        try {
            tree->document.parse<Flags>(tree->text.data());
        } catch (const rapidxml::parse_error&) {
            throw Refused{"RapidXML refuses a document"};
        }
        return tree;
    }
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runLibrary<netxml::bench::RapidXml>(argc, argv);
}
