// libxml2, which checks: its tree in the default mode and in the fastest (one context for all
// documents, blanks between tags dropped, short texts within their nodes), SAX2 events, and its
// validation by XML Schema.
#include "library_frame.hpp"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>
#include <libxml/xmlschemas.h>

namespace netxml::bench {
namespace {

constexpr int kDefault = XML_PARSE_NONET | XML_PARSE_HUGE;
constexpr int kFast = kDefault | XML_PARSE_NOBLANKS | XML_PARSE_COMPACT;

void addText(Tally& tally, const xmlChar* text)
{
    tally.add(reinterpret_cast<const char*>(text));
}

// The tree of a document is its children; what stands in its type declaration is no part of it.
void addNodes(Tally& tally, const xmlNode* first)
{
    for (const xmlNode* node = first; node; node = node->next) {
        if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE)
            addText(tally, node->content);
        if (node->type != XML_ELEMENT_NODE) continue;
        ++tally.elements;
        for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
            ++tally.attributes;
            for (const xmlNode* value = attribute->children; value; value = value->next)
                addText(tally, value->content);
        }
        addNodes(tally, node->children);
    }
}

xmlSAXHandler countingHandler()
{
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = [](void* context, const xmlChar*, const xmlChar*, const xmlChar*, int,
                                const xmlChar**, int, int,
                                const xmlChar**) { ++*static_cast<std::size_t*>(context); };
    handler.endElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*) {};
    handler.characters = [](void*, const xmlChar*, int) {};
    return handler;
}

void ignoreError(void*, const char*, ...) {}

// A parser that takes its text in pieces. With a handler it counts, without one it builds.
class PushParser {
public:
    PushParser(xmlSAXHandler* handler, void* data)
        : context_{xmlCreatePushParserCtxt(handler, data, nullptr, 0, nullptr)}
    {
        xmlCtxtUseOptions(context_.get(), kDefault);
    }
    void parse(const Chunks& chunks)
    {
        for (const std::string& piece : chunks.pieces)
            xmlParseChunk(context_.get(), piece.data(), static_cast<int>(piece.size()), 0);
        xmlParseChunk(context_.get(), nullptr, 0, 1);
        if (!context_->wellFormed) throw Refused{"libxml2 refuses a document"};
    }
    xmlDocPtr releaseTree() { return std::exchange(context_->myDoc, nullptr); }

private:
    std::unique_ptr<xmlParserCtxt, FreeBy<xmlFreeParserCtxt>> context_;
};

struct Libxml2 {
    using Tree = std::unique_ptr<xmlDoc, FreeBy<xmlFreeDoc>>;
    static constexpr bool kReadsGb18030 = true;

    static Tree build(const Memory& input)
    {
        return accepted(
            xmlReadMemory(input.text.data(), input.sizeAs<int>(), nullptr, nullptr, kDefault));
    }
    static Tree buildFast(const Memory& input)
    {
        static const std::unique_ptr<xmlParserCtxt, FreeBy<xmlFreeParserCtxt>> context{
            xmlNewParserCtxt()};
        return accepted(xmlCtxtReadMemory(context.get(), input.text.data(), input.sizeAs<int>(),
                                          nullptr, nullptr, kFast));
    }
    static Tree buildReady(const Memory& input) { return buildFast(input); }
    static Tree build(const Chunks& input)
    {
        PushParser parser{nullptr, nullptr};
        parser.parse(input);
        return Tree{parser.releaseTree()};
    }
    static Tree build(const File& input)
    {
        return accepted(xmlReadFile(input.path.c_str(), nullptr, kDefault));
    }

    static void count(const Tree& tree, Tally& tally) { addNodes(tally, tree->children); }
    static Tree copy(const Tree& tree) { return Tree{xmlCopyDoc(tree.get(), 1)}; }
    static OwnedText<FreeBy<std::free>> write(const Tree& tree)
    {
        xmlChar* text = nullptr;
        int length = 0;
        xmlDocDumpMemoryEnc(tree.get(), &text, &length, "UTF-8");
        return {std::unique_ptr<char, FreeBy<std::free>>{reinterpret_cast<char*>(text)},
                static_cast<std::size_t>(length)};
    }
    static std::size_t writeTo(const Tree& tree)
    {
        std::size_t size = 0;
        const auto count = [](void* context, const char*, int length) {
            *static_cast<std::size_t*>(context) += static_cast<std::size_t>(length);
            return length;
        };
        const auto close = [](void*) { return 0; };
        xmlSaveCtxtPtr saving = xmlSaveToIO(count, close, &size, "UTF-8", 0);
        xmlSaveDoc(saving, tree.get());
        xmlSaveClose(saving);
        return size;
    }

    static std::size_t events(const Memory& input)
    {
        std::size_t elements = 0;
        xmlSAXHandler handler = countingHandler();
        accepted(
            xmlSAXUserParseMemory(&handler, &elements, input.text.data(), input.sizeAs<int>()));
        return elements;
    }
    static std::size_t events(const File& input)
    {
        std::size_t elements = 0;
        xmlSAXHandler handler = countingHandler();
        accepted(xmlSAXUserParseFile(&handler, &elements, input.path.c_str()));
        return elements;
    }
    static std::size_t events(const Chunks& input)
    {
        std::size_t elements = 0;
        xmlSAXHandler handler = countingHandler();
        PushParser{&handler, &elements}.parse(input);
        return elements;
    }

    class Schema {
    public:
        Schema()
        {
            require(schema_ && validator_, "libxml2 does not load the schema");
            xmlSchemaSetValidErrors(validator_.get(), ignoreError, ignoreError, nullptr);
        }
        bool valid(const Tree& tree) const
        {
            return xmlSchemaValidateDoc(validator_.get(), tree.get()) == 0;
        }
        bool validText(const Memory& input) const { return valid(buildFast(input)); }

    private:
        std::unique_ptr<xmlSchemaParserCtxt, FreeBy<xmlSchemaFreeParserCtxt>> parser_{
            xmlSchemaNewParserCtxt(NETXML_BENCH_XSD)};
        std::unique_ptr<xmlSchema, FreeBy<xmlSchemaFree>> schema_{xmlSchemaParse(parser_.get())};
        std::unique_ptr<xmlSchemaValidCtxt, FreeBy<xmlSchemaFreeValidCtxt>> validator_{
            xmlSchemaNewValidCtxt(schema_.get())};
    };

private:
    static Tree accepted(xmlDocPtr tree)
    {
        if (!tree) throw Refused{"libxml2 refuses a document"};
        return Tree{tree};
    }
    static void accepted(int status)
    {
        if (status != 0) throw Refused{"libxml2 refuses a document"};
    }
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    return netxml::bench::runLibrary<netxml::bench::Libxml2>(argc, argv);
}
