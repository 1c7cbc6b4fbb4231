// Schema documents as the library can read them: in UTF-8, and without entities of their own.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace netxml::xsd {

class ReadableText {
public:
    // Takes the bytes of a document. One that declares US-ASCII or ISO-8859-1 is rewritten as
    // UTF-8. References to the entities of its internal subset (XML 1.0, section 4.4) are replaced
    // by their text; for these, a document in another encoding without zero bytes becomes UTF-8,
    // too. What is neither, or no XML at all, stays as it is: the parser says what is wrong with
    // it.
    explicit ReadableText(std::string bytes);

    // What is wrong with an entity; then the text ends there.
    struct Trouble {
        std::size_t offset;  // in written()
        std::string message;
    };
    const std::optional<Trouble>& trouble() const { return trouble_; }

    // The text with its entities replaced, and the one before, whose lines and columns are those of
    // the file.
    const std::string& text() const { return text_; }
    const std::string& written() const { return written_.empty() ? text_ : written_; }
    bool hasReplacements() const { return !replacements_.empty(); }
    // Where a part of text() is written; inside a replacement, where its reference is.
    std::size_t writtenOffset(std::size_t offset) const;

private:
    // A reference, and what became of it.
    struct Replacement {
        std::size_t begin;  // in text()
        std::size_t end;
        std::size_t writtenBegin;
        std::size_t writtenEnd;
    };
    class Expander;

    std::string written_;
    std::string text_;
    std::vector<Replacement> replacements_;  // in their order
    std::optional<Trouble> trouble_;
};

}  // namespace netxml::xsd
