// netxml schema compile: records in C for schema documents.
#include "schema_command.hpp"

#include "output_files.hpp"
#include "safe_write.hpp"
#include "xsd/code_writer.hpp"
#include "xsd/compile_schema.hpp"
#include "xsd/record_names.hpp"

#include <cstdlib>
#include <memory>

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

// Names in C that begin with a digit do not exist, and those that begin with "_" are not ours.
std::string prefixOf(const Options& options)
{
    if (!options.prefix.empty()) return options.prefix;
    const std::string prefix = xsd::identifierText(stemOf(options.schemas.files.front()));
    const bool letter = !prefix.empty() && ((prefix.front() >= 'a' && prefix.front() <= 'z') ||
                                            (prefix.front() >= 'A' && prefix.front() <= 'Z'));
    if (prefix.empty()) return "schema";
    return letter ? prefix : (prefix.starts_with('_') ? "schema" : "schema_") + prefix;
}

// The source includes the header by its name, as it is: there are no escapes in such a name.
void refuseHeaderName(const std::string& path)
{
    const std::string name = fileOf(path);
    for (const char c : name) {
        if (c != '"' && c != '\\' && static_cast<unsigned char>(c) >= 0x20) continue;
        Problem problem;
        problem.file = path;
        problem.message = "a header of this name cannot be included: quotes, backslashes and "
                          "control characters end it or mean something else; name it with -H.";
        problem.code = static_cast<std::uint32_t>(ToolCode::File);
        throw Failure{Status::Usage, problem};
    }
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

std::string absolutePath(const std::string& path)
{
    if (path.starts_with('/')) return path;
    const std::unique_ptr<char, decltype(&std::free)> here{realpath(".", nullptr), &std::free};
    return here ? std::string{here.get()} + "/" + path : path;
}

// What the outputs are made of. A rule with absolute outputs is read in another directory perhaps:
// all its names are absolute.
std::string dependencies(const OutputPaths& paths, const std::vector<std::string>& files)
{
    const bool absolute = paths.source.starts_with('/');
    std::string text = makeName(paths.source) + " " + makeName(paths.header) + ":";
    for (const std::string& file : files) {
        if (file == "-") continue;  // nothing that make could look at
        text += " \\\n  " + makeName(absolute ? absolutePath(file) : file);
    }
    return text + "\n";
}

std::vector<std::string> inputsOf(const xsd::CompiledSchema& compiled)
{
    std::vector<std::string> files = compiled.records.files;
    files.insert(files.end(), compiled.catalogs.begin(), compiled.catalogs.end());
    return files;
}

std::vector<std::string> outputsOf(const OutputPaths& paths, const Options& options)
{
    std::vector<std::string> files{paths.source, paths.header};
    if (!options.depfilePath.empty()) files.push_back(options.depfilePath);
    return files;
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
    refuseHeaderName(paths.header);
    const auto compiled = xsd::compileSchema(options.schemas);
    for (const Problem& problem : compiled->problems) {
        const bool warning = problem.severity == Problem::Severity::Warning;
        if (!warning || !options.quiet) outcome.problems.push_back(problem);
    }
    if (compiled->failed) {
        outcome.status = Status::Schema;
        return outcome;
    }
    refuseSharedOutputs(outputsOf(paths, options), inputsOf(*compiled));
    const xsd::GeneratedCode code = xsd::writeCode(
        compiled->records, {options.generatedLanguage, prefixOf(options), fileOf(paths.header)});
    const std::string rule = dependencies(paths, inputsOf(*compiled));
    // The source is the newest of them: it includes the header.
    std::vector<NewContents> files{{paths.header, code.header}, {paths.source, code.source}};
    if (!options.depfilePath.empty()) files.push_back({options.depfilePath, rule});
    writeFiles(files);
    return outcome;
}

}  // namespace netxml::tool
