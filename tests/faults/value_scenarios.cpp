// Checks of single values: what they say, and which of them can fail.
#include "tests/faults/scenario.hpp"

#include <gtest/gtest.h>

namespace {

// Nothing here can fail but what compiles a pattern, which then counts as no match.
class Values : public Trial {
public:
    bool act() override
    {
        said_.clear();
        Schema_SimpleType type{};
        type.kind = SCHEMA_BUILTIN_UNSIGNED_SHORT;
        char text[512] = "";
        say(NOTED(Schema_CheckBaseType)(&type, "1500", sizeof text, text));
        say(NOTED(Schema_CheckBaseType)(&type, "x", sizeof text, text));
        said_ += text;
        say(NOTED(SCHEMA_CheckBaseTypeNonNull)(SCHEMA_BUILTIN_DATE, "2024-02-29"));
        say(NOTED(Schema_IsValidDay)(2023, 2, 29));
        const Schema_DateTimeValue a{2024, 1, 1, 0, 0, 0, 0, 0, "", 0};
        const Schema_DateTimeValue b{2024, 1, 2, 0, 0, 0, 0, 0, "", 0};
        say(NOTED(Schema_CmpDateTime)(&a, &b) < 0);
        const Schema_Facet facet{"3", SCHEMA_FACET_MAX_LENGTH, SCHEMA_BUILTIN_STRING};
        say(NOTED(Schema_CheckFacet)(&facet, "abcd", sizeof text, text) == XML_RET_FAIL);
        said_ += text;
        Schema_ExtType* entry = NOTED(Schema_FoundZynBltInType)("_VlanRange", nullptr);
        if (!entry) return false;
        say(NOTED(Schema_checkZynBltInType)(entry, "1-5,7", sizeof text, text));
        say(NOTED(Schema_checkZynBltInType)(entry, "9999", sizeof text, text));
        said_ += text;
        say(NOTED(Schema_ReplaceInnerTypeNS)("_VlanRange", nullptr, nullptr) == XML_RET_OK);
        say(NOTED(Schema_LanguageHandler)("de"));
        char item[8];
        Schema_SplitCtx split;
        const char* piece = NOTED(Schema_GetFirstSplitStr)("a,bc", ",", sizeof item, item, &split);
        for (; piece; piece = NOTED(Schema_GetNextSplitStr)(&split)) said_ += piece;
        return true;
    }
    std::string product() override { return said_; }

private:
    void say(uint32_t answer) { said_ += std::to_string(answer) + ";"; }

    std::string said_;
};

class Patterns : public Trial {
public:
    bool act() override
    {
        char text[200] = "";
        const Schema_Facet facet{"^[a-z]+$", SCHEMA_FACET_PATTERN, SCHEMA_BUILTIN_STRING};
        said_ = std::to_string(NOTED(XML_IsMatchRegex)("^ge-[0-9]+$", "ge-17")) +
                std::to_string(Schema_CheckFacet(&facet, "word", sizeof text, text) == XML_RET_OK);
        return said_ == "11";
    }
    std::string product() override { return said_; }

private:
    std::string said_;
};

// The records stand still, whatever fails.
class BuiltinRecords : public Trial {
public:
    bool act() override
    {
        records_.clear();
        for (void* record : {NOTED(Schema_BLDIN_anySimpleType)(),
                             NOTED(Schema_BLDIN_byte)(),
                             NOTED(Schema_BLDIN_short)(),
                             NOTED(Schema_BLDIN_unsignedByte)(),
                             NOTED(Schema_BLDIN_unsignedShort)(),
                             NOTED(Schema_BLDIN_int)(),
                             NOTED(Schema_BLDIN_long)(),
                             NOTED(Schema_BLDIN_unsignedInt)(),
                             NOTED(Schema_BLDIN_unsignedLong)(),
                             NOTED(Schema_BLDIN_integer)(),
                             NOTED(Schema_BLDIN_positiveInteger)(),
                             NOTED(Schema_BLDIN_nonPositiveInteger)(),
                             NOTED(Schema_BLDIN_negativeInteger)(),
                             NOTED(Schema_BLDIN_nonNegativeInteger)(),
                             NOTED(Schema_BLDIN_duration)(),
                             NOTED(Schema_BLDIN_dateTime)(),
                             NOTED(Schema_BLDIN_date)(),
                             NOTED(Schema_BLDIN_time)(),
                             NOTED(Schema_BLDIN_gYear)(),
                             NOTED(Schema_BLDIN_gMonth)(),
                             NOTED(Schema_BLDIN_gDay)(),
                             NOTED(Schema_BLDIN_gYearMonth)(),
                             NOTED(Schema_BLDIN_gMonthDay)(),
                             NOTED(Schema_BLDIN_string)(),
                             NOTED(Schema_BLDIN_boolean)(),
                             NOTED(Schema_BLDIN_hexBinary)(),
                             NOTED(Schema_BLDIN_base64Binary)(),
                             NOTED(Schema_BLDIN_anyURI)(),
                             NOTED(Schema_BLDIN_QName)(),
                             NOTED(Schema_BLDIN_language)(),
                             NOTED(Schema_BLDIN_anyType)()})
            records_.push_back(record);
        return true;
    }
    std::string product() override
    {
        const std::set<void*> distinct(records_.begin(), records_.end());
        EXPECT_EQ(distinct.size(), 31u);
        return std::to_string(distinct.count(nullptr));
    }

private:
    std::vector<void*> records_;
};

}  // namespace

std::vector<Scenario> valueScenarios()
{
    return {
        scenario<Values>("checks of values"),
        scenario<Patterns>("patterns"),
        scenario<BuiltinRecords>("the records of the built-in types"),
    };
}
