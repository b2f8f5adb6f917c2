#pragma once

#include <QImage>
#include <QQuickImageProvider>
#include <QUrl>

class QQmlEngine;

/// Hands images made at run time to the Image elements of the declarative files. The images are kept by number, for
/// all engines; requests may come from a loader's thread.
class CPixmapProvider : public QQuickImageProvider {
public:
    CPixmapProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requested_size) override;

    /// Keeps `image` until Forget and gives its number, above 0.
    static int Keep(const QImage& image);
    static void Forget(int id);
    static QUrl Url(int id);
    /// Gives `engine` a provider, if it has none.
    static void InstallIn(QQmlEngine& engine);
};
