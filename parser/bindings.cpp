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
    if (!scope_.push(binding)) return ParseError::NoMemory;
    if (prefix.empty()) default_ = {binding, name.view()};
    return ParseError::None;
}

void Bindings::dropNewest(std::size_t depth) noexcept
{
    bool dropsDefault = false;
    for (; scope_.newest() && scope_.newest()->depth == depth; scope_.pop())
        dropsDefault = dropsDefault || scope_.newest()->prefix.empty();
    if (!dropsDefault) return;
    auto* outer = static_cast<Binding*>(scope_.find({}));
    default_ = outer ? Resolution{outer, outer->name.view()} : Resolution{};
}

Resolution Bindings::resolvePrefix(std::string_view prefix) const noexcept
{
    auto* binding = static_cast<Binding*>(scope_.find(prefix));
    if (binding) return {binding, binding->name.view()};
    return {nullptr, prefix == "xml" ? std::string_view{XML_NAMESPACE_XML} : std::string_view{}};
}

}  // namespace netxml

uint32_t XML_CheckNamespace(const char* prefix, const char* namespaceName)
{
    if (!namespaceName) return XML_RET_FAIL;
    const bool allowed = netxml::mayDeclare(prefix != nullptr, prefix ? prefix : "", namespaceName);
    return allowed ? XML_RET_OK : XML_RET_FAIL;
}
