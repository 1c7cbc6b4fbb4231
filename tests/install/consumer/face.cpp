// The same on the C++ face. Nothing of files or schemas, which a small library lacks.
#include <netxml/netxml.hpp>

#include <cstdio>

int main()
{
    netxml::Result<netxml::Document> document =
        netxml::Document::parse("<device name=\"edge\"><mtu>1500</mtu></device>");
    if (!document) return 1;
    // Beyond ASCII and back, so that the converters are there, too.
    const netxml::Result<netxml::Element> site = document->root().addElement("site", "实验室");
    if (!site || site->text() != "实验室" || !site->setText("lab")) return 2;
    std::puts(document->write().value_or("cannot be written").c_str());
}
