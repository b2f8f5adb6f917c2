#include "core/numbers.h"
#include "core/persistant_data.h"
#include "core/text.h"
#include "navdata/fast_trigonometry.h"
#include "overlays/gps_position.h"

#include <algorithm>
#include <string_view>

// The definitions of this file are in the order of their use: the colour comes before the own ship that takes it.

float COverlayMovingTarget::velocity_vector_scale = 5.0F;
GraphicsColor COverlayMovingTarget::gc_color{1.0F, 0.0F, 0.0F};
bool COverlayMovingTarget::show_vector = true;
float COverlayMovingTarget::range_ring_radius = 0.0F;
int COverlayMovingTarget::num_range_rings = 0;

double COverlayGPSPosition::averaging_time = 30.1;
bool COverlayGPSPosition::show_heading = true;
int COverlayGPSPosition::record_in_background_mode = 1;
bool COverlayGPSPosition::screen_keep_alive = false;
CompassCalibration COverlayGPSPosition::compass_cal;
bool (*COverlayGPSPosition::tool_is_active)() = nullptr;

COverlayGPSPosition COverlayGPSPosition::theLatestPosition;

namespace {

constexpr int kDegreesPerStep = 360 / CompassCalibration::kSteps;

constexpr double kLongestAveraging = 86400.0; ///< seconds

} // namespace

float CompassCalibration::Adjust(float heading) const
{
    const float h = fold_degrees(heading);
    const int step = std::clamp(static_cast<int>(h) / kDegreesPerStep, 0, kSteps - 1);
    const float beyond = h - static_cast<float>(kDegreesPerStep * step);
    const auto width = static_cast<float>(kDegreesPerStep);
    return h + ((width - beyond) * table[step] + beyond * table[step + 1]) / width;
}

std::string CompassCalibration::Text() const
{
    std::string text;
    for (int i = 0; i < kSteps; ++i) appendprintf(text, "%f,", static_cast<double>(table[i]));
    return text;
}

void CompassCalibration::SetText(const std::string& text)
{
    std::string_view rest = text;
    for (int i = 0; i < kSteps; ++i) {
        const std::size_t comma = rest.find(',');
        const auto correction = ParseDouble(rest.substr(0, comma));
        if (!correction) break;
        table[i] = static_cast<float>(std::clamp(*correction, -360.0, 360.0));
        if (comma == std::string_view::npos) break;
        rest.remove_prefix(comma + 1);
    }
    table[kSteps] = table[0];
}

class COverlayGPSPosition::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("COverlayGPSPosition") {}

    void DeclareData() override
    {
        Declare("vector_scale", velocity_vector_scale);
        Declare("gc_color2", gc_color);
        Declare("averaging_time", averaging_time);
        Declare("show_heading", show_heading);
        Declare("show_vector", show_vector);
        Declare("record_in_background_mode", record_in_background_mode);
        Declare("use_averaged_direction", use_averaged_direction);
        Declare("screen_keep_alive", screen_keep_alive);
        Declare("compass_damping_time_const", CompassDamping::default_time_const);
        std::string calibration = compass_cal.Text();
        Declare("compass_calibration", calibration);
        Declare("range_ring_radius", range_ring_radius);
        Declare("num_range_rings", num_range_rings);
        if (s_saving) return;
        compass_cal.SetText(calibration);
        KeepInBounds();
        theLatestPosition.LoadIconImages();
    }

    static Persistant own_ship_settings;

private:
    static void KeepInBounds()
    {
        velocity_vector_scale = std::clamp(velocity_vector_scale, 0.0F, kLongestVector);
        averaging_time = std::clamp(averaging_time, 0.0, kLongestAveraging);
        range_ring_radius = std::clamp(range_ring_radius, 0.0F, kLargestRadius);
        num_range_rings = std::clamp(num_range_rings, 0, kMostRings);
    }
};

COverlayGPSPosition::Persistant COverlayGPSPosition::Persistant::own_ship_settings;

void COverlayGPSPosition::SettingsChanged()
{
    Persistant::own_ship_settings.SetModified();
}
