#pragma once

#include "core/bounds.h"
#include "core/zt_hwnd.h"

#include <memory>
#include <string>
#include <vector>

#include <QQuickItem>
#include <QTimer>

class CDisplayViewPage;
class CRastelleView;
struct IPageContent;

/// The root of the interface's logic, made once by main.qml. It holds what the window shows (the pages, the status
/// text, the Done button), and is where files and commands from outside arrive. Main thread only.
class CZentaraAppModel : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool showDoneButton READ showDoneButton NOTIFY showDoneButtonChanged)
    Q_PROPERTY(bool usingTouch READ usingTouch WRITE setUsingTouch NOTIFY usingTouchChanged)
    Q_PROPERTY(double screenDimmer READ screenDimmer WRITE setScreenDimmer NOTIFY screenDimmerChanged)
    Q_PROPERTY(bool hasPages READ hasPages NOTIFY pagesChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)
    Q_PROPERTY(bool darkTheme READ darkTheme NOTIFY themeChanged)
    Q_PROPERTY(int theme READ theme WRITE setTheme NOTIFY themeChanged)
    Q_PROPERTY(bool fullScreen READ fullScreen WRITE set_fullScreen NOTIFY fullscreenChanged)
    Q_PROPERTY(bool arranging READ arranging NOTIFY arrangingChanged)
    Q_PROPERTY(QQuickItem* dialogParent READ dialogParent WRITE setDialogParent NOTIFY dialogParentChanged)
public:
    explicit CZentaraAppModel(QQuickItem* parent = nullptr);
    ~CZentaraAppModel() override;

    static constexpr double kDarkestDimmer = 0.85; ///< never so dark that the way back cannot be seen

    bool showDoneButton() const { return show_done_button; }
    bool usingTouch() const { return using_touch; }
    void setUsingTouch(bool touch);
    /// Opacity of the black over everything: 0 is no dimming, at most kDarkestDimmer.
    double screenDimmer() const { return screen_dimmer; }
    void setScreenDimmer(double opacity);
    /// Whether there is more than one page to step through.
    bool hasPages() const { return false; }
    QString statusText() const { return status_text; }
    bool darkTheme() const;
    /// 0 light, 1 dark, 2 as the system has it.
    int theme() const { return chosen_theme; }
    void setTheme(int theme);
    bool fullScreen() const;
    /// Stores the choice and saves the settings at once.
    void set_fullScreen(bool on);
    bool arranging() const;
    QQuickItem* dialogParent() const { return dialog_parent; }
    void setDialogParent(QQuickItem* item);

    Q_INVOKABLE void onMenuButtonClicked(QQuickItem* button);
    Q_INVOKABLE void onOverlaysButtonClicked(QQuickItem* button);
    Q_INVOKABLE void onPagesButton(QQuickItem* button);
    Q_INVOKABLE void attachCurrentPageToItem(CDisplayViewPage* item_current, CDisplayViewPage* alt_item);
    Q_INVOKABLE void detachItem(CDisplayViewPage* item);
    Q_INVOKABLE void nextPage();
    Q_INVOKABLE void previousPage();
    Q_INVOKABLE void onDoneButton();
    Q_INVOKABLE void widthOrHeightChanged();
    Q_INVOKABLE void showHelpForTag(const QString& tag);
    Q_INVOKABLE void messageFromAnotherInstance(quint32 instanceId, const QByteArray& message);
    Q_INVOKABLE void onPressPlusButton();
    Q_INVOKABLE void onLongPressPlusButton();
    Q_INVOKABLE void onPressMinusButton();
    Q_INVOKABLE void onLongPressMinusButton();
    Q_INVOKABLE void onPressUserButton();
    Q_INVOKABLE void onLongPressUserButton();

    /// Takes a file of any kind, by its content first; the area that it covers, if any, grows `bounds`. Failures are
    /// told to the user.
    void importFileOfAnyType(ZT_HWND hwnd, const std::string& path, CBounds& bounds);
    /// Imports every argument from index 1 on that is a file; the others are ignored.
    void processCommandLine(const std::vector<std::string>& args);
    void ShowAreaOnTheMap(const CBounds& bounds);
    /// The middle of the map; without a map where the boat is. Untouched when there is neither.
    void GetAreaShownOnTheMap(CBounds& bounds);
    /// Makes a mark in the middle of the map; without a map where the boat is, if that is known.
    void AddNewMark();
    /// Begins a route, whose waypoints are then tapped on the map.
    void AddNewRoute();
    void closeAllMapsPendingDownload();
    void reopenAllMapsAfterDownload();
    /// The view of the largest map on the page; null when there is none.
    CRastelleView* LargestMap() const;
    /// Writes what the page keeps of the user's.
    void SavePages();

    void SetShowDoneButton(bool shown);
    void SetStatusText(const std::string& text);

    /// The two nest: the controls of the window do not fade between them.
    void stopInactivityTimeout();
    void startInactivityTimeout();
    bool isUserInterfaceBusy() const { return inactivity_stops > 0; }
    /// Shows the fading controls, unless a dialog is open.
    void ShowControls();
    void LockScreen() { emit screenLocked(); }
    /// Asks, and ends the program on yes.
    void AskToQuit(ZT_HWND hwnd);

signals:
    void transition(CDisplayViewPage* old_item, CDisplayViewPage* new_item, int slide_direction);
    void showDoneButtonChanged();
    void usingTouchChanged();
    void screenDimmerChanged();
    void enableInactivityTimeout(bool enable_timeout);
    void setInteractive();
    void screenLocked();
    void pagesChanged();
    void statusTextChanged();
    void applicationDidBecomeActive();
    void applicationWillResignActive();
    void themeChanged();
    void fullscreenChanged();
    void arrangingChanged();
    void dialogParentChanged();
    void quitting();

protected:
    /// Follows the system's change between light and dark.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ApplyResize();
    ZT_HWND hWnd();

    std::unique_ptr<IPageContent> current_page;
    CDisplayViewPage* page_items[2] = {nullptr, nullptr}; ///< the showing and the spare one; owned by main.qml
    QQuickItem* dialog_parent = nullptr;
    QString status_text;
    QTimer resize_timer;
    bool show_done_button = false;
    bool using_touch = false;
    double screen_dimmer = 0.0;
    int chosen_theme = 2;
    int inactivity_stops = 0;
};

/// The one object, from its construction by main.qml to its end; null outside.
extern CZentaraAppModel* theApp;
