#pragma once

#include "ui/ui_context.h"
#include "ui/zt_dialog.h"

#include <functional>
#include <memory>

#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QStringList>
#include <gtest/gtest.h>

class QPointingDevice;

/// The one touch screen of the tests.
QPointingDevice* TouchScreen();

/// A window with the program's style, as the interface room sees it.
struct CTestUi : IUiContext {
    CTestUi();
    ~CTestUi() override;

    QQmlEngine* Engine() override { return &engine; }
    QQuickItem* DialogParent() override { return layer; }
    void stopInactivityTimeout() override { ++stopped; }
    void startInactivityTimeout() override { --stopped; }
    void showHelpForTag(const QString& tag) override { help = tag; }
    void SetStatusText(const QString& text) override { status = text; }
    void SetShowDoneButton(bool shown) override { done_shown = shown; }
    bool UsingTouch() const override { return touch; }

    QQmlApplicationEngine engine;
    QQuickWindow* window = nullptr;
    QQuickItem* layer = nullptr;
    int stopped = 0; ///< depth of the pair
    QString help;
    QString status;
    bool done_shown = false;
    bool touch = false;
    QStringList warnings; ///< of the declarative files
};

/// Each test has a window of its own; at its end nothing may have warned and no dialog may be left.
class CUiTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    void Resize(int width, int height);
    /// Runs the event loop until `condition` holds; false after five seconds.
    static bool WaitFor(const std::function<bool()>& condition);
    /// The newest visible item of that object name, anywhere in the window; null when there is none.
    QQuickItem* Find(const char* object_name) const;
    static QQuickItem* FindIn(QQuickItem* root, const char* object_name);
    template <class T>
    T* NewestDialog() const
    {
        T* newest = nullptr;
        for (QQuickItem* item : ui->layer->childItems()) {
            if (auto* dialog = qobject_cast<T*>(item)) newest = dialog;
        }
        return newest;
    }
    /// Waits for the opening animation of the newest frame.
    bool WaitOpened();
    bool WaitNoDialog();
    QRectF InWindow(const QQuickItem* item) const;
    QPoint Middle(const QQuickItem* item) const { return InWindow(item).center().toPoint(); }
    void Click(const QQuickItem* item, Qt::MouseButton button = Qt::LeftButton);
    void Touch(const QQuickItem* item);
    void Key(Qt::Key key);

    std::unique_ptr<CTestUi> ui;
};
