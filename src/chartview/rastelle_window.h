#pragma once

#include "chartview/map_item.h"
#include "chartview/scale_bar.h"
#include "ui/paint_adaptor.h"

#include <memory>

#include <QColor>
#include <QPointF>
#include <QQuickItem>

/// The painted element of a map, "CDVI_Rastelle_Window" in declarative files: takes input in logical pixels, hands it
/// to the view in device pixels. Main thread only, paint too.
///
/// A page gives it an item with SetItem; without one it makes an item of its own when openMap is called.
class CDVI_Rastelle_Window : public CPaintAdaptor_q {
    Q_OBJECT
    Q_PROPERTY(bool gpsLockedOn READ gpsLockedOn NOTIFY gpsLockedOnChanged)
    Q_PROPERTY(double scaleBarWidth READ scaleBarWidth NOTIFY scaleBarChanged)
    Q_PROPERTY(QString scaleBarText READ scaleBarText NOTIFY scaleBarChanged)
    Q_PROPERTY(QColor scaleBarColor READ scaleBarColor NOTIFY scaleBarChanged)
    Q_PROPERTY(bool arranging READ arranging WRITE setArranging NOTIFY arrangingChanged)

public:
    explicit CDVI_Rastelle_Window(QQuickItem* parent = nullptr);
    ~CDVI_Rastelle_Window() override;

    bool gpsLockedOn() const;
    double scaleBarWidth() const { return scale_bar.Width(); }
    QString scaleBarText() const { return scale_bar.Text(); }
    /// Transparent stands for the theme's foreground.
    QColor scaleBarColor() const;
    /// Whether the page is being arranged: no keys, no edge buttons.
    bool arranging() const { return is_arranging; }
    void setArranging(bool on);

    /// Puts an item of a page in the place of the window's own; null takes it out.
    void SetItem(CMapItem* map_item);
    CMapItem* Item() const { return item; }
    CRastelleView* View() const { return item != nullptr ? item->View() : nullptr; }
    /// At each heartbeat, after the view's own: publishes what changed.
    void onTick();

    void Invalidate() override;
    /// The same for an area of device pixels.
    void InvalidateArea(const FRect& area);

    Q_INVOKABLE void openMap();
    Q_INVOKABLE void closeMap();
    Q_INVOKABLE bool onPressed(int button, double mouse_x, double mouse_y) override;
    Q_INVOKABLE void onPressAndHold(int button, double mouse_x, double mouse_y) override;
    Q_INVOKABLE void onReleased(int button, double mouse_x, double mouse_y);
    Q_INVOKABLE void onMouseDragged(double mouse_x, double mouse_y);
    Q_INVOKABLE void onMouseWheel(double delta, double mouse_x, double mouse_y);
    Q_INVOKABLE void onScrollGesture(QPointF delta, bool inverted);
    Q_INVOKABLE void onSingleTouchDown(double x, double y);
    Q_INVOKABLE void onSingleTouchMove(double x, double y);
    Q_INVOKABLE void onSingleTouchUp();
    Q_INVOKABLE void onPinchBegin(double x, double y, double dsq);
    Q_INVOKABLE void onPinchMove(double x, double y, double dsq);
    Q_INVOKABLE void onPinchEnd();
    Q_INVOKABLE void onClickZoom(int delta);
    Q_INVOKABLE void onClickedMaps(QQuickItem* button);
    Q_INVOKABLE void onClickedAddMark();
    Q_INVOKABLE void onClickedLockGPS();
    /// True when the key was handled.
    Q_INVOKABLE bool onKeyPressed(int key);

    void paint(QPainter* painter) override;

signals:
    void gpsLockedOnChanged();
    void scaleBarChanged();
    void arrangingChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    void UpdateResolution();
    void onChangedScale();

    CMapItem* item = nullptr;
    std::unique_ptr<CMapItem> own_item;
    CScaleBar scale_bar;
    bool whole_invalid = true; ///< the whole picture waits for its painting
    QMetaObject::Connection scene_graph_made;
    bool gps_locked_cache = false;
    bool is_arranging = false;
};
