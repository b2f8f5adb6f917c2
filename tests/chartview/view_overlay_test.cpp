#include "view_fixture.h"

#include "chartview/overlay_tool.h"
#include "overlays/overlay_source.h"
#include "support/allocation_counter.h"

#include <functional>

namespace {

/// A point at a position that records what happens to it.
struct Dot : COverlayObject {
    Dot(unsigned order, double at_lat, double at_lon, std::vector<const Dot*>* log_of_events)
        : COverlayObject(order, kMark), lat(at_lat), lon(at_lon), log(log_of_events)
    {}
    void Map(CMapping& mapping, const CPolynomialProjection& projection) const override
    {
        ++mapped;
        mapping.kind = CMapping::kPoints;
        mapping.count = 1;
        mapping.AddPosition(projection, lat, lon);
        mapping.set_bounds();
    }
    void Draw(QPainter* painter, const CViewParams&, CMapping& mapping) const override
    {
        ++drawn;
        if (log != nullptr) log->push_back(this);
        if (painter != nullptr && paints)
            painter->fillRect(QRectF(mapping.screen_points[0].x - 2, mapping.screen_points[0].y - 2, 5, 5), Qt::red);
    }
    bool isVisible() override { return visible; }
    int onMouseDown(CRastelleView*, const FPoint&, const DblPoint&) override { return Asked(); }
    int onTap(CRastelleView*, const FPoint&, const DblPoint& at) override
    {
        image = at;
        return Asked();
    }
    int onRightClick(CRastelleView*, const FPoint&, const DblPoint&) override { return Asked(); }
    void onMouseUp(CRastelleView*) override { ++released; }
    int Asked()
    {
        if (log != nullptr) log->push_back(this);
        const int result = takes;
        if (action_when_asked) action_when_asked(); // may delete this
        return result;
    }

    double lat, lon;
    std::vector<const Dot*>* log;
    mutable int mapped = 0;
    mutable int drawn = 0;
    int released = 0;
    int takes = 0;
    bool visible = true;
    bool paints = false;
    DblPoint image;
    std::function<void()> action_when_asked;
};

struct Tool : IOverlayTool {
    Tool() { SetOverlayTool(this); }
    ~Tool() override { SetOverlayTool(nullptr); }
    bool IsActiveIn(const CRastelleView&) const override { return active; }
    COverlayObject* Selected() const override { return selected; }
    void Move(CRastelleView&, double dx, double dy) override { moved = {moved.x + dx, moved.y + dy}; }
    void DrawOver(QPainter*, const CViewParams&, CMapping&) override { ++drawn; }
    void OnViewMoved(CRastelleView&) override { ++views_moved; }
    void OnDelete() override { ++deleted; }
    void Deselect() override
    {
        ++deselected;
        selected = nullptr;
    }
    bool active = true;
    COverlayObject* selected = nullptr;
    DblPoint moved;
    int drawn = 0, views_moved = 0, deleted = 0, deselected = 0;
};

class OverlaysOnView : public ViewTest {
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        Chart("one.rlt", 1.0);
        Chart("two.rlt", 1.0, 16, 30.0, 30.0);
        MakeView();
        view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    }
    void TearDown() override
    {
        dots.clear();
        ViewTest::TearDown();
    }
    Dot& Add(unsigned order, double lat = 0.0, double lon = 0.0)
    {
        dots.push_back(std::make_unique<Dot>(order, lat, lon, &log));
        dots.back()->Dispatch(COverlayObject::kChanged);
        return *dots.back();
    }
    std::vector<const Dot*> log;
    std::vector<std::unique_ptr<Dot>> dots;
};

TEST_F(OverlaysOnView, DrawnFromLinesToPointsAskedFromTheTop)
{
    Dot& mark = Add(COverlayObject::kPoints);
    Dot& route = Add(COverlayObject::kLines);
    Dot& target = Add(COverlayObject::kTargets);
    Paint();
    EXPECT_EQ(log, (std::vector<const Dot*>{&route, &target, &mark}));

    log.clear();
    target.takes = 1;
    view->onMouseDown(400, 300);
    EXPECT_EQ(log, (std::vector<const Dot*>{&mark, &target})) << "the route lies under what took the event";
    view->onMouseUp(true);
    EXPECT_EQ(target.released, 1);

    log.clear();
    view->onTap(410, 300, 81.0);
    EXPECT_TRUE(log.empty()) << "10 pixels beside";
    view->onTap(410, 300, 225.0);
    EXPECT_EQ(log.size(), 2U);
    EXPECT_NEAR(target.image.x, 522.0, 1.0) << "the middle of 1024 chart pixels and 10 to the right";
}

TEST_F(OverlaysOnView, MapsOnceAProjectionAndFollowsActions)
{
    Dot& dot = Add(COverlayObject::kPoints);
    EXPECT_EQ(dot.mapped, 1);
    double dx = 50.0;
    double dy = 0.0;
    view->DoScroll(dx, dy);
    view->SmoothZoom(-1);
    Paint();
    EXPECT_EQ(dot.mapped, 1) << "moves and zooms map nothing";
    EXPECT_EQ(dot.drawn, 1);
    host.invalidated = 0;
    dot.Dispatch(COverlayObject::kLookChanged);
    EXPECT_EQ(host.invalidated, 1);
    EXPECT_EQ(dot.mapped, 1);
    view->GotoBestMap(ZT_HWND(), 30.0, 30.0, 1.0, {});
    EXPECT_EQ(Shown(), "two.rlt");
    EXPECT_EQ(dot.mapped, 2) << "once for the new chart";

    view->GotoBestMap(ZT_HWND(), 0.0, 0.0, 1.0, {});
    dot.visible = false;
    dot.Dispatch(COverlayObject::kChanged);
    Paint();
    EXPECT_EQ(dot.drawn, 1);
    dot.visible = true;
    dot.Dispatch(COverlayObject::kChanged);
    Add(COverlayObject::kPoints);
    log.clear();
    Paint();
    EXPECT_EQ(log.size(), 2U);
    dots.pop_back();
    log.clear();
    Paint();
    EXPECT_EQ(log.size(), 1U) << "the dead one is gone";
    {
        Dot all_gone(COverlayObject::kPoints, 0, 0, nullptr);
        all_gone.Dispatch(COverlayObject::kAllGone);
    }
    log.clear();
    Paint();
    EXPECT_TRUE(log.empty());
}

TEST_F(OverlaysOnView, SourcesAreAskedOnAChangeOfChart)
{
    struct Source : IOverlaySource {
        explicit Source(std::vector<const Dot*>* log) : dot(COverlayObject::kPoints, 30.0, 30.0, log) {}
        void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) override
        {
            dot.action = action;
            listener.OnUpdate(dot);
        }
        Dot dot;
    } source(&log);
    Paint();
    EXPECT_TRUE(log.empty());
    view->GotoBestMap(ZT_HWND(), 30.0, 30.0, 1.0, {});
    Paint();
    EXPECT_EQ(log.size(), 1U);
    EXPECT_EQ(source.dot.mapped, 1);
}

TEST_F(OverlaysOnView, HandlersMayDeleteWhatTheyLike)
{
    for (int i = 0; i < 6; ++i) Add(COverlayObject::kPoints);
    std::vector<Dot*> by_height;
    for (const auto& dot : dots) by_height.push_back(dot.get());
    std::sort(by_height.begin(), by_height.end(), [](Dot* a, Dot* b) { return a->ViewKey() > b->ViewKey(); });
    const auto kill = [this](const Dot* victim) {
        std::erase_if(dots, [=](const auto& dot) { return dot.get() == victim; });
    };
    // The topmost deletes itself, the next the two below it.
    Dot* const first = by_height[0];
    Dot* const third = by_height[2];
    Dot* const fourth = by_height[3];
    first->action_when_asked = [&] { kill(first); };
    by_height[1]->action_when_asked = [&] {
        kill(third);
        kill(fourth);
    };
    by_height[4]->takes = 1;
    Dot* const taker = by_height[4];
    taker->action_when_asked = [&] { kill(taker); };
    view->onMouseDown(400, 300);
    EXPECT_EQ(log.size(), 3U);
    EXPECT_EQ(dots.size(), 2U);
    view->onMouseDragged(500, 300);
    view->onMouseUp(true); // what took the press is dead
    log.clear();
    Paint();
    EXPECT_EQ(log.size(), 2U);
}

TEST_F(OverlaysOnView, AtMost20000AreDrawn)
{
    for (int i = 0; i < 20001; ++i) Add(COverlayObject::kPoints, i % 100 * 0.01, i / 100 * 0.01);
    for (int i = 0; i < 50; ++i) Add(COverlayObject::kLines, 80.0, 80.0); // not on the screen: does not count
    Paint();
    EXPECT_EQ(log.size(), 20000U);
}

TEST_F(OverlaysOnView, SelectedObjectComesFirstAndAMissDeselects)
{
    Dot& under = Add(COverlayObject::kLines);
    Dot& over = Add(COverlayObject::kPoints);
    over.takes = under.takes = 1;
    Tool tool;
    tool.selected = &under;
    view->onTap(400, 300, 81.0);
    EXPECT_EQ(log, (std::vector<const Dot*>{&under}));

    view->onMouseDown(400, 300);
    view->onMouseDragged(405, 300);
    EXPECT_EQ(tool.moved, DblPoint()) << "not moved beyond the threshold";
    view->onMouseDragged(420, 310);
    EXPECT_EQ(tool.moved, (DblPoint{20, 10}));
    EXPECT_EQ(At(0, 0), (DblPoint{400, 300})) << "the chart stays";
    log.clear();
    view->onMouseUp(true);
    EXPECT_TRUE(log.empty()) << "a drag is no tap";

    Paint();
    EXPECT_EQ(tool.drawn, 1);
    view->onDeleteKey();
    EXPECT_EQ(tool.deleted, 1);
    view->onTap(600, 500, 81.0);
    EXPECT_EQ(tool.deselected, 1);
    double dx = 5.0;
    double dy = 0.0;
    view->DoScroll(dx, dy);
    EXPECT_EQ(tool.views_moved, 1);

    Dot stranger(COverlayObject::kPoints, 0, 0, nullptr);
    tool.selected = &stranger;
    Paint();
    EXPECT_EQ(tool.deselected, 2) << "a selected object that the view does not know";
}

TEST_F(OverlaysOnView, PaintAllocatesNothing)
{
    for (int i = 0; i < 100; ++i) Add(COverlayObject::kPoints, i * 0.01, 0.0);
    for (const auto& dot : dots) dot->log = nullptr;
    PaintLoaded();
    QImage picture(800, 600, QImage::Format_RGB32);
    QPainter painter(&picture);
    view->onDraw(&painter, 0, 0, 800, 600);
    const CAllocationCounter allocations;
    view->onDraw(&painter, 0, 0, 800, 600);
    view->onDraw(&painter, 0, 0, 800, 600);
    view->onTimer();
    EXPECT_EQ(allocations.Count(), 0U);
}

} // namespace
