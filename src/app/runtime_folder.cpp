#include "app/runtime_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QStandardPaths>

namespace {

bool IsPrivateFolder(const QByteArray& path)
{
    struct stat status {};
    return ::lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & 0077) == 0;
}

QString PrivateFolder(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    ::mkdir(name.constData(), 0700);
    return IsPrivateFolder(name) ? path : QString();
}

} // namespace

QString PrivateRuntimeFolder()
{
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtime.isEmpty()) {
        const QString folder = PrivateFolder(runtime + QStringLiteral("/zentara"));
        if (!folder.isEmpty()) return folder;
    }
    // Without a usable runtime folder: one of our own, by user, whose owner and mode are checked all the same.
    return PrivateFolder(QStringLiteral("/tmp/zentara-%1").arg(::geteuid()));
}
