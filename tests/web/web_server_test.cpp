#include "file_server.h"

#include "core/files.h"
#include "support/temporary_root.h"
#include "web/network_manager.h"
#include "web/web_server.h"

#include <optional>

#include <QNetworkAccessManager>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

class WebServer : public testing::Test {
protected:
    void SetUp() override
    {
        impatient.setTransferTimeout(200); // milliseconds of silence
        SetGlobalNetworkAccessManager(&impatient);
        write_to_file(path, "old");
    }
    void TearDown() override { SetGlobalNetworkAccessManager(nullptr); }
    int Get()
    {
        std::optional<int> result;
        web.GetFile("/targets/list", path, [&](int value) { result = value; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 5000));
        return result.value_or(-99);
    }
    std::string Content() const
    {
        std::string text;
        return read_whole_file(path, text) ? text : "(none)";
    }
    bool LeftTemporary() const { return isRegularFile(path + ".tmp"); }

    CTemporaryRoot root;
    const std::string path = root.file("list.txt");
    QNetworkAccessManager impatient;
    CFileServer server;
    CWebServer_NB web{"127.0.0.1", false, server.port()};
};

TEST_F(WebServer, AFileComesWholeOrNotAtAll)
{
    const QByteArray large(300000, 'x');
    struct Case {
        const char* name;
        QByteArray answer;
        bool hang;
        int result;
        std::string content;
    };
    const Case cases[] = {
        {"whole", CFileServer::Whole("new"), false, 1, "new"},
        {"many_blocks", CFileServer::Whole(large), false, 1, large.toStdString()},
        {"empty", CFileServer::Whole(""), false, 1, ""},
        {"just_the_limit", CFileServer::Whole(QByteArray(400000, 'y')), false, 1, std::string(400000, 'y')},
        {"above_the_limit", CFileServer::Whole(QByteArray(400001, 'y')), false, 0, "old"},
        {"endless", "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(900000, 'z'), true, 0, "old"},
        {"not_there", "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnope", false, 0, "old"},
        {"cut_off", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf", false, 0, "old"},
        {"falls_silent", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf", true, 0, "old"},
        {"rubbish", "\x16\x03\x01 not the protocol\r\n\r\n", false, 0, "old"},
    };
    web.size_limit = 400000;
    for (const Case& test : cases) {
        write_to_file(path, "old");
        server.answer = test.answer;
        server.hang = test.hang;
        EXPECT_EQ(Get(), test.result) << test.name;
        EXPECT_EQ(Content(), test.content) << test.name;
        EXPECT_EQ(web.error().empty(), test.result == 1) << test.name << ": " << web.error();
        EXPECT_EQ(web.failed(), test.result != 1) << test.name;
        EXPECT_FALSE(LeftTemporary()) << test.name;
    }
    EXPECT_EQ(server.request, "GET /targets/list HTTP/1.1");
}

TEST_F(WebServer, CancellingHasNoErrorText)
{
    server.answer = "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n" + QByteArray(5000, 'x');
    server.hang = true;
    web.progress = [](std::int64_t received, std::int64_t total) { return received < 1000 || total != 100000; };
    EXPECT_EQ(Get(), 0);
    EXPECT_TRUE(web.cancelled() && web.failed());
    EXPECT_EQ(web.error(), "");
    EXPECT_EQ(Content(), "old");
    EXPECT_FALSE(LeftTemporary());
}

TEST_F(WebServer, ARunningOperationEndsWithItsObject)
{
    server.hang = true;
    bool called = false;
    auto short_lived = std::make_unique<CWebServer_NB>("127.0.0.1", false, server.port());
    short_lived->GetFile("/list", path, [&](int) { called = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !server.request.isEmpty(); }, 5000));
    EXPECT_TRUE(LeftTemporary());
    short_lived.reset();
    EXPECT_FALSE(LeftTemporary());
    QTest::qWait(0);
    EXPECT_FALSE(called);

    // A callback may delete the object that calls it.
    server.answer = CFileServer::Whole("new");
    server.hang = false;
    auto* doomed = new CWebServer_NB("127.0.0.1", false, server.port());
    doomed->GetFile("/list", path, [&](int) {
        delete doomed;
        called = true;
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return called; }, 5000));
    EXPECT_EQ(Content(), "new");
}

TEST_F(WebServer, APlaceThatCannotBeWrittenToIsToldAtOnce)
{
    int result = 0;
    web.GetFile("/list", root.path(), [&](int value) { result = value; });
    EXPECT_EQ(result, -1);
    EXPECT_EQ(web.error(), "Could not open tmp file for writing: " + root.path());
}

} // namespace
