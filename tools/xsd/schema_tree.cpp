#include "xsd/schema_tree.hpp"

#include "caret.hpp"
#include "input_file.hpp"
#include "markup.hpp"
#include "recode.hpp"
#include "source_text.hpp"
#include "xsd/entity_text.hpp"

#include <algorithm>

namespace netxml::xsd {

using tool::EventAttribute;
using tool::EventDeclaration;
using tool::EventName;

std::string shown(const QName& name)
{
    return name.nameSpace.empty() ? name.local : "{" + name.nameSpace + "}" + name.local;
}

const std::string* SchemaNode::find(std::string_view wanted) const
{
    for (const Attribute& attribute : attributes) {
        if (attribute.name.local == wanted && attribute.name.nameSpace.empty())
            return &attribute.value;
    }
    return nullptr;
}

std::string SchemaNode::get(std::string_view wanted, std::string_view otherwise) const
{
    const std::string* value = find(wanted);
    return value ? *value : std::string{otherwise};
}

const SchemaNode* SchemaNode::child(std::string_view local) const
{
    for (const SchemaNode* node : children) {
        if (node->is(local)) return node;
    }
    return nullptr;
}

const std::string* SchemaNode::nameSpaceOf(std::string_view prefix) const
{
    static const std::string none;
    static const std::string xml{kXmlNamespace};
    if (prefix == "xml") return &xml;
    for (const SchemaNode* node = this; node; node = node->parent) {
        for (const auto& [declared, nameSpace] : node->declarations) {
            if (declared == prefix) return &nameSpace;
        }
    }
    return prefix.empty() ? &none : nullptr;
}

namespace {

// The text whose lines and columns are those of the file, without a byte-order mark.
std::string_view writtenText(const tool::SourceText& source, const ReadableText& readable)
{
    if (!readable.hasReplacements()) return source.text();
    return std::string_view{readable.written()}.substr(source.mark().size());
}

// A failure of the parser, at the place in the file.
tool::Failure asWritten(const tool::Failure& failure, const ReadableText& readable)
{
    if (!readable.hasReplacements()) return failure;
    tool::Problem problem = failure.problem();
    const std::size_t mark = tool::startOf(readable.text()).markSize;
    const std::string_view text = std::string_view{readable.text()}.substr(mark);
    const std::string_view written = std::string_view{readable.written()}.substr(mark);
    const std::size_t offset = tool::offsetOf(text, {problem.line, problem.column});
    const tool::Place place = tool::placeOf(written, readable.writtenOffset(offset + mark) - mark);
    problem.line = place.line;
    problem.column = place.column;
    problem.sourceLine.clear();
    problem.caretLine.clear();
    tool::showPlace(problem, written);
    return tool::Failure{failure.status(), problem};
}

}  // namespace

// Makes nodes of the parser's events, and finds their places in the text beside it.
class SchemaFile::Builder : public tool::Events {
public:
    // `text` is what is parsed, and `readable` what it is made of; both live as long as this.
    Builder(SchemaFile& file, const tool::SourceText& source, const ReadableText& readable)
        : file_{file}, readable_{readable}, text_{source.text()}, mark_{source.mark().size()},
          pieces_{text_}, places_{writtenText(source, readable)}
    {
    }

    void startElement(const EventName& name, std::span<const EventDeclaration> declarations,
                      std::span<const EventAttribute> attributes) override
    {
        SchemaNode& node = file_.nodes_.emplace_back();
        node.name = {std::string{name.nameSpace}, std::string{name.local}};
        for (const EventDeclaration& d : declarations)
            node.declarations.emplace_back(d.prefix, d.nameSpace);
        for (const EventAttribute& a : attributes) {
            node.attributes.push_back(
                {{std::string{a.name.nameSpace}, std::string{a.name.local}}, std::string{a.value}});
        }
        node.place = nextPlace();
        if (!open_.empty()) {
            node.parent = open_.back();
            open_.back()->children.push_back(&node);
        }
        open_.push_back(&node);
        if (open_.size() > kMostNesting) {
            tool::Problem problem;
            problem.file = file_.name_;
            problem.line = node.place.line;
            problem.column = node.place.column;
            problem.message = "the schema nests deeper than " + std::to_string(kMostNesting) +
                              " elements; that is more than this compiler takes.";
            problem.code = static_cast<std::uint32_t>(tool::ToolCode::SchemaBroken);
            throw tool::Failure{tool::Status::Schema, problem};
        }
    }
    void endElement(const EventName&) override { open_.pop_back(); }
    void characters(std::string_view text) override { open_.back()->text += text; }
    void cdata(std::string_view text) override { open_.back()->text += text; }

private:
    SourcePlace nextPlace()
    {
        tool::Place place;
        for (tool::Piece piece; pieces_.next(piece);) {
            if (piece.kind != tool::PieceKind::StartTag && piece.kind != tool::PieceKind::EmptyTag)
                continue;
            const auto offset = static_cast<std::size_t>(piece.text.data() - text_.data());
            place = places_.at(readable_.writtenOffset(offset + mark_) - mark_);
            break;
        }
        return {&file_.name_, place.line, place.column};
    }

    SchemaFile& file_;
    const ReadableText& readable_;
    std::string_view text_;
    std::size_t mark_;
    tool::Pieces pieces_;
    tool::PlaceFinder places_;
    std::vector<SchemaNode*> open_;
};

SchemaFile::SchemaFile(const std::string& path) : name_{path}
{
    tool::ProgressBar silent{false, 0, 1};
    build(tool::readFile(path, path, silent).bytes);
}

SchemaFile::SchemaFile(std::string name, std::string_view text) : name_{std::move(name)}
{
    build(std::string{text});
}

void SchemaFile::build(std::string bytes)
{
    tool::ProgressBar silent{false, 0, 1};
    const ReadableText readable{std::move(bytes)};
    if (const auto& trouble = readable.trouble()) {
        const std::size_t mark = tool::startOf(readable.written()).markSize;
        throw tool::Failure{tool::Status::Schema,
                            tool::problemAt(name_, readable.written().substr(mark),
                                            trouble->offset - mark, trouble->message,
                                            tool::ToolCode::SchemaBroken)};
    }
    tool::SourceText source{name_, readable.text(), silent};
    try {
        source.parse(nullptr);
    } catch (const tool::Failure& failure) {
        throw asWritten(failure, readable);
    }
    source.decode();
    Builder builder{*this, source, readable};
    source.parse(&builder);
}

}  // namespace netxml::xsd
