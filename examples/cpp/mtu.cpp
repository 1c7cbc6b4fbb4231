// Checks the interfaces of a configuration, raises what is too small, and writes the document and a
// report of what was done.
#include <netxml/netxml.hpp>

#include <algorithm>
#include <iostream>

namespace {

// <xs:element name="mtu" type="xs:unsignedShort"/>, as a record that lives as long as the program.
netxml::Result<netxml::Schema> mtuSchema()
{
    static Schema_ElementDecl mtu{};
    mtu.name = "mtu";
    mtu.type = Schema_BLDIN_unsignedShort();
    mtu.typeKind = SCHEMA_KIND_SIMPLE_TYPE;
    mtu.minOccurs = mtu.maxOccurs = 1;
    return netxml::Schema::of({{&mtu, SCHEMA_KIND_ELEMENT}});
}

// Gives an interface an MTU of at least 1500. Returns whether it had to be changed.
netxml::Result<bool> raise(netxml::Element interface, const netxml::Schema& schema)
{
    const netxml::Element mtu = interface.child("mtu");
    if (!mtu) return interface.addElement("mtu", "1500").map([](netxml::Element) { return true; });
    const netxml::Result<netxml::Verdict> verdict = schema.validate(mtu);
    if (!verdict) return verdict.error();
    if (!verdict->valid()) std::cout << verdict->sentence << '\n';
    if (verdict->valid() && std::stoi(mtu.text().str()) >= 1500) return false;
    if (netxml::Status set = mtu.setText("1500"); !set) return set.error();
    return true;
}

netxml::Status run(netxml::Document& document)
{
    const netxml::Result<netxml::Schema> schema = mtuSchema();
    if (!schema) return schema.error();
    std::string report;
    netxml::Writer writer{report, {XML_ENCODING_UTF_8, false}};
    writer.start("raised");
    for (const netxml::Element interface : document.root().children("interface")) {
        const netxml::Result<bool> raised = raise(interface, *schema);
        if (!raised) return raised.error();
        if (*raised) writer.element("interface", interface.attribute("name").value());
    }
    if (netxml::Status done = writer.end().finish(); !done) return done;

    const auto below = document.root().descendants();
    std::cout << std::count_if(below.begin(), below.end(), [](netxml::Node node) {
        return node.isElement();
    }) << " elements\n";
    const netxml::Result<std::string> text = document.write();
    if (!text) return text.error();
    std::cout << *text << '\n' << report << '\n';
    return {};
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) return std::cerr << "usage: mtu FILE\n", 2;
    netxml::Result<netxml::Document> document = netxml::Document::parseFile(argv[1]);
    if (!document) return std::cerr << argv[1] << ':' << document.error() << '\n', 1;
    if (const netxml::Status done = run(*document); !done)
        return std::cerr << done.error() << '\n', 1;
    return 0;
}
