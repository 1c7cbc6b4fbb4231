#include "parser/bindings.hpp"

namespace netxml {

// A prefix cannot be undeclared, `xmlns` cannot be declared, its namespace name cannot be bound,
// and `xml` and its namespace name go only together (Namespaces in XML 1.0, section 3).
bool mayDeclare(bool prefixGiven, std::string_view prefix, std::string_view name) noexcept
{
    if (prefixGiven && name.empty()) return false;
    if (prefix == "xmlns" || name == XML_NAMESPACE_XMLNS) return false;
    return (prefix == "xml") == (name == XML_NAMESPACE_XML);
}

ParseError Bindings::declare(ChunkStack& memory, Span prefix, Span name, std::size_t depth) noexcept
{
    if (!mayDeclare(!prefix.empty(), prefix.view(), name.view()))
        return ParseError::NamespaceDeclaration;
    const PrefixEntry* same = scope_.find(prefix.view());
    if (same && same->depth == depth) return ParseError::AttributeRedefined;

    void* block = memory.allocate(sizeof(Binding));
    if (!block || !memory.keep(prefix) || !memory.keep(name)) return ParseError::NoMemory;
    auto* binding = new (block)
        Binding{{nullptr, nullptr, prefix.view(), depth}, prefix, name, nullptr, 0, false};
    return scope_.push(binding) ? ParseError::None : ParseError::NoMemory;
}

}  // namespace netxml

uint32_t XML_CheckNamespace(const char* prefix, const char* namespaceName)
{
    if (!namespaceName) return XML_RET_FAIL;
    const bool allowed = netxml::mayDeclare(prefix != nullptr, prefix ? prefix : "", namespaceName);
    return allowed ? XML_RET_OK : XML_RET_FAIL;
}
