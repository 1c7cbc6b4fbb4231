// The exported callbacks: a tree through a caller's handler.
#include "tests/faults/scenario.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <array>

namespace {

std::string manyEvents()
{
    std::string text = "<r xmlns='urn:d' xmlns:p='urn:p'>";
    for (int i = 0; i < 25; ++i) {
        const std::string n = std::to_string(i);
        text += "<p:e xmlns:q" + n + "='u' q" + n + ":a='\xE4\xB8\xAD' p:b='2'>" +
                std::string(i == 7 ? 3000 : 5, 't') + "\xE4\xB8\xAD<![CDATA[x]]></p:e>";
    }
    std::string many = "<m";
    for (int i = 0; i < 40; ++i) {
        const std::string n = std::to_string(i);
        many += " xmlns:d" + n + "='v" + n + "' d" + n + ":a='1'";
    }
    return text + many + "/></r>";
}

class Callbacks : public Trial {
public:
    Callbacks()
    {
        handler_.startElementNs = NOTED(XML_SAX_StartElementNs);
        handler_.endElementNs = NOTED(XML_SAX_EndElementNs);
        handler_.characters = NOTED(XML_SAX_Characters);
        handler_.cdata = NOTED(XML_SAX_CData);
        handler_.endDocument = NOTED(XML_SAX_EndDocument);
        handler_.error = NOTED(XML_SAX_Error);
        handler_.userData = &builder_;
        builder_.nameConverter = XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, kTree);
        builder_.valueConverter = XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, kTree);
        // Their blocks are theirs to keep, so they have them before anything is compared.
        for (XML_IO_OutStream* stream : {builder_.nameConverter, builder_.valueConverter}) {
            XML_IO_OutStreamAppend(stream, "x", 1);
            XML_IO_MemOutStreamCleanBuf(stream);
        }
        builder_.errorText = error_.data();
        builder_.errorTextSize = static_cast<uint32_t>(error_.size());
    }
    ~Callbacks() override
    {
        XML_IO_OutStreamDestroy(builder_.nameConverter);
        XML_IO_OutStreamDestroy(builder_.valueConverter);
    }
    bool act() override
    {
        const uint32_t status =
            XML_Parser_ByMem(bytesOf(text_), static_cast<uint32_t>(text_.size()), &handler_);
        if (status == XML_RET_OK) return true;
        EXPECT_EQ(builder_.root, nullptr) << "the tree so far is deleted with the report";
        EXPECT_EQ(builder_.current, nullptr);
        return false;
    }
    std::string product() override
    {
        const std::string text = dump(builder_.root);
        XML_DOM_DelNode(builder_.root);
        builder_.root = nullptr;
        return text;
    }

private:
    static constexpr XML_Encoding kTree = XML_ENCODING_GB18030;

    std::string text_ = manyEvents();
    XML_SAX_Handler handler_{};
    XML_SAX_Builder builder_{};
    std::array<char, 200> error_{};
};

}  // namespace

std::vector<Scenario> handlerScenarios()
{
    return {scenario<Callbacks>("a tree through the callbacks")};
}
