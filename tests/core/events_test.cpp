#include "core/heartbeat.h"
#include "core/listener.h"
#include "support/allocation_counter.h"

#include "core/clock.h"

#include <functional>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct CSomething {
    int number = 0;
};

class CEar : public Listener<CSomething> {
public:
    std::function<void()> then;
    int heard = 0;
    void OnUpdate(CSomething&) override
    {
        ++heard;
        if (then) then();
    }
};

void SaySomething()
{
    CSomething something;
    DispatchToListeners(something);
}

double moving_clock = 0.0;
double MovingClock()
{
    return moving_clock += 1.0;
}

} // namespace

TEST(Listener, ChannelLivesOnlyWhileSomebodyListens)
{
    EXPECT_EQ(Listener<CSomething>::pDatasource, nullptr);
    CEar ear;
    ear.Connect();
    ear.Connect();
    SaySomething();
    EXPECT_EQ(ear.heard, 1);
    ear.Disconnect();
    EXPECT_EQ(Listener<CSomething>::pDatasource, nullptr);
    ear.Connect();
    SaySomething();
    EXPECT_EQ(ear.heard, 2);
}

TEST(Listener, RemovalsDuringADispatch)
{
    struct CCase {
        const char* name;
        std::function<void(std::vector<std::unique_ptr<CEar>>&)> in_the_second;
        std::vector<int> heard;
    };
    const CCase cases[] = {
        {"itself", [](auto& ears) { ears[1]->Disconnect(); }, {1, 1, 1, 1}},
        {"the next", [](auto& ears) { ears[2]->Disconnect(); }, {1, 1, 0, 1}},
        {"itself and the next", [](auto& ears) { ears[1]->Disconnect(), ears[2]->Disconnect(); }, {1, 1, 0, 1}},
        {"the next, then itself", [](auto& ears) { ears[2]->Disconnect(), ears[1]->Disconnect(); }, {1, 1, 0, 1}},
        {"the one before", [](auto& ears) { ears[0]->Disconnect(); }, {1, 1, 1, 1}},
        {"the one before and itself", [](auto& ears) { ears[0]->Disconnect(), ears[1]->Disconnect(); }, {1, 1, 1, 1}},
        {"all",
         [](auto& ears) {
             for (auto& ear : ears) ear->Disconnect();
         },
         {1, 1, 0, 0}},
        {"itself and back", [](auto& ears) { ears[1]->Disconnect(), ears[1]->Connect(); }, {1, 1, 1, 1}},
        {"the last away and back", [](auto& ears) { ears[3]->Disconnect(), ears[3]->Connect(); }, {1, 1, 1, 1}},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::unique_ptr<CEar>> ears;
        for (int i = 0; i < 4; ++i) {
            ears.push_back(std::make_unique<CEar>());
            ears.back()->Connect();
        }
        ears[1]->then = [&] { c.in_the_second(ears); };
        SaySomething();
        std::vector<int> heard;
        for (const auto& ear : ears) heard.push_back(ear->heard);
        EXPECT_EQ(heard, c.heard);
        ears.clear();
        EXPECT_EQ(Listener<CSomething>::pDatasource, nullptr);
    }
}

TEST(Listener, ConnectedDuringADispatchHearsIt)
{
    CEar first;
    CEar late;
    first.then = [&] { late.Connect(); };
    first.Connect();
    SaySomething();
    EXPECT_EQ(late.heard, 1);
    SaySomething();
    EXPECT_EQ(late.heard, 2);
}

TEST(Listener, NestedDispatchWhoseLastListenerLeavesInside)
{
    CEar first;
    CEar second;
    first.Connect();
    second.Connect();
    int depth = 0;
    first.then = [&] {
        if (++depth == 1)
            SaySomething();
        else
            first.Disconnect(), second.Disconnect();
    };
    SaySomething();
    EXPECT_EQ(first.heard, 2);
    EXPECT_EQ(second.heard, 0);
    EXPECT_EQ(Listener<CSomething>::pDatasource, nullptr);
}

TEST(Listener, StopEndsTheDispatchInProgress)
{
    CEar first;
    CEar second;
    first.then = [] { Listener<CSomething>::pDatasource->stop = true; };
    first.Connect();
    second.Connect();
    SaySomething();
    EXPECT_EQ(second.heard, 0);
    first.then = {};
    SaySomething();
    EXPECT_EQ(second.heard, 1);
}

TEST(PrioritizedList, HigherPriorityGoesFirstNewestOfEqualsLast)
{
    CPrioritizedList list;
    CPrioritizedList::Node nodes[5];
    const int priorities[] = {0, 5, 0, 0x7FFFFFFF, 5};
    for (int i = 0; i < 5; ++i) {
        nodes[i].priority = priorities[i];
        list.Enqueue(&nodes[i]);
    }
    for (const int expected : {3, 1, 4, 0, 2}) EXPECT_EQ(list.Dequeue(), &nodes[expected]);
    EXPECT_EQ(list.Dequeue(), nullptr);
}

namespace {

class CTicker : public CHeartbeat::Counter {
public:
    using Counter::Counter;
    int beats = 0;
    std::vector<double> times;
    std::function<void()> then;
    void OnHeartbeat() override
    {
        ++beats;
        if (then) then();
    }
};

void Pulse(int ticks)
{
    for (int i = 0; i < ticks; ++i) CHeartbeat::TheHeartbeat.Pulse();
}

} // namespace

TEST(Heartbeat, Periods)
{
    struct CCase {
        int period;
        int beats_in_100_ticks;
    };
    for (const CCase& c : {CCase{1, 100}, {0, 100}, {-5, 100}, {10, 10}, {100, 1}}) {
        CTicker ticker(c.period);
        if (c.period > 0) {
            EXPECT_GE(ticker.countdown, 1);
            EXPECT_LE(ticker.countdown, c.period);
        }
        Pulse(100);
        EXPECT_EQ(ticker.beats, c.beats_in_100_ticks) << "period " << c.period;
    }
}

TEST(Heartbeat, CounterMayEndAnotherAndItself)
{
    auto second = std::make_unique<CTicker>(1);
    CTicker first(1);
    CTicker third(1);
    first.then = [&] { third.Disconnect(), first.Disconnect(); };
    Pulse(3);
    EXPECT_EQ(second->beats, 3);
    EXPECT_EQ(first.beats, 1);
    EXPECT_EQ(third.beats, 0);
}

TEST(Heartbeat, OneTimeHoldsForAWholeTick)
{
    SetClock(&MovingClock);
    CDataSource::timestamp_correction = 0.25;
    CTicker first(1);
    CTicker second(1);
    std::vector<double> times;
    first.then = second.then = [&] { times.push_back(CHeartbeat::TheHeartbeat.Timestamp()); };
    Pulse(2);
    ASSERT_EQ(times.size(), 4U);
    EXPECT_EQ(times[0], times[1]);
    EXPECT_EQ(times[2], times[3]);
    EXPECT_NE(times[1], times[2]);
    EXPECT_EQ(times[0] - static_cast<int>(times[0]), 0.25);
    CDataSource::timestamp_correction = 0.0;
    SetClock(nullptr);
}

TEST(Heartbeat, AlignmentFollowsTheFractionOfASecond)
{
    SetClock([] { return 1'000'000.75; });
    CTicker ticker(10);
    ticker.AlignToClock(1);
    EXPECT_EQ(ticker.countdown, 7);
    ticker.AlignToClock(2);
    EXPECT_EQ(ticker.countdown, 2);
    ticker.AlignToClock(0);
    EXPECT_EQ(ticker.countdown, 2);
    SetClock(nullptr);
}

TEST(Events, DispatchAndTickAllocateNothing)
{
    CEar ears[3];
    CTicker tickers[] = {CTicker(1), CTicker(2), CTicker(50)};
    for (CEar& ear : ears) ear.Connect();
    const CAllocationCounter allocations;
    for (int i = 0; i < 100; ++i) SaySomething();
    Pulse(100);
    EXPECT_EQ(allocations.Count(), 0U);
    EXPECT_EQ(ears[2].heard, 100);
    EXPECT_EQ(tickers[0].beats, 100);
    auto* something = new std::string(100, 'x');
    delete something;
    EXPECT_GT(allocations.Count(), 0U) << "the counter itself must work";
}
