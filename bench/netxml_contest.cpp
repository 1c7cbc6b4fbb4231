// netxml: always with everything checked; it has no faster mode.
#include "contest.hpp"

#include "netxml/netxml.h"

#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace netxml::bench {
namespace {

XML_DOM_Node* build(const std::string& text)
{
    XML_DOM_Node* root = XML_DOM_BuildTreeByMem(reinterpret_cast<const uint8_t*>(text.data()),
                                                static_cast<uint32_t>(text.size()), 0, nullptr);
    if (!root) throw std::runtime_error{"netxml refuses a document"};
    return root;
}

uint32_t countElement(XML_DOM_Node* node, void* context)
{
    *static_cast<std::size_t*>(context) += XML_DOM_GetNodeType(node) == XML_DOM_NODE_ELEMENT;
    return 0;
}

std::size_t elementsOf(XML_DOM_Node* root)
{
    std::size_t count = 0;
    XML_DOM_ScanTree(root, countElement, &count);
    return count;
}

// Trees made by runs, and a document to make them of.
class TreeWork : public Work {
public:
    explicit TreeWork(const Document& document) : document_{document} {}
    ~TreeWork() override { drop(); }

    void check() override
    {
        if (!trees_.empty()) requireSame(elementsOf(trees_.back()), document_.elements, "elements");
    }
    void tidy() override { drop(); }

protected:
    void drop()
    {
        for (XML_DOM_Node* tree : trees_) XML_DOM_DelNode(tree);
        trees_.clear();
    }

    const Document& document_;
    std::vector<XML_DOM_Node*> trees_;
};

class Tree : public TreeWork {
public:
    using TreeWork::TreeWork;
    void run() override { trees_.push_back(build(document_.text)); }
};

class TreeAndFree : public TreeWork {
public:
    using TreeWork::TreeWork;
    void run() override { XML_DOM_DelNode(build(document_.text)); }
};

class Copy : public TreeWork {
public:
    explicit Copy(const Document& document) : TreeWork{document}, source_{build(document.text)} {}
    ~Copy() override { XML_DOM_DelNode(source_); }
    void run() override
    {
        XML_DOM_Node* copy = XML_DOM_CopyRoot(source_);
        if (!copy || XML_DOM_CopySubTree(copy, source_) != XML_RET_OK)
            throw std::runtime_error{"netxml cannot copy"};
        trees_.push_back(copy);
    }

private:
    XML_DOM_Node* source_;
};

class Write : public Work {
public:
    explicit Write(const Document& document) : source_{build(document.text)} {}
    ~Write() override
    {
        tidy();
        XML_DOM_DelNode(source_);
    }
    void run() override
    {
        char* text = nullptr;
        if (XML_DOM_TranslateStr(source_, 0, &text, &size_) != XML_RET_OK)
            throw std::runtime_error{"netxml cannot write"};
        texts_.push_back(text);
    }
    void check() override
    {
        if (expected_ == 0) expected_ = size_;
        requireSame(size_, expected_, "bytes written");
    }
    void tidy() override
    {
        for (char* text : texts_) std::free(text);
        texts_.clear();
    }

private:
    XML_DOM_Node* source_;
    std::vector<char*> texts_;
    std::size_t size_ = 0;
    std::size_t expected_ = 0;
};

class Events : public Work {
public:
    explicit Events(const Document& document) : document_{document}
    {
        handler_.userData = &elements_;
        handler_.startElementNs = [](XML_Parser* parser, const char*, const char*, const char*,
                                     uint32_t, const char**, uint32_t, uint32_t, const char**) {
            ++*static_cast<std::size_t*>(parser->handler->userData);
        };
        handler_.endElementNs = [](XML_Parser*, const char*, const char*, const char*) {};
        handler_.characters = [](XML_Parser*, const char*, uint32_t) {};
    }
    void run() override
    {
        elements_ = 0;
        if (XML_Parser_ByMem(reinterpret_cast<const uint8_t*>(document_.text.data()),
                             static_cast<uint32_t>(document_.text.size()), &handler_) != XML_RET_OK)
            throw std::runtime_error{"netxml refuses a document"};
    }
    void check() override { requireSame(elements_, document_.elements, "elements"); }

private:
    const Document& document_;
    XML_SAX_Handler handler_{};
    std::size_t elements_ = 0;
};

template <class Kind>
std::unique_ptr<Work> make(const Document& document)
{
    return std::make_unique<Kind>(document);
}

constexpr Operation kOperations[] = {
    {"tree", make<Tree>},     {"tree-and-free", make<TreeAndFree>},
    {"events", make<Events>}, {"copy", make<Copy>},
    {"write", make<Write>},
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runContest(argc, argv, netxml::bench::kOperations);
}
