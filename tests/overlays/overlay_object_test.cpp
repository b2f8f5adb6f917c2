#include "core/listener.h"
#include "overlays/overlay_source.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Dot : COverlayObject {
    explicit Dot(unsigned order, object_type kind = kMark) : COverlayObject(order, kind) {}
    void Map(CMapping&, const CPolynomialProjection&) const override {}
    void Draw(QPainter*, const CViewParams&, CMapping&) const override {}
};

struct Recorder : Listener<COverlayObject> {
    Recorder() { Connect(); }
    void OnUpdate(COverlayObject& object) override { seen.emplace_back(object.Number(), object.action); }
    std::vector<std::pair<std::uint32_t, COverlayObject::update_action>> seen;
};

TEST(OverlayObject, ClassesSortLinesTargetsPoints)
{
    // Many of each, so that no order of addresses can pass by chance.
    std::vector<std::unique_ptr<Dot>> dots;
    for (int i = 0; i < 50; ++i) {
        for (const unsigned order : {COverlayObject::kPoints, COverlayObject::kLines, COverlayObject::kTargets})
            dots.push_back(std::make_unique<Dot>(order));
    }
    std::vector<COverlayObject::Key> keys;
    for (const auto& dot : dots) keys.push_back(dot->ViewKey());
    std::sort(keys.begin(), keys.end());
    for (std::size_t i = 1; i < keys.size(); ++i) {
        EXPECT_LE(keys[i - 1].object->order_key, keys[i].object->order_key);
        EXPECT_NE(keys[i - 1], keys[i]);
    }
}

TEST(OverlayObject, ChangesAndDeathArePublished)
{
    Recorder recorder;
    auto dot = std::make_unique<Dot>(COverlayObject::kPoints);
    dot->Dispatch(COverlayObject::kLookChanged);
    const std::uint32_t number = dot->Number();
    dot.reset();
    ASSERT_EQ(recorder.seen.size(), 2U);
    EXPECT_EQ(recorder.seen[0], std::pair(number, COverlayObject::kLookChanged));
    EXPECT_EQ(recorder.seen[1], std::pair(number, COverlayObject::kDeleted));
}

TEST(OverlaySource, IsAskedForAsLongAsItLives)
{
    struct Source : IOverlaySource {
        void GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener) override
        {
            dot.action = action;
            listener.OnUpdate(dot);
        }
        Dot dot{COverlayObject::kLines};
    };
    Recorder recorder;
    std::pair<std::uint32_t, COverlayObject::update_action> of_source;
    {
        Source source;
        of_source = {source.dot.Number(), COverlayObject::kChanged};
        IOverlaySource::GetUpdatesFromAllSources(COverlayObject::kChanged, recorder);
        EXPECT_EQ(std::count(recorder.seen.begin(), recorder.seen.end(), of_source), 1);
    }
    recorder.seen.clear();
    IOverlaySource::GetUpdatesFromAllSources(COverlayObject::kChanged, recorder);
    EXPECT_EQ(std::count(recorder.seen.begin(), recorder.seen.end(), of_source), 0);
}

} // namespace
