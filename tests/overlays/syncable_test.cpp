#include "overlays/syncable.h"

#include "core/clock.h"
#include "core/heartbeat.h"
#include "overlays/object_id.h"

#include <gtest/gtest.h>

namespace {

double now = 1000.0;

/// A tick keeps one time for as long as it lasts.
void TickAt(double time)
{
    now = time;
    CHeartbeat::TheHeartbeat.Pulse();
}

struct Item : CSyncable {
    bool Serialize(IOStream& stream) override { return SerializeSyncable(stream); }
    bool SyncObject(IOStream&, double) override { return true; }
    void getLonLatBounds(CBounds&) const override {}
    std::string getSubText(const CSimpleGrid&) const override { return {}; }
};

class Syncable : public testing::Test {
protected:
    void SetUp() override
    {
        SetClock([] { return now; });
        TickAt(1000.0);
        SetObjectIdSource({[] { return std::uint32_t{0x12345678}; }, [] { return std::uint32_t{0xABCD0000}; }});
    }
    void TearDown() override
    {
        SetObjectIdSource({});
        SetClock(nullptr);
    }
};

TEST_F(Syncable, IdIsFixedByTheFirstQuestion)
{
    Item item;
    EXPECT_EQ(item.object_id, 0U);
    const std::string text = item.GetObjectIDstr();
    EXPECT_EQ(item.object_id, (0x12345678ULL << 16) ^ (0xABCD0000ULL << 32) ^ 1000ULL);
    TickAt(2000.0);
    EXPECT_EQ(item.GetObjectIDstr(), text);
    EXPECT_EQ(CSyncable::ParseObjectID("Source: " + text + " end"), item.object_id);
    SetObjectIdSource({});
    EXPECT_NE(GenerateUniqueID(), GenerateUniqueID());
}

TEST_F(Syncable, ParsesIdsFromTexts)
{
    constexpr struct {
        const char* text;
        std::uint64_t id;
    } cases[] = {
        {"Source: ztid:1A2B", 0x1A2B}, {"ztid:1A2Bzz", 0x1A2B}, {"no id", 0}, {"ztid:", 0}, {"ztid:-5", 0},
        {"ztid:FFFFFFFFFFFFFFFFF", 0}, {"ztid:a", 0},
    };
    for (const auto& c : cases) EXPECT_EQ(CSyncable::ParseObjectID(c.text), c.id) << c.text;
}

TEST_F(Syncable, DeletingKeepsTheServerOutOfWhatItNeverSaw)
{
    Item fresh;
    fresh.DeleteSyncItem();
    EXPECT_TRUE(fresh.do_not_sync);
    Item known;
    known.GetObjectID();
    TickAt(2000.0);
    known.DeleteSyncItem();
    EXPECT_FALSE(known.do_not_sync);
    EXPECT_TRUE(known.NeedsSyncToCloud(1500.0));
    EXPECT_FALSE(known.visible);

    TickAt(3000.0);
    known.setLocked(true);
    known.setDoNotSync(true);
    known.setVisible(true);
    EXPECT_FALSE(known.locked || known.do_not_sync || known.visible) << "a tombstone does not change";
    EXPECT_LT(known.modified, 3000.0);
    known.UndeleteSyncItem();
    EXPECT_TRUE(known.visible);
}

TEST_F(Syncable, OnlyRealChangesCount)
{
    Item item;
    CHeartbeat::TheHeartbeat.Pulse();
    TickAt(2000.0);
    item.setVisible(false);
    item.setLocked(false);
    EXPECT_EQ(item.modified, 1000.0);
    item.setLocked(true);
    EXPECT_EQ(item.modified, 2000.0);
}

TEST_F(Syncable, CategoriesFollowTheirFolder)
{
    constexpr struct {
        const char *category, *from, *to, *result;
    } cases[] = {
        {"Trips/2020/May", "Trips", "Old", "Old/2020/May"},
        {"Trips/2020", "Trips", "", "2020"},
        {"Trips", "Trips", "", ""},
        {"Harbours", "Trips", "Old", "Old"},
        {"Trips/2020", "Trips/2020", "A/B", "A/B"},
    };
    for (const auto& c : cases) {
        Item item;
        item.category = c.category;
        item.changeCategoryPath(c.to, c.from);
        EXPECT_EQ(item.category, c.result) << c.category << " " << c.from;
    }
}

TEST_F(Syncable, ComparesAndSearchesWithoutCase)
{
    Item a;
    Item b;
    a.name = "Anchorage";
    b.name = "ANCHORAGE";
    EXPECT_TRUE(a.sameSyncableData(b));
    b.deleted = true;
    EXPECT_FALSE(a.sameSyncableData(b));
    a.comment = "good Holding";
    EXPECT_TRUE(a.matches_search("hold") && a.matches_search("CHOR"));
    EXPECT_FALSE(a.matches_search("mud"));
}

TEST_F(Syncable, BlockIsRepairedOnReading)
{
    Item written;
    written.object_id = 0x1A2B;
    written.modified = 500.0;
    written.created = 900.0;
    written.deleted = true;
    written.locked = true;
    const std::string bytes = written.WriteMemory(0);
    EXPECT_EQ(bytes.size(), 4U + 5 + 28);
    Item read;
    ASSERT_TRUE(read.ReadMemory(bytes, 0));
    EXPECT_EQ(read.object_id, 0x1A2BU);
    EXPECT_EQ(read.created, 500.0);
    EXPECT_TRUE(read.deleted && read.locked);
    EXPECT_FALSE(read.visible);
    EXPECT_FALSE(Item().ReadMemory(bytes.substr(0, bytes.size() - 3), 0));
}

} // namespace
