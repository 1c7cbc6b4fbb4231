#include "xsd/code_writer.hpp"

#include "recode.hpp"
#include "xsd/enumerator_names.hpp"
#include "xsd/record_fields.hpp"
#include "xsd/record_names.hpp"
#include "xsd/registration_text.hpp"

#include <algorithm>

namespace netxml::xsd {
namespace {

std::string upper(std::string_view text)
{
    std::string result;
    for (const char c : text) result += c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    return result;
}

std::string countText(std::uint32_t count)
{
    return count == SCHEMA_UNBOUNDED ? "SCHEMA_UNBOUNDED" : std::to_string(count) + "u";
}

class Writer {
public:
    Writer(const SchemaRecords& records, const CodeOptions& options)
        : records_{records}, options_{options}, names_{records, options.prefix},
          null_{options.language == Language::Cxx ? "nullptr" : "NULL"}
    {
    }

    GeneratedCode write() { return {header(), source()}; }

private:
    std::string madeFrom() const
    {
        std::string files;
        for (const std::string& file : records_.files)
            files += (files.empty() ? "" : ", ") + file.substr(file.rfind('/') + 1);
        return "Made by \"netxml schema compile\" from " + files + ". Do not edit.";
    }

    // Told apart by the prefix, like the functions; no header of netxml's own ends so.
    std::string guard() const { return upper(options_.prefix) + "_SCHEMA_RECORDS_H"; }

    std::string header() const
    {
        const std::string& p = options_.prefix;
        return "/* " + madeFrom() + " */\n#ifndef " + guard() + "\n#define " + guard() +
               "\n\n#include \"netxml/schema.h\"\n\n#ifdef __cplusplus\nextern \"C\" {\n#endif\n\n"
               "/*\n"
               " * Registers the schema in a root that Schema_InitRoot() has prepared. The records "
               "are static;\n"
               " * any number of roots may hold them, but only one thread may register at a time. "
               ""
               "Registered twice\n"
               " * in one root, they stand there twice, and each call takes them out once.\n"
               " *\n"
               " * Returns XML_RET_OK, or what the first call that failed returned; the root is as "
               "it was then.\n"
               " */\nuint32_t " +
               p +
               "_schema_register(Schema_Root* root);\n\n"
               "/* Takes the schema out of a root again. NULL is ignored, and so is a root that "
               "does not hold it. */\n"
               "void " +
               p +
               "_schema_deregister(Schema_Root* root);\n\n#ifdef __cplusplus\n}\n#endif\n\n"
               "#endif\n";
    }

    // The records come first, since they tell which namespaces and built-in types are used.
    std::string source()
    {
        for (const SimpleTypeRecord* type : names_.simpleTypes()) write(*type);
        for (const AttributeRecord* attribute : names_.attributes()) write(*attribute);
        for (const AttributeGroupRecord* group : names_.groups()) write(*group);
        for (const ComplexTypeRecord* type : names_.complexTypes()) write(*type);
        for (const ElementRecord* element : records_.topElements) write(*element, true);
        writeRegistration();
        return "/* " + madeFrom() + " */\n#include \"" + options_.headerName +
               "\"\n\n#include <stddef.h>\n" + namespaceTexts() + forwardDeclarations() + bases() +
               out_;
    }

    // --- pieces of text

    std::string address(const RecordBase* record) const
    {
        return record ? "&" + names_.of(record) : null_;
    }
    std::string bytes(const std::string& utf8) const
    {
        const auto result = tool::recode(utf8, XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
        return stringLiteral(result ? *result : utf8);
    }
    std::string text(const std::string& utf8) const { return utf8.empty() ? null_ : bytes(utf8); }
    std::string nameSpace(const std::string& uri)
    {
        if (uri.empty()) return null_;
        const auto [place, added] = namespaces_.try_emplace(uri);
        if (added) {
            place->second = namespaces_.size() == 1
                                ? "kNamespace"
                                : "kNamespace" + std::to_string(namespaces_.size());
        }
        return place->second;
    }
    std::string array(const std::string& name, std::size_t size) const
    {
        return size == 0 ? null_ : name;
    }
    static std::string size(std::size_t count) { return std::to_string(count) + "u"; }

    void comment(const RecordBase& record)
    {
        std::string place = record.place.file
                                ? record.place.file->substr(record.place.file->rfind('/') + 1) +
                                      ":" + std::to_string(record.place.line)
                                : "";
        if (record.source.empty() && place.empty()) return;
        if (!place.empty() && !record.source.empty()) place += ": ";
        out_ += "/* " + place + record.source + " */\n";
    }
    void define(const std::string& type, const RecordBase& record, RecordFields& fields,
                bool shared = false)
    {
        comment(record);
        out_ += (shared ? "const " : "static const ") + type + " " + names_.of(&record) + " = " +
                fields.finish() + ";\n";
    }
    template <class Items, class Text>
    void defineArray(const std::string& type, const std::string& name, const Items& items,
                     Text textOf)
    {
        if (items.empty()) return;
        out_ += "static const " + type + " " + name + "[] = {\n";
        for (const auto& item : items) out_ += "    " + textOf(item) + ",\n";
        out_ += "};\n";
    }

    // --- what stands before all records

    std::string namespaceTexts() const
    {
        std::vector<std::pair<std::string, std::string>> sorted{namespaces_.begin(),
                                                                namespaces_.end()};
        std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
            return std::pair{a.second.size(), a.second} < std::pair{b.second.size(), b.second};
        });
        std::string result = "\n";
        for (const auto& [uri, name] : sorted)
            result += "static const char " + name + "[] = " + bytes(uri) + ";\n";
        return result;
    }

    // Types and elements may hold each other.
    std::string forwardDeclarations() const
    {
        std::string result = "\n";
        for (const ComplexTypeRecord* type : names_.complexTypes())
            result += "extern const Schema_ComplexType " + names_.of(type) + ";\n";
        for (const ElementRecord* element : records_.topElements)
            result += "extern const Schema_ElementDecl " + names_.of(element) + ";\n";
        return result;
    }

    // A type that is a built-in one and no more.
    std::string unrestricted(const std::string& builtin) const
    {
        return "static const Schema_SimpleType only_" + builtin + " = {\n    base_" + builtin +
               ", " + null_ + ", " + null_ + ", " + null_ + ", SCHEMA_BUILTIN_NONE, 0u, 1u, 0u};\n";
    }

    // The addresses of built-in types are what functions return, so they are filled in at
    // registration. Whatever refers to one does so through an array of one.
    std::string bases() const
    {
        std::string result;
        std::string fill;
        for (const std::string& builtin : names_.builtins()) {
            const std::string call = "Schema_BLDIN_" + builtin + "()";
            result += "\nstatic const Schema_SimpleType* base_" + builtin + "[1];\n";
            if (alone_.contains(builtin)) result += unrestricted(builtin);
            fill += "    base_" + builtin + "[0] = " +
                    (options_.language == Language::Cxx
                         ? "static_cast<const Schema_SimpleType*>(" + call + ")"
                         : "(const Schema_SimpleType*)" + call) +
                    ";\n";
        }
        return result + "\nstatic void fillBases(void)\n{\n" + fill + "}\n";
    }

    // --- records

    std::string simpleType(const SimpleTypeRecord* type)
    {
        if (!type) return null_;
        if (type->builtin.empty()) return "&" + names_.of(type);
        alone_.insert(type->builtin);
        return "&only_" + type->builtin;
    }

    void write(const SimpleTypeRecord& type)
    {
        const std::string name = names_.of(&type);
        out_ += "\n";
        defineArray("Schema_Facet", name + "_facets", type.facets, [&](const FacetRecord& facet) {
            return "{" + (facet.raw ? stringLiteral(facet.value) : bytes(facet.value)) + ", " +
                   facetName(facet.kind) + ", " + kindName(facet.baseKind) + "}";
        });
        const bool plainBase = type.members.size() == 1 && !type.members[0]->builtin.empty();
        if (!plainBase)
            defineArray("Schema_SimpleType* const", name + "_members", type.members,
                        [&](const SimpleTypeRecord* member) { return simpleType(member); });
        const bool named = !type.name.empty();
        RecordFields fields;
        fields
            .add(plainBase ? "base_" + type.members[0]->builtin
                           : array(name + "_members", type.members.size()))
            .add(array(name + "_facets", type.facets.size()))
            .add(text(type.name))
            .add(named ? nameSpace(type.nameSpace) : null_)
            .add("SCHEMA_BUILTIN_NONE")
            .add(size(type.facets.size()))
            .add(size(type.members.size()))
            .add("0u");
        define("Schema_SimpleType", type, fields);
    }

    void write(const AttributeRecord& attribute)
    {
        out_ += "\n";
        RecordFields fields;
        fields.add(address(attribute.ref))
            .add(simpleType(attribute.type))
            .add(text(attribute.name))
            .add(nameSpace(attribute.nameSpace))
            .add(attribute.fixed ? bytes(*attribute.fixed) : null_)
            .add(useName(attribute.use))
            .add(formName(attribute.form))
            .add(attribute.fixed ? "1u" : "0u");
        define("Schema_AttributeDecl", attribute, fields);
    }

    void write(const AttributeWildcardRecord* wildcard)
    {
        if (!wildcard) return;
        RecordFields fields;
        fields.add(nameSpace(wildcard->targetNamespace))
            .add(bytes(wildcard->constraint))
            .add(processName(wildcard->processContents));
        define("Schema_AttributeWildcard", *wildcard, fields);
    }

    void write(const AttributeGroupRecord& group)
    {
        const std::string name = names_.of(&group);
        out_ += "\n";
        defineArray("Schema_AttributeDecl* const", name + "_attributes", group.attributes,
                    [&](const AttributeRecord* attribute) { return address(attribute); });
        write(group.anyAttribute);
        RecordFields fields;
        fields.add(array(name + "_attributes", group.attributes.size()))
            .add(null_)
            .add(address(group.anyAttribute))
            .add(null_)
            .add(null_)
            .add(null_)
            .add(size(group.attributes.size()))
            .add("0u");
        define("Schema_AttributeGroup", group, fields);
    }

    void write(const ElementRecord& element, bool shared)
    {
        out_ += "\n";
        const std::string type = element.simpleType    ? simpleType(element.simpleType)
                                 : element.complexType ? address(element.complexType)
                                                       : null_;
        RecordFields fields;
        fields.add(address(element.ref))
            .add(text(element.name))
            .add(nameSpace(element.nameSpace))
            .add(element.head ? text(element.head->first) : null_)
            .add(element.head ? nameSpace(element.head->second) : null_)
            .add(type)
            .add(element.fixed ? bytes(*element.fixed) : null_)
            .add(countText(element.min))
            .add(countText(element.max))
            .add(element.complexType  ? "SCHEMA_KIND_COMPLEX_TYPE"
                 : element.simpleType ? "SCHEMA_KIND_SIMPLE_TYPE"
                                      : "0u")
            .add(formName(element.form))
            .add(element.fixed ? "1u" : "0u")
            .add(element.abstract ? "1u" : "0u")
            .add(element.nillable ? "1u" : "0u");
        define("Schema_ElementDecl", element, fields, shared);
    }

    void write(const WildcardRecord& wildcard)
    {
        out_ += "\n";
        RecordFields fields;
        fields.add(nameSpace(wildcard.targetNamespace))
            .add(bytes(wildcard.constraint))
            .add(countText(wildcard.min))
            .add(countText(wildcard.max))
            .add(processName(wildcard.processContents));
        define("Schema_Wildcard", wildcard, fields);
    }

    void write(const GroupRecord& group)
    {
        for (const ParticleRecord& particle : group.particles) {
            if (particle.element && !particle.element->top &&
                written_.insert(particle.element).second)
                write(*particle.element, false);
            else if (particle.wildcard) write(*particle.wildcard);
            else if (particle.group) write(*particle.group);
        }
        const std::string name = names_.of(&group);
        out_ += "\n";
        defineArray("Schema_Object", name + "_particles", group.particles,
                    [&](const ParticleRecord& particle) {
                        if (particle.element)
                            return "{" + address(particle.element) + ", SCHEMA_KIND_ELEMENT}";
                        if (particle.wildcard)
                            return "{" + address(particle.wildcard) + ", SCHEMA_KIND_WILDCARD}";
                        return "{" + address(particle.group) + ", SCHEMA_KIND_MODEL_GROUP}";
                    });
        RecordFields fields;
        fields.add(array(name + "_particles", group.particles.size()))
            .add(countText(group.min))
            .add(countText(group.max))
            .add(size(group.particles.size()))
            .add(compositorName(group.compositor));
        define("Schema_ModelGroup", group, fields);
    }

    void write(const ComplexTypeRecord& type)
    {
        const std::string name = names_.of(&type);
        if (type.content) write(*type.content);
        out_ += "\n";
        defineArray("Schema_AttributeDecl* const", name + "_attributes", type.attributes,
                    [&](const AttributeRecord* attribute) { return address(attribute); });
        defineArray("Schema_AttributeGroup* const", name + "_groups", type.attributeGroups,
                    [&](const AttributeGroupRecord* group) { return address(group); });
        write(type.anyAttribute);
        if (type.textType)
            out_ += "static const Schema_Derivation " + name + "_text = {\n    " + null_ + ", " +
                    null_ + ", " + null_ + ", " + null_ + ", " + null_ + ", " + null_ + ", " +
                    simpleType(type.textType) +
                    ",\n    SCHEMA_KIND_SIMPLE_EXTENSION, SCHEMA_KIND_SIMPLE_TYPE, 0u, 0u, 0u};\n";
        RecordFields fields;
        fields.add(array(name + "_attributes", type.attributes.size()))
            .add(array(name + "_groups", type.attributeGroups.size()))
            .add(type.textType ? "&" + name + "_text" : null_)
            .add(address(type.content))
            .add(null_)
            .add(address(type.anyAttribute))
            .add(text(type.name))
            .add(nameSpace(type.nameSpace))
            .add(size(type.attributes.size()))
            .add(size(type.attributeGroups.size()))
            .add(type.mixed ? "1u" : "0u")
            .add("0u");
        define("Schema_ComplexType", type, fields, true);
    }

    // --- registration

    void writeRegistration()
    {
        std::vector<std::string> objects;
        const auto add = [&](const auto& records, const char* kind) {
            for (const auto* record : records)
                objects.push_back("{" + address(record) + ", " + kind + "}");
        };
        add(records_.topSimpleTypes, "SCHEMA_KIND_SIMPLE_TYPE");
        add(records_.topAttributes, "SCHEMA_KIND_ATTRIBUTE");
        add(records_.topComplexTypes, "SCHEMA_KIND_COMPLEX_TYPE");
        add(records_.topElements, "SCHEMA_KIND_ELEMENT");
        out_ += objects.empty() ? "" : "\n/* What is registered, in this order. */\n";
        defineArray("Schema_Object", "topObjects", objects,
                    [](const std::string& object) { return object; });
        Registration registration{options_.prefix, objects.size(), null_, {}, {}};
        for (const std::string& type : records_.networkTypes)
            registration.networkTypes.push_back(stringLiteral(type));
        if (!registration.networkTypes.empty())
            registration.networkNamespace = nameSpace(records_.networkNamespace);
        out_ += registrationText(registration);
    }

    const SchemaRecords& records_;
    const CodeOptions& options_;
    RecordNames names_;
    std::string null_;
    std::map<std::string, std::string> namespaces_;
    std::set<std::string> alone_;  // built-in types that stand without a restriction
    std::set<const void*> written_;
    std::string out_;
};

}  // namespace

std::string stringLiteral(std::string_view bytes)
{
    constexpr char kDigits[] = "01234567";
    std::string text = "\"";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (c == '?' && text.ends_with('?')) {
            text += "\\?";  // two of them could begin a trigraph
        } else if (byte >= 0x20 && byte < 0x7F) {
            text += c;
        } else {
            text += '\\';
            text += kDigits[byte / 64];
            text += kDigits[byte / 8 % 8];
            text += kDigits[byte % 8];
        }
    }
    return text + "\"";
}

GeneratedCode writeCode(const SchemaRecords& records, const CodeOptions& options)
{
    return Writer{records, options}.write();
}

}  // namespace netxml::xsd
