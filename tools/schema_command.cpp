// netxml schema compile: records in C for schema documents.
#include "schema_command.hpp"

#include "safe_write.hpp"
#include "xsd/code_writer.hpp"
#include "xsd/compile_schema.hpp"
#include "xsd/record_names.hpp"

namespace netxml::tool {
namespace {

std::string stemOf(const std::string& path)
{
    const std::string name = path.substr(path.rfind('/') + 1);
    return name.substr(0, name.rfind('.'));
}

std::string fileOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

// Without outputs named, they stand beside each other in the working directory.
struct OutputPaths {
    std::string source;
    std::string header;
};

OutputPaths outputPaths(const Options& options)
{
    const std::string stem = stemOf(options.schemas.files.front()) + "_schema";
    const bool cxx = options.generatedLanguage == xsd::Language::Cxx;
    OutputPaths paths{options.sourcePath, options.headerPath};
    if (paths.source.empty()) paths.source = stem + (cxx ? ".cpp" : ".c");
    if (paths.header.empty()) paths.header = stem + (cxx ? ".hpp" : ".h");
    return paths;
}

std::string prefixOf(const Options& options)
{
    std::string prefix = options.prefix;
    if (prefix.empty()) prefix = xsd::identifierText(stemOf(options.schemas.files.front()));
    if (prefix.empty() || (prefix.front() >= '0' && prefix.front() <= '9'))
        prefix = "schema_" + prefix;
    return prefix;
}

// As make reads it: blanks in names are escaped.
std::string makeName(const std::string& path)
{
    std::string name;
    for (const char c : path) {
        if (c == ' ' || c == '#') name += '\\';
        if (c == '$') name += '$';
        name += c;
    }
    return name;
}

std::string dependencies(const OutputPaths& paths, const std::vector<std::string>& files)
{
    std::string text = makeName(paths.source) + " " + makeName(paths.header) + ":";
    for (const std::string& file : files) text += " \\\n  " + makeName(file);
    return text + "\n";
}

}  // namespace

Outcome compileSchemas(const Options& options)
{
    const OutputPaths paths = outputPaths(options);
    Outcome outcome;
    if (options.listOutputs) {
        outcome.output = paths.source + "\n" + paths.header + "\n";
        return outcome;
    }
    const auto compiled = xsd::compileSchema(options.schemas);
    for (const Problem& problem : compiled->problems) {
        const bool warning = problem.severity == Problem::Severity::Warning;
        if (!warning || !options.quiet) outcome.problems.push_back(problem);
    }
    if (compiled->failed) {
        outcome.status = Status::Schema;
        return outcome;
    }
    const xsd::GeneratedCode code = xsd::writeCode(
        compiled->records, {options.generatedLanguage, prefixOf(options), fileOf(paths.header)});
    writeFile(paths.source, code.source);
    writeFile(paths.header, code.header);
    if (!options.depfilePath.empty())
        writeFile(options.depfilePath, dependencies(paths, compiled->records.files));
    return outcome;
}

}  // namespace netxml::tool
