#include "app/zentara_app_model.h"

#include "app/app_data.h"
#include "app/app_menus.h"
#include "app/command_line.h"
#include "app/overlay_menus.h"
#include "app/single_application.h"
#include "chart/chart_list.h"
#include "chartview/rastelle_window.h"
#include "chartview/view_settings.h"
#include "core/files.h"
#include "core/persistant_data.h"
#include "core/text.h"
#include "displayview/display_view_page.h"
#include "displayview/map_page.h"
#include "overlays/gps_position.h"
#include "overlays/mark_manager.h"
#include "ui/done_button.h"
#include "ui/message_boxes.h"

#include <utility>

#include <QDesktopServices>
#include <QPalette>
#include <QQuickWindow>
#include <QUrl>
#include <QUrlQuery>

CZentaraAppModel* theApp = nullptr;

namespace {

/// Where the help pages stand.
constexpr const char* kHelpSite = "https://help.zentara.example/index.html";
constexpr int kResizeDelay_ms = 100;

/// A latitude above 90 is none.
bool HasPlace(const COverlayGPSPosition& boat)
{
    return boat.latitude <= 90.0;
}

CMapPage* MapPageOf(IPageContent* content)
{
    return dynamic_cast<CMapPage*>(content);
}

} // namespace

CZentaraAppModel::CZentaraAppModel(QQuickItem* parent) : QQuickItem(parent), current_page(std::make_unique<CMapPage>())
{
    theApp = this;
    resize_timer.setSingleShot(true);
    resize_timer.setInterval(kResizeDelay_ms);
    connect(&resize_timer, &QTimer::timeout, this, &CZentaraAppModel::ApplyResize);
    qGuiApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::aboutToQuit, this, &CZentaraAppModel::quitting);
    if (p_chart_list != nullptr) {
        p_chart_list->close_maps = [this] { closeAllMapsPendingDownload(); };
        p_chart_list->reopen_maps = [this] { reopenAllMapsAfterDownload(); };
    }
    if (auto* application = qobject_cast<SingleApplication*>(qGuiApp)) {
        connect(application, &SingleApplication::receivedMessage, this, &CZentaraAppModel::messageFromAnotherInstance);
        application->StartDelivery();
    }
}

CZentaraAppModel::~CZentaraAppModel()
{
    for (CDisplayViewPage* item : page_items) detachItem(item);
    if (p_chart_list != nullptr) {
        p_chart_list->close_maps = {};
        p_chart_list->reopen_maps = {};
    }
    theApp = nullptr;
}

bool CZentaraAppModel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && chosen_theme == 2) emit themeChanged();
    return QQuickItem::eventFilter(watched, event);
}

ZT_HWND CZentaraAppModel::hWnd()
{
    return ZT_HWND(this, width() / 2.0, height() / 2.0);
}

void CZentaraAppModel::setUsingTouch(bool touch)
{
    if (using_touch == touch) return;
    using_touch = touch;
    emit usingTouchChanged();
}

void CZentaraAppModel::setScreenDimmer(double opacity)
{
    const double clamped = std::clamp(opacity, 0.0, kDarkestDimmer);
    if (screen_dimmer == clamped) return;
    screen_dimmer = clamped;
    emit screenDimmerChanged();
}

bool CZentaraAppModel::darkTheme() const
{
    if (chosen_theme != 2) return chosen_theme == 1;
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

void CZentaraAppModel::setTheme(int theme)
{
    if (theme < 0 || theme > 2 || theme == chosen_theme) return;
    chosen_theme = theme;
    emit themeChanged();
}

bool CZentaraAppModel::fullScreen() const
{
    return TheViewSettings().full_screen;
}

void CZentaraAppModel::set_fullScreen(bool on)
{
    if (fullScreen() == on) return;
    TheViewSettings().full_screen = on;
    ViewSettingsChanged();
    PersistantData::SaveAll();
    emit fullscreenChanged();
}

bool CZentaraAppModel::arranging() const
{
    return page_items[0] != nullptr && page_items[0]->arranging();
}

void CZentaraAppModel::setDialogParent(QQuickItem* item)
{
    if (dialog_parent == item) return;
    dialog_parent = item;
    emit dialogParentChanged();
}

void CZentaraAppModel::onMenuButtonClicked(QQuickItem* button)
{
    ShowMainMenu(*this, ZT_HWND(button));
}

void CZentaraAppModel::onOverlaysButtonClicked(QQuickItem* button)
{
    ShowOverlaysMenu(*this, ZT_HWND(button));
}

void CZentaraAppModel::onPagesButton(QQuickItem*) {}

void CZentaraAppModel::attachCurrentPageToItem(CDisplayViewPage* item_current, CDisplayViewPage* alt_item)
{
    page_items[0] = item_current;
    page_items[1] = alt_item;
    if (item_current == nullptr) return;
    item_current->AttachContent(current_page.get());
    item_current->animationFinished();
}

void CZentaraAppModel::detachItem(CDisplayViewPage* item)
{
    if (item != nullptr) item->DetachContent();
}

void CZentaraAppModel::nextPage() {}

void CZentaraAppModel::previousPage() {}

void CZentaraAppModel::onDoneButton()
{
    PressDoneButton();
}

void CZentaraAppModel::SetShowDoneButton(bool shown)
{
    if (show_done_button == shown) return;
    show_done_button = shown;
    emit showDoneButtonChanged();
}

void CZentaraAppModel::widthOrHeightChanged()
{
    if (!resize_timer.isActive()) resize_timer.start(); // one re-layout however many sizes come in
}

void CZentaraAppModel::ApplyResize()
{
    const CMapPage* page = MapPageOf(current_page.get());
    if (page != nullptr && page->Map() != nullptr) page->Map()->Invalidate();
}

void CZentaraAppModel::showHelpForTag(const QString& tag)
{
    QUrl url(QString::fromLatin1(kHelpSite));
    if (!tag.isEmpty()) {
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("id"), tag);
        url.setQuery(query);
    }
    QDesktopServices::openUrl(url);
}

void CZentaraAppModel::messageFromAnotherInstance(quint32, const QByteArray& message)
{
    if (QQuickWindow* top = window()) {
        top->setWindowStates(top->windowStates() & ~Qt::WindowMinimized);
        top->raise();
        top->requestActivate();
    }
    std::vector<std::string> args;
    break_string_args(message.toStdString(), ' ', args);
    processCommandLine(args);
}

void CZentaraAppModel::onPressPlusButton()
{
    if (CRastelleView* view = LargestMap()) view->SmoothZoom(-1);
}

void CZentaraAppModel::onLongPressPlusButton()
{
    if (CRastelleView* view = LargestMap()) view->ChangeMapScale(-1);
}

void CZentaraAppModel::onPressMinusButton()
{
    if (CRastelleView* view = LargestMap()) view->SmoothZoom(1);
}

void CZentaraAppModel::onLongPressMinusButton()
{
    if (CRastelleView* view = LargestMap()) view->ChangeMapScale(1);
}

void CZentaraAppModel::onPressUserButton()
{
    if (CRastelleView* view = LargestMap()) view->LockOnToGPS(hWnd(), true);
}

void CZentaraAppModel::onLongPressUserButton()
{
    if (CRastelleView* view = LargestMap()) view->CreateNewMark();
}

void CZentaraAppModel::processCommandLine(const std::vector<std::string>& args)
{
    CBounds bounds;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string path = isRegularFile(args[i]) ? args[i] : LocalPath(args[i]);
        if (isRegularFile(path)) importFileOfAnyType(hWnd(), path, bounds);
    }
    if (!bounds.empty()) ShowAreaOnTheMap(bounds);
}

CRastelleView* CZentaraAppModel::LargestMap() const
{
    const CMapPage* page = MapPageOf(current_page.get());
    return page != nullptr && page->Map() != nullptr ? page->Map()->View() : nullptr;
}

void CZentaraAppModel::ShowAreaOnTheMap(const CBounds& bounds)
{
    if (CRastelleView* view = LargestMap()) view->GotoLocation(bounds);
}

void CZentaraAppModel::GetAreaShownOnTheMap(CBounds& bounds)
{
    const COverlayGPSPosition& boat = COverlayGPSPosition::theLatestPosition;
    if (CRastelleView* view = LargestMap()) {
        view->GetCenterAreaOfView(bounds);
    } else if (HasPlace(boat)) {
        bounds.add(boat.latitude, boat.longitude);
    }
}

void CZentaraAppModel::AddNewMark()
{
    const COverlayGPSPosition& boat = COverlayGPSPosition::theLatestPosition;
    if (CRastelleView* view = LargestMap()) {
        view->CreateNewMark();
    } else if (HasPlace(boat)) {
        g_mark_manager.CreateNewMark(nullptr, boat.latitude, boat.longitude);
    }
}

void CZentaraAppModel::AddNewRoute()
{
    g_mark_manager.CreateNewRoute(hWnd());
}

void CZentaraAppModel::closeAllMapsPendingDownload()
{
    if (CRastelleView* view = LargestMap()) view->Close();
}

void CZentaraAppModel::reopenAllMapsAfterDownload()
{
    if (p_chart_list != nullptr) p_chart_list->RefreshIfNeeded();
    if (CRastelleView* view = LargestMap(); view != nullptr && !view->IsOpen()) view->RestoreCurrentMapView();
}

void CZentaraAppModel::SavePages()
{
    if (current_page) current_page->Save();
}

void CZentaraAppModel::SetStatusText(const std::string& text)
{
    const QString shown = QString::fromStdString(text).trimmed(); // some texts end with a line feed
    if (status_text == shown) return;
    status_text = shown;
    emit statusTextChanged();
}

void CZentaraAppModel::stopInactivityTimeout()
{
    if (inactivity_stops++ == 0) emit enableInactivityTimeout(false);
}

void CZentaraAppModel::startInactivityTimeout()
{
    if (inactivity_stops == 0 || --inactivity_stops > 0) return;
    widthOrHeightChanged();
    emit enableInactivityTimeout(true);
    if (page_items[0] != nullptr) page_items[0]->animationFinished();
}

void CZentaraAppModel::ShowControls()
{
    if (!isUserInterfaceBusy()) emit setInteractive();
}

void CZentaraAppModel::AskToQuit(ZT_HWND hwnd)
{
    MessageBoxYes(hwnd, "Please confirm", "Are you sure you want to exit the app?", [] { QCoreApplication::quit(); });
}
