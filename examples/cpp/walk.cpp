#include <netxml/netxml.hpp>

#include <iostream>

int main(int argc, char** argv)
{
    auto document = netxml::Document::parseFile(argc > 1 ? argv[1] : "");
    if (!document) return std::cerr << document.error() << '\n', 1;

    for (netxml::Element child : document->root().elements()) std::cout << child.path() << '\n';
    auto added = document->root().addElement("hostname", "edge-1");
    if (!added) return std::cerr << added.error() << '\n', 1;

    std::cout << document->write().value_or("cannot be written") << '\n';
}
