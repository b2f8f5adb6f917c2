#include "support/patience.h"
#include "support/temporary_root.h"

#include <csignal>
#include <sys/stat.h>

#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {

/// The real program in a world of its own.
class CProgram {
public:
    explicit CProgram(const CTemporaryRoot& root)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString home = QString::fromStdString(root.path());
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setProgram(QStringLiteral(ZT_BINARY_DIR "/bin/zentara"));
    }
    ~CProgram() { process.kill(), process.waitForFinished(); }

    void Start(const QStringList& arguments = {})
    {
        output.clear();
        process.setArguments(arguments);
        process.start();
    }
    /// Waits until the program has printed `text`.
    bool WaitFor(const QByteArray& text)
    {
        while (!output.contains(text)) {
            if (!process.waitForReadyRead(kPatience_ms)) return false;
            output += process.readAll();
        }
        return true;
    }
    bool WaitForWindow() { return WaitFor("devicePixelRatio: "); }
    /// The exit code; -1 when it crashed or did not end.
    int End(int signal = 0)
    {
        if (signal != 0) ::kill(pid_t(process.processId()), signal);
        if (!process.waitForFinished(kPatience_ms) || process.exitStatus() != QProcess::NormalExit) return -1;
        output += process.readAll();
        return process.exitCode();
    }

    QProcess process;
    QByteArray output;
};

std::string DataFile(const CTemporaryRoot& root, const std::string& profile, const std::string& name)
{
    return root.file("data/Zentara/" + profile + "/" + name);
}

bool Exists(const std::string& path)
{
    return QFile::exists(QString::fromStdString(path));
}

TEST(Instance, SecondStartHandsOverAndLeaves)
{
    const CTemporaryRoot root;
    CProgram first(root);
    first.Start();
    ASSERT_TRUE(first.WaitForWindow());

    CProgram second(root);
    second.Start({QStringLiteral("-profile"), QStringLiteral("boat")});
    EXPECT_EQ(second.End(), 0);
    EXPECT_TRUE(second.output.contains("App already running."));
    EXPECT_FALSE(Exists(root.file("data/Zentara/boat"))) << "a secondary instance reads and writes no settings";

    EXPECT_EQ(first.End(SIGTERM), 0);
    EXPECT_TRUE(Exists(DataFile(root, "default", "0.dvqc"))) << "a signal ends it as quitting does: all is saved";
}

TEST(Instance, KilledFirstInstanceDoesNotBlockTheNext)
{
    const CTemporaryRoot root;
    CProgram first(root);
    first.Start();
    ASSERT_TRUE(first.WaitForWindow());
    first.process.kill();
    first.process.waitForFinished();

    CProgram next(root);
    next.Start({QStringLiteral("-profile"), QStringLiteral("boat")});
    ASSERT_TRUE(next.WaitForWindow());
    EXPECT_EQ(next.End(SIGINT), 0);
    EXPECT_TRUE(Exists(DataFile(root, "boat", "0.dvqc")));
}

TEST(Instance, SocketIsPrivateAndSurvivesNoise)
{
    const CTemporaryRoot root;
    CProgram first(root);
    first.Start();
    ASSERT_TRUE(first.WaitForWindow());
    struct stat status {};
    ASSERT_EQ(::stat(root.file("zentara").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);

    QByteArray long_length(4, '\0');
    qToLittleEndian(quint32((1 << 20) + 1), long_length.data());
    QByteArray exact(4, '\0');
    qToLittleEndian(quint32(1 << 20), exact.data());
    const QByteArray messages[] = {"\xFF\xFF\xFF\xFF", "a", long_length + "x", exact + QByteArray(1 << 20, ' ')};
    for (const QByteArray& message : messages) {
        QLocalSocket socket;
        socket.connectToServer(QString::fromStdString(root.file("zentara/socket")));
        ASSERT_TRUE(socket.waitForConnected(kPatience_ms));
        socket.write(message);
        while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(kPatience_ms)) {
        }
    }
    CProgram second(root);
    second.Start();
    EXPECT_EQ(second.End(), 0) << "still answers";
    EXPECT_EQ(first.End(SIGHUP), 0);
}

} // namespace
