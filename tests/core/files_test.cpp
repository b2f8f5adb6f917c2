#include "core/files.h"

#include "core/folders.h"
#include "core/safe_replace.h"
#include "support/temporary_root.h"

#include <csignal>
#include <zlib.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

TEST(Folders, JoinWithoutDoubledSeparators)
{
    struct CCase {
        const char* base;
        const char* sub;
        const char* joined;
    };
    const CCase cases[] = {{"/a", nullptr, "/a"},  {"/a/", "", "/a"}, {"/a", "b", "/a/b"},
                           {"/a/", "/b/", "/a/b"}, {"/", "b", "/b"},  {"/", nullptr, "/"}};
    for (const CCase& c : cases) EXPECT_EQ(add_folder(c.base, c.sub), c.joined);
}

TEST(Files, OnlyRegularFilesOpen)
{
    const CTemporaryRoot root;
    const std::string fifo = root.file("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_TRUE(createPath(root.file("folder")));
    ASSERT_TRUE(write_to_file(root.file("plain"), "x"));
    ASSERT_EQ(symlink(root.file("plain").c_str(), root.file("link").c_str()), 0);
    ASSERT_EQ(symlink(fifo.c_str(), root.file("fifo link").c_str()), 0);
    struct CCase {
        std::string path;
        bool opens;
    };
    const CCase cases[] = {{root.file("plain"), true},   {root.file("link"), true},       {fifo, false},
                           {root.file("folder"), false}, {root.file("fifo link"), false}, {"/dev/zero", false},
                           {root.file("missing"), false}};
    for (const CCase& c : cases) {
        FILE* file = openRegularFile(c.path, "rb");
        EXPECT_EQ(file != nullptr, c.opens) << c.path;
        if (file != nullptr) std::fclose(file);
        std::string content;
        EXPECT_EQ(read_whole_file(c.path, content), c.opens) << c.path;
        EXPECT_EQ(isRegularFile(c.path), c.opens);
        EXPECT_EQ(fileSize(c.path), c.opens ? 1 : -1);
    }
    EXPECT_EQ(openRegularFile(fifo, "wb"), nullptr);
    EXPECT_FALSE(write_to_file(fifo, "x"));
    EXPECT_FALSE(write_to_file(root.file("folder"), "x"));
    EXPECT_TRUE(isDirectory(root.file("folder")));
}

TEST(Files, ListsAndDeletesOneLevel)
{
    const CTemporaryRoot root;
    ASSERT_TRUE(createPath(root.file("a/b/c")));
    ASSERT_TRUE(createPath(root.file("a/b/c/")));
    ASSERT_TRUE(write_to_file(root.file("a/one"), "12345"));
    ASSERT_TRUE(write_to_file(root.file("a/Two"), "123"));
    EXPECT_FALSE(createPath(root.file("a/one/below")));
    EXPECT_EQ(listDirectory(root.file("a")), (std::vector<std::string>{"Two", "one"}));
    EXPECT_EQ(listSubDirectories(root.file("a")), (std::vector<std::string>{"b"}));
    EXPECT_EQ(getDirectorySizeSingleLevel(root.file("a")), 8);
    EXPECT_FALSE(deleteDirectorySingleLevel(root.file("a"))) << "a folder stands in it";
    EXPECT_TRUE(isDirectory(root.file("a/b/c")));
    EXPECT_TRUE(deleteDirectorySingleLevel(root.file("a/b/c")));
    EXPECT_TRUE(listDirectory(root.file("none")).empty());
}

TEST(Files, ReadWholeKeepsToItsLimit)
{
    const CTemporaryRoot root;
    ASSERT_TRUE(write_to_file(root.file("ten"), "0123456789"));
    std::string content = "old";
    EXPECT_TRUE(read_whole_file(root.file("ten"), content, 10));
    EXPECT_EQ(content, "0123456789");
    EXPECT_FALSE(read_whole_file(root.file("ten"), content, 9));
    EXPECT_EQ(content, "");
    EXPECT_TRUE(read_whole_file("/proc/self/stat", content)) << "a file that does not tell its size";
    EXPECT_FALSE(content.empty());
}

TEST(Files, GUnzip)
{
    const CTemporaryRoot root;
    const std::string text(100'000, 'z');
    const gzFile out = gzopen(root.file("good.gz").c_str(), "wb");
    gzwrite(out, text.data(), static_cast<unsigned>(text.size()));
    gzclose(out);
    std::string packed;
    ASSERT_TRUE(read_whole_file(root.file("good.gz"), packed));
    ASSERT_TRUE(GUnzipFile(root.file("good.gz"), root.file("out")));
    std::string unpacked;
    EXPECT_TRUE(read_whole_file(root.file("out"), unpacked));
    EXPECT_EQ(unpacked, text);

    std::string bad_sum = packed;
    bad_sum[packed.size() - 5] ^= 1;
    for (const std::string& bad :
         {packed.substr(0, packed.size() - 1), packed.substr(0, 30), bad_sum, std::string("plain"), std::string()}) {
        ASSERT_TRUE(write_to_file(root.file("bad.gz"), bad));
        EXPECT_FALSE(GUnzipFile(root.file("bad.gz"), root.file("bad"))) << bad.size();
        EXPECT_FALSE(isRegularFile(root.file("bad")));
        EXPECT_FALSE(isRegularFile(root.file("bad.tmp")));
    }
}

TEST(SafeReplace, NothingIsReplacedBeforeTheCommit)
{
    const CTemporaryRoot root;
    const std::string path = root.file("new folder/data");
    ASSERT_TRUE(write_to_file(path, "old"));
    ASSERT_EQ(chmod(path.c_str(), 0600), 0);
    {
        CSafeReplace replace(path);
        std::fputs("half", replace.File());
    }
    std::string content;
    ASSERT_TRUE(read_whole_file(path, content));
    EXPECT_EQ(content, "old");
    ASSERT_TRUE(write_to_file(path, "new"));
    ASSERT_TRUE(read_whole_file(path, content));
    EXPECT_EQ(content, "new");
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST(SafeReplace, AFullDiskLeavesTheOldFile)
{
    const CTemporaryRoot root;
    const std::string path = root.file("data");
    ASSERT_TRUE(write_to_file(path, "old"));
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 1000;
    setrlimit(RLIMIT_FSIZE, &small);
    const bool written = write_to_file(path, std::string(100'000, 'n'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, ignored);
    EXPECT_FALSE(written);
    std::string content;
    ASSERT_TRUE(read_whole_file(path, content));
    EXPECT_EQ(content, "old");
}

TEST(SafeReplace, KilledAtAnyMomentLeavesOldOrNewWhole)
{
    const CTemporaryRoot root;
    const std::string path = root.file("data");
    const std::string letters = "abcdefghij";
    ASSERT_TRUE(write_to_file(path, std::string(200'000, letters[0])));
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // Writes on and on until the alarm ends the process, at a point that moves from round to round.
            const itimerval end{{0, 0}, {0, 200 + 173 * round}};
            setitimer(ITIMER_REAL, &end, nullptr);
            for (std::size_t i = 0;; ++i) write_to_file(path, std::string(200'000, letters[i % letters.size()]));
        }
        waitpid(child, nullptr, 0);
        std::string content;
        ASSERT_TRUE(read_whole_file(path, content)) << round;
        ASSERT_EQ(content, std::string(200'000, content.empty() ? '?' : content[0])) << round;
    }
}

TEST(SafeReplace, ADamagedFileIsNotReplacedWithoutItsCopy)
{
    const CTemporaryRoot root;
    const std::string path = root.file("data");
    ASSERT_TRUE(write_to_file(path, "precious"));
    ASSERT_TRUE(createPath(path + ".damaged")) << "in the way of the copy";
    EXPECT_FALSE(KeepDamagedCopy(path));
    EXPECT_FALSE(write_to_file(path, "new"));
    ASSERT_EQ(rmdir((path + ".damaged").c_str()), 0);
    EXPECT_TRUE(write_to_file(path, "new"));
    std::string content;
    ASSERT_TRUE(read_whole_file(path + ".damaged", content));
    EXPECT_EQ(content, "precious");
}
