#pragma once

#include "ui/view_adaptor.h"

#include <QUrl>

/// The element of a static image, drawn by DVImageItem. `fill` crops the image to the element, otherwise it is shown
/// whole.
class CImageItem : public CViewAdaptor_q {
    Q_OBJECT
    Q_PROPERTY(QUrl imageSource READ imageSource WRITE setImageSource NOTIFY imageChanged)
    Q_PROPERTY(bool fill READ fill WRITE setFill NOTIFY fillChanged)

public:
    using CViewAdaptor_q::CViewAdaptor_q;

    QUrl imageSource() const { return m_source; }
    void setImageSource(const QUrl& source);
    bool fill() const { return m_fill; }
    void setFill(bool fill);

signals:
    void imageChanged();
    void fillChanged();

private:
    QUrl m_source;
    bool m_fill = false;
};
