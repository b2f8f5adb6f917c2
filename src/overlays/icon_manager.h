#pragma once

#include "core/graphics_color.h"

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <QImage>

/// The coloured icons of marks, each made once for a display resolution and shared by all marks. Never freed, so that
/// a pointer to one stays good. Main thread only.
class CIconManager {
public:
    /// An icon as it is drawn.
    struct CIconDetails {
        CIconDetails(const std::string& file_name, const GraphicsColor& tint);

        std::string name;
        GraphicsColor colour;
        QImage image;            ///< device pixels; null when there is no icon of the name
        double hot_x = 0.0;      ///< the place of the mark in the image, device pixels
        double hot_y = 0.0;      ///< device pixels
        double resolution = 0.0; ///< the graphicsResolution that it was made for
    };

    /// The icon of the name as it stands, or of its file name. Null when there is none.
    const CIconDetails* GetIcon(const std::string& name, const GraphicsColor& colour);
    /// The hot spot of an icon, device pixels; (15, 15) for one that was never asked for.
    void GetIconOffset(const std::string& name, double& x, double& y) const;
    /// The name of the file for a symbol of a mark: "buoy can" gives "Buoy_can". "MOB" stays as it is.
    static std::string to_file_name(const std::string& name);
    /// The names of all icons, sorted.
    static std::vector<std::string> IconNames();

private:
    /// Name, tint (0xAARRGGBB) and resolution.
    using Key = std::tuple<std::string, std::uint32_t, double>;

    const CIconDetails& GetIconFixedName(const std::string& name, const GraphicsColor& colour);

    std::map<Key, CIconDetails> icons;
};

/// The icons of the program.
CIconManager& TheIcons();
