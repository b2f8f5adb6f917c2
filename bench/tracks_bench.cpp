#include "chart/polynomial_projection.h"
#include "core/folders.h"
#include "overlays/track_manager.h"
#include "ratio.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include <QTemporaryDir>

namespace {

constexpr int kSegments = 64'000;
constexpr int kSavedPoints = 1'000'000;

CTrackPoint PointOf(int i)
{
    return {50.0 + 1e-5 * i, -4.0 + 0.02 * std::sin(0.003 * i), 1.6e9 + 20.0 * i, 0.0F};
}

void Fill(COverlayTrack& track, int points)
{
    for (int i = 0; i < points; ++i) track.addPoint(PointOf(i), false);
}

/// A long track, all of it in view, as a view keeps it.
class CTrackInView {
public:
    CTrackInView()
    {
        Fill(track, kSegments + 1);
        CPolynomialProjection chart;
        double forward[2][10] = {};
        double inverse[2][10] = {};
        forward[0][2] = forward[1][1] = 1000.0;
        inverse[0][2] = inverse[1][1] = 0.001;
        chart.init(forward, inverse, 1000, 1000, 0.0, 0.0);
        params.view_rect = {-1e9, -1e9, 1e9, 1e9};
        for (const CTrackSection* section : track.sections) {
            mappings.emplace_back();
            section->Map(mappings.back(), chart);
            mappings.back().map_to_screen(params);
            screen.insert(screen.end(), mappings.back().screen_points.begin(), mappings.back().screen_points.end());
        }
        copy.resize(screen.size());
    }
    int Hits() const
    {
        int hits = 0;
        for (const CMapping& mapping : mappings) {
            if (!mapping.MayBeHit(params, -1000.0F, 50300.0F, 81.0)) continue;
            hits += mapping.HitTest_mapped(-1000.0F, 50300.0F, 81.0) ? 1 : 0;
        }
        return hits;
    }
    double NearestPoint() const
    {
        double nearest = 1e300;
        for (const DblPoint& point : screen) {
            const double dx = point.x + 1000.0;
            const double dy = point.y - 50300.0;
            nearest = std::min(nearest, dx * dx + dy * dy);
        }
        return nearest;
    }
    void MapAgain()
    {
        for (CMapping& mapping : mappings) {
            mapping.move_screen();
            mapping.map_to_screen(params);
        }
    }
    void CopyPoints() { std::copy(screen.begin(), screen.end(), copy.begin()); }

    std::vector<CMapping> mappings;
    std::vector<DblPoint> copy;

private:
    COverlayTrack track;
    CViewParams params;
    std::vector<DblPoint> screen;
};

/// One line of as many points, as a view keeps an object whose points lie in one piece.
class CLineInView {
public:
    CLineInView() : copy(kSegments)
    {
        for (int i = 0; i < kSegments; ++i) line.image_points.push_back({0.3 * i, 400.0 + 300.0 * std::sin(0.003 * i)});
        line.set_bounds();
        params.view_rect = {-1e9, -1e9, 1e9, 1e9};
    }
    void MapAgain()
    {
        line.move_screen();
        if (!line.map_to_screen(params)) std::abort();
    }
    void CopyPoints() { std::copy(line.image_points.begin(), line.image_points.end(), copy.begin()); }

    CMapping line;
    std::vector<DblPoint> copy;

private:
    CViewParams params;
};

CLineInView& LineInView()
{
    static CLineInView line;
    return line;
}

CTrackInView& TrackInView()
{
    static CTrackInView track;
    return track;
}

/// The file of a voyage of many years, in a folder of its own.
class CLongVoyage {
public:
    CLongVoyage()
    {
        SetFolderRoot(folder.path().toStdString());
        auto* const track = new COverlayTrack;
        Fill(*track, kSavedPoints);
        g_track_manager.AddTrack(track);
        bytes = g_track_manager.WriteMemory(1);
    }
    ~CLongVoyage() { g_track_manager.ClearAll(); }
    void Save()
    {
        g_track_manager.SetModified();
        if (!g_track_manager.SaveIfNeeded()) std::abort();
    }
    void WriteOnce()
    {
        FILE* const file = std::fopen(folder.filePath("plain").toStdString().c_str(), "wb");
        if (file == nullptr || std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size()) std::abort();
        std::fclose(file);
    }

private:
    QTemporaryDir folder;
    std::string bytes;
};

CLongVoyage& LongVoyage()
{
    static CLongVoyage voyage;
    return voyage;
}

const bool registered = [] {
    RegisterRatio(
        "tracks/hit_test_of_64000_segments_a_miss",
        [] {
            const int hits = TrackInView().Hits();
            if (hits != 0) std::abort();
        },
        "one pass over the points",
        [] {
            const double nearest = TrackInView().NearestPoint();
            asm volatile("" ::"x"(nearest) : "memory");
        });
    RegisterRatio(
        "overlays/64000_points_to_the_screen",
        [] {
            LineInView().MapAgain();
            asm volatile("" ::"r"(LineInView().line.screen_points.data()) : "memory");
        },
        "copy of the points",
        [] {
            LineInView().CopyPoints();
            asm volatile("" ::"r"(LineInView().copy.data()) : "memory");
        });
    RegisterRatio(
        "tracks/64000_points_in_1000_sections_to_the_screen",
        [] {
            TrackInView().MapAgain();
            asm volatile("" ::"r"(TrackInView().mappings.data()) : "memory");
        },
        "copy of the points",
        [] {
            TrackInView().CopyPoints();
            asm volatile("" ::"r"(TrackInView().copy.data()) : "memory");
        });
    RegisterRatio(
        "tracks/1000000_points_saved", [] { LongVoyage().Save(); }, "one write of the same bytes",
        [] { LongVoyage().WriteOnce(); });
    return true;
}();

} // namespace
