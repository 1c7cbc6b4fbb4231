// A document from text that must be well-formed.
#pragma once

#include "netxml/netxml.hpp"

#include <gtest/gtest.h>

#include <utility>

inline netxml::Document parsed(std::string_view text)
{
    netxml::Result<netxml::Document> document = netxml::Document::parse(text);
    EXPECT_TRUE(document) << document.error();
    return document ? *std::move(document) : netxml::Document{};
}
