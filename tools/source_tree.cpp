#include "source_tree.hpp"

#include "caret.hpp"
#include "markup.hpp"
#include "missing_characters.hpp"
#include "tree_text.hpp"
#include "utf8_text.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <initializer_list>
#include <optional>
#include <unordered_set>

namespace netxml::tool {
namespace {

constexpr std::size_t kLongestShownPath = 1000;  // bytes; of a longer one the end is shown

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

// Goes through a tree and the tags of its text side by side.
struct TagSearch {
    std::string_view text;
    Pieces pieces;
    std::unordered_map<const XML_DOM_Node*, std::size_t>& offsets;  // of those that are wanted
    std::size_t missing;

    std::size_t nextTag()
    {
        for (Piece piece; pieces.next(piece);) {
            if (piece.kind == PieceKind::StartTag || piece.kind == PieceKind::EmptyTag)
                return static_cast<std::size_t>(piece.text.data() - text.data());
        }
        return text.size();
    }
};

std::uint32_t visit(XML_DOM_Node* node, void* context)
{
    TagSearch& search = *static_cast<TagSearch*>(context);
    if (XML_DOM_GetNodeType(node) != XML_DOM_NODE_ELEMENT) return 0;
    const std::size_t offset = search.nextTag();
    const auto wanted = search.offsets.find(node);
    if (wanted == search.offsets.end()) return 0;
    wanted->second = offset;
    return --search.missing == 0 ? 1 : 0;
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

ElementPlaces::ElementPlaces(std::string_view text, const Tree& tree,
                             const std::vector<const XML_DOM_Node*>& elements)
{
    std::unordered_set<const XML_DOM_Node*> parents;
    for (const XML_DOM_Node* element : elements) {
        offsets_.emplace(element, text.size());
        const XML_DOM_Node* node = element;
        for (; node && positions_.emplace(node, 1).second; node = XML_DOM_GetNodeParent(node))
            parents.insert(XML_DOM_GetNodeParent(node));
    }
    parents.erase(nullptr);
    for (const XML_DOM_Node* parent : parents) addPositions(parent);
    if (offsets_.empty()) return;
    TagSearch search{text, Pieces{text}, offsets_, offsets_.size()};
    XML_DOM_ScanTree(tree.get(), visit, &search);
}

void ElementPlaces::addPositions(const XML_DOM_Node* parent)
{
    std::unordered_map<std::string_view, std::size_t> counts;
    const XML_DOM_Node* child = XML_DOM_GetFirstChild(parent);
    for (; child; child = XML_DOM_GetNextSibling(child)) {
        if (XML_DOM_GetNodeType(child) != XML_DOM_NODE_ELEMENT) continue;
        const std::size_t position = ++counts[XML_DOM_GetNodeName(child)];
        const auto wanted = positions_.find(child);
        if (wanted != positions_.end()) wanted->second = position;
    }
}

std::size_t ElementPlaces::offsetOf(const XML_DOM_Node* element) const
{
    return offsets_.at(element);
}

// The top of a tree has no position.
std::string ElementPlaces::stepOf(const XML_DOM_Node* element) const
{
    std::string step = std::string{"/"} + XML_DOM_GetNodeName(element);
    if (XML_DOM_GetNodeParent(element)) step += "[" + std::to_string(positions_.at(element)) + "]";
    return step;
}

std::string ElementPlaces::beginningOfPath(const XML_DOM_Node* element, std::size_t size) const
{
    std::vector<const XML_DOM_Node*> upward;
    for (; element; element = XML_DOM_GetNodeParent(element)) upward.push_back(element);
    std::string path;
    for (; !upward.empty() && path.size() < size; upward.pop_back()) path += stepOf(upward.back());
    return path;
}

std::string ElementPlaces::shownPath(const XML_DOM_Node* element) const
{
    // A character of four bytes may have two in UTF-8, so this is long enough to be cut there.
    constexpr std::size_t kEnough = 2 * kLongestShownPath + 1;
    std::vector<std::string> upward;
    std::size_t size = 0;
    for (; element && size < kEnough; element = XML_DOM_GetNodeParent(element)) {
        upward.push_back(stepOf(element));
        size += upward.back().size();
    }
    std::string path;
    for (; !upward.empty(); upward.pop_back()) path += upward.back();
    path = textOfTree(path);
    if (path.size() <= kLongestShownPath) return path;
    return "..." +
           path.substr(std::min(path.find('/', path.size() - kLongestShownPath), path.size()));
}

}  // namespace netxml::tool
