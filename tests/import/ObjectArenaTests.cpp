// The arena that import runs make entities and values in: objects behave as ordinary shared
// objects for the host, and every block goes back to the system exactly when its last object
// (or control block) is gone, in whatever order and on whatever thread that happens.

#include "import/ObjectArena.h"
#include "platform/AddressSanitizer.h"

#include "host/GisData.h"
#include "host/ImpexData.h"

#include <gtest/gtest.h>

#include <boost/weak_ptr.hpp>

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

using VeltoGis::Data::CDataBox;
using VeltoGis::ImportExport::CImpexPoint;

namespace {

class ObjectArenaTest : public ::testing::Test {
protected:
    void SetUp() override { blocksBefore_ = ArenaBlock::BlocksInUse(); }
    std::size_t BlocksHeld() const { return ArenaBlock::BlocksInUse() - blocksBefore_; }

    std::size_t blocksBefore_ = 0;
};

// Enough values to fill several blocks.
std::vector<boost::shared_ptr<CDataBox>> MakeValues(ObjectArena& arena, int count)
{
    std::vector<boost::shared_ptr<CDataBox>> values;
    for (int i = 0; i < count; ++i) {
        values.push_back(arena.Make<CDataBox>());
        values.back()->SetValue(i % 2 ? WTEXT("a text longer than the inline room") : WTEXT("short"));
    }
    return values;
}

} // namespace

TEST_F(ObjectArenaTest, ObjectsOutliveTheArenaAndKeepTheirValues)
{
    std::vector<boost::shared_ptr<CImpexPoint>> points;
    {
        ObjectArena arena;
        for (int i = 0; i < 1000; ++i) {
            points.push_back(arena.Make<CImpexPoint>());
            auto value = arena.Make<CDataBox>();
            value->SetValue(static_cast<double>(i));
            points.back()->AddData(value);
        }
    }
    ASSERT_EQ(BlocksHeld(), 1u);
    for (int i = 0; i < 1000; ++i) {
        CDataBox expected;
        expected.SetValue(static_cast<double>(i));
        EXPECT_TRUE(*(*points[i]->GetData())[0] == expected) << i;
    }
    points.clear();
    EXPECT_EQ(BlocksHeld(), 0u);
}

TEST_F(ObjectArenaTest, BlocksGoBackWhateverTheOrderOfRelease)
{
    struct Case {
        const char* name;
        bool arenaFirst;
        bool shuffled;
    } cases[] = {{"arena gone first, in order", true, false},
                 {"arena gone first, shuffled", true, true},
                 {"objects gone first, shuffled", false, true}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto arena = std::make_unique<ObjectArena>();
        auto values = MakeValues(*arena, 200000);
        ASSERT_GT(BlocksHeld(), 2u);
        if (c.shuffled)
            std::shuffle(values.begin(), values.end(), std::mt19937(7));
        if (c.arenaFirst)
            arena.reset();
        while (values.size() > 1)
            values.pop_back();
        // The last value's block stays, and the arena's current one while the arena lives.
        if (c.arenaFirst)
            EXPECT_EQ(BlocksHeld(), 1u);
        else
            EXPECT_LE(BlocksHeld(), 2u);
        values.clear();
        EXPECT_EQ(BlocksHeld(), c.arenaFirst ? 0u : 1u) << "the arena keeps its current block";
        arena.reset();
        EXPECT_EQ(BlocksHeld(), 0u);
    }
}

TEST_F(ObjectArenaTest, AWeakPointerKeepsTheBlockUntilItIsGone)
{
    boost::weak_ptr<CDataBox> watcher;
    {
        ObjectArena arena;
        auto value = arena.Make<CDataBox>();
        watcher = value;
    }
    EXPECT_TRUE(watcher.expired());
    EXPECT_EQ(BlocksHeld(), 1u) << "the control block lives in the block";
    watcher.reset();
    EXPECT_EQ(BlocksHeld(), 0u);
}

TEST_F(ObjectArenaTest, ObjectsMayBeReleasedOnOtherThreads)
{
    std::vector<boost::shared_ptr<CDataBox>> first, second;
    {
        ObjectArena arena;
        auto values = MakeValues(arena, 100000);
        first.assign(values.begin(), values.begin() + 50000);
        second.assign(values.begin() + 50000, values.end());
    }
    std::thread a([&first] { first.clear(); });
    std::thread b([&second] {
        while (!second.empty())
            second.pop_back();
    });
    a.join();
    b.join();
    EXPECT_EQ(BlocksHeld(), 0u);
}

namespace {
struct ThrowsOnConstruction {
    ThrowsOnConstruction() { throw std::runtime_error("no"); }
};
} // namespace

TEST_F(ObjectArenaTest, AFailedConstructionGivesItsRoomBack)
{
    {
        ObjectArena arena;
        EXPECT_THROW(arena.Make<ThrowsOnConstruction>(), std::runtime_error);
    }
    EXPECT_EQ(BlocksHeld(), 0u);
}

#ifdef TESSEL_ADDRESS_SANITIZER
// The sanitizer watches arena objects as it watches heap objects.
TEST_F(ObjectArenaTest, ReadingAReleasedValueIsCaughtByTheSanitizer)
{
    ObjectArena arena;
    auto keep = arena.Make<CDataBox>();
    auto value = arena.Make<CDataBox>();
    const CDataBox* released = value.get();
    value.reset();
    EXPECT_DEATH(static_cast<void>(static_cast<WString>(*released)), "use-after-poison");
}
#endif
