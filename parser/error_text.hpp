// The report of an error: its excerpt of the input, and its way into a caller's buffer.
#pragma once

#include "netxml/parser.h"

#include <cstdarg>
#include <cstddef>
#include <cstdint>

namespace netxml {

inline constexpr char kReportFormat[] = "The Line %d Column %d :\"%s\", %s";

// The text around the place reached: at most 63 bytes of whole characters, from 32 bytes before it
// on, as far as they are buffered.
class Excerpt {
public:
    explicit Excerpt(const XML_IO_InStream& stream) noexcept;
    const char* text() const noexcept { return text_; }

private:
    static constexpr std::size_t kBefore = 32;
    static constexpr std::size_t kMost = 63;

    char text_[kMost + 1];
};

// Formats a report into a buffer, cut to its size, and converts it to the tree's encoding there.
void writeErrorText(char* buffer, std::uint32_t size, const char* format,
                    std::va_list arguments) noexcept;

// Copies a message into a buffer, which may be NULL.
void copyErrorText(char* buffer, std::uint32_t size, const char* text) noexcept;

}  // namespace netxml
