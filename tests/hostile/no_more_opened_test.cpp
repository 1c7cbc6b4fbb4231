// Reading and validating opens the file that was named and nothing else: no other file, no socket,
// whatever a document refers to.
#include "tests/support/schema_kit.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <iconv.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace {

// The paths that the library has opened, while somebody asks.
std::vector<std::string>* opened = nullptr;

int record(const char* path, int descriptor)
{
    if (opened) opened->push_back(path);
    return descriptor;
}

}  // namespace

extern "C" {

int __real_open(const char* path, int flags, ...);

int __wrap_open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0u;
    va_end(arguments);
    return record(path, __real_open(path, flags, mode));
}

#ifdef __GLIBC__
int __real_open64(const char* path, int flags, ...);

int __wrap_open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0u;
    va_end(arguments);
    return record(path, __real_open64(path, flags, mode));
}
#endif

}  // extern "C"

namespace {

// Everything by which XML can ask for more.
const std::string kGreedy[] = {
    "<!DOCTYPE a SYSTEM 'http://127.0.0.1:9/a.dtd'><a/>",
    "<!DOCTYPE a PUBLIC '-//X//Y' '/etc/passwd'><a/>",
    "<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><a/>",
    "<!DOCTYPE a [<!ENTITY x SYSTEM 'file:///etc/passwd'>]><a>&x;</a>",
    "<!DOCTYPE a [<!ENTITY % p SYSTEM 'http://127.0.0.1:9/p'> %p;]><a/>",
    "<!DOCTYPE a [<!NOTATION n SYSTEM '/bin/sh'>]><a/>",
    "<?xml-model href='/etc/passwd'?><a/>",
    "<?xml version='1.0'?><?xml-stylesheet href='/etc/passwd' type='text/xsl'?><a/>",
    "<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='/etc/passwd'/></a>",
    "<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
    "xsi:schemaLocation='urn:a /etc/passwd' xsi:noNamespaceSchemaLocation='/etc/passwd'/>",
    "<a xml:base='file:///etc/'>/etc/passwd</a>",
    "<a xmlns='http://127.0.0.1:9/'>\xE4\xB8\xAD</a>",
};

// All that can be done with a document in memory.
void readAndValidate(SchemaKit& kit)
{
    for (const std::string& document : kGreedy) {
        const auto size = static_cast<uint32_t>(document.size());
        const ChunkList chunks{document, 7};
        XML_Parser_ByMem(bytesOf(document), size, nullptr);
        XML_Parser_ByMemList(chunks.list(), nullptr);
        XML_DOM_DelNode(XML_DOM_BuildTreeByMemList(chunks.list(), 0, nullptr));
        XML_DOM_Node* tree = XML_DOM_BuildTreeByMem(bytesOf(document), size, 0, nullptr);
        if (!tree) continue;
        Schema_ValidateResult result;
        EXPECT_EQ(Schema_ValidateXml(tree, &kit.root(), &result), XML_RET_OK);
        EXPECT_NE(written(tree), "failed");
        XML_DOM_DelNode(tree);
    }
}

// A schema that has a pattern for the C library, too.
void fill(SchemaKit& kit, const Schema_Facet& facet)
{
    Schema_SimpleType* type = kit.restrictedString(&facet, 1);
    kit.add(kit.simpleElement("a", type));
}

constexpr Schema_Facet kPattern{"^[[:alpha:]/]+$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING};

TEST(NoMoreOpened, ThanTheFileThatWasNamed)
{
    std::vector<std::string> paths;
    for (const std::string& document : kGreedy) {
        const TempFile file{document};
        opened = &paths;
        XML_Parser_ByFile(file.path(), nullptr);
        XML_DOM_DelNode(XML_DOM_BuildTreeByFile(file.path(), 0, nullptr));
        opened = nullptr;
        EXPECT_GE(paths.size(), 2u);
        for (const std::string& path : paths) EXPECT_EQ(path, file.path()) << document;
        paths.clear();
    }
    SchemaKit kit;
    fill(kit, kPattern);
    opened = &paths;
    readAndValidate(kit);
    opened = nullptr;
    EXPECT_TRUE(paths.empty()) << paths.front();
}

constexpr int kCaught = 99;

// From here on, whatever would open a file or a socket or start a program ends the process, also
// where the C library does it by itself. False where the system has no such filter.
bool forbidOpening()
{
    struct sigaction action {};
    action.sa_handler = [](int) { _exit(kCaught); };
    sigaction(SIGSYS, &action, nullptr);
    const unsigned forbidden[] = {
#ifdef __NR_open
        __NR_open,
#endif
#ifdef __NR_creat
        __NR_creat,
#endif
#ifdef __NR_socketcall
        __NR_socketcall,
#endif
#ifdef __NR_openat2
        __NR_openat2,
#endif
#ifdef __NR_fork
        __NR_fork,
#endif
#ifdef __NR_vfork
        __NR_vfork,
#endif
        __NR_openat,     __NR_socket, __NR_connect, __NR_execve, __NR_execveat,
    };
    std::vector<sock_filter> program;
    program.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
    for (const unsigned number : forbidden) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

constexpr int kNoFilter = 77;
constexpr int kFailed = 1;

// What work comes to in a process of its own that may not open anything.
int statusOf(const std::function<void()>& prepare, const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        prepare();
        if (!forbidOpening()) _exit(kNoFilter);
        work();
        _exit(testing::Test::HasFailure() ? kFailed : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(NoMoreOpened, AlsoByTheCLibrary)
{
    // The filter catches what it is there for.
    const int caught = statusOf([] {}, [] { static_cast<void>(open("/etc/passwd", O_RDONLY)); });
    if (caught == kNoFilter) GTEST_SKIP() << "this system has no filter for its calls";
    ASSERT_EQ(caught, kCaught);
    SchemaKit kit;
    fill(kit, kPattern);
    // Converters are modules of the C library; open ones are not loaded again.
    EXPECT_EQ(statusOf(
                  [] {
                      static_cast<void>(iconv_open("GB18030", "UTF-8"));
                      static_cast<void>(iconv_open("UTF-8", "GB18030"));
                  },
                  [&kit] { readAndValidate(kit); }),
              0);
}

}  // namespace
