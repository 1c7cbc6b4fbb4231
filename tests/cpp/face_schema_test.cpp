// The guard of schemas of the C++ face.
#include "netxml/netxml.hpp"
#include "tests/cpp/parsed.hpp"
#include "tests/support/failing_heap.hpp"

#include <gtest/gtest.h>

using netxml::Document;
using netxml::ErrorKind;
using netxml::Result;

namespace {

Schema_ElementDecl mtu;
int registered = 0;

uint32_t registerMtu(Schema_Root* root)
{
    const Schema_Object top{&mtu, SCHEMA_KIND_ELEMENT};
    ++registered;
    return Schema_RegTopObject(root, &top);
}

void deregisterMtu(Schema_Root* root)
{
    const Schema_Object top{&mtu, SCHEMA_KIND_ELEMENT};
    --registered;
    Schema_DeregTopObject(root, &top);
}

class FaceSchema : public testing::Test {
protected:
    void SetUp() override
    {
        mtu.name = "mtu";
        mtu.type = Schema_BLDIN_unsignedShort();
        mtu.typeKind = SCHEMA_KIND_SIMPLE_TYPE;
        mtu.minOccurs = mtu.maxOccurs = 1;
    }
};

TEST_F(FaceSchema, ValidatesWhileItLives)
{
    const Document warm = parsed("<名/>");  // the thread's converter is there from now on
    EXPECT_EQ(warm.root().path(), "/名");
    const long before = heapLiveBlocks();
    {
        Result<netxml::Schema> made = netxml::Schema::of({{&mtu, SCHEMA_KIND_ELEMENT}});
        ASSERT_TRUE(made) << made.error();
        const netxml::Schema schema = *std::move(made);
        EXPECT_TRUE(schema.validate(parsed("<mtu>1500</mtu>")).value().valid());
        const netxml::Verdict ofTemporary = schema.validate(parsed("<mtu>big</mtu>")).value();
        EXPECT_EQ(ofTemporary.path, "/mtu");
        EXPECT_FALSE(ofTemporary.node) << "which ended with its document";
        const Document bad = parsed("<mtu>big</mtu>");
        const netxml::Verdict verdict = schema.validate(bad).value();
        EXPECT_FALSE(verdict.valid());
        EXPECT_EQ(verdict.code, static_cast<Schema_ErrorCode>(SCHEMA_ERROR_ELEMENT_VALUE));
        EXPECT_EQ(verdict.path, "/mtu");
        EXPECT_EQ(verdict.node, bad.root());
        EXPECT_EQ(verdict.sentence, "The value of element '/mtu' is invalid. big is an invalid "
                                    "value of unsignedShort type value.");
        EXPECT_EQ(verdict.detail, "big is an invalid value of unsignedShort type value.");
        EXPECT_EQ(schema.validate(Document{}).error().kind, ErrorKind::Misuse);
        const Document other = parsed("<名/>");
        EXPECT_FALSE(schema.validate(other.root()).value().valid());
    }
    EXPECT_EQ(heapLiveBlocks(), before);
}

TEST_F(FaceSchema, IsDeregisteredOnce)
{
    {
        Result<netxml::Schema> first = netxml::Schema::of(registerMtu, deregisterMtu);
        ASSERT_TRUE(first);
        EXPECT_EQ(registered, 1);
        netxml::Schema second = *std::move(first);
        EXPECT_TRUE(second.validate(parsed("<mtu>1</mtu>")).value().valid());
        EXPECT_EQ(first->validate(parsed("<mtu>1</mtu>")).error().kind, ErrorKind::Misuse);
        EXPECT_EQ(first->raw(), nullptr);
    }
    EXPECT_EQ(registered, 0);
}

TEST_F(FaceSchema, LeavesNothingBehindWhicheverAllocationFails)
{
    for (unsigned allowed = 0;; ++allowed) {
        ASSERT_LT(allowed, 200u);
        const long before = heapLiveBlocks();
        bool made = false;
        {
            const FailingHeap heap{allowed};
            const Result<netxml::Schema> schema = netxml::Schema::of({{&mtu, SCHEMA_KIND_ELEMENT}});
            made = static_cast<bool>(schema);
            if (!made) {
                EXPECT_EQ(schema.error().kind, ErrorKind::Schema);
            }
        }
        EXPECT_EQ(heapLiveBlocks(), before) << "with " << allowed << " allowed";
        if (made) break;
    }
    EXPECT_EQ(netxml::Schema::of({{&mtu, SCHEMA_KIND_SIMPLE_TYPE + 100}}).error().kind,
              ErrorKind::Schema);
}

}  // namespace
