#include "core/files.h"
#include "support/temporary_root.h"
#include "typed_file_probe.h"

#include <gtest/gtest.h>

namespace {
const CEveryField::cType every_field_type;
}

TEST(TypedFile, BytesOfAFile)
{
    CProbe probe([](CStream& stream) {
        CSection outer(stream);
        std::string text = "ab";
        int number = 3;
        {
            CSection inner(stream);
            inner.declare(text);
        }
        return outer.declare(number);
    });
    EXPECT_EQ(probe.WriteMemory(kMagic), Signed(Record(Bytes(kMagic)) + Record(Record(Bytes(2U) + "ab") + Bytes(3))));
}

TEST(TypedFile, RoundTripThroughFiles)
{
    const CTemporaryRoot root;
    CEveryField written;
    Fill(written, 3);
    const std::string path = root.file("new folder/every.zttf");
    written.file_name = root.file("new folder/sub/chart.rlt");
    ASSERT_TRUE(written.WriteFile(path, {}, kMagic));
    EXPECT_EQ(CSerializable::readMagic(path), kMagic);
    EXPECT_FALSE(isRegularFile(path + ".tmp"));

    // The folder may move: what lies in it is found where it lies now.
    ASSERT_EQ(std::rename(root.file("new folder").c_str(), root.file("moved").c_str()), 0);
    CEveryField read;
    ASSERT_TRUE(read.ReadFile(root.file("moved/every.zttf"), {}, kMagic));
    EXPECT_EQ(read.file_name, root.file("moved/sub/chart.rlt"));
    EXPECT_EQ(read.points, written.points);
    EXPECT_EQ(read.color, written.color);
    EXPECT_EQ(read.items.size(), 3U);
    ASSERT_EQ(read.children.size(), 1U);
    EXPECT_EQ(static_cast<CEveryField&>(*read.children[0]).text, written.text);
    written.file_name = read.file_name = {};
    EXPECT_EQ(read.WriteMemory(kMagic), written.WriteMemory(kMagic));
    EXPECT_FALSE(read.ReadFile(root.file("moved/every.zttf"), {}, kMagic + 1));
}

TEST(TypedFile, LongBlocksGoThroughTheFileUnchanged)
{
    const CTemporaryRoot root;
    std::vector<std::uint8_t> big(300'000);
    for (std::size_t i = 0; i < big.size(); ++i) big[i] = static_cast<std::uint8_t>(i * 7 + i / 251);
    std::vector<std::uint8_t> got(big.size());
    std::vector<std::uint8_t>* now = &big;
    int last = 5;
    CProbe probe([&](CStream& stream) {
        CSection section(stream);
        for (int i = 0; i < 3; ++i) {
            CSection inner(stream);
            int small = i;
            if (!inner.declare(small) || !inner.declare_array(now->data(), 100, i == 1 ? 3000 : 30)) return false;
        }
        return section.declare(last);
    });
    ASSERT_TRUE(probe.WriteFile(root.file("big"), {}, 0));
    now = &got;
    last = 0;
    ASSERT_TRUE(probe.ReadFile(root.file("big"), {}, 0));
    EXPECT_EQ(got, big);
    EXPECT_EQ(last, 5);
    EXPECT_FALSE(probe.skipped);
}

TEST(TypedFile, OlderAndNewerRecords)
{
    int first = 0;
    double added = 0.0;
    int after = 0;
    CProbe probe([&](CStream& stream) {
        {
            CSection section(stream);
            if (!section.declare(first) || !section.declare(added)) return false;
            CSection newest(stream); // in an older file the record ends before this section
            int inside = 0;
            if (!newest.declare(inside)) return false;
        }
        CSection next(stream);
        return next.declare(after);
    });
    struct CCase {
        const char* name;
        std::string record;
        double added;
        bool skipped;
    };
    const std::string inner = Record(Bytes(9));
    const CCase cases[] = {
        {"older", Record(Bytes(1)), -1.0, false},
        {"the same", Record(Bytes(1) + Bytes(2.0) + inner), 2.0, false},
        {"newer, two more fields", Record(Bytes(1) + Bytes(2.0) + inner + "xxyyyy"), 2.0, true},
        {"newer, more inside", Record(Bytes(1) + Bytes(2.0) + Record(Bytes(9) + "more")), 2.0, true},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.name);
        first = after = 0;
        added = -1.0;
        EXPECT_TRUE(probe.ReadMemory(Signed(c.record + Record(Bytes(8))), 0));
        EXPECT_EQ(first, 1);
        EXPECT_EQ(added, c.added);
        EXPECT_EQ(after, 8);
        EXPECT_EQ(probe.skipped, c.skipped);
        EXPECT_FALSE(probe.damaged);
    }
}

TEST(TypedFile, AnOlderFileLeavesWhatTheObjectHeld)
{
    CEveryField object;
    Fill(object, 0);
    const std::string before = object.text;
    EXPECT_TRUE(object.ReadMemory(Signed(Record(Bytes(9.0))), 0));
    EXPECT_EQ(object.number, 9.0);
    EXPECT_EQ(object.text, before);
    EXPECT_EQ(object.points.size(), 2U);
    EXPECT_TRUE(object.items.empty()) << "a list is emptied before it is read";
}

TEST(TypedFile, LimitsOfLengths)
{
    int value = 0;
    std::string text;
    CProbe number([&](CStream& stream) { return CSection(stream).declare(value); });
    CProbe string([&](CStream& stream) { return CSection(stream).declare(text); });
    const std::string long_text(1'000'000, 't');
    struct CCase {
        const char* name;
        CProbe& probe;
        std::string records;
        bool reads;
    };
    const CCase cases[] = {
        {"length 0", number, "\xBE" + Bytes(0U) + Bytes(1), false},
        {"lengths 1 to 4 hold nothing", number, Record(Bytes(1), 1), true},
        {"length 4", number, Record(Bytes(1), 4), true},
        {"longest", number, Record(Bytes(1), 100'000'000), true},
        {"too long", number, Record(Bytes(1), 100'000'001), false},
        {"another tag", number, "\xBF" + Bytes(9U) + Bytes(1), false},
        {"an interrupted write", number, std::string(5, '\0') + Bytes(1), false},
        {"a field that begins inside is read whole", number, Record(Bytes(1), 6), true},
        {"cut in the field", number, Record(Bytes(1)).substr(0, 8), false},
        {"cut before the field", number, Record(Bytes(1)).substr(0, 5), false},
        {"cut in the header", number, "\xBE\x09", false},
        {"nothing", number, "", false},
        {"longest text", string, Record(Bytes(1'000'000U) + long_text), true},
        {"too long a text", string, Record(Bytes(1'000'001U) + long_text + "t"), false},
        {"negative text", string, Record(Bytes(-1) + long_text), false},
        {"a text that is not there", string, Record(Bytes(100U) + "abc"), false},
    };
    for (const CCase& c : cases) EXPECT_EQ(c.probe.ReadMemory(Signed(c.records), 0), c.reads) << c.name;
    EXPECT_FALSE(number.ReadMemory("\x49\xF2\xAC", 0)) << "cut in the signature";
    EXPECT_FALSE(number.ReadMemory(Signed(Record("")) + Record(Bytes(1)), kMagic)) << "an empty section is no magic";
}

TEST(TypedFile, BlocksOfOtherSizes)
{
    const std::string ramp = "\1\2\3\4\5\6\7\10\11\12\13\14";
    struct CCase {
        const char* name;
        std::string content;
        bool reads;
        std::array<std::uint8_t, 6> got;
        bool skipped;
    };
    const CCase vblocks[] = {
        {"the same", Bytes(6U) + ramp.substr(0, 6), true, {1, 2, 3, 4, 5, 6}, false},
        {"shorter keeps the tail", Bytes(2U) + ramp.substr(0, 2), true, {1, 2, 9, 9, 9, 9}, false},
        {"longer", Bytes(8U) + ramp.substr(0, 8), true, {1, 2, 3, 4, 5, 6}, true},
        {"empty", Bytes(0U), true, {9, 9, 9, 9, 9, 9}, false},
        {"not there", Bytes(0xFFFFFFFFU) + ramp, false, {9, 9, 9, 9, 9, 9}, false},
    };
    const CCase arrays[] = {
        {"elements of the same size", Bytes(2U) + ramp.substr(0, 6), true, {1, 2, 3, 4, 5, 6}, false},
        {"shorter elements", Bytes(1U) + ramp.substr(0, 3), true, {1, 9, 2, 9, 3, 9}, false},
        {"longer elements", Bytes(4U) + ramp, true, {1, 2, 5, 6, 9, 10}, true},
        {"elements of nothing", Bytes(0U), true, {9, 9, 9, 9, 9, 9}, false},
        {"elements that are not there", Bytes(0x80000000U) + ramp, false, {9, 9, 9, 9, 9, 9}, false},
    };
    std::array<std::uint8_t, 6> buffer{};
    int marker = 0;
    const auto check = [&](const CCase& c, const std::function<bool(CSection&)>& declare) {
        SCOPED_TRACE(c.name);
        buffer.fill(9);
        marker = 0;
        CProbe probe([&](CStream& stream) {
            CSection section(stream);
            return declare(section) && section.declare(marker);
        });
        EXPECT_EQ(probe.ReadMemory(Signed(Record(c.content + Bytes(77))), 0), c.reads);
        EXPECT_EQ(buffer, c.got);
        if (!c.reads) return;
        EXPECT_EQ(marker, 77);
        EXPECT_EQ(probe.skipped, c.skipped);
    };
    for (const CCase& c : vblocks) check(c, [&](CSection& s) { return s.declare_vblock(buffer.data(), 6); });
    for (const CCase& c : arrays) check(c, [&](CSection& s) { return s.declare_array(buffer.data(), 2, 3); });
}

TEST(TypedFile, FileNames)
{
    struct CCase {
        const char* stored;
        const char* read_in_folder; ///< "~" stands for the folder
    };
    const CCase cases[] = {{"chart.rlt", "~/chart.rlt"}, {"a", "~/a"}, {"/abs/chart", "/abs/chart"},
                           {"C:\\chart", "C:\\chart"},   {"", ""},     {"sub/x", "~/sub/x"}};
    const CTemporaryRoot root;
    std::string name;
    CProbe probe([&](CStream& stream) { return CSection(stream).declarefilename(name); });
    for (const CCase& c : cases) {
        const std::string expected =
            c.read_in_folder[0] == '~' ? root.path() + (c.read_in_folder + 1) : c.read_in_folder;
        ASSERT_TRUE(write_to_file(root.file("f"),
                                  Signed(Record(Bytes(static_cast<std::uint32_t>(std::strlen(c.stored))) + c.stored))));
        ASSERT_TRUE(probe.ReadFile(root.file("f"), {}, 0));
        EXPECT_EQ(name, expected);
        ASSERT_TRUE(probe.WriteFile(root.file("g"), {}, 0));
        std::string bytes;
        ASSERT_TRUE(read_whole_file(root.file("g"), bytes));
        EXPECT_EQ(bytes.substr(13), c.stored);
    }
    name = root.path() + "//odd";
    ASSERT_TRUE(probe.WriteFile(root.file("g"), {}, 0));
    name.clear();
    ASSERT_TRUE(probe.ReadFile(root.file("g"), {}, 0));
    EXPECT_EQ(name, root.path() + "//odd") << "cut off, it would have become another file";
}

TEST(TypedFile, ListsLoseOnlyTheBadElement)
{
    std::list<CEveryField::CItem*> items;
    CProbe probe([&](CStream& stream) {
        CSection section(stream);
        return CSerializableDeclareStatic(section, items);
    });
    const auto item = [](int value) { return Record(Bytes(value) + Bytes(0U)); };
    const std::string bad = Record(Bytes(2) + Bytes(2'000'000U));
    struct CCase {
        const char* name;
        std::string content;
        bool reads;
        std::size_t count;
        bool damaged;
    };
    const CCase cases[] = {
        {"none, older file", "", true, 0, false},
        {"none", Bytes(0U), true, 0, false},
        {"three", Bytes(3U) + item(1) + item(2) + item(3), true, 3, false},
        {"a bad one between", Bytes(3U) + item(1) + bad + item(3), true, 2, true},
        {"fewer than promised", Bytes(5U) + item(1) + item(2), true, 2, true},
        {"ten million promised", Bytes(10'000'000U) + item(1), false, 0, false},
        {"more than allowed", Bytes(10'000'001U) + item(1), false, 0, false},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(probe.ReadMemory(Signed(Record(c.content)), 0), c.reads);
        EXPECT_EQ(items.size(), c.count);
        EXPECT_EQ(probe.damaged, c.damaged);
    }
    for (auto* left : items) delete left;
}

TEST(TypedFile, PolymorphicObjects)
{
    std::vector<bool> made;
    CProbe probe([&](CStream& stream) {
        CSection section(stream);
        made.clear();
        while (!section.atEnd()) {
            const std::unique_ptr<CSerializable> object(CSerializable::ReadPolymorphic(stream));
            made.push_back(object != nullptr);
            if (!stream.ok()) return false;
        }
        return true;
    });
    const auto object = [](int id, const std::string& body) {
        return Bytes(id) + Bytes(static_cast<int>(body.size())) + body;
    };
    const std::string known = object(CEveryField::kTypeId, Record(Bytes(1.0)));
    struct CCase {
        const char* name;
        std::string content;
        std::vector<bool> made;
        bool skipped;
    };
    const CCase cases[] = {
        {"known twice", known + known, {true, true}, false},
        {"unknown between", known + object(424242, "anything") + known, {true, false, true}, true},
        {"longer than read", object(CEveryField::kTypeId, Record(Bytes(1.0)) + "more") + known, {true, true}, true},
        {"reaches beyond its section",
         object(CEveryField::kTypeId, Record("")).substr(0, 4) + Bytes(1000) + Record(""),
         {true},
         false},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_TRUE(probe.ReadMemory(Signed(Record(c.content) + Record("")), 0));
        EXPECT_EQ(made, c.made);
        EXPECT_EQ(probe.skipped, c.skipped);
    }
}
