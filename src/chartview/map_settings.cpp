#include "chartview/map_settings.h"

#include "chart/chart_list.h"
#include "chart/map_types.h"
#include "chartview/view_settings.h"
#include "core/global_settings_type.h"
#include "ui/action_sheet.h"

#include <set>

namespace {

class MapSettingsType : public CGlobalSettingsType {
public:
    MapSettingsType() : CGlobalSettingsType("Map Settings", 1) {}
    void addMenu(CMenuTree* menu, const std::string& path) override
    {
        menu->Add(
            path + name, [this] { showDialog(ZT_HWND()); }, "qrc:/map.svg");
    }
    void showDialog(ZT_HWND parent) override { CZTDialog::ShowDialog<CDlg_map_settings>(parent); }
};

const MapSettingsType map_settings_type;

} // namespace

void CDlg_map_settings::Set(bool& setting, bool on)
{
    if (setting == on) return;
    setting = on;
    ViewSettingsChanged();
    emit changed();
}

bool CDlg_map_settings::changeScaleByZooming() const
{
    return TheViewSettings().change_scale_by_zooming;
}

void CDlg_map_settings::setChangeScaleByZooming(bool on)
{
    Set(TheViewSettings().change_scale_by_zooming, on);
}

bool CDlg_map_settings::automaticDownload() const
{
    return TheViewSettings().automatic_download;
}

void CDlg_map_settings::setAutomaticDownload(bool on)
{
    Set(TheViewSettings().automatic_download, on);
}

bool CDlg_map_settings::scaleBar() const
{
    return TheViewSettings().show_scale_bar;
}

void CDlg_map_settings::setScaleBar(bool on)
{
    Set(TheViewSettings().show_scale_bar, on);
}

QStringList CDlg_map_settings::chartTypes() const
{
    std::set<std::string> types;
    if (p_chart_list != nullptr) {
        for (const CChartOutline& chart : p_chart_list->Outlines()) types.insert(chart.type);
    }
    QStringList list;
    for (const std::string& type : types) list.append(QString::fromStdString(type));
    return list;
}

bool CDlg_map_settings::isTypeShown(const QString& type) const
{
    return CSelectMapTypes::show.contains(type.toStdString());
}

void CDlg_map_settings::showType(const QString& type, bool shown)
{
    std::set<std::string>& types = CSelectMapTypes::show;
    if (!shown && types.size() <= 1) return;
    const std::string name = type.toStdString();
    const bool is_change = shown ? types.insert(name).second : types.erase(name) > 0;
    if (!is_change) return;
    CSelectMapTypes::SetModified();
    emit changed();
}
