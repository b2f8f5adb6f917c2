#include "core/clock.h"
#include "core/listener.h"
#include "navdata/true_wind.h"
#include "nmea/instrument_sentences.h"

#include <gtest/gtest.h>

namespace {

double now = 1.79e9;

/// Sentences at times of the test's choosing, and how often the wind was published.
class TrueWindFeed : public testing::Test, Listener<CDataTrueWind> {
protected:
    TrueWindFeed()
    {
        SetClock([] { return now; });
        now += 1e4; // whatever came before is forgotten
        theTrueWind.speed_range.reset();
        theTrueWind.direction_range.reset();
        Connect();
    }
    ~TrueWindFeed() override { SetClock(nullptr); }
    void OnUpdate(CDataTrueWind& wind) override { heard += &wind == &theTrueWind ? 1 : 1000; }

    void Send(float direction, float speed, double after_seconds)
    {
        now += after_seconds;
        CNMEA_Instruments::MWD sentence;
        sentence.direction = direction;
        sentence.speed = speed;
        ASSERT_NE(Listener<CNMEA_Instruments::MWD>::pDatasource, nullptr) << "the feed listens from the start";
        Listener<CNMEA_Instruments::MWD>::pDatasource->Dispatch(&sentence);
    }

    int heard = 0;
};

TEST_F(TrueWindFeed, DampsInTwoTimeScalesAndPublishesOnce)
{
    Send(0.0F, 10.0F, 0.0);
    EXPECT_NEAR(theTrueWind.speed, 10.0, 1e-5);
    EXPECT_NEAR(theAverageTrueWind.speed, 10.0, 1e-5);
    Send(0.0F, 20.0F, 5.0); // half of 10 s, a sixtieth of 300 s
    EXPECT_NEAR(theTrueWind.speed, 15.0, 1e-4);
    EXPECT_NEAR(theAverageTrueWind.speed, 10.0 + 10.0 / 60.0, 1e-4);
    EXPECT_EQ(heard, 2);

    float low, high;
    ASSERT_TRUE(theTrueWind.speed_range.GetMinMax(low, high));
    EXPECT_NEAR(low, 10.0, 1e-4);
    EXPECT_NEAR(high, 15.0, 1e-4) << "the range is that of the damped wind";
    EXPECT_FALSE(theTrueWind.direction_range.GetMinMax(low, high));

    Send(90.0F, 8.0F, 20.0); // a pause longer than 10 s
    EXPECT_EQ(theTrueWind.direction, 90.0F);
    EXPECT_NEAR(theTrueWind.speed, 8.0, 1e-5);
    EXPECT_LT(theAverageTrueWind.direction, 10.0F);
    ASSERT_TRUE(theTrueWind.direction_range.GetMinMax(low, high));
    EXPECT_EQ(high, 90.0F);
}

} // namespace
