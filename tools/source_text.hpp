// A document as it was read, and its text in UTF-8.
#pragma once

#include "outcome.hpp"
#include "progress_bar.hpp"
#include "read_events.hpp"
#include "recode.hpp"

#include <string>
#include <string_view>

namespace netxml::tool {

inline constexpr const char* kStandardInput = "<stdin>";  // what "-" is called in messages

class SourceText {
public:
    // Reads the file at `path`, or standard input for "-". Throws Failure.
    SourceText(const std::string& path, ProgressBar& progress);
    // Bytes that were read already; `name` stands in messages.
    SourceText(std::string name, std::string bytes, ProgressBar& progress);

    // Parses; throws Failure for a document that is not well-formed.
    void parse(Events* events);
    // Makes the text in UTF-8, once parse() has accepted the document; throws Failure when there is
    // none.
    void decode();

    const std::string& name() const { return name_; }  // of the file, for messages
    std::string_view bytes() const { return bytes_; }
    std::string_view mark() const { return bytes().substr(0, start_.markSize); }
    XML_Encoding encoding() const { return encoding_; }
    // Without the byte-order mark.
    std::string_view text() const
    {
        return encoding_ == XML_ENCODING_UTF_8 ? bytes().substr(start_.markSize) : decoded_;
    }
    // Tells the progress bar how far a parse of these bytes has come.
    PlaceReached reached();

    // Bytes that are no text in the document's encoding, although the parser has accepted them: a
    // warning, or a Failure.
    void warnOfBrokenText(Outcome& outcome) const;
    void refuseBrokenText() const;

private:
    Problem problemWith(const ParseFailure& failure) const;
    Problem brokenText() const;
    bool isBroken() const;

    std::string name_;
    std::string bytes_;
    ByteStart start_{};
    XML_Encoding encoding_ = XML_ENCODING_UTF_8;
    bool encodingChanges_ = false;
    std::string decoded_;
    ProgressBar* progress_;
    bool counted_;  // the bytes are counted as they are parsed, not as they are read
    std::vector<std::uint32_t> lines_;  // the line that each block of bytes begins in
};

}  // namespace netxml::tool
