#include "source_tree.hpp"

#include "caret.hpp"
#include "markup.hpp"
#include "missing_characters.hpp"
#include "tree_text.hpp"
#include "utf8_text.hpp"

#include <cerrno>
#include <cstdio>
#include <initializer_list>
#include <optional>

namespace netxml::tool {
namespace {

constexpr std::size_t kLongestPath = 1000;  // bytes; of a longer one the end is shown

// Looks for a character that trees cannot hold: they are in GB18030.
class UnheldCharacter : public Events {
public:
    void startElement(const EventName& name, std::span<const EventDeclaration> declarations,
                      std::span<const EventAttribute> attributes) override
    {
        look({name.local, name.prefix});
        for (const EventDeclaration& d : declarations) look({d.prefix, d.nameSpace});
        for (const EventAttribute& a : attributes) look({a.name.local, a.name.prefix, a.value});
    }
    void characters(std::string_view text) override { look({text}); }
    void cdata(std::string_view text) override { look({text}); }

    const std::string& found() const { return found_; }  // empty when there is none

private:
    void look(std::initializer_list<std::string_view> texts)
    {
        for (const std::string_view text : texts) look(text);
    }
    void look(std::string_view text)
    {
        while (!text.empty() && found_.empty()) {
            const std::string_view character = text.substr(0, firstCharacter(text).size);
            if (!repertoire_.has(character)) found_ = character;
            text.remove_prefix(character.size());
        }
    }

    Repertoire repertoire_{XML_ENCODING_GB18030};
    std::string found_;
};

// Why no tree could be made of an accepted document, of which the library has said `report`.
Failure noTree(SourceText& source, const char* report)
{
    source.refuseBrokenText();
    UnheldCharacter search;
    source.parse(&search);
    const std::string& character = search.found();
    if (character.empty()) return fileFailure(source.name(), "work on this", ENOMEM);

    char message[80];
    std::snprintf(message, sizeof message, "the character U+%04X does not exist in GB18030, %s.",
                  firstCharacter(character).code, "which trees are in");
    source.decode();
    const std::size_t offset = source.text().find(character);
    if (offset != std::string_view::npos) {
        return Failure{Status::Rejected, problemAt(source.name(), source.text(), offset, message,
                                                   ToolCode::CharacterMissing)};
    }
    Problem problem;  // it is written as a reference, so the library could say where
    problem.file = source.name();
    problem.message = message;
    problem.code = static_cast<std::uint32_t>(ToolCode::CharacterMissing);
    if (std::sscanf(report, "The Line %u Column %u", &problem.line, &problem.column) == 2)
        showPlace(problem, source.text());
    return Failure{Status::Rejected, std::move(problem)};
}

// How many elements stand before one, in document order.
struct Count {
    const XML_DOM_Node* wanted;
    std::size_t before = 0;
};

std::uint32_t countElement(XML_DOM_Node* node, void* context)
{
    Count& count = *static_cast<Count*>(context);
    if (node == count.wanted) return 1;
    if (XML_DOM_GetNodeType(node) == XML_DOM_NODE_ELEMENT) ++count.before;
    return 0;
}

}  // namespace

// The document is given as a list of one chunk: a chunk's length has 64 bits.
Tree buildTree(SourceText& source)
{
    const std::string_view bytes = source.bytes();
    XML_IO_MemChunk chunk{nullptr, bytes.size(),
                          reinterpret_cast<const std::uint8_t*>(bytes.data())};
    const XML_IO_MemList list{&chunk};
    char report[256] = "";
    Tree tree{XML_DOM_BuildTreeByMemList(&list, sizeof report, report)};
    if (!tree) throw noTree(source, report);
    return tree;
}

std::size_t startTagOffset(std::string_view text, const Tree& tree, const XML_DOM_Node* node)
{
    Count count{node};
    XML_DOM_ScanTree(tree.get(), countElement, &count);
    Pieces pieces{text};
    for (Piece piece; pieces.next(piece);) {
        if (piece.kind != PieceKind::StartTag && piece.kind != PieceKind::EmptyTag) continue;
        if (count.before-- == 0) return static_cast<std::size_t>(piece.text.data() - text.data());
    }
    return text.size();
}

std::string shownPath(const XML_DOM_Node* node)
{
    std::string path(kLongestPath, '\0');
    std::size_t size = XML_DOM_GetXPath(node, path.size(), path.data());
    while (size + 1 == path.size()) {  // it may have been cut
        path.resize(2 * path.size());
        size = XML_DOM_GetXPath(node, path.size(), path.data());
    }
    path.resize(size);
    path = textOfTree(path);
    if (path.size() <= kLongestPath) return path;
    return "..." + path.substr(std::min(path.find('/', path.size() - kLongestPath), path.size()));
}

}  // namespace netxml::tool
