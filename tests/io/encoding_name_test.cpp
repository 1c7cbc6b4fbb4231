#include "netxml/netxml.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kNames[] = {"UTF-8",    "UTF-16LE", "UTF-16BE", "GB2312", "UTF-32LE",
                                  "UTF-32BE", "UTF-16",   "UTF-32",   "GBK",    "GB18030",
                                  "UCS-4",    "UCS-4BE",  "UCS-4LE"};

TEST(EncodingNames, StandInTheirOrder)
{
    for (XML_Encoding i = 0; i < 13; ++i) {
        EXPECT_STREQ(XML_DOM_EncodingEnumToStr(i), kNames[i]);
        EXPECT_EQ(XML_DOM_EncodingStrToEnum(kNames[i]), i);
    }
    EXPECT_EQ(XML_DOM_EncodingEnumToStr(13), nullptr);
    EXPECT_EQ(XML_DOM_EncodingEnumToStr(200), nullptr);
    EXPECT_EQ(XML_DOM_EncodingEnumToStr(UINT32_MAX), nullptr);
}

TEST(EncodingNames, AreFoundWithoutRegardToCase)
{
    EXPECT_EQ(XML_DOM_EncodingStrToEnum("utf-8"), 0u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum("Utf-16Le"), 1u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum("gb18030"), 9u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum("ucs-4le"), 12u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum("UTF8"), 13u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum("UTF"), 13u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum("UTF-8 "), 13u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum(""), 13u);
    EXPECT_EQ(XML_DOM_EncodingStrToEnum(nullptr), 13u);
}

}  // namespace
