#pragma once

#include "core/zt_hwnd.h"
#include "ui/controls_hold.h"
#include "ui/tree_model.h"

#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

/// The element behind ZTPopupMenu: a finished tree that the declarative file turns into a menu. It lives, with its
/// tree, until the menu is closed.
class CZTPopupMenu : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(CTreeModel* model READ model NOTIFY model_changed)
    Q_PROPERTY(QString title READ title NOTIFY model_changed)
    Q_PROPERTY(QPointF origin READ origin NOTIFY model_changed)
    Q_PROPERTY(bool usingTouch READ usingTouch CONSTANT)

public:
    /// Appearances and roles, for the declarative files.
    enum Look {
        Normal = Appearance::kNormal,
        Positive = Appearance::kPositive,
        Caution = Appearance::kCaution,
        Disabled = Appearance::kDisabled,
        Hidden = Appearance::kHidden,
        Current = Appearance::kCurrent,
        Separator = Appearance::kSeparator,
    };
    Q_ENUM(Look)
    enum ModelRole {
        TextRole = CTreeModel::kTextRole,
        IconRole = CTreeModel::kIconRole,
        AppearanceRole = CTreeModel::kAppearanceRole,
    };
    Q_ENUM(ModelRole)

    explicit CZTPopupMenu(QQuickItem* parent = nullptr);
    ~CZTPopupMenu() override;

    /// Shows the tree at the handle's point; null, with the errors in the debug log, when that is not possible.
    static CZTPopupMenu* Show(ZT_HWND parent, const std::string& title, std::unique_ptr<TreeViewNode> tree);

    CTreeModel* model() { return &m_model; }
    QString title() const { return m_title; }
    /// Where the menu is to open, in the coordinates of this element.
    QPointF origin() const { return m_origin; }
    bool usingTouch() const;

    /// The user chose an entry.
    Q_INVOKABLE void itemTriggered(const QModelIndex& index);
    /// The menu is closed: the object goes at the next turn of the event loop.
    Q_INVOKABLE void menuClosed();

signals:
    void model_changed();
    /// Follows a button that was pressed before the menu came and is still held: `item` is under it, may be null.
    void dragged(QQuickItem* item);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FollowHeldButton();
    void StopFollowing();

    CTreeModel m_model;
    QString m_title;
    QPointF m_origin;
    QPointF m_pressed;                 ///< window position of the held button
    QPointer<QQuickWindow> m_followed; ///< null: no button is held
    bool m_drag_started = false;
    CControlsHold m_controls;
    bool m_closed = false;
};
