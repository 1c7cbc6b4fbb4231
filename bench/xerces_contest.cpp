// Xerces-C, which checks: its tree and SAX2 events in the default mode, in that of its fastest
// scanner (well-formedness without a type declaration), and with validation by XML Schema. A parser
// is made once and used again, as its makers advise.
#include "library_frame.hpp"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace netxml::bench {
namespace {

using namespace xercesc;

// A malformed document ends the parse, an invalid one is counted.
class Errors : public ErrorHandler {
public:
    void warning(const SAXParseException&) override {}
    void error(const SAXParseException&) override { ++count; }
    void fatalError(const SAXParseException&) override
    {
        throw Refused{"Xerces refuses a document"};
    }
    void resetErrors() override { count = 0; }

    std::size_t count = 0;
};

void addText(Tally& tally, const XMLCh* text)
{
    tally.add(text, XMLString::stringLen(text));
}

void addAttributes(Tally& tally, const DOMNode* element)
{
    const DOMNamedNodeMap* attributes = element->getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
        const DOMNode* attribute = attributes->item(i);
        if (XMLString::equals(attribute->getNamespaceURI(), XMLUni::fgXMLNSURIName)) continue;
        ++tally.attributes;
        addText(tally, attribute->getNodeValue());
    }
}

void addNode(Tally& tally, const DOMNode* node)
{
    const DOMNode::NodeType type = node->getNodeType();
    if (type == DOMNode::DOCUMENT_TYPE_NODE) return;
    if (type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE)
        addText(tally, node->getNodeValue());
    if (type == DOMNode::ELEMENT_NODE) {
        ++tally.elements;
        addAttributes(tally, node);
    }
    for (const DOMNode* child = node->getFirstChild(); child; child = child->getNextSibling())
        addNode(tally, child);
}

class ElementCounter : public DefaultHandler {
public:
    void startElement(const XMLCh*, const XMLCh*, const XMLCh*, const Attributes&) override
    {
        ++elements;
    }
    void fatalError(const SAXParseException&) override
    {
        throw Refused{"Xerces refuses a document"};
    }
    std::size_t elements = 0;
};

// Both kinds of parser take both kinds of input.
template <class Parser>
void parseInto(Parser& parser, const Memory& input)
{
    const MemBufInputSource source{input.bytes(), input.sizeAs<XMLSize_t>(), "memory"};
    parser.parse(source);
}

template <class Parser>
void parseInto(Parser& parser, const File& input)
{
    parser.parse(input.path.c_str());
}

// A parser to a tree. Nothing is read but the document.
class TreeParser {
public:
    explicit TreeParser(bool fastest = false)
    {
        if (fastest) parser_.useScanner(XMLUni::fgWFXMLScanner);
        parser_.setErrorHandler(&errors);
        parser_.setDoNamespaces(true);
        parser_.setLoadExternalDTD(false);
        parser_.setValidationScheme(XercesDOMParser::Val_Never);
    }
    void validateBy(const char* schema)
    {
        require(parser_.loadGrammar(schema, Grammar::SchemaGrammarType, true),
                "Xerces does not load the schema");
        parser_.useCachedGrammarInParse(true);
        parser_.setDoSchema(true);
        parser_.setValidationScheme(XercesDOMParser::Val_Always);
    }
    DOMDocument* parse(const auto& input)
    {
        parseInto(parser_, input);
        return parser_.adoptDocument();
    }

    Errors errors;

private:
    XercesDOMParser parser_;
};

// The two parsers of the process, made when they are first asked for, and likewise below.
template <bool Fastest>
TreeParser& treeParser()
{
    static TreeParser parser{Fastest};
    return parser;
}

// A parser to events.
class EventParser {
public:
    explicit EventParser(bool fastest) : reader_{XMLReaderFactory::createXMLReader()}
    {
        reader_->setFeature(XMLUni::fgSAX2CoreValidation, false);
        reader_->setFeature(XMLUni::fgXercesLoadExternalDTD, false);
        if (fastest)
            reader_->setProperty(XMLUni::fgXercesScannerName,
                                 const_cast<XMLCh*>(XMLUni::fgWFXMLScanner));
        reader_->setContentHandler(&counter_);
        reader_->setErrorHandler(&counter_);
    }
    std::size_t parse(const auto& input)
    {
        counter_.elements = 0;
        parseInto(*reader_, input);
        return counter_.elements;
    }

private:
    ElementCounter counter_;
    std::unique_ptr<SAX2XMLReader> reader_;
};

template <bool Fastest>
EventParser& eventParser()
{
    static EventParser parser{Fastest};
    return parser;
}

struct Release {
    void operator()(DOMDocument* document) const { document->release(); }
};

struct Xerces {
    using Tree = std::unique_ptr<DOMDocument, Release>;
    static constexpr bool kReadsGb18030 = true;

    static Tree build(const Memory& input) { return Tree{treeParser<false>().parse(input)}; }
    static Tree build(const File& input) { return Tree{treeParser<false>().parse(input)}; }
    static Tree buildFast(const Memory& input) { return Tree{treeParser<true>().parse(input)}; }

    static void count(const Tree& tree, Tally& tally) { addNode(tally, tree.get()); }
    static Tree copy(const Tree& tree)
    {
        return Tree{static_cast<DOMDocument*>(tree->cloneNode(true))};
    }
    static std::string write(const Tree& tree)
    {
        MemBufFormatTarget target;
        serialize(tree, target);
        return {reinterpret_cast<const char*>(target.getRawBuffer()), target.getLen()};
    }
    static std::size_t writeTo(const Tree& tree)
    {
        struct Counter : XMLFormatTarget {
            std::size_t size = 0;
            void writeChars(const XMLByte* const, const XMLSize_t count,
                            XMLFormatter* const) override
            {
                size += count;
            }
        } counter;
        serialize(tree, counter);
        return counter.size;
    }

    static std::size_t events(const Memory& input) { return eventParser<false>().parse(input); }
    static std::size_t events(const File& input) { return eventParser<false>().parse(input); }
    static std::size_t eventsFast(const Memory& input) { return eventParser<true>().parse(input); }

    class Schema {
    public:
        Schema() { parser_.validateBy(NETXML_BENCH_XSD); }
        bool validText(const Memory& input)
        {
            parser_.errors.resetErrors();
            const Tree tree{parser_.parse(input)};
            return parser_.errors.count == 0;
        }

    private:
        TreeParser parser_;
    };

private:
    static void serialize(const Tree& tree, XMLFormatTarget& target)
    {
        const XMLCh none = 0;
        DOMImplementationLS* const maker = DOMImplementationRegistry::getDOMImplementation(&none);
        DOMLSSerializer* const serializer = maker->createLSSerializer();
        DOMLSOutput* const output = maker->createLSOutput();
        output->setByteStream(&target);
        output->setEncoding(XMLUni::fgUTF8EncodingString);
        serializer->write(tree.get(), output);
        output->release();
        serializer->release();
    }
};

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    xercesc::XMLPlatformUtils::Initialize();  // never ended: the parsers live to the end
    return netxml::bench::runLibrary<netxml::bench::Xerces>(argc, argv);
}
