// Whatever its arguments and files, the tool ends with a status that its manual names, changes no
// file that it was not asked to change, and means what it says: what it finds well-formed is, what
// it formats stays as it is when it is formatted again, and what it converts keeps its meaning.
//
// The bytes are arguments, mostly from a list of words; after a zero byte come the files' contents.
#include "fuzz/support/captured_run.hpp"
#include "fuzz/support/fuzz_input.hpp"
#include "fuzz/support/require.hpp"
#include "fuzz/support/scratch.hpp"
#include "fuzz/support/tree_text.hpp"
#include "tools/command_line.hpp"
#include "tools/outcome.hpp"

#include <algorithm>
#include <vector>

// The tool's main(), under another name.
int netxmlToolMain(int count, char** arguments);

namespace {

using namespace netxml::tool;
using Words = std::vector<std::string>;

constexpr std::size_t kInputBound = 4096;
constexpr std::size_t kMostArguments = 12;

constexpr const char* kCommands[] = {"check", "format", "convert", "tree", "path", "validate"};
// clang-format off
constexpr const char* kWords[] = {
    "in.xml", "in.xml", "other.xml", "-", "missing.xml", ".", "sub", "out.xml",
    "-q", "--quiet", "--color", "auto", "always", "never", "--error-format", "text", "json",
    "-r", "--recursive", "-j", "--jobs", "0", "1", "2", "3", "257", "-1",
    "--indent", "4", "16", "17", "tab", "--check", "-i", "--in-place", "--drop-doctype",
    "-t", "--to", "--to=UTF-16", "UTF-8", "utf-16le", "UTF-16BE", "GB2312", "UTF-32LE", "UTF-32",
    "GBK", "GB18030", "UCS-4", "UTF-7", "-o", "--output", "--output=out.xml",
    "--schema", "--schema=interfaces", "interfaces", "nothing", "--help", "-h", "--version", "--",
    "check", "format", "",
};
// With a slash in them, so for a command alone that only reads.
constexpr const char* kPaths[] = {"/config/interfaces/interface[2]/name[1]", "/a", "/a/b[1]",
                                  "/a/b[2]/c", "/a/b[0]", "/a[", "/config/interfaces"};
// clang-format on

// No word of the fuzzer's own leads out of the directory.
std::string ownWord(FuzzInput& input)
{
    std::string word = input.text(40);
    std::replace(word.begin(), word.end(), '/', '_');
    for (std::size_t at; (at = word.find("..")) != std::string::npos;) word[at] = '_';
    return word;
}

Words argumentsFrom(FuzzInput& input)
{
    Words words;
    const std::size_t command = input.below(8);
    if (command < 6) words.push_back(kCommands[command]);
    if (command == 4) words.push_back(kPaths[input.below(std::size(kPaths))]);
    while (words.size() < kMostArguments) {
        const std::size_t word = input.byte();
        if (word == 0) break;
        if (word >= 240) words.push_back(ownWord(input));
        else words.push_back(kWords[word % std::size(kWords)]);
    }
    return words;
}

Captured runTool(const Scratch& scratch, Words words, std::string_view standardInput)
{
    const Scratch::Entered entered{scratch};
    words.insert(words.begin(), "netxml");
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return capturedRun(standardInput, [&] {
        return netxmlToolMain(static_cast<int>(words.size()), pointers.data());
    });
}

std::optional<Options> optionsOf(const Scratch& scratch, Words words)
{
    const Scratch::Entered entered{scratch};
    words.insert(words.begin(), "netxml");
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    std::optional<Options> options;
    capturedRun({}, [&] {
        int status = 0;
        options = readCommandLine(static_cast<int>(words.size()), pointers.data(), status);
        return status;
    });
    return options;
}

bool mayChangeFiles(const Options& options)
{
    return options.command == Command::CompileSchema ||
           (options.command == Command::Format && options.inPlace) ||
           (options.command == Command::Convert && options.outputPath != "-");
}

bool isWellFormed(const std::string& content)
{
    return XML_Parser_ByMem(reinterpret_cast<const uint8_t*>(content.data()),
                            static_cast<uint32_t>(content.size()), nullptr) == XML_RET_OK;
}

// One object a line; what is in it, the tool's own tests read.
void requireLinesOfObjects(const std::string& errors)
{
    for (std::size_t at = 0; at < errors.size();) {
        const std::size_t end = errors.find('\n', at);
        require(end != std::string::npos && errors[at] == '{' && errors[end - 1] == '}',
                "a problem in JSON is one object a line");
        at = end + 1;
    }
}

// What a status says, where there is one file that it speaks of.
void requireTruth(const Scratch& scratch, const Options& options, const Captured& run,
                  const Scratch::Files& before, const Scratch::Files& after)
{
    if (options.files.size() != 1 || !before.contains(options.files[0])) return;
    const std::string& file = options.files[0];
    const std::string& content = before.at(file);
    if (options.command == Command::Check)
        require((run.status == 0) == isWellFormed(content), "what is found well-formed is");
    if (run.status != 0) return;
    require(isWellFormed(content), "only well-formed files make a command succeed");
    if (options.command == Command::Format && options.inPlace) {
        const std::string indent =
            options.indentation == "\t" ? "tab" : std::to_string(options.indentation.size());
        const Captured again =
            runTool(scratch, {"format", "--check", "--indent", indent, "--", file}, {});
        require(again.status == 0, "what is formatted stays as it is");
    }
    if (options.command == Command::Convert && after.contains(options.outputPath)) {
        const Tree from = treeFrom(content);
        const Tree to = treeFrom(after.at(options.outputPath));
        require(!from == !to, "what is converted can be read");
        if (!from) return;
        requireSame(described(from.get()), described(to.get()), "what is converted means the same");
        require(XML_DOM_GetEncoding(to.get()) == options.target,
                "and is in the encoding asked for");
    }
}

const Scratch& scratchDirectory()
{
    static const Scratch scratch;
    return scratch;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3 || size > kInputBound) return 0;
    const Scratch& scratch = scratchDirectory();
    FuzzInput input{data, size};
    const Words words = argumentsFrom(input);
    const std::string standardInput = input.chance(2) ? "<a><b>1</b></a>" : "";
    const std::string content{input.rest()};
    const Scratch::Files before = {{"in.xml", content},
                                   {"other.xml", "<a>\n<b>1</b><b x='2'/></a>"},
                                   {"sub/deep.xml", "<config xmlns='urn:x'/>"},
                                   {"sub/notes.txt", "no XML"}};
    scratch.fill(before);
    const Captured run = runTool(scratch, words, standardInput);
    require(run.status >= 0 && run.status <= 5, "the status is one of the manual's");
    if (run.status == 2) require(!run.errors.empty(), "a mistake in the command line is told");
    const Scratch::Files after = scratch.files();
    const auto options = optionsOf(scratch, words);
    if (!options || !mayChangeFiles(*options))
        require(before == after, "files that need not change do not");
    if (!options) return 0;
    if (options->errorFormat == ErrorFormat::Json) requireLinesOfObjects(run.errors);
    requireTruth(scratch, *options, run, before, after);
    return 0;
}
