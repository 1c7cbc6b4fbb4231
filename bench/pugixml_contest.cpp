// pugixml: it checks neither names nor characters, UTF-8, namespaces or duplicates in any mode. The
// fast mode parses in place and skips what may be skipped.
#include "contest.hpp"

#include <pugixml.hpp>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace netxml::bench {
namespace {

std::size_t elementsBelow(const pugi::xml_node& node)
{
    std::size_t count = 0;
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling())
        if (child.type() == pugi::node_element) count += 1 + elementsBelow(child);
    return count;
}

using Tree = std::unique_ptr<pugi::xml_document>;

Tree build(const std::string& text)
{
    Tree tree = std::make_unique<pugi::xml_document>();
    if (!tree->load_buffer(text.data(), text.size()))
        throw std::runtime_error{"pugixml refuses a document"};
    return tree;
}

class TreeWork : public Work {
public:
    explicit TreeWork(const Document& document) : document_{document} {}
    void check() override
    {
        if (!trees_.empty())
            requireSame(elementsBelow(*trees_.back()), document_.elements, "elements");
    }
    void tidy() override { trees_.clear(); }

protected:
    const Document& document_;
    std::vector<Tree> trees_;
};

class Default : public TreeWork {
public:
    using TreeWork::TreeWork;
    void run() override { trees_.push_back(build(document_.text)); }
};

class AndFree : public TreeWork {
public:
    using TreeWork::TreeWork;
    void run() override { build(document_.text); }
};

// The copy of the text that parsing in place destroys is made while the clock runs: the others
// leave the caller's bytes as they are.
class Fast : public TreeWork {
public:
    using TreeWork::TreeWork;
    void run() override
    {
        Tree tree = std::make_unique<pugi::xml_document>();
        if (!tree->load_buffer(document_.text.data(), document_.text.size(), pugi::parse_minimal,
                               pugi::encoding_utf8))
            throw std::runtime_error{"pugixml refuses a document"};
        trees_.push_back(std::move(tree));
    }
};

class Copy : public TreeWork {
public:
    explicit Copy(const Document& document) : TreeWork{document}, source_{build(document.text)} {}
    void run() override
    {
        Tree copy = std::make_unique<pugi::xml_document>();
        copy->reset(*source_);
        trees_.push_back(std::move(copy));
    }

private:
    Tree source_;
};

class Write : public Work {
public:
    explicit Write(const Document& document) : source_{build(document.text)} {}
    void run() override
    {
        struct Text : pugi::xml_writer {
            std::string text;
            void write(const void* data, std::size_t size) override
            {
                text.append(static_cast<const char*>(data), size);
            }
        } text;
        source_->save(text, "", pugi::format_raw | pugi::format_no_declaration);
        texts_.push_back(std::move(text.text));
    }
    void check() override
    {
        if (expected_ == 0) expected_ = texts_.back().size();
        requireSame(texts_.back().size(), expected_, "bytes written");
    }
    void tidy() override { texts_.clear(); }

private:
    Tree source_;
    std::vector<std::string> texts_;
    std::size_t expected_ = 0;
};

template <class Kind>
std::unique_ptr<Work> make(const Document& document)
{
    return std::make_unique<Kind>(document);
}

constexpr Operation kOperations[] = {
    {"tree", make<Default>}, {"tree-fast", make<Fast>}, {"tree-and-free", make<AndFree>},
    {"copy", make<Copy>},    {"write", make<Write>},
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runContest(argc, argv, netxml::bench::kOperations);
}
