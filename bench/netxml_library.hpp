// netxml as the benchmark sees it: always with everything checked; it has no faster mode.
#pragma once

#include "config_schema.h"
#include "library_frame.hpp"

#include "netxml/netxml.h"

#include <cstdlib>

namespace netxml::bench {

// A tree, or the refusal that its absence means.
inline XML_DOM_Node* accepted(XML_DOM_Node* root)
{
    if (!root) throw Refused{"netxml refuses a document"};
    return root;
}

// The list that the parser reads, over pieces that somebody else holds.
class ChunkList {
public:
    explicit ChunkList(const Chunks& chunks) : records_(chunks.pieces.size())
    {
        for (std::size_t i = 0; i < records_.size(); ++i) {
            const std::string& piece = chunks.pieces[i];
            records_[i] = {i + 1 < records_.size() ? &records_[i + 1] : nullptr, piece.size(),
                           reinterpret_cast<const uint8_t*>(piece.data())};
        }
        list_.first = records_.data();
    }
    const XML_IO_MemList* get() const { return &list_; }

private:
    std::vector<XML_IO_MemChunk> records_;
    XML_IO_MemList list_{};
};

// Counts elements; what else happens is let pass.
class CountingHandler {
public:
    CountingHandler()
    {
        handler_.userData = &elements_;
        handler_.startElementNs = [](XML_Parser* parser, const char*, const char*, const char*,
                                     uint32_t, const char**, uint32_t, uint32_t, const char**) {
            ++*static_cast<std::size_t*>(parser->handler->userData);
        };
        handler_.endElementNs = [](XML_Parser*, const char*, const char*, const char*) {};
        handler_.characters = [](XML_Parser*, const char*, uint32_t) {};
    }
    const XML_SAX_Handler* get() const { return &handler_; }
    std::size_t elements(uint32_t status) const
    {
        if (status != XML_RET_OK) throw Refused{"netxml refuses a document"};
        return elements_;
    }

private:
    XML_SAX_Handler handler_{};
    std::size_t elements_ = 0;
};

inline uint32_t addToTally(XML_DOM_Node* node, void* context)
{
    Tally& tally = *static_cast<Tally*>(context);
    tally.elements += XML_DOM_GetNodeType(node) == XML_DOM_NODE_ELEMENT;
    tally.add(XML_DOM_GetNodeValue(node));
    for (XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(node); attr; attr = XML_DOM_GetNextAttr(attr)) {
        ++tally.attributes;
        tally.add(XML_DOM_GetAttrValByHandle(attr));
    }
    return 0;
}

inline uint32_t countBytes(void* context, const char*, std::size_t length)
{
    *static_cast<std::size_t*>(context) += length;
    return 0;
}

struct Netxml {
    using Tree = std::unique_ptr<XML_DOM_Node, FreeBy<XML_DOM_DelNode>>;
    static constexpr bool kReadsGb18030 = true;

    static Tree build(const Memory& input)
    {
        return Tree{
            accepted(XML_DOM_BuildTreeByMem(input.bytes(), input.sizeAs<uint32_t>(), 0, nullptr))};
    }
    static Tree build(const Chunks& input)
    {
        return Tree{accepted(XML_DOM_BuildTreeByMemList(ChunkList{input}.get(), 0, nullptr))};
    }
    static Tree build(const File& input)
    {
        return Tree{accepted(XML_DOM_BuildTreeByFile(input.path.c_str(), 0, nullptr))};
    }

    static void count(const Tree& tree, Tally& tally)
    {
        XML_DOM_ScanTree(tree.get(), addToTally, &tally);
    }
    static Tree copy(const Tree& tree)
    {
        Tree copy{XML_DOM_CopyRoot(tree.get())};
        require(copy && XML_DOM_CopySubTree(copy.get(), tree.get()) == XML_RET_OK,
                "netxml cannot copy");
        return copy;
    }
    static OwnedText<FreeBy<std::free>> write(const Tree& tree)
    {
        char* text = nullptr;
        std::size_t length = 0;
        require(XML_DOM_TranslateStr(tree.get(), 0, &text, &length) == XML_RET_OK,
                "netxml cannot write");
        return {std::unique_ptr<char, FreeBy<std::free>>{text}, length};
    }
    static std::size_t writeTo(const Tree& tree)
    {
        std::size_t length = 0;
        require(XML_DOM_OutPutTranslateStr(tree.get(), 0, countBytes, &length) == XML_RET_OK,
                "netxml cannot write");
        return length;
    }

    static std::size_t events(const Memory& input)
    {
        const CountingHandler handler;
        return handler.elements(
            XML_Parser_ByMem(input.bytes(), input.sizeAs<uint32_t>(), handler.get()));
    }
    static std::size_t events(const Chunks& input)
    {
        const CountingHandler handler;
        return handler.elements(XML_Parser_ByMemList(ChunkList{input}.get(), handler.get()));
    }
    static std::size_t events(const File& input)
    {
        const CountingHandler handler;
        return handler.elements(XML_Parser_ByFile(input.path.c_str(), handler.get()));
    }

    class Schema {
    public:
        Schema()
        {
            require(Schema_InitRoot(&root_) == XML_RET_OK &&
                        config_schema_register(&root_) == XML_RET_OK,
                    "the schema cannot be registered");
        }
        ~Schema()
        {
            config_schema_deregister(&root_);
            Schema_ExitRoot(&root_);
        }
        bool valid(const Tree& tree) const
        {
            Schema_ValidateResult result;
            require(Schema_ValidateXml(tree.get(), &root_, &result) == XML_RET_OK,
                    "netxml cannot validate");
            return result.code == SCHEMA_VALID;
        }
        bool validText(const Memory& input) const { return valid(build(input)); }

    private:
        Schema_Root root_;
    };
};

}  // namespace netxml::bench
