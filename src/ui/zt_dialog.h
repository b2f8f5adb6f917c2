#pragma once

#include "core/zt_hwnd.h"
#include "ui/controls_hold.h"
#include "ui/saveable.h"

#include <functional>

#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

/// The root of every dialog's declarative file. It covers its parent; the frame inside (ZTDialogFixedSize or
/// ZTDialogVariableSize) is what is seen.
///
/// A dialog class T names its file in `static constexpr const char* dialog_url = "qrc:/dlg_x.qml"`. Nothing blocks: the
/// result arrives in onDismiss. Main thread only.
class CZTDialog : public QQuickItem, public CSaveable {
    Q_OBJECT
    Q_PROPERTY(double safeAreaLeft READ safeAreaLeft CONSTANT)
    Q_PROPERTY(double safeAreaTop READ safeAreaTop CONSTANT)
    Q_PROPERTY(double safeAreaRight READ safeAreaRight CONSTANT)
    Q_PROPERTY(double safeAreaBottom READ safeAreaBottom CONSTANT)
    Q_PROPERTY(QPointF origin READ origin WRITE setOrigin NOTIFY originChanged)

public:
    explicit CZTDialog(QQuickItem* parent = nullptr);
    ~CZTDialog() override;

    /// Makes and shows the dialog T over the window that `parent` is in, growing out of the handle's point. `init` runs
    /// before the declarative bindings are evaluated. Null, with the errors in the debug log, when the file does not
    /// load; `init` has then not run.
    template <class T>
    static T* ShowDialog(ZT_HWND parent, std::function<void(T*)> init = {})
    {
        return static_cast<T*>(Show(T::dialog_url, T::staticMetaObject, parent, [&init](CZTDialog* dialog) {
            if (init) init(static_cast<T*>(dialog));
        }));
    }

    double safeAreaLeft() const;
    double safeAreaTop() const;
    double safeAreaRight() const;
    double safeAreaBottom() const;
    /// The point of the cause, in the coordinates of the dialog.
    QPointF origin() const { return m_origin; }
    void setOrigin(QPointF origin);
    bool IsClosing() const { return m_closing; }
    /// A handle for a dialog or message box that this one opens.
    ZT_HWND hWnd() { return ZT_HWND(this, width() / 2.0, height() / 2.0); }

    /// Dismisses the dialog with `code`, then lets the frame close. A second call does nothing.
    Q_INVOKABLE void closeDialog(int code);
    /// Called by the frame at the end of its closing animation: the object goes at the next turn of the event loop.
    Q_INVOKABLE void destroyDialog();
    /// Opens the help page of `tag`.
    Q_INVOKABLE void onHelp(const QString& tag);

    /// The dialog closes with `code`.
    virtual void onDismiss(int code);

signals:
    void originChanged();
    void removeDialog();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    /// Keeps the Tab key among the dialog's own items.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static CZTDialog* Show(const char* url, const QMetaObject& type, ZT_HWND parent,
                           const std::function<void(CZTDialog*)>& init);
    void Place(QQuickItem* layer, ZT_HWND cause);
    void FitToParent();
    void GiveFocusBack();

    QPointF m_origin;
    QPointer<QQuickItem> m_focus_before; ///< gets the keyboard back at the end
    QPointer<QQuickWindow> m_window;     ///< watched for the Tab key
    bool m_closing = false;
    CControlsHold m_controls;
};

/// The item that the dialogs and menus of a handle are shown in: the main window's dialog layer, or the content of the
/// window that the handle's item is in. Null without a window.
QQuickItem* DialogLayer(ZT_HWND parent);
