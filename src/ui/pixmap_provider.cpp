#include "ui/pixmap_provider.h"

#include "core/locks.h"

#include <map>

#include <QQmlEngine>

namespace {

constexpr const char* kProviderName = "ztpixmap";

struct KeptImages {
    CMutex lock;
    std::map<int, QImage> images; ///< under lock
    int last_id = 0;              ///< under lock
};

KeptImages& Kept()
{
    static KeptImages kept;
    return kept;
}

} // namespace

CPixmapProvider::CPixmapProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage CPixmapProvider::requestImage(const QString& id, QSize* size, const QSize& requested_size)
{
    QImage image;
    {
        const CMutexLocker guard(Kept().lock);
        const auto found = Kept().images.find(id.toInt());
        if (found != Kept().images.end()) image = found->second;
    }
    if (size != nullptr) *size = image.size();
    if (image.isNull() || requested_size.width() <= 0 || requested_size.height() <= 0) return image;
    return image.scaled(requested_size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

int CPixmapProvider::Keep(const QImage& image)
{
    const CMutexLocker guard(Kept().lock);
    Kept().images[++Kept().last_id] = image;
    return Kept().last_id;
}

void CPixmapProvider::Forget(int id)
{
    const CMutexLocker guard(Kept().lock);
    Kept().images.erase(id);
}

QUrl CPixmapProvider::Url(int id)
{
    return QUrl(QStringLiteral("image://%1/%2").arg(QLatin1String(kProviderName)).arg(id));
}

void CPixmapProvider::InstallIn(QQmlEngine& engine)
{
    const QString name = QString::fromLatin1(kProviderName);
    if (engine.imageProvider(name) == nullptr) engine.addImageProvider(name, new CPixmapProvider);
}
