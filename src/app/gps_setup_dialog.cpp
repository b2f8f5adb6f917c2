#include "app/gps_setup_dialog.h"

#include "app/settings_entry.h"
#include "core/numbers.h"
#include "core/persistant_data.h"
#include "core/text.h"
#include "navdata/unit_tables.h"
#include "navdata/units.h"
#include "nmea/data_connection.h"
#include "overlays/dialogs/edit_syncable_dialog.h"
#include "overlays/gps_position.h"

#include <algorithm>
#include <optional>

class COverlayGPSPosition::SettingsType : public CSettingsEntry<CDlg_gps_setup> {
    using CSettingsEntry::CSettingsEntry;
};

namespace {

constexpr int kGPSOrder = 2;
const COverlayGPSPosition::SettingsType gps_settings_entry("GPS Settings", kGPSOrder, "qrc:/gps.svg");

using OwnShip = COverlayGPSPosition;

/// The user's units in a nautical mile.
double UnitsPerNauticalMile()
{
    return tab_dist_factors[CUnits::Default->dist] / tab_dist_factors[CUnits::kNautical];
}

QString NumberText(double number)
{
    return QString::fromStdString(stringprintf("%.6g", number));
}

/// A number above 0 and at most `most`; either decimal point will do.
std::optional<float> ReadNumber(const QString& text, double most)
{
    const auto number = ParseDouble(QString(text).replace(u',', u'.').toStdString());
    if (!number || !(*number > 0.0) || *number > most) return std::nullopt;
    return static_cast<float>(*number);
}

} // namespace

CDlg_gps_setup::CDlg_gps_setup(QQuickItem* parent)
    : CZTDialog(parent)
    , show_vector(OwnShip::show_vector)
    , vector_scale(NumberText(static_cast<double>(OwnShip::velocity_vector_scale)))
    , show_heading(OwnShip::show_heading)
    , record_in_background(OwnShip::record_in_background_mode != 0)
    , show_rings(OwnShip::num_range_rings > 0)
    , ring_radius(OwnShip::range_ring_radius > 0.0F
                      ? NumberText(static_cast<double>(OwnShip::range_ring_radius) * UnitsPerNauticalMile())
                      : QStringLiteral("1"))
    , ring_count(std::clamp(OwnShip::num_range_rings, 1, OwnShip::kMostRings))
    , colour(QColor::fromRgba(OwnShip::gc_color.argb()))
    , shown_scale(vector_scale)
    , shown_radius(OwnShip::range_ring_radius > 0.0F ? ring_radius : QString())
{}

QString CDlg_gps_setup::distance_unit() const
{
    return QString::fromUtf8(tab_dist_units[CUnits::Default->dist]);
}

int CDlg_gps_setup::most_rings() const
{
    return OwnShip::kMostRings;
}

bool CDlg_gps_setup::connection_debuggable() const
{
    const CDataConnection* const connection = CDataConnection::theConnection;
    return CDataConnection::isDebugging() || (connection != nullptr && connection->debuggable);
}

QString CDlg_gps_setup::debug_label() const
{
    return CDataConnection::isDebugging() ? QStringLiteral("End Debug") : QStringLiteral("NMEA Debug");
}

void CDlg_gps_setup::Refuse(const QString& text)
{
    problem_text = text;
    emit problemChanged();
}

void CDlg_gps_setup::accept()
{
    std::optional<float> minutes = OwnShip::velocity_vector_scale;
    if (show_vector && vector_scale != shown_scale) minutes = ReadNumber(vector_scale, OwnShip::kLongestVector);
    if (!minutes) {
        Refuse(tr("The vector scale is a number of minutes, at most %1.").arg(OwnShip::kLongestVector));
        return;
    }
    std::optional<float> radius = OwnShip::range_ring_radius;
    if (show_rings && ring_radius != shown_radius) {
        radius = ReadNumber(ring_radius, OwnShip::kLargestRadius * UnitsPerNauticalMile());
        if (radius) *radius = static_cast<float>(static_cast<double>(*radius) / UnitsPerNauticalMile());
    }
    if (!radius) {
        Refuse(tr("The radius of the rings is a number above 0."));
        return;
    }
    Apply(*minutes, *radius);
    closeDialog(0);
}

void CDlg_gps_setup::Apply(float minutes, float radius)
{
    OwnShip::show_vector = show_vector;
    OwnShip::velocity_vector_scale = minutes;
    OwnShip::show_heading = show_heading;
    OwnShip::range_ring_radius = radius;
    OwnShip::num_range_rings = show_rings ? std::clamp(ring_count, 1, OwnShip::kMostRings) : 0;
    OwnShip::gc_color = ToGraphicsColor(colour);
    if (record_in_background != (OwnShip::record_in_background_mode != 0)) {
        OwnShip::record_in_background_mode = record_in_background ? 1 : 0;
        CDataConnection::UpdatedBackgroundSettings();
    }
    OwnShip::SettingsChanged();
    PersistantData::SaveAll();
    OwnShip::theLatestPosition.LookChanged();
}

void CDlg_gps_setup::onClickedDataConnection(QQuickItem* button)
{
    const ZT_HWND from = button != nullptr ? ZT_HWND(button, button->width() / 2.0, button->height() / 2.0) : hWnd();
    CDataConnection::SelectConnectionType(from, [dialog = QPointer<CDlg_gps_setup>(this)](bool) {
        if (dialog != nullptr) emit dialog->connectionChanged();
    });
}

void CDlg_gps_setup::onClickedDebug()
{
    if (CDataConnection::isDebugging())
        CDataConnection::stopDebug(hWnd());
    else
        CDataConnection::startDebug();
    emit connectionChanged();
}
