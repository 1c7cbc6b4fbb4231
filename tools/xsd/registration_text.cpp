#include "xsd/registration_text.hpp"

namespace netxml::xsd {
namespace {

// C has no arrays of no elements.
std::string emptyRegistration(const std::string& prefix)
{
    return "\n/* The schema declares nothing at its top, so a root has nothing to hold. */\n"
           "uint32_t " +
           prefix +
           "_schema_register(Schema_Root* root)\n{\n    fillBases();\n"
           "    return root ? XML_RET_OK : XML_RET_FAIL;\n}\n\nvoid " +
           prefix + "_schema_deregister(Schema_Root* root)\n{\n    (void)root;\n}\n";
}

// The library knows one namespace of its network types in a process, and keeps the pointer to it.
// Each schema puts its own text there and remembers the one before, so that schemas of the same
// namespace go together when the last one in is the first one out.
std::string networkTypeNaming(const Registration& registration)
{
    const std::string& uri = registration.networkNamespace;
    const std::string count = std::to_string(registration.networkTypes.size());
    std::string names;
    for (const std::string& type : registration.networkTypes)
        names += (names.empty() ? "" : ", ") + type;
    return "\n/*\n"
           " * The types that the library checks by name get the schema's namespace while a root "
           "holds it.\n"
           " * Where another schema has given them the same one, its text comes back afterwards.\n"
           " */\n"
           "static const char* const networkTypes[" +
           count + "] = {" + names + "};\nstatic const char* formerNamespaces[" + count +
           "];\nstatic uint32_t holders;\n\n"
           "static const Schema_ExtType* namedType(size_t index)\n{\n"
           "    return Schema_FoundZynBltInType(networkTypes[index], " +
           uri +
           ");\n}\n\n"
           "static void unnameNetworkTypes(size_t count)\n{\n"
           "    while (count-- != 0) {\n"
           "        const Schema_ExtType* type = namedType(count);\n"
           "        if (type && type->namespaceName == " +
           uri + ")\n            Schema_ReplaceInnerTypeNS(networkTypes[count], " + uri +
           ", formerNamespaces[count]);\n    }\n}\n\n"
           "static uint32_t nameNetworkTypes(void)\n{\n    size_t i;\n"
           "    if (holders++ != 0) return XML_RET_OK;\n"
           "    for (i = 0; i < " +
           count +
           "u; ++i) {\n"
           "        const Schema_ExtType* type = namedType(i);\n"
           "        uint32_t status = XML_RET_OK;\n"
           "        if (type && type->namespaceName == " +
           uri + ") continue;\n        formerNamespaces[i] = type ? type->namespaceName : " +
           registration.null +
           ";\n"
           "        status = Schema_ReplaceInnerTypeNS(networkTypes[i], formerNamespaces[i], " +
           uri +
           ");\n        if (status == XML_RET_OK) continue;\n"
           "        unnameNetworkTypes(i);\n        --holders;\n        return status;\n"
           "    }\n    return XML_RET_OK;\n}\n\n"
           "static void releaseNetworkTypes(void)\n{\n"
           "    if (holders != 0 && --holders == 0) unnameNetworkTypes(" +
           count + "u);\n}\n";
}

// The names are shared by the process: only a root that held the schema gives up its part.
constexpr const char* kObjectCount =
    "static uint32_t objectCount(const Schema_Root* root)\n{\n"
    "    return root->simpleTypes.count + root->attributes.count + root->elements.count +\n"
    "           root->complexTypes.count;\n}\n\n";

}  // namespace

std::string registrationText(const Registration& registration)
{
    const std::string& p = registration.prefix;
    if (registration.objectCount == 0) return emptyRegistration(p);
    const bool network = !registration.networkTypes.empty();
    // Taken out from the last one, the others stay in their order.
    return (network ? networkTypeNaming(registration) : "") +
           "\n/* Takes out the first `count` objects. */\n"
           "static void deregisterObjects(Schema_Root* root, size_t count)\n{\n"
           "    while (count != 0) Schema_DeregTopObject(root, &topObjects[--count]);\n}\n\n" +
           (network ? kObjectCount : "") + "uint32_t " + p +
           "_schema_register(Schema_Root* root)\n{\n"
           "    const size_t count = sizeof topObjects / sizeof topObjects[0];\n"
           "    uint32_t status = XML_RET_OK;\n    size_t i;\n    fillBases();\n" +
           (network ? "    status = nameNetworkTypes();\n"
                      "    if (status != XML_RET_OK) return status;\n"
                    : "") +
           "    for (i = 0; i < count; ++i) {\n"
           "        status = Schema_RegTopObject(root, &topObjects[i]);\n"
           "        if (status == XML_RET_OK) continue;\n"
           "        deregisterObjects(root, i);\n" +
           (network ? "        releaseNetworkTypes();\n" : "") +
           "        break;\n    }\n    return status;\n}\n\nvoid " + p +
           "_schema_deregister(Schema_Root* root)\n{\n" +
           (network ? "    uint32_t before;\n" : "") + "    if (!root) return;\n" +
           (network ? "    before = objectCount(root);\n" : "") +
           "    deregisterObjects(root, sizeof topObjects / sizeof topObjects[0]);\n" +
           (network ? "    if (objectCount(root) != before) releaseNetworkTypes();\n" : "") + "}\n";
}

}  // namespace netxml::xsd
