// Input that ends after any byte of any construct, in every encoding and from every source: never
// taken for a document, never read beyond, nothing left behind.
#include "tests/schema/guarded_space.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

// Each construct, and each of its ends.
std::string everyConstruct(const char* encoding)
{
    return std::string{"<?xml version='1.0' encoding='"} + encoding +
           "' standalone='yes'?>\r\n<!DOCTYPE a [<!ENTITY e 'x'>]>\n<!-- c\xE4\xB8\xAD --><?pi d?>"
           "<p:a xmlns:p='urn:p' xmlns=\"urn:d\" p:x='&lt;&#x4e2d;&#20013;\xE4\xB8\xAD'> t &amp; "
           "<\xE4\xB8\xAD/><![CDATA[ ]] ]]><!-- - --><b c = 'd' ></b ></p:a>";
}

class CutInput : public testing::TestWithParam<XML_Encoding> {};

TEST_P(CutInput, IsNoDocument)
{
    const char* name = XML_DOM_EncodingEnumToStr(GetParam());
    const std::string whole = convertTo(name, everyConstruct(name));
    const long before = heapLiveBlocks();
    GuardedSpace space;
    char error[300];
    for (std::size_t size = 1; size <= whole.size(); ++size) {
        const std::string part = whole.substr(0, size);
        // The terminator of the space's text would be readable: it is left out here.
        char* place = space.room(size);
        std::memcpy(place, part.data(), size);
        const auto* bytes = reinterpret_cast<const uint8_t*>(place);
        const bool complete = size == whole.size();
        XML_DOM_Node* tree =
            XML_DOM_BuildTreeByMem(bytes, static_cast<uint32_t>(size), sizeof error, error);
        ASSERT_EQ(tree != nullptr, complete) << size << ": " << error;
        XML_DOM_DelNode(tree);
        EXPECT_EQ(XML_Parser_ByMem(bytes, static_cast<uint32_t>(size), nullptr) == XML_RET_OK,
                  complete)
            << size;
        for (const std::size_t chunk : {std::size_t{1}, std::size_t{7}, size}) {
            const ChunkList list{part, chunk};
            tree = XML_DOM_BuildTreeByMemList(list.list(), sizeof error, error);
            ASSERT_EQ(tree != nullptr, complete) << size << " in chunks: " << error;
            XML_DOM_DelNode(tree);
        }
        const TempFile file{part};
        tree = XML_DOM_BuildTreeByFile(file.path(), sizeof error, error);
        ASSERT_EQ(tree != nullptr, complete) << size << " in a file: " << error;
        XML_DOM_DelNode(tree);
        EXPECT_EQ(heapLiveBlocks(), before) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(Encodings, CutInput, testing::Range(XML_Encoding{0}, XML_Encoding{13}));

}  // namespace
