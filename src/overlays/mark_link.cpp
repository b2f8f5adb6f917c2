#include "overlays/mark_link.h"

#include "core/message_sink.h"

#include <QDesktopServices>
#include <QUrl>

namespace {

link_opener opener_in_force = nullptr;

/// The address to be opened; empty when the link is not of a kind that is.
QString OpenableUrl(const std::string& link)
{
    const QString text = QString::fromStdString(link).trimmed();
    QUrl url(text, QUrl::StrictMode);
    if (url.isValid() && url.scheme().isEmpty()) url = QUrl(QStringLiteral("https://") + text, QUrl::StrictMode);
    const QString scheme = url.scheme().toLower();
    const bool is_web = (scheme == QLatin1String("http") || scheme == QLatin1String("https")) && !url.host().isEmpty();
    const bool is_mail = scheme == QLatin1String("mailto");
    return url.isValid() && (is_web || is_mail) ? url.toString(QUrl::FullyEncoded) : QString();
}

} // namespace

void OpenUserLink(ZT_HWND parent, const std::string& link)
{
    const QString url = OpenableUrl(link);
    if (url.isEmpty()) {
        ShowMessage(parent, "Open Link", "This is no web or mail link:\n" + link);
    } else if (opener_in_force != nullptr) {
        opener_in_force(url.toStdString());
    } else {
        QDesktopServices::openUrl(QUrl(url));
    }
}

void SetLinkOpener(link_opener opener)
{
    opener_in_force = opener;
}
