#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>

/// A mark icon inside a dialog, in its colour, as large as the element.
class CPaintedIcon : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QString iconName READ iconName WRITE setIconName NOTIFY iconNameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorchanged)

public:
    explicit CPaintedIcon(QQuickItem* parent = nullptr);

    QString iconName() const { return m_name; }
    void setIconName(const QString& name);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);

    /// Draws what Load stored: it may run in the scene graph's thread.
    void paint(QPainter* painter) override;

signals:
    void iconNameChanged();
    void colorchanged();

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void componentComplete() override;

private:
    void Load();

    QString m_name;
    QColor m_color = Qt::black;
    QImage m_image;
};
