// The scanner against the plain rules: the same events at the same places, the same errors with the
// same excerpts, the same trees, whatever kind of source and wherever its chunks end.
//
// NETXML_TEST_DOCUMENTS sets the number of documents, NETXML_TEST_SEED the seed.
#include "tests/support/callback_tree.hpp"
#include "tests/support/event_log.hpp"
#include "tests/support/plain_scanner.hpp"
#include "tests/support/random.hpp"
#include "tests/support/random_document.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

struct Built {
    std::string tree;
    std::string error;
    bool operator==(const Built&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Built& built)
{
    return out << built.tree << "\n" << built.error;
}

Built outcome(XML_DOM_Node* root, const char* error)
{
    Built built{root ? written(root, 0) : "", root ? "" : error};
    XML_DOM_DelNode(root);
    return built;
}

// Builds a tree with the plain scanner and the exported callbacks.
Built buildPlainly(XML_IO_InStream* stream)
{
    const CallbackTree tree;
    const uint32_t status = plainParse(stream, tree.handler());
    EXPECT_EQ(status == XML_RET_OK, tree.root() != nullptr);
    return outcome(tree.root(), tree.error());
}

std::string plainEvents(XML_IO_InStream* stream, int failAt)
{
    EventLog log;
    log.failAt(failAt, 7);
    plainParse(stream, log.handler());
    return log.text();
}

void compareMemory(const std::string& document, int failAt)
{
    const GuardedBytes bytes{document};
    XML_IO_InStream* stream = XML_IO_ByMem(bytes.data(), bytes.size());
    const std::string plain = plainEvents(stream, failAt);
    XML_IO_DestroyByMem(stream);
    EventLog log;
    log.failAt(failAt, 7);
    XML_Parser_ByMem(bytes.data(), static_cast<uint32_t>(bytes.size()), log.handler());
    ASSERT_EQ(plain, log.text());

    stream = XML_IO_ByMem(bytes.data(), bytes.size());
    const Built plainTree = buildPlainly(stream);
    XML_IO_DestroyByMem(stream);
    char error[512] = "";
    XML_DOM_Node* root = XML_DOM_BuildTreeByMem(bytes.data(), static_cast<uint32_t>(bytes.size()),
                                                sizeof error, error);
    ASSERT_EQ(plainTree, outcome(root, error));
}

void compareList(const std::string& document, const std::vector<std::size_t>& cuts, int failAt)
{
    const ChunkList chunks{document, cuts};
    XML_IO_InStream* stream = XML_IO_ByMemList(chunks.list());
    const std::string plain = plainEvents(stream, failAt);
    XML_IO_DestroyByMemList(stream);
    EventLog log;
    log.failAt(failAt, 7);
    XML_Parser_ByMemList(chunks.list(), log.handler());
    ASSERT_EQ(plain, log.text());

    stream = XML_IO_ByMemList(chunks.list());
    const Built plainTree = buildPlainly(stream);
    XML_IO_DestroyByMemList(stream);
    char error[512] = "";
    XML_DOM_Node* root = XML_DOM_BuildTreeByMemList(chunks.list(), sizeof error, error);
    ASSERT_EQ(plainTree, outcome(root, error));
}

void compareFile(const std::string& document)
{
    const TempFile file{document};
    XML_IO_InStream* stream = XML_IO_ByFile(file.path());
    const std::string plain = plainEvents(stream, -1);
    XML_IO_DestroyByFile(stream);
    EventLog log;
    XML_Parser_ByFile(file.path(), log.handler());
    ASSERT_EQ(plain, log.text());

    stream = XML_IO_ByFile(file.path());
    const Built plainTree = buildPlainly(stream);
    XML_IO_DestroyByFile(stream);
    char error[512] = "";
    XML_DOM_Node* root = XML_DOM_BuildTreeByFile(file.path(), sizeof error, error);
    ASSERT_EQ(plainTree, outcome(root, error));
}

// The document as it is, or in an encoding that can hold it, with or without a mark.
std::string encoded(RandomDocument& random, const std::string& document)
{
    struct Form {
        const char* encoding;
        const char* mark;
    };
    static const Form kForms[] = {
        {"UTF-16LE", "\xFF\xFE"},
        {"UTF-16BE", "\xFE\xFF"},
        {"UTF-16LE", ""},
        {"UTF-16BE", ""},
        {"UTF-32LE", "\xFF\xFE\0\0"},
        {"UTF-32BE", "\0\0\xFE\xFF"},
        {"UTF-32LE", ""},
        {"UTF-32BE", ""},
        {"GB18030", ""},
        {"UTF-8", "\xEF\xBB\xBF"},
    };
    if (!random.chance(3)) return document;
    const std::size_t at = random.pick(9);
    const Form& form = kForms[at];
    const std::size_t markSize = at == 4 || at == 5 ? 4 : std::char_traits<char>::length(form.mark);
    std::string result;
    try {
        result = std::string(form.mark, markSize) + convertTo(form.encoding, document);
    } catch (const std::exception&) {
        return document;  // damaged text has no other form
    }
    if (random.chance(8)) result.resize(random.pick(result.size()));
    return result;
}

std::uint64_t setting(const char* name, std::uint64_t otherwise)
{
    const char* value = std::getenv(name);
    return value ? std::strtoull(value, nullptr, 10) : otherwise;
}

TEST(Differential, ScannerAgreesWithThePlainRules)
{
    const std::uint64_t seed = setting("NETXML_TEST_SEED", std::random_device{}());
    const std::uint64_t count = setting("NETXML_TEST_DOCUMENTS", 20000);
    std::printf("seed %llu, %llu documents\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(count));
    RandomDocument random{seed};
    std::uint64_t wellFormed = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string document = encoded(random, random.next());
        if (document.empty()) continue;
        const int failAt = random.chance(20) ? static_cast<int>(random.pick(20)) : -1;
        SCOPED_TRACE("document " + std::to_string(i) + ": " + document);
        ASSERT_NO_FATAL_FAILURE(compareMemory(document, failAt));

        std::vector<std::size_t> cuts;
        for (std::size_t n = random.pick(6); n != 0; --n)
            cuts.push_back(random.pick(document.size()));
        std::sort(cuts.begin(), cuts.end());
        ASSERT_NO_FATAL_FAILURE(compareList(document, cuts, failAt));
        if (random.chance(50)) {
            ASSERT_NO_FATAL_FAILURE(compareFile(document));
        }
        XML_DOM_Node* root = XML_DOM_BuildTreeByMem(
            bytesOf(document), static_cast<uint32_t>(document.size()), 0, nullptr);
        wellFormed += root ? 1 : 0;
        XML_DOM_DelNode(root);
    }
    std::printf("%llu well-formed\n", static_cast<unsigned long long>(wellFormed));
    EXPECT_GT(wellFormed, count / 20);  // neither kind may be rare
    EXPECT_LT(wellFormed, count - count / 20);
}

// What lies around a border in turn. The last one's end tag is longer than the look-ahead.
std::vector<std::string> constructs()
{
    const std::string name(100, 'n');
    return {"<b/>",
            "<b c='1'/>",
            "<b c='1' />",
            "<b>t</b>",
            "<b>t</b >",
            "<b >t </b>",
            "\n  <b/>\n",
            "t]]t<b/>",
            "<p:b p:c=''/>",
            "<p:b>t</p:b>",
            "<b xmlns='u'/>",
            "\xE4\xB8\xAD\xE6\x96\x87<b/>",
            "<b><c><d/></c></b>",
            "<b>t</>",
            "<" + name + ">t</" + name + ">"};
}

// Each construct at each place around the end of a window, with an error soon behind it, whose
// excerpt shows where the window was moved.
TEST(Differential, NothingDependsOnWhereAWindowEnds)
{
    for (const std::string& construct : constructs()) {
        for (std::size_t size = 900; size < 1060; size += caseStep(9)) {
            std::string document = "<a xmlns:p='u'>";
            while (document.size() + 8 < size) document += "<e/>";
            document += std::string(size - document.size(), 'x');
            document += construct + construct + "<f/>t<1";
            compareList(document, {}, -1);
            compareFile(document);
            if (HasFatalFailure()) FAIL() << construct << " at " << size;
        }
    }
}

void compareSources(const std::string& document)
{
    compareMemory(document, -1);
    compareList(document, {}, -1);
    compareFile(document);
}

// The same where the look-ahead begins to want more than the input has: so far behind the construct
// is its end. Where the construct is the root, the error comes at once behind it.
TEST(Differential, NothingDependsOnHowFarTheEndIs)
{
    for (const std::string& construct : constructs()) {
        for (const char* encoding : {"UTF-8", "GB18030"}) {
            const std::string declared =
                std::string{"<?xml version='1.0' encoding='"} + encoding + "'?>";
            for (std::size_t tail = 0; tail < 140; tail += caseStep(9)) {
                const std::string end(tail, 'x');
                compareSources(convertTo(encoding, declared + construct + end));
                compareSources(
                    convertTo(encoding, declared + "<a xmlns:p='u'>" + construct + "</a>" + end));
                if (HasFatalFailure()) FAIL() << construct << " " << encoding << " " << tail;
            }
        }
    }
}

// A file is read as a list of its bytes is, also where what was read ahead comes to an end.
TEST(Differential, FilesAreReadLikeListsAroundEachReading)
{
    std::string all = "<a>";
    while (all.size() < 17000) all += "<b>x</b>";
    for (std::size_t size = 16000; size < 16900; size += 7) {
        std::string document = all.substr(0, size);
        document.resize(document.rfind('<'));
        document += "     <1" + std::string(3000, 'y');
        const TempFile file{document};
        const ChunkList chunks{document, document.size()};
        EventLog ofFile;
        EventLog ofList;
        XML_Parser_ByFile(file.path(), ofFile.handler());
        XML_Parser_ByMemList(chunks.list(), ofList.handler());
        ASSERT_EQ(ofFile.text(), ofList.text()) << size;
    }
}

}  // namespace
