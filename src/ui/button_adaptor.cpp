#include "ui/button_adaptor.h"

#include "ui/pixmap_provider.h"
#include "ui/ui_context.h"

#include <QPixmap>
#include <QQmlEngine>

namespace {
constexpr double kResourceIconWidth = 24.0;
} // namespace

CButtonAdaptor_q::CButtonAdaptor_q(QQuickItem* parent) : CViewAdaptor_q(parent) {}

CButtonAdaptor_q::~CButtonAdaptor_q()
{
    CPixmapProvider::Forget(m_image_id);
}

void CButtonAdaptor_q::SetLabel(const std::string& label)
{
    const QString text = QString::fromStdString(label);
    if (m_label == text) return;
    m_label = text;
    emit labelChanged();
}

void CButtonAdaptor_q::SetLabelColor(unsigned int color)
{
    const QColor now = QColor::fromRgba(color);
    if (m_color == now) return;
    m_color = now;
    emit colorChanged();
}

void CButtonAdaptor_q::SetIcon(QPixmap* pixmap)
{
    QQmlEngine* engine = qmlEngine(this);
    if (engine == nullptr && TheUiContext() != nullptr) engine = TheUiContext()->Engine();
    if (pixmap == nullptr || pixmap->isNull() || engine == nullptr) {
        ShowIcon({}, 0.0);
        return;
    }
    CPixmapProvider::InstallIn(*engine);
    const int before = m_image_id;
    m_image_id = CPixmapProvider::Keep(pixmap->toImage());
    ShowIcon(CPixmapProvider::Url(m_image_id), pixmap->width() / pixmap->devicePixelRatio());
    CPixmapProvider::Forget(before);
}

void CButtonAdaptor_q::SetIcon(const std::string& path)
{
    if (path.empty()) {
        ShowIcon({}, 0.0);
        return;
    }
    const QString name = QString::fromStdString(path);
    ShowIcon(QUrl(name.contains(QLatin1Char(':')) ? name : QStringLiteral("qrc:/") + name), kResourceIconWidth);
}

void CButtonAdaptor_q::ShowIcon(const QUrl& url, double width)
{
    if (m_icon == url && m_icon_width == width) return;
    m_icon = url;
    m_icon_width = width;
    emit iconChanged();
}

void CButtonAdaptor_q::onClicked()
{
    if (Owner() != nullptr) Owner()->OnClick();
}
