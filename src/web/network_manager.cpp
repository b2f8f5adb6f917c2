#include "web/network_manager.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QPointer>

namespace {

constexpr int kSilenceLimitMilliseconds = 4000;

QNetworkAccessManager* replacement = nullptr;

} // namespace

QNetworkAccessManager* getGlobalNetworkAccessManager()
{
    if (replacement != nullptr) return replacement;
    static QPointer<QNetworkAccessManager> manager;
    if (!manager) {
        manager = new QNetworkAccessManager(QCoreApplication::instance());
        manager->setTransferTimeout(kSilenceLimitMilliseconds);
    }
    return manager;
}

void SetGlobalNetworkAccessManager(QNetworkAccessManager* manager)
{
    replacement = manager;
}
