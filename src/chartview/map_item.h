#pragma once

#include "chartview/rastelle_view.h"
#include "core/heartbeat.h"
#include "ui/window_interfaces.h"

#include <memory>
#include <string>

class CDVI_Rastelle_Window;

/// The model side of one map window: it owns the view, keeps it on the disk between openings and drives it by the
/// heartbeat. Main thread only.
class CMapItem : public IWindowOwner, public IViewHost, private CHeartbeat::Counter {
public:
    /// The window outlives the item, or calls DetachWindow first.
    explicit CMapItem(CDVI_Rastelle_Window* map_window, int file_number = 0);
    ~CMapItem() override;

    CRastelleView* View() const { return view.get(); }
    /// Makes the view and reads its file "/N.dvqc" of the application folder; without a usable one it shows the chart
    /// of the start position.
    void openMap();
    /// Writes the file and deletes the view.
    void closeMap();
    bool SaveMap();
    void DetachWindow();

    /// `width` x `height` device pixels.
    void onDraw(QPainter* painter, double width, double height) override;
    void OnClick() override {}
    void onRightClick(int x, int y) override;
    bool ExtendsToEdges() const override { return true; }
    bool HasMenu() const override { return true; }
    void InvalidateView() override;
    void InvalidateArea(const FRect& area) override;
    ZT_HWND hWnd() override;

    /// Saves the view of each open map; false when one could not be written.
    static bool SaveAllMaps();
    /// The item made first, or null: "the map" for commands that act on one.
    static CMapItem* First();

private:
    void OnHeartbeat() override;
    std::string FileName() const;

    std::unique_ptr<CRastelleView> view;
    CDVI_Rastelle_Window* window;
    int number;
};
