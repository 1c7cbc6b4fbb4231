#include "command_line.hpp"

#include "file_list.hpp"
#include "known_schema.hpp"
#include "location_path.hpp"
#include "netxml/io.h"
#include "outcome.hpp"
#include "version_text.hpp"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <map>
#include <thread>

namespace netxml::tool {
namespace {

constexpr unsigned kMostJobs = 256;
constexpr unsigned kWidestIndentation = 16;

constexpr const char* kStatuses =
    "Exit status, the largest of several files:\n"
    "  0  all is well\n"
    "  1  not well-formed, would change, nothing at the path, or cannot be written as asked\n"
    "  2  mistake in the command line\n"
    "  3  not valid by the schema\n"
    "  4  a file cannot be read or written";

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

std::string complainAboutSchema(std::string& text)
{
    if (findSchema(text)) return {};
    return "\"" + text + "\" is no schema that is built in; known: " + schemaNames();
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
    void addCommon(CLI::App& app);
    void addFiles(CLI::App& app);
    void addFormat();
    void addConvert();
    void addPath();
    void addValidate();
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
    addFiles(*add(Command::Tree, "tree", "Print an outline with kinds, namespaces and paths",
                  "netxml tree config.xml"));
    addPath();
    addValidate();
}

CLI::App* CommandLine::add(Command command, const char* name, const char* what, const char* example)
{
    CLI::App* app = app_.add_subcommand(name, what);
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
                        "netxml validate --schema interfaces config.xml");
    app->add_option("--schema", options_.schema,
                    "The schema, one of those that are built in: " + schemaNames())
        ->required()
        ->check(CLI::Validator(complainAboutSchema, ""))
        ->type_name("NAME");
    addFiles(*app);
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
    if (std::count(options_.files.begin(), options_.files.end(), "-") > 1)
        throw CLI::ValidationError("FILE", "standard input can be read only once");
    options_.color = color_ == "always"  ? ColorUse::Always
                     : color_ == "never" ? ColorUse::Never
                                         : ColorUse::Auto;
    options_.errorFormat = errorFormat_ == "json" ? ErrorFormat::Json : ErrorFormat::Text;
    options_.indentation =
        indentation_ == "tab" ? "\t" : std::string(std::stoul(indentation_), ' ');
    if (!encoding_.empty()) options_.target = XML_DOM_EncodingStrToEnum(encoding_.c_str());
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
