// A small input cannot make the library hold much: the most that it holds at a time is a stated
// multiple of the input, whatever the input is, and a constant.
#include "tests/hostile/shapes.hpp"
#include "tests/support/failing_heap.hpp"
#include "tests/support/random.hpp"
#include "tests/support/random_document.hpp"
#include "tests/support/schema_kit.hpp"
#include "tests/support/sources.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

namespace {

// What holds for each way to use a document. docs/reliability.md states the same.
struct Bound {
    const char* name;
    double multiple;  // bytes held for each byte of the input
    std::size_t constant;
};

constexpr Bound kEvents{"events", 40, 32768};
constexpr Bound kTree{"a tree", 40, 131072};
constexpr Bound kWriting{"a string", 16, 16384};
constexpr Bound kValidating{"validating", 16, 131072};

// The bytes that the library held at most, beyond what it held before.
std::size_t peakOf(const std::function<void()>& work)
{
    heapResetPeak();
    const std::size_t before = heapLiveBytes();
    work();
    return heapPeakBytes() - before;
}

// The largest multiple that was needed, for a figure and for the name of the worst.
class Worst {
public:
    explicit Worst(const Bound& bound) : bound_{bound} {}
    Worst(const Worst&) = delete;
    Worst& operator=(const Worst&) = delete;
    ~Worst()
    {
        std::printf("%s: at most %.1f bytes for each byte of \"%s\", and %zu where that is less "
                    "(bound: %.0f and %zu)\n",
                    bound_.name, multiple_, where_.c_str(), constant_, bound_.multiple,
                    bound_.constant);
        testing::Test::RecordProperty(std::string{bound_.name} + " multiple",
                                      std::to_string(multiple_));
    }

    void add(const std::string& where, std::size_t size, std::size_t peak)
    {
        const double allowed =
            bound_.multiple * static_cast<double>(size) + static_cast<double>(bound_.constant);
        EXPECT_LE(static_cast<double>(peak), allowed)
            << bound_.name << " of " << size << " bytes of " << where << " holds " << peak;
        const double rest = static_cast<double>(peak) - static_cast<double>(bound_.constant);
        const double multiple = rest / static_cast<double>(size);
        if (multiple > multiple_) {
            multiple_ = multiple;
            where_ = where;
        }
        const double beyond =
            static_cast<double>(peak) - bound_.multiple * static_cast<double>(size);
        if (beyond > static_cast<double>(constant_)) constant_ = static_cast<std::size_t>(beyond);
    }

private:
    Bound bound_;
    double multiple_ = 0;
    std::size_t constant_ = 0;
    std::string where_;
};

// Hostile shapes of several sizes and random documents, in UTF-8 and in UTF-16.
void forEachDocument(const std::function<void(const std::string& where, const std::string&)>& use)
{
    for (const Shape& shape : hostileShapes()) {
        for (const std::size_t n :
             {std::size_t{1}, std::size_t{10}, std::size_t{100}, std::size_t{1000}, shape.small}) {
            const std::string document = shape.make(n);
            use(shape.name, document);
            use(std::string{shape.name} + " in UTF-16",
                "\xFF\xFE" + convertTo("UTF-16LE", document));
        }
    }
    RandomDocument random{42};
    for (std::size_t i = 0; i < randomRounds(3000); ++i) use("random", random.next());
}

TEST(MemoryBound, OfEvents)
{
    Worst worst{kEvents};
    forEachDocument([&worst](const std::string& where, const std::string& document) {
        const auto size = static_cast<uint32_t>(document.size());
        if (size == 0) return;
        worst.add(where, size, peakOf([&] { XML_Parser_ByMem(bytesOf(document), size, nullptr); }));
        const ChunkList list{document, 100};
        worst.add(where, size, peakOf([&] { XML_Parser_ByMemList(list.list(), nullptr); }));
    });
}

TEST(MemoryBound, OfATree)
{
    Worst worst{kTree};
    forEachDocument([&worst](const std::string& where, const std::string& document) {
        const auto size = static_cast<uint32_t>(document.size());
        if (size == 0) return;
        worst.add(where, size, peakOf([&] {
                      XML_DOM_DelNode(XML_DOM_BuildTreeByMem(bytesOf(document), size, 0, nullptr));
                  }));
        const ChunkList list{document, 100};
        worst.add(where, size, peakOf([&] {
                      XML_DOM_DelNode(XML_DOM_BuildTreeByMemList(list.list(), 0, nullptr));
                  }));
    });
}

TEST(MemoryBound, OfAString)
{
    Worst worst{kWriting};
    forEachDocument([&worst](const std::string& where, const std::string& document) {
        const auto size = static_cast<uint32_t>(document.size());
        XML_DOM_Node* tree = XML_DOM_BuildTreeByMem(bytesOf(document), size, 0, nullptr);
        if (!tree) return;
        for (const XML_Encoding encoding : {XML_ENCODING_UTF_8, XML_ENCODING_UTF_32}) {
            XML_DOM_SetEncoding(tree, encoding);
            worst.add(where, size, peakOf([&] { EXPECT_NE(written(tree, 0), "failed"); }));
        }
        XML_DOM_DelNode(tree);
    });
}

TEST(MemoryBound, OfAValidation)
{
    Worst worst{kValidating};
    SchemaKit kit;
    auto* any = kit.make<Schema_AttributeWildcard>();
    any->namespaceName = "##any";
    any->processContents = SCHEMA_PROCESS_LAX;
    Schema_ComplexType* type = kit.complexType(kit.model("((e|a|#)*)"));
    type->anyAttribute = any;
    type->mixed = 1;
    for (const char* name : {"r", "e", "a", "o"}) kit.add(kit.element(name, type));
    forEachDocument([&](const std::string& where, const std::string& document) {
        const auto size = static_cast<uint32_t>(document.size());
        XML_DOM_Node* tree = XML_DOM_BuildTreeByMem(bytesOf(document), size, 0, nullptr);
        if (!tree) return;
        Schema_ValidateResult result;
        worst.add(where, size, peakOf([&] {
                      EXPECT_EQ(Schema_ValidateXml(tree, &kit.root(), &result), XML_RET_OK);
                  }));
        XML_DOM_DelNode(tree);
    });
}

}  // namespace
