#include "xsd/schema_tree.hpp"

#include "caret.hpp"
#include "input_file.hpp"
#include "markup.hpp"
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

// Makes nodes of the parser's events, and finds their places in the text beside it.
class SchemaFile::Builder : public tool::Events {
public:
    Builder(SchemaFile& file, std::string_view text) : file_{file}, text_{text}, pieces_{text} {}

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
        for (tool::Piece piece; pieces_.next(piece);) {
            if (piece.kind != tool::PieceKind::StartTag && piece.kind != tool::PieceKind::EmptyTag)
                continue;
            const auto offset = static_cast<std::size_t>(piece.text.data() - text_.data());
            advance(offset);
            break;
        }
        return {&file_.name_, line_,
                tool::placeOf(text_.substr(lineStart_), at_ - lineStart_).column};
    }
    void advance(std::size_t offset)
    {
        for (; at_ < offset; ++at_) {
            const bool ends =
                text_[at_] == '\n' ||
                (text_[at_] == '\r' && (at_ + 1 == text_.size() || text_[at_ + 1] != '\n'));
            if (!ends) continue;
            ++line_;
            lineStart_ = at_ + 1;
        }
    }

    SchemaFile& file_;
    std::string_view text_;
    tool::Pieces pieces_;
    std::vector<SchemaNode*> open_;
    std::size_t at_ = 0;
    std::size_t lineStart_ = 0;
    std::uint32_t line_ = 1;
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
    tool::SourceText source{name_, readableBytes(std::move(bytes)), silent};
    source.parse(nullptr);
    source.decode();
    Builder builder{*this, source.text()};
    source.parse(&builder);
}

}  // namespace netxml::xsd
