#include "command_line.hpp"

#include "file_list.hpp"
#include "known_schema.hpp"
#include "location_path.hpp"
#include "netxml/io.h"
#include "outcome.hpp"
#include "version_text.hpp"
#include "xsd/builtin_types.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <map>
#include <thread>

namespace netxml::tool {
namespace {

constexpr unsigned kMostErrors = 0xFFFFFFFF;
constexpr unsigned kMostJobs = 256;
constexpr unsigned kWidestIndentation = 16;

constexpr const char* kStatuses =
    "Exit status, the largest of several files:\n"
    "  0  all is well\n"
    "  1  not well-formed, would change, nothing at the path, or cannot be written as asked\n"
    "  2  mistake in the command line\n"
    "  3  not valid by the schema\n"
    "  4  a file cannot be read or written\n"
    "  5  the schema cannot be used";

std::string filesHelp()
{
    return "Files to read; - is standard input";
}

std::string recursiveHelp()
{
    std::string text = "In directories, take all files that end in";
    for (const std::string_view ending : kEndings) {
        text += ending == kEndings[0] ? " *" : ", *";
        text += ending;
    }
    return text;
}

std::string encodingNames()
{
    std::string names;
    for (XML_Encoding e = 0; e != XML_ENCODING_NONE; ++e) {
        if (e != 0) names += ", ";
        names += XML_DOM_EncodingEnumToStr(e);
    }
    return names;
}

// What CLI11 calls a validator: returns the complaint, or nothing.
std::string complainAboutIndentation(std::string& text)
{
    if (text == "tab") return {};
    const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
    if (digits && text.size() <= 2 && std::stoul(text) <= kWidestIndentation) return {};
    return "\"" + text + "\" is neither a number up to 16 nor \"tab\"";
}

std::string complainAboutEncoding(std::string& text)
{
    if (XML_DOM_EncodingStrToEnum(text.c_str()) != XML_ENCODING_NONE) return {};
    return "\"" + text + "\" is none of " + encodingNames();
}

std::string complainAboutPair(std::string& text)
{
    const std::size_t sign = text.rfind('=');
    if (sign != std::string::npos && sign != 0 && sign + 1 != text.size()) return {};
    return "\"" + text + "\" is no pair such as NAME=VALUE";
}

xsd::SchemaOptions::Pairs pairsOf(const std::vector<std::string>& texts)
{
    xsd::SchemaOptions::Pairs pairs;
    for (const std::string& text : texts) {
        const std::size_t sign = text.rfind('=');
        pairs.emplace_back(text.substr(0, sign), text.substr(sign + 1));
    }
    return pairs;
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Names that begin with "_" are the compiler's, or other people's.
std::string complainAboutIdentifier(std::string& text)
{
    const auto fits = [](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '_'; };
    if (!text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), fits))
        return {};
    return "\"" + text + "\" is no identifier that begins with a letter";
}

std::string complainAboutNamespacePart(std::string& text)
{
    if (std::string complaint = complainAboutPair(text); !complaint.empty()) return complaint;
    const auto [uri, part] = pairsOf({text}).front();
    if (uri.find_first_of(" \t\r\n") != std::string::npos)
        return "\"" + uri + "\" is no namespace: there is white space in it";
    std::string name = part;
    return complainAboutIdentifier(name);
}

std::string withoutSchemaPrefix(const std::string& type)
{
    return type.starts_with("xs:") ? type.substr(3) : type;
}

std::string complainAboutTypes(std::string& text)
{
    if (std::string complaint = complainAboutPair(text); !complaint.empty()) return complaint;
    const auto [type, other] = pairsOf({text}).front();
    const auto isType = [](const std::string& name) {
        return xsd::findBuiltin(withoutSchemaPrefix(name)) != nullptr;
    };
    const bool native = withoutSchemaPrefix(other) == "native";
    if (isType(type) && (native || isType(other))) return {};
    return "XML Schema has no simple type \"" + (isType(type) ? other : type) + "\"";
}

CLI::Validator oneOf(const std::vector<std::string>& words)
{
    const auto complain = [words](std::string& text) -> std::string {
        if (std::find(words.begin(), words.end(), text) != words.end()) return {};
        return "\"" + text + "\" is none of " + CLI::detail::join(words, ", ");
    };
    return CLI::Validator(complain, "");
}

std::string complainAboutPath(std::string& text)
{
    if (readPath(text)) return {};
    return "\"" + text + "\" is no path such as /config/interface[2]/name[1]";
}

class CommandLine {
public:
    CommandLine();
    std::optional<Options> read(int count, char** arguments, int& status);

private:
    CLI::App* add(Command command, const char* name, const char* what, const char* example);
    CLI::App* add(CLI::App& to, Command command, const char* name, const char* what,
                  const char* example);
    void addCommon(CLI::App& app);
    void addFiles(CLI::App& app);
    void addFormat();
    void addConvert();
    void addPath();
    void addValidate();
    void addSchemaOptions(CLI::App& app);
    void addCompileSchema();
    std::size_t readsOfStandardInput() const;
    void finish();

    CLI::App app_{"Checks, validates, formats and converts XML files, and looks into them.",
                  "netxml"};
    std::map<Command, CLI::App*> commands_;
    Options options_;
    std::string color_ = "auto";
    std::string errorFormat_ = "text";
    std::string indentation_ = "2";
    std::string encoding_;
    std::string file_;
    std::vector<std::string> locations_;
    std::vector<std::string> typeMap_;
    std::vector<std::string> namespaceMap_;
    std::string language_ = "c";
};

CommandLine::CommandLine()
{
    app_.require_subcommand(1);
    app_.set_version_flag("--version", versionText, "Print the version and how it was built");
    app_.footer(kStatuses);
    app_.failure_message([this](const CLI::App*, const CLI::Error& error) {
        const std::vector<std::string> unknown = app_.remaining();
        const bool noCommand = app_.get_subcommands().empty() && !unknown.empty();
        const std::string what = noCommand
                                     ? "\"" + unknown[0] + "\" is no " +
                                           (unknown[0].starts_with('-') ? "option here" : "command")
                                     : std::string{error.what()};
        return "netxml: " + what + "\nTry \"netxml --help\".\n";
    });
    addFiles(*add(Command::Check, "check", "Say whether files are well-formed XML",
                  "netxml check --recursive --jobs 4 configs"));
    addFormat();
    addConvert();
    addFiles(*add(Command::Outline, "tree", "Print an outline with kinds, namespaces and paths",
                  "netxml tree config.xml"));
    addPath();
    addValidate();
    addCompileSchema();
}

CLI::App* CommandLine::add(Command command, const char* name, const char* what, const char* example)
{
    return add(app_, command, name, what, example);
}

CLI::App* CommandLine::add(CLI::App& to, Command command, const char* name, const char* what,
                           const char* example)
{
    CLI::App* app = to.add_subcommand(name, what);
    app->footer(std::string{"Example:\n  "} + example + "\n\n" + kStatuses);
    addCommon(*app);
    commands_[command] = app;
    return app;
}

void CommandLine::addCommon(CLI::App& app)
{
    app.add_flag("-q,--quiet", options_.quiet, "Print errors only");
    app.add_option("--color", color_, "Colours: auto (a terminal), always or never")
        ->check(oneOf({"auto", "always", "never"}))
        ->type_name("WHEN");
    app.add_option("--error-format", errorFormat_, "Errors as text, or as json: one object a line")
        ->check(oneOf({"text", "json"}))
        ->type_name("FORMAT");
}

void CommandLine::addFiles(CLI::App& app)
{
    app.add_option("FILE", options_.files, filesHelp())->required()->type_name("");
    app.add_flag("-r,--recursive", options_.recursive, recursiveHelp());
    app.add_option("-j,--jobs", options_.jobs,
                   "Files to work on at a time; 0 is one for each processor. The results keep the "
                   "order of the files")
        ->check(CLI::Range(0u, kMostJobs).description(""))
        ->type_name("N");
}

void CommandLine::addFormat()
{
    CLI::App* app = add(Command::Format, "format", "Re-indent files, without any other change",
                        "netxml format --indent 4 --in-place config.xml");
    addFiles(*app);
    app->add_option("--indent", indentation_, "Blanks for a level, 0 to 16 (2), or tab")
        ->check(CLI::Validator(complainAboutIndentation, ""))
        ->type_name("N|tab");
    CLI::Option* check = app->add_flag("--check", options_.checkOnly,
                                       "Only say which files would change, with exit status 1");
    app->add_flag("-i,--in-place", options_.inPlace, "Write to the files, not to standard output")
        ->excludes(check);
    app->add_flag("--drop-doctype", options_.dropDoctype,
                  "Leave document type declarations out; without this they are refused");
}

void CommandLine::addConvert()
{
    CLI::App* app = add(Command::Convert, "convert", "Write a file in another encoding",
                        "netxml convert --to GB18030 config.xml -o config-gb.xml");
    app->add_option("FILE", file_, "File to read; - is standard input")->required()->type_name("");
    app->add_option("-t,--to", encoding_, "Encoding to write: " + encodingNames())
        ->required()
        ->check(CLI::Validator(complainAboutEncoding, ""))
        ->type_name("ENCODING");
    app->add_option("-o,--output", options_.outputPath,
                    "File to write; - (or none) is standard output")
        ->type_name("OUT");
}

void CommandLine::addPath()
{
    CLI::App* app = add(Command::Path, "path", "Print what stands at a path, as XML in UTF-8",
                        "netxml path '/config/interface[2]/name[1]' config.xml");
    app->add_option("PATH", options_.path,
                    "Names without prefixes; a step without a position takes all of its name")
        ->required()
        ->check(CLI::Validator(complainAboutPath, ""))
        ->type_name("");
    addFiles(*app);
}

void CommandLine::addValidate()
{
    CLI::App* app = add(Command::Validate, "validate", "Say whether files fit a schema",
                        "netxml validate --schema config.xsd config.xml");
    app->add_option("--schema", options_.schemas.files,
                    "The schema: a document of XML Schema 1.0, several with one option each, or "
                    "the name of one that is built in: " +
                        schemaNames())
        ->required()
        ->allow_extra_args(false)
        ->type_name("X.xsd");
    app->add_option("--max-errors", options_.maxErrors,
                    "Violations to report of a file (20); 0 is no limit")
        ->check(CLI::Range(0u, kMostErrors).description(""))
        ->type_name("N");
    addSchemaOptions(*app);
    addFiles(*app);
}

void CommandLine::addSchemaOptions(CLI::App& app)
{
    xsd::SchemaOptions& schemas = options_.schemas;
    app.add_option("-I,--include-path", schemas.includePaths,
                   "Directory with schema documents that others include or import")
        ->allow_extra_args(false)
        ->type_name("DIR");
    app.add_option("--location", locations_,
                   "File with the schema of a namespace, or in the place of a location")
        ->allow_extra_args(false)
        ->check(CLI::Validator(complainAboutPair, ""))
        ->type_name("URI=FILE");
    app.add_option("--catalog", schemas.catalogs, "OASIS XML catalog with such places")
        ->allow_extra_args(false)
        ->type_name("FILE");
    app.add_option("--type-map", typeMap_,
                   "What stands for a type of XML Schema: another one, or \"native\" for the "
                   "library's own rules")
        ->allow_extra_args(false)
        ->check(CLI::Validator(complainAboutTypes, ""))
        ->type_name("xs:TYPE=xs:TYPE");
    app.add_option("--network-types", schemas.networkNamespace,
                   "Namespace in which the six network types are known by their names")
        ->type_name("URI");
    app.add_flag("--strict", schemas.strict,
                 "Refuse a schema that cannot be followed exactly, instead of a warning");
}

void CommandLine::addCompileSchema()
{
    CLI::App* schema = app_.add_subcommand("schema", "Work on schemas");
    schema->require_subcommand(1);
    CLI::App* app = add(*schema, Command::CompileSchema, "compile",
                        "Write the records of a schema in C, for programs to register",
                        "netxml schema compile config.xsd -o config_schema.c -H config_schema.h");
    app->add_option("FILE", options_.schemas.files, "Documents of XML Schema 1.0")
        ->required()
        ->type_name("");
    app->add_option("-o,--output", options_.sourcePath,
                    "Source to write; else the first file's name with _schema.c")
        ->type_name("OUT");
    app->add_option("-H,--header", options_.headerPath,
                    "Header to write; else the first file's name with _schema.h")
        ->type_name("OUT");
    app->add_option("--prefix", options_.prefix,
                    "What the names of the functions begin with; else the first file's name")
        ->check(CLI::Validator(complainAboutIdentifier, ""))
        ->type_name("NAME");
    app->add_option("--lang", language_, "Language to write: c (which is C++ as well) or c++")
        ->check(oneOf({"c", "c++"}))
        ->type_name("LANG");
    app->add_option("--namespace-map", namespaceMap_,
                    "What identifiers of a namespace are told apart by")
        ->allow_extra_args(false)
        ->check(CLI::Validator(complainAboutNamespacePart, ""))
        ->type_name("URI=NAME");
    app->add_option("--depfile", options_.depfilePath,
                    "File for make or ninja with all documents that were read")
        ->type_name("OUT");
    app->add_flag("--list-outputs", options_.listOutputs,
                  "Only print which files would be written");
    addSchemaOptions(*app);
}

std::size_t CommandLine::readsOfStandardInput() const
{
    const auto countIn = [](const std::vector<std::string>& files) {
        return static_cast<std::size_t>(std::count(files.begin(), files.end(), "-"));
    };
    const xsd::SchemaOptions& schemas = options_.schemas;
    std::size_t count =
        countIn(options_.files) + countIn(schemas.files) + countIn(schemas.catalogs);
    for (const auto& [uri, file] : schemas.locations) count += file == "-" ? 1 : 0;
    return count;
}

// What options mean together.
void CommandLine::finish()
{
    for (const auto& [command, app] : commands_) {
        if (app->parsed()) options_.command = command;
    }
    if (options_.command == Command::Convert) options_.files = {file_};
    if (options_.inPlace &&
        std::find(options_.files.begin(), options_.files.end(), "-") != options_.files.end())
        throw CLI::ValidationError("--in-place", "standard input cannot be written to");
    options_.color = color_ == "always"  ? ColorUse::Always
                     : color_ == "never" ? ColorUse::Never
                                         : ColorUse::Auto;
    options_.errorFormat = errorFormat_ == "json" ? ErrorFormat::Json : ErrorFormat::Text;
    options_.indentation =
        indentation_ == "tab" ? "\t" : std::string(std::stoul(indentation_), ' ');
    if (!encoding_.empty()) options_.target = XML_DOM_EncodingStrToEnum(encoding_.c_str());
    options_.schemas.locations = pairsOf(locations_);
    options_.schemas.typeMap = pairsOf(typeMap_);
    options_.schemas.namespaceMap = pairsOf(namespaceMap_);
    if (readsOfStandardInput() > 1)
        throw CLI::ValidationError("FILE", "standard input can be read only once");
    if (language_ == "c++") options_.generatedLanguage = xsd::Language::Cxx;
    for (auto& [type, other] : options_.schemas.typeMap) {
        type = withoutSchemaPrefix(type);
        other = withoutSchemaPrefix(other);
    }
    if (options_.jobs == 0) options_.jobs = std::max(1u, std::thread::hardware_concurrency());
}

std::optional<Options> CommandLine::read(int count, char** arguments, int& status)
{
    try {
        app_.parse(count, arguments);
        finish();
        return options_;
    } catch (const CLI::ParseError& error) {
        const int code = app_.exit(error);
        status = static_cast<int>(code == 0 ? Status::Ok : Status::Usage);
        return std::nullopt;
    }
}

}  // namespace

std::optional<Options> readCommandLine(int count, char** arguments, int& status)
{
    return CommandLine{}.read(count, arguments, status);
}

}  // namespace netxml::tool
