// The rules of simple values written down plainly, with the C library's own means: each pattern is
// a regular expression, numbers are read by scanf and strtoull, and lists are split step by step.
// The library's matchers are compared with it. It shares no code with them, but for the check of a
// qualified name.
#pragma once

#include "netxml/schema.h"

#include <span>
#include <string>

// What messages call a kind; empty for kinds without a name.
const char* plainTypeName(uint32_t kind);

// The lexical rule of a kind, as SCHEMA_CheckBaseTypeNonNull() applies it.
bool plainBuiltin(uint32_t kind, const std::string& value);

// Whether Schema_CheckBaseType() accepts the value, and the sentence for a buffer of `bufSize`
// bytes, 111 or more of them, if not.
bool plainBaseType(uint32_t kind, const std::string& value, uint32_t bufSize, std::string& message);

// The rule of a network type.
bool plainNetworkType(const std::string& name, const std::string& value);

// The status of Schema_CheckFacet(), and the whole sentence if it fails.
uint32_t plainFacet(const Schema_Facet& facet, const std::string& value, std::string& message);

// The order of two points in time.
int plainCompareDateTime(const Schema_DateTimeValue& a, const Schema_DateTimeValue& b);

// The order of two texts as durations, and as values of one of the kinds 20 to 27. A text that is
// none counts as zero, in dates as the first day of the first year.
int plainCompareDurations(const std::string& a, const std::string& b);
int plainCompareDateTimes(uint32_t kind, const std::string& a, const std::string& b);

// The language codes in their order; some stand twice.
std::span<const char* const> plainLanguageCodes();

// Whether a pattern of the rules matches; each is compiled once and kept.
bool plainMatches(const char* pattern, const std::string& text);

// A sentence as a buffer of `bufSize` bytes holds it.
std::string plainCut(const std::string& message, std::size_t bufSize);
