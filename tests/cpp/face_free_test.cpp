// What the C++ face costs over ASCII: no allocation at all.
//
// malloc and its kin are wrapped by the linker, and operator new replaced, in this program alone.
#include "netxml/netxml.hpp"
#include "tests/support/failing_heap.hpp"

#include <gtest/gtest.h>

#include <new>

namespace {

std::size_t allocations = 0;

}  // namespace

extern "C" void* __real_malloc(std::size_t size);
extern "C" void* __real_calloc(std::size_t count, std::size_t size);
extern "C" void* __real_realloc(void* block, std::size_t size);

extern "C" void* __wrap_malloc(std::size_t size)
{
    ++allocations;
    return __real_malloc(size);
}

extern "C" void* __wrap_calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __real_calloc(count, size);
}

extern "C" void* __wrap_realloc(void* block, std::size_t size)
{
    ++allocations;
    return __real_realloc(block, size);
}

// The compiler must not look into the pair: it would see free() for what new has made.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    ++allocations;
    if (void* block = __real_malloc(size == 0 ? 1 : size)) return block;
    std::abort();
}

[[gnu::noinline]] void operator delete(void* block) noexcept
{
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

namespace {

// What has been asked for since it was made, by the program and by the library.
class Count {
public:
    std::size_t made() const { return allocations - before_; }

private:
    std::size_t before_ = allocations;
};

// Reads all that a tree holds; the sum of the sizes.
std::size_t readAll(netxml::ConstElement root)
{
    std::size_t size = 0;
    for (const netxml::ConstNode node : root.descendants()) {
        const netxml::ConstElement element = node.asElement();
        if (!element) {
            size += node.asText().value().size();
            continue;
        }
        size += element.name().size() + element.namespaceName().size() + element.prefix().size();
        for (const netxml::Attribute attribute : element.attributes())
            size += attribute.name().size() + attribute.value().size();
    }
    return size;
}

constexpr std::string_view kAscii =
    "<config xmlns='urn:c' xmlns:o='urn:o'><interface name='ge0' o:state='up'><mtu>1500</mtu>"
    "</interface><interface name='ge1'><mtu>9000</mtu></interface></config>";

TEST(FaceCost, WalkingAnAsciiTreeAllocatesNothing)
{
    const netxml::Document document = netxml::Document::parse(kAscii).value();
    const Count count;
    const std::size_t size = readAll(document.root());
    const std::size_t made = count.made();
    EXPECT_EQ(made, 0u);
    EXPECT_GT(size, 60u);
}

TEST(FaceCost, LookingUpByAsciiNamesAllocatesNothing)
{
    const netxml::Document document = netxml::Document::parse(kAscii).value();
    const std::string name{"interface"};
    const Count count;
    std::size_t found = 0;
    for (const netxml::ConstElement element : document.root().children(name)) {
        found += element.child("mtu").hasName("mtu") ? 1 : 0;
        found += element.child("mtu", "urn:c").text() == "1500" ? 1 : 0;
        found += element.attribute("state", "urn:o") ? 1 : 0;
    }
    const std::size_t made = count.made();
    EXPECT_EQ(made, 0u);
    EXPECT_EQ(found, 4u);
}

TEST(FaceCost, TheCountSeesWhatIsConverted)
{
    const netxml::Document document = netxml::Document::parse("<r><名/></r>").value();
    const Count count;
    EXPECT_EQ(readAll(document.root()), 3u);
    EXPECT_GE(count.made(), 1u);
}

TEST(FaceCost, ReadingEventsAllocatesNothingOfItsOwn)
{
    struct Sizes {
        std::size_t sum = 0;
        void startElement(const netxml::StartTag& tag) { sum += tag.name.size(); }
        void text(std::string_view text) { sum += text.size(); }
    } sizes;
    // The library's own blocks come from malloc and its kin, too, through its heap.
    const FailingHeap heap{FailingHeap::kForever};
    const std::size_t before = allocations;
    const netxml::Status status = netxml::read(kAscii, sizes);
    EXPECT_EQ(allocations - before, FailingHeap::allocations());
    EXPECT_TRUE(status);
    EXPECT_GT(sizes.sum, 0u);
}

}  // namespace
