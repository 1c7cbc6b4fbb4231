// The same in C++, with streams: an input in UTF-16 shows that iconv is there.
#include <netxml/netxml.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

namespace {
struct DeleteTree {
    void operator()(XML_DOM_Node* root) const { XML_DOM_DelNode(root); }
};
struct Free {
    void operator()(char* text) const { std::free(text); }
};
}  // namespace

int main()
{
    std::string document("\xFE\xFF", 2);
    for (const char c :
         std::string("<device name=\"edge\"><mtu>1500</mtu><site>lab</site></device>")) {
        document += '\0';
        document += c;
    }
    char error[256] = "";
    const std::unique_ptr<XML_DOM_Node, DeleteTree> root(
        XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(document.data()),
                               static_cast<uint32_t>(document.size()), sizeof error, error));
    if (!root) {
        std::cerr << error << '\n';
        return 1;
    }
    char* raw = nullptr;
    if (XML_DOM_SetEncoding(root.get(), XML_ENCODING_UTF_8) != XML_RET_OK) return 3;
    if (XML_DOM_TranslateStr(root.get(), 0, &raw, nullptr) != XML_RET_OK) return 2;
    const std::unique_ptr<char, Free> text(raw);
    std::cout << text.get() << '\n';
    return 0;
}
