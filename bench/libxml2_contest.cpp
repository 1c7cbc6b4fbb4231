// libxml2: tree, events through SAX2, copy, and writing to a string.
#include "contest.hpp"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstring>
#include <stdexcept>
#include <vector>

namespace netxml::bench {
namespace {

constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOBLANKS;

xmlDocPtr build(const std::string& text)
{
    xmlDocPtr tree =
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, kOptions);
    if (!tree) throw std::runtime_error{"libxml2 refuses a document"};
    return tree;
}

std::size_t elementsBelow(const xmlNode* first)
{
    std::size_t count = 0;
    for (const xmlNode* node = first; node; node = node->next)
        if (node->type == XML_ELEMENT_NODE) count += 1 + elementsBelow(node->children);
    return count;
}

class TreeWork : public Work {
public:
    explicit TreeWork(const Document& document) : document_{document} {}
    ~TreeWork() override { drop(); }
    void check() override
    {
        if (!trees_.empty())
            requireSame(elementsBelow(trees_.back()->children), document_.elements, "elements");
    }
    void tidy() override { drop(); }

protected:
    void drop()
    {
        for (xmlDocPtr tree : trees_) xmlFreeDoc(tree);
        trees_.clear();
    }

    const Document& document_;
    std::vector<xmlDocPtr> trees_;
};

class Tree : public TreeWork {
public:
    using TreeWork::TreeWork;
    void run() override { trees_.push_back(build(document_.text)); }
};

class AndFree : public TreeWork {
public:
    using TreeWork::TreeWork;
    void run() override { xmlFreeDoc(build(document_.text)); }
};

class Copy : public TreeWork {
public:
    explicit Copy(const Document& document) : TreeWork{document}, source_{build(document.text)} {}
    ~Copy() override { xmlFreeDoc(source_); }
    void run() override { trees_.push_back(xmlCopyDoc(source_, 1)); }

private:
    xmlDocPtr source_;
};

class Write : public Work {
public:
    explicit Write(const Document& document) : source_{build(document.text)} {}
    ~Write() override
    {
        tidy();
        xmlFreeDoc(source_);
    }
    void run() override
    {
        xmlChar* text = nullptr;
        xmlDocDumpMemory(source_, &text, &size_);
        texts_.push_back(text);
    }
    void check() override
    {
        if (expected_ == 0) expected_ = size_;
        requireSame(static_cast<std::size_t>(size_), static_cast<std::size_t>(expected_),
                    "bytes written");
    }
    void tidy() override
    {
        for (xmlChar* text : texts_) xmlFree(text);
        texts_.clear();
    }

private:
    xmlDocPtr source_;
    std::vector<xmlChar*> texts_;
    int size_ = 0;
    int expected_ = 0;
};

class Events : public Work {
public:
    explicit Events(const Document& document) : document_{document}
    {
        handler_.initialized = XML_SAX2_MAGIC;
        handler_.startElementNs = [](void* context, const xmlChar*, const xmlChar*, const xmlChar*,
                                     int, const xmlChar**, int, int,
                                     const xmlChar**) { ++*static_cast<std::size_t*>(context); };
        handler_.endElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*) {};
        handler_.characters = [](void*, const xmlChar*, int) {};
    }
    void run() override
    {
        elements_ = 0;
        if (xmlSAXUserParseMemory(&handler_, &elements_, document_.text.data(),
                                  static_cast<int>(document_.text.size())) != 0)
            throw std::runtime_error{"libxml2 refuses a document"};
    }
    void check() override { requireSame(elements_, document_.elements, "elements"); }

private:
    const Document& document_;
    xmlSAXHandler handler_{};
    std::size_t elements_ = 0;
};

template <class Kind>
std::unique_ptr<Work> make(const Document& document)
{
    return std::make_unique<Kind>(document);
}

constexpr Operation kOperations[] = {
    {"tree", make<Tree>}, {"tree-and-free", make<AndFree>}, {"events", make<Events>},
    {"copy", make<Copy>}, {"write", make<Write>},
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runContest(argc, argv, netxml::bench::kOperations);
}
