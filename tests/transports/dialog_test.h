#pragma once

#include "transport_test.h"

#include "ui/ui_context.h"
#include "ui/zt_dialog.h"

#include <memory>

#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QStringList>

/// A window as the program's, in which the declarative files of the dialogs run.
struct CDialogWindow : IUiContext {
    CDialogWindow();
    ~CDialogWindow() override;

    QQmlEngine* Engine() override { return &engine; }
    QQuickItem* DialogParent() override { return layer; }
    void stopInactivityTimeout() override {}
    void startInactivityTimeout() override {}
    void showHelpForTag(const QString&) override {}
    void SetStatusText(const QString&) override {}
    void SetShowDoneButton(bool) override {}

    QQmlApplicationEngine engine;
    QQuickWindow* window = nullptr;
    QQuickItem* layer = nullptr;
    QStringList warnings; ///< of the declarative files
};

/// Each test has a window of its own; at its end no declarative file may have warned and no dialog may be left.
class CDialogTest : public CTransportTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// The newest visible item of that object name; null when there is none.
    QQuickItem* Find(const char* object_name) const;
    QQuickItem* FindIn(QQuickItem* top, const std::function<bool(const QQuickItem*)>& matches) const;
    bool WaitOpened();
    bool WaitClosed();
    void Click(const QQuickItem* item);
    void Click(const char* object_name);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Replaces the text of the field by typing.
    void Type(const char* object_name, const char* text);
    /// Whether the items can be seen, are large enough for a finger and have a name for a screen reader.
    void ExpectUsable(const std::vector<const char*>& object_names);

    std::unique_ptr<CDialogWindow> ui;
};
