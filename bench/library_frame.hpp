// The operations of a library, made of what its description offers. A description is a struct of
// static functions:
//
//     Tree                    what build() returns; frees itself
//     build(Input)            for Memory, Chunks and File; throws Refused
//     buildFast(Memory)       in the fastest mode whose result can still be used
//     buildReady(Memory)      what is copied, written and validated, if build() leaves blanks
//                             between tags that the other libraries drop
//     count(Tree, Tally)      adds what the tree holds to a tally
//     copy(Tree)              a deep copy
//     write(Tree)             the text: something that converts to std::string_view
//     writeTo(Tree)           the same to a callback; returns the number of bytes
//     events(Input)           the number of elements that were reported
//     eventsFast(Memory)      the same in the fastest mode
//     Schema                  loads the schema of the configurations: valid(Tree), and
//                             validText(Memory), which parses and validates
//     kReadsGb18030           whether documents in GB18030 can be read
//
// What a description lacks, the contestant does not offer.
#pragma once

#include "contest.hpp"
#include "inputs.hpp"
#include "malformed.hpp"
#include "violations.hpp"

#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>

namespace netxml::bench {

// Text in a block that a library hands out.
template <class Free>
struct OwnedText {
    std::unique_ptr<char, Free> bytes;
    std::size_t length;
    operator std::string_view() const { return {bytes.get(), length}; }
};

// Calls a C function to free what a unique_ptr holds.
template <auto Function>
struct FreeBy {
    template <class T>
    void operator()(T* object) const
    {
        Function(object);
    }
};

template <class Library>
Tally tallyOf(const typename Library::Tree& tree)
{
    Tally tally;
    Library::count(tree, tally);
    return tally;
}

// A tree to work on, made outside of what is measured.
template <class Library>
struct Ready {
    explicit Ready(const Document& document) : tree{build(Memory{document})} {}
    typename Library::Tree tree;

private:
    static typename Library::Tree build(const Memory& input)
    {
        if constexpr (requires { Library::buildReady(input); }) return Library::buildReady(input);
        else return Library::build(input);
    }
};

// How a tree is made of an input.
template <class Library>
struct Built {
    auto operator()(const auto& input) const { return Library::build(input); }
};
template <class Library>
struct BuiltFast {
    auto operator()(const auto& input) const { return Library::buildFast(input); }
};
template <class Library>
struct Copied {
    auto operator()(const Ready<Library>& source) const { return Library::copy(source.tree); }
};

template <class Library, class Input, class Maker>
class MakeTrees : public Work {
public:
    explicit MakeTrees(const Document& document) : input_{document} {}
    void prepare(std::size_t runs) override { trees_.reserve(runs); }
    void run() override { trees_.push_back(Maker{}(input_)); }
    std::optional<Tally> check() override { return tallyOf<Library>(trees_.back()); }
    void tidy() override { trees_.clear(); }

private:
    Input input_;
    std::vector<typename Library::Tree> trees_;
};

template <class Library>
class MakeAndFree : public Work {
public:
    explicit MakeAndFree(const Document& document) : input_{document} {}
    void run() override { Library::build(input_); }
    std::optional<Tally> check() override { return tallyOf<Library>(Library::build(input_)); }

private:
    Memory input_;
};

template <class Library>
class FreeTrees : public Work {
public:
    explicit FreeTrees(const Document& document) : input_{document} {}
    void prepare(std::size_t runs) override
    {
        while (trees_.size() < runs) trees_.push_back(Library::build(input_));
    }
    void run() override { trees_.pop_back(); }
    std::optional<Tally> check() override { return tallyOf<Library>(Library::build(input_)); }

private:
    Memory input_;
    std::vector<typename Library::Tree> trees_;
};

// What is written must read back as it was. (Of a file that is not ours it need not: netxml writes
// a double quote in an attribute as it is.)
template <class Library>
class WriteTexts : public Work {
public:
    explicit WriteTexts(const Document& document) : source_{document}, real_{document.real} {}
    void prepare(std::size_t runs) override { texts_.reserve(runs); }
    void run() override { texts_.push_back(Library::write(source_.tree)); }
    std::optional<Tally> check() override
    {
        const Tally tally = tallyOf<Library>(source_.tree);
        if (!real_) {
            const std::string text{std::string_view{texts_.back()}};
            require(tallyOf<Library>(Library::build(Memory{text})) == tally,
                    "what was written does not read back");
        }
        return tally;
    }
    void tidy() override { texts_.clear(); }

private:
    Ready<Library> source_;
    bool real_;
    std::vector<decltype(Library::write(std::declval<typename Library::Tree&>()))> texts_;
};

template <class Library>
class WritePieces : public Work {
public:
    explicit WritePieces(const Document& document) : source_{document} {}
    void run() override { size_ = Library::writeTo(source_.tree); }
    std::optional<Tally> check() override
    {
        const auto text = Library::write(source_.tree);
        requireSame(size_, std::string_view{text}.size(), "bytes written");
        return tallyOf<Library>(source_.tree);
    }

private:
    Ready<Library> source_;
    std::size_t size_ = 0;
};

// How events are counted.
template <class Library>
struct Reported {
    auto operator()(const auto& input) const { return Library::events(input); }
};
template <class Library>
struct ReportedFast {
    auto operator()(const auto& input) const { return Library::eventsFast(input); }
};

template <class Input, class Reporter>
class Events : public Work {
public:
    explicit Events(const Document& document) : input_{document} {}
    void run() override { elements_ = Reporter{}(input_); }
    std::optional<Tally> check() override { return Tally{.elements = elements_}; }

private:
    Input input_;
    std::size_t elements_ = 0;
};

// A schema must refuse what it should before it is measured.
template <class Library>
class ValidateTrees : public Work {
public:
    explicit ValidateTrees(const Document& document) : source_{document}
    {
        for (const Violation& violation : violations()) {
            const auto broken = Library::build(Memory{violation.text});
            require(!schema_.valid(broken), violation.why);
        }
    }
    void run() override { require(schema_.valid(source_.tree), "a valid document is refused"); }
    std::optional<Tally> check() override { return tallyOf<Library>(source_.tree); }

private:
    typename Library::Schema schema_;
    Ready<Library> source_;
};

template <class Library>
class ParseAndValidate : public Work {
public:
    explicit ParseAndValidate(const Document& document) : input_{document}
    {
        for (const Violation& violation : violations())
            require(!schema_.validText(Memory{violation.text}), violation.why);
    }
    void run() override { require(schema_.validText(input_), "a valid document is refused"); }
    std::optional<Tally> check() override { return std::nullopt; }

private:
    typename Library::Schema schema_;
    Memory input_;
};

// Gathers what a description offers.
template <class Library>
class Offers {
public:
    std::vector<Operation> all()
    {
        trees();
        writing();
        events();
        validation();
        return std::move(operations_);
    }

private:
    static bool reads(std::string_view document)
    {
        return Library::kReadsGb18030 || !isGb18030(document);
    }

    template <class Kind>
    void add(const char* name, bool (*takes)(std::string_view) = reads)
    {
        operations_.push_back({name,
                               [](const Document& document) -> std::unique_ptr<Work> {
                                   return std::make_unique<Kind>(document);
                               },
                               takes});
    }

    void trees()
    {
        if constexpr (requires(const Memory& input) { Library::build(input); }) {
            add<MakeTrees<Library, Memory, Built<Library>>>("tree");
            add<MakeAndFree<Library>>("tree-and-free");
            add<FreeTrees<Library>>("free");
        }
        if constexpr (requires(const Memory& input) { Library::buildFast(input); })
            add<MakeTrees<Library, Memory, BuiltFast<Library>>>("tree-fast");
        if constexpr (requires(const Chunks& input) { Library::build(input); }) {
            add<MakeTrees<Library, ChunksOf<4096>, Built<Library>>>("tree-chunks");
            add<MakeTrees<Library, ChunksOf<4099>, Built<Library>>>("tree-chunks-prime");
        }
        if constexpr (requires(const File& input) { Library::build(input); })
            add<MakeTrees<Library, File, Built<Library>>>("tree-file");
        if constexpr (requires { Library::copy(std::declval<const typename Library::Tree&>()); })
            add<MakeTrees<Library, Ready<Library>, Copied<Library>>>("copy");
    }

    void writing()
    {
        if constexpr (requires { Library::write(std::declval<const typename Library::Tree&>()); })
            add<WriteTexts<Library>>("write");
        if constexpr (requires { Library::writeTo(std::declval<const typename Library::Tree&>()); })
            add<WritePieces<Library>>("write-callback");
    }

    void events()
    {
        if constexpr (requires(const Memory& input) { Library::events(input); })
            add<Events<Memory, Reported<Library>>>("events");
        if constexpr (requires(const Memory& input) { Library::eventsFast(input); })
            add<Events<Memory, ReportedFast<Library>>>("events-fast");
        if constexpr (requires(const Chunks& input) { Library::events(input); }) {
            add<Events<ChunksOf<4096>, Reported<Library>>>("events-chunks");
            add<Events<ChunksOf<4099>, Reported<Library>>>("events-chunks-prime");
        }
        if constexpr (requires(const File& input) { Library::events(input); })
            add<Events<File, Reported<Library>>>("events-file");
    }

    void validation()
    {
        if constexpr (requires {
                          std::declval<typename Library::Schema>().valid(
                              std::declval<const typename Library::Tree&>());
                      })
            add<ValidateTrees<Library>>("validate", isConfiguration);
        if constexpr (requires {
                          std::declval<typename Library::Schema>().validText(
                              std::declval<const Memory&>());
                      })
            add<ParseAndValidate<Library>>("parse-and-validate", isConfiguration);
    }

    std::vector<Operation> operations_;
};

// Whether a document is taken, by whatever reads documents.
template <class Library>
bool takes(std::string_view text)
try {
    const std::string document{text};
    if constexpr (requires(const Memory& input) { Library::build(input); })
        Library::build(Memory{document});
    else Library::events(Memory{document});
    return true;
} catch (const Refused&) {
    return false;
}

// Prints as JSON which malformed documents are refused.
template <class Library>
int printChecks()
{
    const char* separator = "{";
    for (const Malformed& malformed : kMalformed) {
        std::printf("%s\"%s\": %s", separator, malformed.what,
                    takes<Library>(malformed.text) ? "false" : "true");
        separator = ",\n ";
    }
    std::puts("}");
    return 0;
}

// The whole program of a contestant.
template <class Library>
int runLibrary(int argc, char** argv)
{
    if (argc == 2 && std::string_view{argv[1]} == "--checks") return printChecks<Library>();
    return runContest(argc, argv, Offers<Library>{}.all());
}

}  // namespace netxml::bench
