// How netxml's work grows: documents of one shape in sizes of which the second is twice the first,
// each operation's shortest time of several, one line of JSON for each.
//
// usage: bench_growth LARGEST_BYTES LARGEST_DEPTH
#include "document_maker.hpp"
#include "netxml_library.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>

namespace netxml::bench {
namespace {

std::string repeated(std::size_t count, const auto& piece)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += piece(std::to_string(i));
    return text;
}

// A configuration of about so many bytes.
std::string configuration(std::size_t bytes)
{
    std::string text = "<config>";
    for (std::size_t i = 0; text.size() < bytes; ++i)
        text += joined({"<interface><name>Gigabit", std::to_string(i),
                        "/0/1</name><mtu>1500</mtu><enabled>true</enabled></interface>"});
    return text + "</config>";
}

std::string attributes(std::size_t count)
{
    return "<e" + repeated(count, [](const std::string& i) { return " a" + i + "=\"v\""; }) + "/>";
}

// Each attribute with a prefix of its own, so that the names must be looked up in all declarations.
std::string declarations(std::size_t count)
{
    return "<e" +
           repeated(count,
                    [](const std::string& i) {
                        return joined({" xmlns:p", i, "=\"urn:", i, "\" p", i, ":a=\"v\""});
                    }) +
           "/>";
}

std::string depth(std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += "<d>";
    for (std::size_t i = 0; i < count; ++i) text += "</d>";
    return text;
}

std::string siblings(std::size_t count)
{
    return "<e>" + repeated(count, [](const std::string& i) { return "<s>" + i + "</s>"; }) +
           "</e>";
}

std::string oneText(std::size_t bytes)
{
    return "<e>" + std::string(bytes, 'x') + "</e>";
}

struct Shape {
    const char* name;
    const char* unit;
    std::string (*make)(std::size_t size);
    std::size_t smallest;
    std::size_t largest;
};

struct Growing {
    const char* name;
    void (*run)(const Memory& input, const Netxml::Tree& tree);
};

// clang-format off
constexpr Growing kOperations[] = {
    {"tree and free", [](const Memory& input, const Netxml::Tree&) { Netxml::build(input); }},
    {"events",        [](const Memory& input, const Netxml::Tree&) { Netxml::events(input); }},
    {"copy and free", [](const Memory&, const Netxml::Tree& tree) { Netxml::copy(tree); }},
    {"write",         [](const Memory&, const Netxml::Tree& tree) { Netxml::write(tree); }},
};
// clang-format on

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// A document of one size, and the shortest time of each operation on it.
class Sample {
public:
    Sample(const Shape& shape, std::size_t size)
        : shape_{shape}, size_{size}, text_{shape.make(size)}
    {
    }

    void forget() { best_ = Seconds{std::numeric_limits<double>::infinity()}; }
    // Short runs are repeated under one reading of the clock.
    void read(const Growing& operation)
    {
        constexpr std::size_t kBatchBytes = 32768;
        const std::size_t batch = 1 + kBatchBytes / text_.size();
        const auto start = Clock::now();
        for (std::size_t i = 0; i < batch; ++i) operation.run(input_, tree_);
        best_ = std::min(best_, Seconds{Clock::now() - start} / static_cast<double>(batch));
    }
    void print(const Growing& operation) const
    {
        std::printf("{\"shape\": \"%s\", \"unit\": \"%s\", \"operation\": \"%s\", "
                    "\"size\": %zu, \"seconds\": %.9g}\n",
                    shape_.name, shape_.unit, operation.name, size_, best_.count());
    }

private:
    const Shape& shape_;
    std::size_t size_;
    std::string text_;
    Memory input_{text_};
    Netxml::Tree tree_{Netxml::build(input_)};
    Seconds best_{0};
};

// The sizes take turns, so that what else runs on the machine hits both.
void measure(const Shape& shape, std::size_t size)
{
    constexpr int kFewestReadings = 7;
    constexpr Seconds kShortest{0.1};
    Sample half{shape, size / 2};
    Sample whole{shape, size};
    for (const Growing& operation : kOperations) {
        half.forget();
        whole.forget();
        const auto start = Clock::now();
        for (int i = 0; i < kFewestReadings || Clock::now() - start < kShortest; ++i) {
            half.read(operation);
            whole.read(operation);
        }
        half.print(operation);
        whole.print(operation);
    }
    std::fflush(stdout);
}

}  // namespace
}  // namespace netxml::bench

int main(int argc, char** argv)
{
    using namespace netxml::bench;
    if (argc != 3)
        return std::fputs("usage: bench_growth LARGEST_BYTES LARGEST_DEPTH\n", stderr), 2;
    keepMemory();
    const std::size_t bytes = std::strtoul(argv[1], nullptr, 10);
    const std::size_t deep = std::strtoul(argv[2], nullptr, 10);
    // clang-format off
    const Shape shapes[] = {
        {"size of a configuration",     "byte",        configuration, 1000, bytes},
        {"attributes of an element",    "attribute",   attributes,    10,   100000},
        {"declarations of an element",  "declaration", declarations,  10,   100000},
        {"depth",                       "level",       depth,         10,   deep},
        {"siblings",                    "sibling",     siblings,      10,   1000000},
        {"length of a text",            "byte",        oneText,       1000, bytes},
    };
    // clang-format on
    for (const Shape& shape : shapes) {
        for (std::size_t size = shape.smallest; size <= shape.largest; size *= 10)
            measure(shape, size);
    }
    return 0;
}
