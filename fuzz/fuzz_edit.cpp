// A sequence of editing calls does to a tree what it does to a plain shadow of it: the same calls
// succeed, and afterwards everything that can be read is the same, also in the trees that were not
// meant.
//
// The bytes are calls with their arguments: nodes by number, names and values from small pools, so
// that they meet again.
#include "fuzz/support/fuzz_input.hpp"
#include "fuzz/support/require.hpp"
#include "fuzz/support/shadow_tree.hpp"
#include "fuzz/support/tree_text.hpp"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kMostCalls = 300;
constexpr std::size_t kMostNodes = 150;
constexpr std::size_t kFewNodes = 10;  // so few are compared after each call
constexpr std::size_t kInputBound = 4096;

// A name with whether it may be one.
struct Name {
    std::string text;
    bool good;
};
const Name kNames[] = {
    {"a", true},    {"b", true},    {"ab", true},       {"xmlns", true},
    {"a-1.", true}, {"_", true},    {"\xD6\xD0", true}, {std::string(300, 'n'), true},
    {"", false},    {"a:b", false}, {"1a", false},      {std::string(4200, 'N'), true},
    {"-", false},   {"a b", false}, {"a\xD6", false},   {"xml", true},
};
const std::string kValues[] = {
    "",
    "v",
    "w",
    " ",
    "a<b>&\"",
    "\t x\n",
    std::string(300, 'v'),
    "]]>",
    "&",
    "\xD6\xD0\xCE\xC4",
    " \xD6\xD0",
    "  ",
    std::string(4200, 'V'),
    "a b",
    "\r",
    "0",
};
constexpr const char* kPrefixes[] = {nullptr, "", "p", "q", "xml", "p", "long-prefix-of-a-name",
                                     "q"};
constexpr const char* kNamespaces[] = {
    nullptr, "", "urn:a", "urn:b", "urn:c:<&>", "urn:a", "urn:ietf:params:xml:ns:netconf:base:1.0",
    "urn:d"};
constexpr std::string_view kDocuments[] = {
    "<r/>",
    "<r xmlns='urn:a' xmlns:p='urn:b' a='1' p:a='2'><p:b>t</p:b><c><![CDATA[d]]></c>u</r>",
    "<p:r xmlns:p='urn:a'><b xmlns:p='urn:b' xmlns:q='urn:c'><p:c q:a='' xml:lang='x'/></b></p:r>",
    "<a><a><a><a>1</a>2</a>3</a>4<!-- --><b/><b/></a>",
};

bool isEmpty(const char* text)
{
    return !text || *text == '\0';
}

std::string_view viewOf(const char* text)
{
    return text ? std::string_view{text} : std::string_view{};
}

class Session {
public:
    explicit Session(FuzzInput& input) : input_{input} {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session()
    {
        for (const ShadowOwner& top : tops_) XML_DOM_DelNode(top->original);
    }

    void run()
    {
        for (std::size_t calls = 0; calls < kMostCalls && !input_.done(); ++calls) {
            list();
            call();
            list();
            if (nodes_.size() <= kFewNodes || calls % 16 == 0) compareAll();
        }
        compareAll();
    }

private:
    // clang-format off
    void call()
    {
        const std::size_t which = input_.below(20);
        if (nodes_.empty() || (which < 4 && nodes_.size() < kMostNodes)) return create(which % 4);
        switch (which) {
        case 4: case 5: return addChild();
        case 6:         return insertBefore();
        case 7:         return setValue();
        case 8:         return setName();
        case 9:         return addAttrInner();
        case 10:        return addAttr();
        case 11:        return delAttr();
        case 12:        return delNode();
        case 13:        return copyNode();
        case 14:        return copySubTree();
        case 15: case 16: return declare();
        case 17:        return bind();
        case 18:        return bindAttr();
        default:        return document();
        }
    }
    // clang-format on

    void compareAll() const
    {
        for (const ShadowOwner& top : tops_) compareWithShadow(*top);
    }
    void list()
    {
        nodes_.clear();
        for (const ShadowOwner& top : tops_) shadowList(*top, nodes_);
    }

    ShadowNode& anyNode() { return *nodes_[input_.below(nodes_.size())]; }
    // An element, where the node that comes first is none.
    ShadowNode* anyElement()
    {
        const std::size_t start = input_.below(nodes_.size());
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            ShadowNode* node = nodes_[(start + i) % nodes_.size()];
            if (node->isElement()) return node;
        }
        return nullptr;
    }
    const Name& anyName() { return kNames[input_.below(std::size(kNames))]; }
    const std::string& anyValue() { return kValues[input_.below(std::size(kValues))]; }
    const char* anyPrefix() { return kPrefixes[input_.below(std::size(kPrefixes))]; }
    const char* anyNamespace() { return kNamespaces[input_.below(std::size(kNamespaces))]; }

    static void expect(uint32_t status, bool done, const char* property)
    {
        require(status == (done ? XML_RET_OK : XML_RET_FAIL), property);
    }
    ShadowNode* keep(ShadowOwner top, XML_DOM_Node* node)
    {
        shadowAdopt(*top, node);
        tops_.push_back(std::move(top));
        return tops_.back().get();
    }
    ShadowNode* keepNew(XML_DOM_Node* node, XML_DOM_NodeType type, const std::string& text)
    {
        auto top = std::make_unique<ShadowNode>();
        top->type = type;
        top->text = text;
        return keep(std::move(top), node);
    }
    ShadowOwner take(ShadowNode& node)
    {
        auto& list = node.parent ? node.parent->children : tops_;
        const auto at = std::find_if(list.begin(), list.end(),
                                     [&](const ShadowOwner& one) { return one.get() == &node; });
        ShadowOwner taken = std::move(*at);
        list.erase(at);
        taken->parent = nullptr;
        return taken;
    }

    void create(std::size_t how)
    {
        if (how == 0) return createElement();
        if (how == 1) return createText();
        if (how == 2) return createElementWith();
        const std::string_view document = kDocuments[input_.below(std::size(kDocuments))];
        keep(shadowOf(document), treeFrom(document).release());
    }
    void createElement()
    {
        const Name& name = anyName();
        const bool unchecked = input_.chance(4);
        XML_DOM_Node* node = unchecked ? XML_DOM_CreateElementNodeInner(name.text.c_str())
                                       : XML_DOM_CreateElementNode(name.text.c_str());
        require((node != nullptr) == (unchecked || name.good), "a good name makes an element");
        // Only what has a form in every encoding is kept, so that all can be written.
        if (node && !name.good) return XML_DOM_DelNode(node);
        if (node) keepNew(node, XML_DOM_NODE_ELEMENT, name.text);
    }
    void createText()
    {
        const std::string& value = anyValue();
        switch (input_.below(3)) {
        case 0: keepNew(XML_DOM_CreateTextNode(value.c_str()), XML_DOM_NODE_TEXT, value); break;
        case 1: keepNew(XML_DOM_CreateCDataNode(value.c_str()), XML_DOM_NODE_CDATA, value); break;
        default:
            const bool cdata = input_.chance(2);
            const XML_DOM_NodeType type = cdata ? XML_DOM_NODE_CDATA : XML_DOM_NODE_TEXT;
            keepNew(XML_DOM_CreateTextualNodeInner(type, value.data(), value.size()), type, value);
        }
    }
    void createElementWith()
    {
        const Name& name = anyName();
        const bool cdata = input_.chance(2);
        const bool none = input_.chance(5);
        const std::string& value = anyValue();
        const char* text = none ? nullptr : value.c_str();
        XML_DOM_Node* node = cdata ? XML_DOM_CreateElementWithCData(name.text.c_str(), text)
                                   : XML_DOM_CreateElementWithText(name.text.c_str(), text);
        require((node != nullptr) == name.good, "a good name makes an element with text");
        if (!node) return;
        auto top = std::make_unique<ShadowNode>();
        top->text = name.text;
        if (text) {
            ShadowNode* child = top->append(std::make_unique<ShadowNode>());
            child->type = cdata ? XML_DOM_NODE_CDATA : XML_DOM_NODE_TEXT;
            child->text = value;
        }
        keep(std::move(top), node);
    }

    void addChild()
    {
        ShadowNode& parent = anyNode();
        ShadowNode& child = input_.chance(4) ? anyNode() : *tops_[input_.below(tops_.size())];
        if (parent.liesUnder(&child)) return;  // a cycle is the caller's not to make
        const bool done = parent.isElement() && !child.parent && !child.document;
        expect(XML_DOM_AddChildNode(parent.original, child.original), done, "appending a child");
        if (done) parent.append(take(child));
    }
    void insertBefore()
    {
        ShadowNode& reference = anyNode();
        ShadowNode& node = *tops_[input_.below(tops_.size())];
        if (node.document || reference.liesUnder(&node)) return;
        const bool done = reference.parent != nullptr;
        expect(XML_DOM_InsertBeforeNode(reference.original, node.original), done,
               "inserting a node");
        if (!done) return;
        ShadowOwner taken = take(node);
        taken->parent = reference.parent;
        auto& children = reference.parent->children;
        const auto at = static_cast<std::ptrdiff_t>(reference.indexInParent());
        children.insert(children.begin() + at, std::move(taken));
    }
    void setValue()
    {
        ShadowNode& node = anyNode();
        const bool own = input_.chance(6);
        const std::string& value = own ? node.text : anyValue();
        const bool done = !node.isElement() && !value.empty();
        const char* given = own ? XML_DOM_GetNodeValue(node.original) : value.c_str();
        expect(XML_DOM_SetNodeValue(node.original, given), done, "setting a value");
        if (done) node.text = std::string{value};
    }
    void setName()
    {
        ShadowNode& node = anyNode();
        if (input_.chance(6)) {
            expect(XML_DOM_SetNodeName(node.original, XML_DOM_GetNodeName(node.original)),
                   node.isElement(), "giving an element its own name");
            return;
        }
        const Name& name = anyName();
        const bool done = node.isElement() && name.good;
        expect(XML_DOM_SetNodeName(node.original, name.text.c_str()), done, "renaming an element");
        if (done) node.text = name.text;
    }

    void addAttrInner()
    {
        ShadowNode* element = anyElement();
        const std::string& name = kNames[input_.below(8)].text;
        const std::string& value = anyValue();
        if (!element) return;
        require(XML_DOM_AddAttrInner(element->original, name.c_str(), value.c_str()) != nullptr,
                "adding an attribute without a check");
        element->attrs.push_back({name, value, nullptr});
    }
    void addAttr()
    {
        ShadowNode& node = anyNode();
        const char* prefix = anyPrefix();
        const Name& name = anyName();
        const std::string& value = anyValue();
        const ShadowDecl* decl = isEmpty(prefix) ? nullptr : node.findDecl(prefix);
        const std::string nameSpace = decl ? decl->name : "";
        bool done =
            node.isElement() && name.good && name.text != "xmlns" && (decl || isEmpty(prefix));
        for (const ShadowAttr& attr : node.attrs)
            if (attr.name == name.text && (attr.bound ? attr.bound->name : "") == nameSpace)
                done = false;
        const XML_DOM_Attr* made =
            XML_DOM_AddAttr(node.original, prefix, name.text.c_str(), value.c_str());
        require((made != nullptr) == done, "adding an attribute");
        if (done) node.attrs.push_back({name.text, value, decl});
    }
    void delAttr()
    {
        ShadowNode& node = anyNode();
        const char* prefix = anyPrefix();
        const std::string& name = anyName().text;
        XML_DOM_DelAttr(node.original, prefix, name.c_str());
        if (name.empty()) return;
        for (auto attr = node.attrs.begin(); attr != node.attrs.end(); ++attr) {
            const std::string bound = attr->bound ? attr->bound->prefix.value_or("") : "";
            if (attr->name != name || bound != viewOf(prefix)) continue;
            node.attrs.erase(attr);
            return;
        }
    }
    void delNode()
    {
        ShadowNode& node = anyNode();
        XML_DOM_DelNode(node.original);
        take(node);
    }

    void copyNode()
    {
        if (nodes_.size() >= kMostNodes) return;
        ShadowNode& node = anyNode();
        if (input_.chance(3)) {
            XML_DOM_Node* copy = XML_DOM_CopyRoot(node.original);
            const ShadowNode* root = node.top();
            require((copy != nullptr) == root->document.has_value(), "copying a root");
            if (copy) keep(shadowCopy(*root), copy)->document = root->document;
            return;
        }
        keep(shadowCopy(node), XML_DOM_CopyNode(node.original));
    }
    void copySubTree()
    {
        ShadowNode& to = anyNode();
        ShadowNode& from = anyNode();
        std::vector<ShadowNode*> copied;
        shadowList(from, copied);
        if (nodes_.size() + copied.size() > kMostNodes) return;
        const bool done = to.isElement() && (&to == &from || !to.liesUnder(&from));
        expect(XML_DOM_CopySubTree(to.original, from.original), done, "copying children");
        if (!done) return;
        shadowCopyChildren(to, from);
        shadowAdopt(to, to.original);
    }

    // The rule of all three: a prefix is declared once, unless its name may be replaced.
    static bool declareInShadow(ShadowNode& node, const char* prefix, const char* nameSpace,
                                bool overwrite)
    {
        if (ShadowDecl* decl = node.ownDecl(viewOf(prefix))) {
            if (!overwrite) return false;
            decl->name = nameSpace;
            return true;
        }
        auto decl = std::make_unique<ShadowDecl>();
        if (!isEmpty(prefix)) decl->prefix = prefix;
        decl->name = nameSpace;
        node.decls.push_back(std::move(decl));
        return true;
    }
    void declare()
    {
        ShadowNode* element = anyElement();
        const char* prefix = anyPrefix();
        const char* nameSpace = anyNamespace();
        const std::size_t how = input_.below(3);
        if (!element) return;
        uint32_t status = XML_RET_OK;
        bool done = false;
        if (how == 2) {
            if (isEmpty(prefix)) prefix = nullptr;
            status = XML_DOM_AddNodeNameSpaceInner(element->original, prefix, nameSpace, 1);
            done = nameSpace && declareInShadow(*element, prefix, nameSpace, true);
        } else {
            status = how == 0 ? XML_DOM_AddNodeNameSpace(element->original, prefix, nameSpace)
                              : XML_DOM_SetNodeDefineNsVal(element->original, prefix, nameSpace);
            done = (isEmpty(prefix) || !isEmpty(nameSpace)) &&
                   declareInShadow(*element, prefix, nameSpace ? nameSpace : "", how == 1);
        }
        expect(status, done, "declaring a prefix");
    }
    void bind()
    {
        ShadowNode& node = anyNode();
        const char* prefix = anyPrefix();
        const ShadowDecl* decl = isEmpty(prefix) ? nullptr : node.findDecl(prefix);
        const bool done = node.isElement() && (decl || isEmpty(prefix));
        expect(XML_DOM_SetNodeNameSpace(node.original, prefix), done, "binding an element");
        if (done) node.bound = decl;
    }
    void bindAttr()
    {
        ShadowNode* element = anyElement();
        const char* prefix = anyPrefix();
        if (!element || element->attrs.empty()) return;
        const std::size_t which = input_.below(element->attrs.size());
        XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(element->original);
        for (std::size_t i = 0; i < which; ++i) attr = XML_DOM_GetNextAttr(attr);
        const ShadowDecl* decl = isEmpty(prefix) ? nullptr : element->findDecl(prefix);
        const bool done = decl || isEmpty(prefix);
        expect(XML_DOM_SetAttrNsInner(attr, prefix), done, "binding an attribute");
        if (done) element->attrs[which].bound = decl;
    }
    void document()
    {
        ShadowNode& node = anyNode();
        if (input_.chance(2)) {
            const bool done = node.isElement() && !node.parent && !node.document;
            expect(XML_DOM_SetRoot(node.original), done, "making a root");
            if (done) node.document = XML_ENCODING_UTF_8;
            return;
        }
        constexpr XML_Encoding kEncodings[] = {XML_ENCODING_UTF_8, XML_ENCODING_GB18030,
                                               XML_ENCODING_NONE};
        const XML_Encoding encoding = kEncodings[input_.below(3)];
        const bool done = node.top()->document && encoding != XML_ENCODING_NONE;
        expect(XML_DOM_SetEncoding(node.original, encoding), done, "setting an encoding");
        if (done) node.top()->document = encoding;
    }

    FuzzInput& input_;
    std::vector<ShadowOwner> tops_;
    std::vector<ShadowNode*> nodes_;  // of all trees, brought up to date before each call
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const BalancedHeap heap;
    if (size > kInputBound) return 0;
    FuzzInput input{data, size};
    Session{input}.run();
    return 0;
}
