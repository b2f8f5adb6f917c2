#pragma once

#include "chart/cached_rastelle.h"
#include "chart/polynomial_projection.h"
#include "chartview/view_settings.h"
#include "chartview/world_wrap.h"
#include "core/bounds.h"
#include "core/listener.h"
#include "core/serializable.h"
#include "core/zt_hwnd.h"
#include "navdata/data_gps_position.h"
#include "overlays/overlay_object.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

/// What a view needs of the item that shows it.
struct IViewHost {
    virtual ~IViewHost() = default;
    /// The picture is out of date.
    virtual void InvalidateView() = 0;
    /// A part of the picture (device pixels of the window) is out of date.
    virtual void InvalidateArea(const FRect&) { InvalidateView(); }
    virtual ZT_HWND hWnd() = 0;
};

/// One map window's state and behaviour: which chart is open, where and at what zoom, scrolling with inertia, pinch and
/// step zoom, following the own ship, the choice of chart, and painting of chart and overlays.
///
/// Screen units are device pixels of the window, image units chart pixels. Scales are nautical miles per screen pixel.
/// A view is closed (no chart), opening, or open; `wanted_*` carry it from one chart to the next. Main thread only.
///
/// The chart of a whole world repeats sideways: see CWorldWrap.
class CRastelleView : public CSerializable,
                      private CCachedRastelle,
                      public Listener<CDataGPSPosition>,
                      public Listener<COverlayObject> {
public:
    using done_function = std::function<void(bool)>;

    static constexpr int kMagic = static_cast<int>(0x8E5672CE); ///< of the saved view's section
    static constexpr int kMinLevel = -2;
    static constexpr int kMaxObjectsDrawn = 20000;

    /// The host outlives the view; null for a view that nobody shows.
    explicit CRastelleView(IViewHost* view_host = nullptr);
    CRastelleView(const CRastelleView&) = delete;
    CRastelleView& operator=(const CRastelleView&) = delete;
    ~CRastelleView() override;

    // Gestures
    void onSingleTouchDown(double x, double y);
    void onSingleTouchMove(double x, double y);
    void onSingleTouchUp();
    void onMouseDown(double x, double y);
    void onMouseDragged(double x, double y);
    void onMouseUp(bool left_button);
    void rightMouseDown(double x, double y);
    void centerMouseDown(double x, double y);
    void onPinchBegin(double x, double y, double dist_sq);
    void onPinchMove(double x, double y, double dist_sq);
    void onPinchEnd();
    void onTap(double x, double y, double precision_sq);
    void onDeleteKey();
    /// To be called at each heartbeat.
    void onTimer();

    // Moves
    /// Scrolls by a screen delta; writes back what whole pixels allowed.
    void DoScroll(double& dx, double& dy);
    /// Changes the level (+1 reduces) about the pointer; refuses levels out of range.
    void DoZoom(int delta);
    /// Step zoom, -1 in and +1 out, about the middle of the screen or a point of it.
    void SmoothZoom(int delta);
    void SmoothZoomAtPoint(int delta, double x, double y);
    /// Goes to the next coarser (+1) or more detailed (-1) chart at the middle; 0 when there is none.
    int ChangeMapScale(int direction);
    void LockOnToGPS(ZT_HWND parent, bool on);
    /// Brings a position (degrees) to the middle, at level 0, or without `recentre` to the own ship's anchor.
    void GotoLocation(ZT_HWND parent, double lat, double lon, bool recentre);
    /// Shows an area whole.
    void GotoLocation(const CBounds& area);
    void GotoBestMap(ZT_HWND parent, double lat, double lon, double scale, done_function done);
    void setScreenRect(double left, double top, double width, double height);

    // Charts
    /// Opens a chart; `keep_view` first takes `wanted_*` from what is shown. On failure the chart leaves the catalogue
    /// and the previous one returns. `done` is called exactly once and may be empty.
    void onOpen(ZT_HWND parent, const char* path, bool keep_view, done_function done);
    void open_rlt_callback(bool ok, const done_function& done);
    void Close();
    void CloseAndReOpenCurrentMap();
    /// Opens the catalogue's overview, whole, for a window that has no saved view. As long as the user leaves it alone,
    /// the first fix still chooses the chart.
    void OpenStartChart();
    void DownloadBestFreeMap(double lat, double lon, done_function done);
    /// Takes `wanted_*` from the chart at the centre; nothing while closed.
    void GetCurrentMapView();
    /// Restores `wanted_*` on the open chart.
    void SetCurrentMapView();
    /// Restores `wanted_*` on the chart that suits it best.
    void RestoreCurrentMapView();

    // Painting and queries
    /// Paints the rectangle; false, and nothing painted, without an open chart. Reads and decodes nothing.
    bool onDraw(QPainter* painter, double x, double y, double width, double height);
    /// Nautical miles per screen pixel in the middle; 0 while closed.
    double getDisplayedScale() const;
    bool ScreenTolatlong(double x, double y, double& lat, double& lon) const;
    bool LatLongToScreen(double lat, double lon, double& x, double& y) const;
    /// The position (degrees) of a place on the chart, chart pixels; false while closed.
    bool PositionOf(const DblPoint& place, double& lat, double& lon) const;
    /// The view that the user touched last, or the last one made; null when there is none.
    static CRastelleView* LastUsed();
    bool GetCenterLatLon(double& lat, double& lon) const;
    /// The middle half of the view, in each direction.
    bool GetCenterAreaOfView(CBounds& area) const;
    bool GetLatestGPSLatLon(double& lat, double& lon) const;
    bool HitTest(CMapping& mapping, double x, double y, double precision_sq) const;
    void CreateNewMark();
    void CreateNewRoute();

    bool Serialize(IOStream& stream) override;
    void OnUpdate(CDataGPSPosition& position) override;
    void OnUpdate(COverlayObject& object) override;

    bool IsOpen() const;
    bool IsOpening() const { return opening; }
    bool IsLockedOnGPS() const { return locked_on_gps; }
    bool HasMoved() const { return touch_moved; }
    /// Whether squares of the picture are asked for or being read.
    bool IsLoading();
    bool ShowsPlaceholders() const { return placeholders; }
    const CViewParams& Params() const { return params; }
    double SmoothScale() const { return smooth_scale; }
    int MaxLevel() const { return max_level; }
    const FRect& Screen() const { return screen; }
    /// Path of the last good chart.
    const std::string& CurrentPath() const { return last_path; }
    ZT_HWND hWnd() const { return host != nullptr ? host->hWnd() : ZT_HWND(); }
    /// The view must not touch its host any more.
    void DetachHost() { host = nullptr; }

private:
    struct Mapped {
        CMapping mapping;
        unsigned generation = 0; ///< the projection that it was made for
    };
    using MappedObjects = std::map<COverlayObject::Key, Mapped>;

    struct SavedView;
    void TakeSavedView(const SavedView& saved);

    // Charts
    void StartOpening(ZT_HWND parent, const std::string& path, done_function done);
    void CloseChart();
    void OnOpened();
    void OnOpenFailed();
    void changed_projection();
    /// Shows `wanted_*` on a chart, which is opened unless it is open already.
    void ShowChart(ZT_HWND parent, const std::string& path, done_function done);
    /// Shows `wanted_*` on the chart that suits it best; false when there is none.
    bool ShowBestChart(ZT_HWND parent, done_function done);
    void GoToBestChart(ZT_HWND parent, double lat, double lon, double scale, done_function done);
    void ChooseFirstChart();
    void LeaveStartChart();
    int LevelFor(double ratio) const;

    // Centre, anchor and screen
    void CentreOnScreen();
    void CentreOn(double x, double y);
    void RestoreCentre();
    void SetPointer(double x, double y);
    bool GPSIsKnown() const { return gps_lat <= 90.0; }
    bool FollowsGPS() const { return locked_on_gps && GPSIsKnown(); }
    void MoveAnchorToGPS();
    void UnlockIfAnchorLeft();
    /// The pixel of a position; false when it is not on the open chart.
    bool PixelOf(double lat, double lon, double& x, double& y) const;
    void ImageToLatLong(double x, double y, double& lat, double& lon) const;
    double ScaleAtLevel(double x, double y) const;
    FRect ViewRect(const FRect& rect) const;
    void moved_screen();
    void NormaliseWrap();
    void Repaint();
    void RepaintArea(const FRect& area);

    // Zoom
    bool OpenNextChart(int direction);
    bool StepZoomByChart(int step);
    void PlainZoom(int delta);
    void ZoomSmoothly(int delta);
    bool PinchToNextChart();
    void SettlePinch();
    static int PinchDistance(double dist_sq);
    void ShowZoomHintIfAppropriate();

    // Touch
    void TouchDown(double x, double y, bool with_inertia);
    void StopInertia();
    void EaseStretch();
    bool ToolIsActive() const;
    void NoteUse();
    void DragObject(double x, double y);
    /// A finger that rests on the chart opens the menu of what lies there.
    void WatchLongPress();

    // Painting and hits
    FRect DrawnRect(const FRect& window) const;
    void DrawChart(QPainter* painter, const FRect& rect);
    void DrawWorld(QPainter* painter, const FRect& rect);
    void DrawOverlays(QPainter* painter);
    void DrawObject(QPainter* painter, const COverlayObject& object, CMapping& mapping);
    void DrawTool(QPainter* painter);
    void MapObject(const COverlayObject& object, Mapped& entry);
    /// What the object paints, device pixels; empty when it lies beside the window, infinite when that is not known.
    FRect DrawnArea(const COverlayObject& object, const CMapping& mapping) const;
    CMapping* FindMapping(const COverlayObject* object);
    bool IsHit(const COverlayObject* object, double x, double y, double precision_sq);
    DblPoint ImagePoint(double x, double y) const;
    CCachedRastelle& CacheOfCopy(int copy);
    /// Calls `handler(object)` for the objects hit, the topmost first, until one answers not 0; null when none does.
    /// A handler may change or delete objects.
    COverlayObject* AskObjectsFromTop(double x, double y, double precision_sq,
                                      const std::function<int(COverlayObject&)>& handler);

    IViewHost* host;
    double wanted_lat = 999.0; ///< degrees; above 90: none
    double wanted_lon = 999.0; ///< degrees
    double wanted_scale = 0.0; ///< nautical miles per screen pixel; 0 keeps level 0
    CBounds area_to_show;      ///< asked for before the view had a size; empty for none
    double gps_lat = 999.0;    ///< degrees; above 90: no position
    double gps_lon = 999.0;
    CViewParams params;
    FRect screen; ///< of the window, device pixels
    double centre_x = 0.0;
    double centre_y = 0.0;
    int max_level = 3;
    bool locked_on_gps = false;
    double gps_anchor_x = 0.0; ///< where the own position stays when locked
    double gps_anchor_y = 0.0;

    bool touch_down = false;
    bool dragging = false;
    bool touch_moved = false;
    bool finger_down = false; ///< one finger, since press_time
    double press_time = 0.0;  ///< GetTimeNow
    bool has_inertia = false;
    double pointer_x = 0.0;
    double pointer_y = 0.0;
    double press_x = 0.0;
    double press_y = 0.0;
    double touch_time = 0.0; ///< GetTimeNow at the last touch-down
    double velocity_x = 0.0; ///< pixels per tick
    double velocity_y = 0.0;
    double smooth_scale = 1.0; ///< stretch of the painted picture about the pointer
    double pinch_base_scale = 1.0;
    int pinch_start = 0; ///< squared finger distance; 0: no pinch

    bool opening = false;
    bool at_start_chart = false; ///< nobody has touched what OpenStartChart shows
    bool placeholders = false;   ///< the last paint showed squares that stand in for missing data
    int repaint_held = 0;        ///< above 0 repaints are only noted
    bool repaint_wanted = false;
    CPolynomialProjection projection;
    CWorldWrap wrap;
    std::unique_ptr<CCachedRastelle> odd_copy; ///< squares of every second repetition of a world chart
    MappedObjects mapped;
    unsigned projection_generation = 0;
    COverlayObject* drag_object = nullptr;
    std::string last_path;
    std::string attempted_path;
};
