#include "tests/faults/scenario.hpp"

#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

std::set<std::string>& calledFunctions()
{
    static std::set<std::string> functions;
    return functions;
}

std::vector<Scenario> everyScenario()
{
    std::vector<Scenario> all;
    for (const auto& group : {readingScenarios(), walkingScenarios(), editingScenarios(),
                              copyingScenarios(), writingScenarios(), streamScenarios(),
                              handlerScenarios(), valueScenarios(), schemaScenarios()})
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

namespace {

std::string shown(const char* text)
{
    return text ? "'" + std::string{text} + "'" : "-";
}

uint32_t describe(XML_DOM_Node* node, void* into)
{
    std::string& text = *static_cast<std::string*>(into);
    const char* prefix = nullptr;
    const char* name = nullptr;
    XML_DOM_GetNodeNameSpace(node, &prefix, &name);
    char path[256];
    XML_DOM_GetXPath(node, sizeof path, path);
    text += std::to_string(XML_DOM_GetNodeType(node)) + " " + path + " " + shown(prefix) + "=" +
            shown(name) + " " + shown(XML_DOM_GetNodeValue(node));
    const XML_DOM_Attr* attr = XML_DOM_GetFirstAttr(node);
    for (; attr; attr = XML_DOM_GetNextAttr(attr)) {
        XML_DOM_GetAttrNameSpace(attr, &name, &prefix);
        text += " " + shown(name) + " in " + shown(prefix) + " is " +
                shown(XML_DOM_GetAttrValByHandle(attr));
    }
    text += "\n";
    return 0;
}

}  // namespace

// The visits show what the text does not: bindings, and a node that is linked twice.
std::string dump(const XML_DOM_Node* root)
{
    std::string text = shown(XML_DOM_GetVersion(root)) + " in encoding " +
                       std::to_string(XML_DOM_GetEncoding(root)) + "\n";
    XML_DOM_ScanTree(const_cast<XML_DOM_Node*>(root), describe, &text);
    return text + written(root);
}

std::string taken(char* block, size_t length)
{
    if (!block) return "nothing";
    std::string text(block, length);
    heapReleaseHandedOut(block);
    return text;
}
