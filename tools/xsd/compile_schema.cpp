#include "xsd/compile_schema.hpp"

#include "xsd/attribute_uses.hpp"
#include "xsd/components.hpp"
#include "xsd/schema_set.hpp"
#include "xsd/simple_types.hpp"

#include <algorithm>
#include <tuple>

namespace netxml::xsd {
namespace {

class Compilation {
public:
    Compilation(const SchemaOptions& options, SchemaRecords& records, Diagnostics& diagnostics)
        : options_{options}, records_{records}, set_{options, diagnostics}, types_{set_, records,
                                                                                   options,
                                                                                   diagnostics},
          attributes_{set_, records, types_, diagnostics}, components_{set_, records, types_,
                                                                       attributes_, diagnostics}
    {
    }

    void run()
    {
        records_.targetNamespace = set_.targetNamespace();
        records_.files = set_.fileNames();
        for (const auto& [name, component] : set_.ordered(Symbol::Type)) {
            if (SimpleTypes::isSimple(component)) {
                const SimpleTypeRecord* type = types_.named(name, component).record;
                // The schema of schemas declares what is built in.
                if (type->builtin.empty()) records_.topSimpleTypes.push_back(type);
            } else records_.topComplexTypes.push_back(components_.namedType(name, component));
        }
        for (const auto& [name, component] : set_.ordered(Symbol::Attribute))
            records_.topAttributes.push_back(attributes_.top(name, component));
        for (const auto& [name, component] : set_.ordered(Symbol::Element))
            records_.topElements.push_back(components_.topElement(name, component));
        components_.checkGroups();
        components_.finish();
        nameNamespaces();
    }

    const std::vector<std::string>& catalogs() const { return set_.catalogs(); }

private:
    // Other namespaces than the target's stand in identifiers by what the command line calls them,
    // or by a prefix that a document gives them.
    void nameNamespaces()
    {
        std::map<std::string, std::string>& parts = records_.namespaceParts;
        for (const auto& [uri, part] : options_.namespaceMap) parts[uri] = part;
        parts.emplace(kXmlNamespace, "xml");
        for (const Symbol kind : {Symbol::Type, Symbol::Element, Symbol::Attribute}) {
            for (const auto& [name, component] : set_.ordered(kind)) {
                if (name.nameSpace != records_.targetNamespace)
                    parts.emplace(name.nameSpace, set_.prefixOf(name.nameSpace));
            }
        }
    }

    const SchemaOptions& options_;
    SchemaRecords& records_;
    SchemaSet set_;
    SimpleTypes types_;
    Attributes attributes_;
    Components components_;
};

}  // namespace

std::unique_ptr<CompiledSchema> compileSchema(const SchemaOptions& options)
{
    auto result = std::make_unique<CompiledSchema>();
    Diagnostics diagnostics{options.strict};
    const auto compilation = std::make_shared<Compilation>(options, result->records, diagnostics);
    compilation->run();
    result->documents = compilation;
    result->catalogs = compilation->catalogs();
    result->problems = diagnostics.problems();
    std::stable_sort(result->problems.begin(), result->problems.end(),
                     [](const tool::Problem& a, const tool::Problem& b) {
                         return std::tie(a.file, a.line, a.column) <
                                std::tie(b.file, b.line, b.column);
                     });
    result->failed = diagnostics.failed();
    return result;
}

}  // namespace netxml::xsd
