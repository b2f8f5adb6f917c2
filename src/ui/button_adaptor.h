#pragma once

#include "ui/view_adaptor.h"

#include <QColor>
#include <QUrl>

/// The element of a button item, drawn by DisplayViewButtonItem. `enabled` is that of every element.
class CButtonAdaptor_q : public CViewAdaptor_q, public IButtonWindow {
    Q_OBJECT
    Q_PROPERTY(QString label READ label NOTIFY labelChanged)
    Q_PROPERTY(QColor color READ color NOTIFY colorChanged)
    Q_PROPERTY(QUrl icon READ icon NOTIFY iconChanged)
    Q_PROPERTY(double iconWidth READ iconWidth NOTIFY iconChanged)

public:
    explicit CButtonAdaptor_q(QQuickItem* parent = nullptr);
    ~CButtonAdaptor_q() override;

    /// UTF-8.
    void SetLabel(const std::string& label) override;
    /// 0xAARRGGBB.
    void SetLabelColor(unsigned int color) override;
    /// Copies the image; null takes the icon away.
    void SetIcon(QPixmap* pixmap) override;
    /// A file name of the resources ("zoom_in.svg"); empty takes the icon away.
    void SetIcon(const std::string& path) override;
    void SetEnabled(bool enabled) override { setEnabled(enabled); }

    QString label() const { return m_label; }
    /// Invalid: the theme's own text colour.
    QColor color() const { return m_color; }
    QUrl icon() const { return m_icon; }
    /// Logical pixels.
    double iconWidth() const { return m_icon_width; }

    Q_INVOKABLE void onClicked();

signals:
    void labelChanged();
    void colorChanged();
    void iconChanged();

private:
    void ShowIcon(const QUrl& url, double width);

    QString m_label;
    QColor m_color;
    QUrl m_icon;
    double m_icon_width = 0.0;
    int m_image_id = 0; ///< of the image provider, 0: none
};
