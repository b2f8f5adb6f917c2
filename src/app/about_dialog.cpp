#include "app/about_dialog.h"

#include "app/settings_entry.h"

namespace {

constexpr int kAboutOrder = 10;
const CSettingsEntry<CDlg_settings_about> about_settings_entry("About", kAboutOrder, "qrc:/about.svg");

} // namespace

QString CDlg_settings_about::version() const
{
    return QStringLiteral("Zentara " ZT_VERSION);
}

QString CDlg_settings_about::notice() const
{
    return QStringLiteral("Not for navigation. The built-in charts show simplified shores and no depths. Always use "
                          "official charts and keep a proper look-out.");
}

QString CDlg_settings_about::licence() const
{
    return QStringLiteral("The program is free software under the Apache License 2.0. It uses Qt 6 (GNU LGPL 3), zlib "
                          "(zlib licence) and the Roboto typeface (Apache License 2.0).");
}

QString CDlg_settings_about::sources() const
{
    return QStringLiteral(
        "Place names: GeoNames (geonames.org), CC BY 4.0 (https://creativecommons.org/licenses/by/4.0/), selected and "
        "adapted.\n"
        "Shorelines, rivers and borders: GSHHG 2.3.7, P. Wessel and W. H. F. Smith, GNU LGPL 3 or later, adapted.");
}
