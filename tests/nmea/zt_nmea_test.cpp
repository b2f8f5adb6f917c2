#include "core/files.h"
#include "nmea/sentence_tools.h"
#include "support/temporary_root.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

const QString kTool = QStringLiteral(ZT_BINARY_DIR "/bin/zt-nmea");
constexpr int kPatience = 30000; // milliseconds

/// A zt-nmea of this build.
class CTool {
public:
    explicit CTool(const QStringList& arguments)
    {
        // The system's messages in English, whatever the locale of the numbers.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LANGUAGE", "en");
        process.setProcessEnvironment(environment);
        process.start(kTool, arguments);
    }
    ~CTool()
    {
        process.kill();
        process.waitForFinished();
    }

    /// Gives it its input and waits for its end; -1 when it did not end by itself.
    int Finish(const QByteArray& input = {})
    {
        process.write(input);
        process.closeWriteChannel();
        const bool ended = process.waitForFinished(kPatience) && process.exitStatus() == QProcess::NormalExit;
        output += process.readAllStandardOutput();
        errors += process.readAllStandardError();
        return ended ? process.exitCode() : -1;
    }
    /// Reads until the output has that many lines.
    bool WaitForLines(int lines)
    {
        while (output.count('\n') < lines) {
            output += process.readAllStandardOutput();
            if (output.count('\n') < lines && !process.waitForReadyRead(kPatience)) return false;
        }
        return true;
    }
    /// What the expression's group is in the standard error, once it is there.
    QString WaitForError(const char* expression)
    {
        const QRegularExpression wanted(QString::fromLatin1(expression));
        process.setReadChannel(QProcess::StandardError);
        do {
            errors += process.readAllStandardError();
            const auto match = wanted.match(QString::fromUtf8(errors));
            if (match.hasMatch()) return match.captured(1);
        } while (process.waitForReadyRead(kPatience));
        return {};
    }
    QList<QJsonObject> Objects() const
    {
        QList<QJsonObject> objects;
        for (const QByteArray& line : output.split('\n'))
            if (!line.isEmpty()) objects << QJsonDocument::fromJson(line).object();
        return objects;
    }

    QProcess process;
    QByteArray output;
    QByteArray errors;
};

QByteArray Line(const char* body)
{
    return QByteArray::fromStdString(WithChecksum(body)) + "\r\n";
}

/// A UDP socket on this computer, at a port of its own.
class CUdpSocket {
public:
    CUdpSocket() : handle(socket(AF_INET, SOCK_DGRAM, 0))
    {
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        const timeval patience = {kPatience / 1000, 0};
        setsockopt(handle, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        bind(handle, reinterpret_cast<const sockaddr*>(&address), size);
        getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size);
    }
    ~CUdpSocket() { Close(); }
    int Port() const { return ntohs(address.sin_port); }
    void Close() { close(std::exchange(handle, -1)); }
    QByteArray Receive() const
    {
        char bytes[2000];
        const ssize_t count = recv(handle, bytes, sizeof bytes, 0);
        return {bytes, std::max<qsizetype>(0, count)};
    }
    void SendTo(int port, const QByteArray& bytes) const
    {
        sockaddr_in to = address;
        to.sin_port = htons(static_cast<std::uint16_t>(port));
        sendto(handle, bytes.data(), static_cast<std::size_t>(bytes.size()), 0, reinterpret_cast<const sockaddr*>(&to),
               sizeof to);
    }

private:
    int handle;
    sockaddr_in address = {};
};

/// Everything that comes from a file descriptor until it holds `size` bytes.
QByteArray ReadBytes(int handle, qsizetype size)
{
    QByteArray bytes;
    char piece[1000];
    while (bytes.size() < size) {
        const ssize_t count = read(handle, piece, sizeof piece);
        if (count <= 0) break;
        bytes.append(piece, count);
    }
    return bytes;
}

const char* const kSecondLater = "$GPRMC,100001.00,A,5030.0000,N,00130.0000,W,5.5,90.0,150626,,,A";

} // namespace

TEST(ZtNmea, DecodeTellsWhatBecameOfEachLine)
{
    const QByteArray input = Line("$GNRMC,123519.5,A,4807.038,N,01131.000,W,022.4,,230394,003.1,W,D") +
                             "no sentence\n\n" + "$IIMTW,1,C*00\r\n" + "$IIMTW,1,C\n" + Line("$IIMTW,64,F") +
                             Line("$PXYZ,1") + Line("$IIZZZ,1") + QByteArray(200, 'x') +
                             Line("$IIXDR,\",1.5,,\xE9\\\x01") + Line("$GPGSV,1,1,01,07,40,300,46").chopped(2);
    CTool tool({"decode"});
    ASSERT_EQ(tool.Finish(input), 0) << tool.errors.constData();
    const QList<QJsonObject> lines = tool.Objects();
    const char* const results[] = {"ok",      "framing", "framing", "checksum", "framing", "rejected",
                                   "unknown", "unknown", "framing", "ok",       "ok"};
    ASSERT_EQ(lines.size(), std::ssize(results)) << tool.output.constData();
    for (int i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i]["line"].toInt(), i + 1);
        EXPECT_EQ(lines[i]["result"].toString(), results[i]) << i;
    }
    EXPECT_EQ(lines[0]["type"].toString(), "RMC");
    EXPECT_EQ(lines[0]["talker"].toString(), "N");
    EXPECT_EQ(lines[0]["valid"].toBool(), true);
    EXPECT_EQ(lines[0]["latitude"].toDouble(), 48 + 7.038 * 0.016666666666666666);
    EXPECT_EQ(lines[0]["time"].toDouble(), 3920140800.0 + 45319.0);
    EXPECT_EQ(static_cast<float>(lines[0]["speed"].toDouble()), 22.4F);
    EXPECT_TRUE(tool.output.contains("\"speed\": 22.4,")) << "a float has no digits that it does not need";
    EXPECT_EQ(lines[6]["type"].toString(), "PXYZ");
    EXPECT_EQ(lines[7]["type"].toString(), "ZZZ");
    EXPECT_EQ(lines[9]["first_type"].toString(), "\"");
    EXPECT_EQ(lines[9]["first_name"].toString(), QString::fromLatin1("\xE9\\\x01"));
    EXPECT_EQ(lines[10]["satellites"].toArray().at(0)["azimuth"].toInt(), 300 - 256);
}

TEST(ZtNmea, DecodePositions)
{
    const QByteArray input = Line("$GPRMC,100000,V,,,,,,,150626,,,N") +
                             Line("$GPGGA,100000,5030.0,N,00130.0,W,2,08,0.9,12.5,M,,M,,") +
                             Line("$GPRMC,100000,A,5030.0,N,00130.0,W,5.5,90,150626,,,A") +
                             Line("$GPRMC,100001,A,9930.0,N,00130.0,W,5.5,90,150626,,,A");
    CTool tool({"decode", "--position", "-"});
    ASSERT_EQ(tool.Finish(input), 0) << tool.errors.constData();
    const QList<QJsonObject> positions = tool.Objects();
    ASSERT_GE(positions.size(), 1) << tool.output.constData();
    bool seen = false;
    for (const QJsonObject& position : positions) {
        EXPECT_LE(position["lat"].toDouble(), 50.5);
        if (position["line"].toInt() != 3) continue;
        seen = true;
        EXPECT_EQ(position["source"].toString(), "RMC");
        EXPECT_EQ(position["lat"].toDouble(), 50.5);
        EXPECT_EQ(position["lon"].toDouble(), -1.5);
        EXPECT_EQ(position["time"].toDouble(), 1781517600.0);
        EXPECT_EQ(position["speed"].toDouble(), 5.5);
        EXPECT_EQ(position["course"].toDouble(), 90.0);
    }
    EXPECT_TRUE(seen);
}

TEST(ZtNmea, WhatIsWronglyAskedOrCannotBeHad)
{
    const CTemporaryRoot root;
    const QString file = QString::fromStdString(root.file("log.txt"));
    ASSERT_TRUE(write_to_file(root.file("log.txt"), Line(kSecondLater).toStdString()));
    struct CCase {
        QStringList arguments;
        int code;
        const char* error;
    };
    const CCase cases[] = {
        {{}, 2, "no command"},
        {{"sail"}, 2, "unknown command \"sail\""},
        {{"decode", "a", "b"}, 2, "too many arguments"},
        {{"decode", "--speed"}, 2, "speed"},
        {{"decode", file + "x"}, 1, "No such file"},
        {{"decode", QString::fromStdString(root.path())}, 1, "Is a directory"},
        {{"decode", "tcp:nowhere"}, 2, "neither"},
        {{"decode", "tcp::1"}, 2, "neither"},
        {{"decode", "udp:65536"}, 2, "neither"},
        {{"decode", "udp:12x"}, 2, "neither"},
        {{"filter"}, 2, "an argument is missing"},
        {{"play", file}, 2, "--to is missing"},
        {{"play", file, "--to", "tcp:x"}, 2, "neither"},
        {{"play", file, "--to", "udp:1"}, 2, "neither"},
        {{"play", file, "--to", "pty", "--speed", "0"}, 2, "--speed"},
        {{"play", file, "--to", "pty", "--speed", "1x"}, 2, "--speed"},
        {{"play", file + "x", "--to", "pty"}, 1, "No such file"},
    };
    for (const CCase& c : cases) {
        CTool tool(c.arguments);
        EXPECT_EQ(tool.Finish(), c.code) << c.error;
        EXPECT_TRUE(tool.errors.contains(c.error)) << c.error << " | " << tool.errors.constData();
        EXPECT_TRUE(tool.output.isEmpty());
    }
    CTool help({"--help"});
    EXPECT_EQ(help.Finish(), 0);
    EXPECT_TRUE(help.output.contains("filter RULE..."));
}

TEST(ZtNmea, EndsWhenNobodyReadsItsOutput)
{
    QProcess shell;
    shell.start("sh", {"-c", "{ \"$0\" decode; echo code $? >&2; } | true", kTool});
    shell.write(Line("$IIMTW,1,C").repeated(20000));
    shell.closeWriteChannel();
    ASSERT_TRUE(shell.waitForFinished(kPatience));
    EXPECT_EQ(shell.readAllStandardError(), "code 1\n");
}

TEST(ZtNmea, FilterPassesLinesAsTheyAre)
{
    CTool tool({"filter", "Deny", "Allow ??RMC"});
    const QByteArray rmc = "noise $GPRMC,1*zz\r\n";
    ASSERT_EQ(tool.Finish(rmc + "$GPGGA,1\nGPRMC\n\n" + "!GNRMC\n" + QByteArray(500, '$')), 0);
    EXPECT_EQ(tool.output, rmc + "!GNRMC\n");
}

TEST(ZtNmea, ATcpStreamComesThroughWhole)
{
    const CTemporaryRoot root;
    QByteArray log = "header\n" + Line("$IIMTW,9,C");
    for (int i = 0; i < 200; ++i) log += Line("$IIMTW,11.5,C");
    log += Line(kSecondLater);
    ASSERT_TRUE(write_to_file(root.file("log.txt"), log.toStdString()));
    CTool server({"play", QString::fromStdString(root.file("log.txt")), "--to", "tcp:0", "--speed", "100000"});
    const QString port = server.WaitForError("port (\\d+)");
    ASSERT_FALSE(port.isEmpty());
    CTool client({"decode", "tcp:127.0.0.1:" + port});
    EXPECT_EQ(server.Finish(), 0);
    ASSERT_EQ(client.Finish(), 0) << client.errors.constData();
    const QList<QJsonObject> lines = client.Objects();
    ASSERT_EQ(lines.size(), 203);
    EXPECT_EQ(lines[0]["result"].toString(), "framing");
    EXPECT_EQ(lines[201]["temperature"].toDouble(), 11.5);
    EXPECT_EQ(lines[202]["type"].toString(), "RMC");
}

TEST(ZtNmea, UdpBothWays)
{
    CUdpSocket own;
    CUdpSocket other;
    const int port = other.Port();
    other.Close();
    CTool listener({"decode", "udp:" + QString::number(port)});
    QElapsedTimer timer;
    timer.start();
    do { // until its socket is there
        own.SendTo(port, "");
        own.SendTo(port, Line("$IIMTW,11.5,C"));
        listener.process.waitForReadyRead(20);
    } while (listener.process.bytesAvailable() == 0 && timer.elapsed() < kPatience);
    ASSERT_TRUE(listener.WaitForLines(1)) << listener.process.readAllStandardError().constData();
    EXPECT_EQ(listener.Objects().front()["temperature"].toDouble(), 11.5);

    const CTemporaryRoot root;
    ASSERT_TRUE(write_to_file(root.file("log.txt"), Line(kSecondLater).toStdString()));
    CTool player(
        {"play", QString::fromStdString(root.file("log.txt")), "--to", "udp:127.0.0.1:" + QString::number(own.Port())});
    EXPECT_EQ(own.Receive(), Line(kSecondLater));
    EXPECT_EQ(player.Finish(), 0);
}

TEST(ZtNmea, APseudoTerminalGetsTheBytesAtTheLogsPace)
{
    const CTemporaryRoot root;
    const QByteArray first = Line("$GPRMC,235959.75,A,5030.0000,N,00130.0000,W,5.5,90.0,150626,,,A");
    const QByteArray second = Line("$GPGGA,000000.25,5030.0,N,00130.0,W,2,08,0.9,12.5,M,,M,,");
    ASSERT_TRUE(write_to_file(root.file("log.txt"), (first + second + first).toStdString()));
    CTool player({"play", QString::fromStdString(root.file("log.txt")), "--to", "pty", "--speed", "5"});
    const QString path = player.WaitForError("playing to (\\S+)");
    const int port = open(path.toLatin1().constData(), O_RDWR | O_NOCTTY);
    ASSERT_GE(port, 0);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(ReadBytes(port, 2 * first.size() + second.size()), first + second + first);
    EXPECT_GE(timer.elapsed(), 200) << "half a second over midnight, and one for the step back: 300 ms at this speed";
    close(port);
    EXPECT_EQ(player.Finish(), 0);
}
