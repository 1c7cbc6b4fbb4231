// Output streams into memory and files, and input streams that are driven by hand.
#include "io/in_stream.hpp"
#include "tests/faults/scenario.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

namespace {

std::string longText()
{
    std::string text;
    for (int i = 0; i < 400; ++i) text += "ascii \xE4\xB8\xAD\xE6\x96\x87";
    return text;
}

// Collected, looked at, emptied, and collected again in pieces that end inside a character.
template <XML_Encoding source, XML_Encoding target>
class MemoryOut : public Trial {
public:
    bool act() override
    {
        result_.clear();
        XML_IO_OutStream* stream = NOTED(XML_IO_MemOutStreamCreate)(source, target);
        if (!stream) return false;
        const bool done = fill(stream);
        NOTED(XML_IO_OutStreamDestroy)(stream);
        return done;
    }
    std::string product() override { return result_; }

private:
    bool append(XML_IO_OutStream* stream, std::string_view text)
    {
        const uint32_t status = NOTED(XML_IO_OutStreamAppend)(stream, text.data(), text.size());
        EXPECT_TRUE(status == XML_RET_OK || status == XML_RET_FAIL);
        return status == XML_RET_OK;
    }
    bool fill(XML_IO_OutStream* stream)
    {
        if (!append(stream, text_)) return false;
        size_t length = 0;
        const char* bytes = NOTED(XML_IO_MemOutStreamGetBuf)(stream, &length);
        result_.append(bytes, length);
        NOTED(XML_IO_MemOutStreamCleanBuf)(stream);
        for (std::size_t i = 0; i < 30; ++i) {
            if (!append(stream, std::string_view{text_}.substr(i, 1))) return false;
        }
        char* block = NOTED(XML_IO_MemOutStreamDetachBuf)(stream, &length);
        result_ += taken(block, length);
        return append(stream, "again");
    }

    std::string text_ = longText();
    std::string result_;
};

// What a file held before stays in front of what is appended, and what is appended is never wrong:
// after a failure part of it may stand there.
template <XML_Encoding target>
class FileOut : public Trial {
public:
    bool act() override
    {
        tried_ = file_.content().size();
        XML_IO_OutStream* stream =
            NOTED(XML_IO_FileOutStreamCreate)(file_.path(), XML_ENCODING_UTF_8, target);
        if (!stream) return false;
        const uint32_t status = NOTED(XML_IO_OutStreamAppend)(stream, text_.data(), text_.size());
        EXPECT_TRUE(status == XML_RET_OK || status == XML_RET_FAIL);
        NOTED(XML_IO_FileOutStreamFlush)(stream);
        XML_IO_OutStreamDestroy(stream);
        return status == XML_RET_OK;
    }
    std::string held() override
    {
        const std::string content = file_.content();
        const std::string part = content.substr(std::min(tried_, content.size()));
        EXPECT_EQ(whole_.compare(0, part.size(), part), 0) << "not what was appended";
        return content.substr(0, kBefore.size());
    }
    std::string product() override { return file_.content().substr(tried_); }

private:
    static constexpr std::string_view kBefore = "what stood there";

    TempFile file_{kBefore};
    std::string text_ = longText();
    std::string whole_ = target == XML_ENCODING_UTF_8 ? text_ : convertTo("GBK", text_);
    std::size_t tried_ = kBefore.size();
};

// The rest of a stream, character by character as it comes.
std::string readAll(XML_IO_InStream& stream)
{
    std::string text;
    for (;;) {
        NOTED(XML_IO_Grow)(&stream);
        if (stream.cursor == stream.end) return text;
        text.append(stream.cursor, stream.end);
        stream.cursor = stream.mark = stream.end;
    }
}

enum class From { Block, List, File };

template <From from>
class In : public Trial {
public:
    bool act() override
    {
        result_.clear();
        XML_IO_InStream* stream = open();
        if (!stream) return false;
        const bool done = read(*stream);
        if (from == From::Block) NOTED(XML_IO_DestroyByMem)(stream);
        if (from == From::List) NOTED(XML_IO_DestroyByMemList)(stream);
        if (from == From::File) NOTED(XML_IO_DestroyByFile)(stream);
        return done;
    }
    std::string product() override { return result_; }
    // In a list or a file what cannot be converted just ends the text, and so does a read error.
    bool mayComeTo(const std::string& clean, const std::string& got) const override
    {
        return from == From::Block ? clean == got : clean.starts_with(got);
    }

private:
    XML_IO_InStream* open()
    {
        switch (from) {
        case From::Block: return NOTED(XML_IO_ByMem)(bytesOf(text_), text_.size());
        case From::List: return NOTED(XML_IO_ByMemList)(list_.list());
        default: return NOTED(XML_IO_ByFile)(file_.path());
        }
    }
    bool read(XML_IO_InStream& stream)
    {
        if (stream.available() < 4) return false;
        EXPECT_EQ(NOTED(XML_IO_Strncmp)(&stream, "begi", 4), 1u);
        EXPECT_EQ(NOTED(XML_IO_Strncasecmp)(&stream, "BEGI", 4), 1u);
        const uint32_t status = NOTED(XML_IO_SwitchEncoding)(&stream, XML_ENCODING_GBK);
        EXPECT_LE(status, 4u);
        result_ = readAll(stream);
        return status < 2 && static_cast<uint32_t>(stream.status) < 2;
    }

    std::string text_ = convertTo("GBK", "begin " + longText() + longText() + longText());
    ChunkList list_{text_, 333};
    TempFile file_{text_};
    std::string result_;
};

// To another encoding and back in the middle: what was converted is to be read again as it was.
template <From from>
class ThereAndBack : public Trial {
public:
    bool act() override
    {
        result_.clear();
        XML_IO_InStream* stream = from == From::Block ? XML_IO_ByMem(bytesOf(text_), text_.size())
                                                      : XML_IO_ByMemList(list_.list());
        if (!stream) return false;
        const bool done = read(*stream);
        if (from == From::Block) XML_IO_DestroyByMem(stream);
        else XML_IO_DestroyByMemList(stream);
        return done;
    }
    std::string product() override { return result_; }

private:
    bool read(XML_IO_InStream& stream)
    {
        const auto good = [&stream] { return static_cast<uint32_t>(stream.status) < 2; };
        // Not more than is there: the text ends where something fails.
        for (int i = 0; i < 1000; ++i) {
            XML_IO_Grow(&stream);
            if (!good() || stream.cursor == stream.end) return false;
            stream.mark = stream.cursor++;
        }
        if (XML_IO_SwitchEncoding(&stream, XML_ENCODING_UTF_8) >= 2) return false;
        result_ = readAll(stream);
        return good();
    }

    // Characters of one byte each in UTF-8, so that the place is between two of them.
    std::string text_ = "\xFF\xFE" + convertTo("UTF-16LE", std::string(3000, 'x'));
    ChunkList list_{text_, 333};
    std::string result_;
};

}  // namespace

std::vector<Scenario> streamScenarios()
{
    return {
        scenario<MemoryOut<XML_ENCODING_UTF_8, XML_ENCODING_GB18030>>("a memory stream"),
        scenario<MemoryOut<XML_ENCODING_UTF_8, XML_ENCODING_UTF_16>>("a memory stream in UTF-16"),
        scenario<MemoryOut<XML_ENCODING_UTF_8, XML_ENCODING_UTF_8>>("a memory stream as it is"),
        scenario<FileOut<XML_ENCODING_UTF_8>>("a file stream as it is"),
        scenario<FileOut<XML_ENCODING_GBK>>("a file stream"),
        scenario<In<From::Block>>("an input stream over a block"),
        scenario<In<From::List>>("an input stream over a list"),
        scenario<In<From::File>>("an input stream over a file"),
        scenario<ThereAndBack<From::Block>>("a block read in another encoding and back"),
        scenario<ThereAndBack<From::List>>("a list read in another encoding and back"),
    };
}
