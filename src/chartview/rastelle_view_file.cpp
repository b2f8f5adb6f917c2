#include "chart/chart_list.h"
#include "chartview/rastelle_view.h"
#include "core/files.h"
#include "core/simple_grid.h"

#include <cmath>

// The saved view.

struct CRastelleView::SavedView {
    std::string chart_file;
    double lat = 999.0;
    double lon = 999.0;
    double scale = 0.0;
    bool locked = false;
    double anchor_x = 0.0;
    double anchor_y = 0.0;
    std::string last_path;
    double screen_right = 0.0;
    double screen_bottom = 0.0;

    bool Declare(IOStream& stream)
    {
        CSerializable::Section section(stream);
        return section.declaremagic(kMagic) && section.declarefilename(chart_file) && section.declare(lat) &&
               section.declare(lon) && section.declare(scale) && section.declare(locked) && section.declare(anchor_x) &&
               section.declare(anchor_y) && section.declare(last_path) && section.declare(screen_right) &&
               section.declare(screen_bottom);
    }
    bool HasPlace() const { return ValidLatLon(lat, lon) || (lat > 90.0 && std::isfinite(lat) && std::isfinite(lon)); }
    bool HasScale() const { return std::isfinite(scale) && scale >= 0.0; }
    bool HasAnchor() const { return IsOnScreen(anchor_x) && IsOnScreen(anchor_y); }
    /// Numbers of a damaged file must not get into the arithmetic of a view.
    bool IsSane() const
    {
        return HasPlace() && HasScale() && HasAnchor() && IsOnScreen(screen_right) && IsOnScreen(screen_bottom);
    }
    /// A view far off its chart, or on one whose georeferencing is damaged, has numbers that are of no use.
    void DropWhatIsInsane()
    {
        if (!HasPlace() || !HasScale()) {
            lat = lon = 999.0;
            scale = 0.0;
        }
        if (!HasAnchor()) anchor_x = anchor_y = 0.0;
    }

private:
    static bool IsOnScreen(double x)
    {
        constexpr double kLargestScreen = 1e5; // device pixels
        return std::abs(x) <= kLargestScreen;
    }
};

bool CRastelleView::Serialize(IOStream& stream)
{
    SavedView saved;
    if (stream.writing()) {
        RestoreCentre();
        GetCurrentMapView();
        saved = {last_path,    wanted_lat,   wanted_lon, wanted_scale, locked_on_gps,
                 gps_anchor_x, gps_anchor_y, last_path,  screen.right, screen.bottom};
        saved.DropWhatIsInsane();
        return saved.Declare(stream);
    }
    if (!saved.Declare(stream) || !saved.IsSane()) return false;
    TakeSavedView(saved);
    return true;
}

void CRastelleView::TakeSavedView(const SavedView& saved)
{
    wanted_lat = saved.lat;
    wanted_lon = saved.lon;
    wanted_scale = saved.scale;
    locked_on_gps = saved.locked;
    gps_anchor_x = saved.anchor_x;
    gps_anchor_y = saved.anchor_y;
    last_path = saved.last_path;
    screen = {0.0, 0.0, saved.screen_right, saved.screen_bottom};
    CentreOnScreen();

    if (isRegularFile(saved.chart_file)) {
        StartOpening(hWnd(), saved.chart_file, {});
    } else if (wanted_lat <= 90.0 && p_chart_list != nullptr) {
        const CChartOutline* const found = p_chart_list->FindBestChart(wanted_lat, wanted_lon, wanted_scale);
        if (found != nullptr) StartOpening(hWnd(), std::string(found->path), {});
    }
}
