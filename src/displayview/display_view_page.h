#pragma once

#include <QQuickItem>

struct IPageContent;

/// The place in the window at which one page shows. main.qml holds two of them, one showing and one spare, so that
/// pages can slide. Main thread only.
class CDisplayViewPage : public QQuickItem {
    Q_OBJECT
    Q_PROPERTY(bool arranging READ arranging WRITE setArranging NOTIFY arrangingChanged)
public:
    explicit CDisplayViewPage(QQuickItem* parent = nullptr);
    ~CDisplayViewPage() override;

    /// Shows `page` here, over the whole area; what showed before is detached. `page` is not owned.
    void AttachContent(IPageContent* page);
    void DetachContent();
    IPageContent* Content() const { return content; }
    /// A slide has brought this page to its place: it takes the focus.
    Q_INVOKABLE void animationFinished();

    /// Whether the user is moving the items of the page.
    bool arranging() const { return is_arranging; }
    void setArranging(bool on);

signals:
    void arrangingChanged();

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    void FillWithElement();

    IPageContent* content = nullptr;
    QQuickItem* element = nullptr; ///< of `content`, owned by it
    bool is_arranging = false;
};
