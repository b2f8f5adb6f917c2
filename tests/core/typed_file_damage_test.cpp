#include "core/files.h"
#include "core/tree_outline_node.h"
#include "support/temporary_root.h"
#include "typed_file_probe.h"

#include <gtest/gtest.h>

namespace {

std::unique_ptr<TreeOutlineNode> Tree(int levels)
{
    auto root = std::make_unique<TreeOutlineNode>("0");
    TreeOutlineNode* deepest = root.get();
    for (int i = 1; i < levels; ++i) {
        deepest->children.push_back(new TreeOutlineNode(std::to_string(i)));
        deepest = deepest->children.back();
    }
    return root;
}

int Levels(const TreeOutlineNode& node)
{
    int deepest = 0;
    for (const TreeOutlineNode* child : node.children) deepest = std::max(deepest, Levels(*child));
    return deepest + 1;
}

} // namespace

TEST(TreeOutline, DepthIsBounded)
{
    for (const auto& [written, read] : {std::pair{1, 1}, {2, 2}, {64, 64}, {65, 64}, {200, 64}}) {
        TreeOutlineNode back;
        EXPECT_TRUE(back.ReadMemory(Tree(written)->WriteMemory(0), 0));
        EXPECT_EQ(Levels(back), read);
    }
    std::string deep = Bytes(0U) + Bytes(0U);
    for (int i = 0; i < 5000; ++i) deep = Bytes(0U) + Bytes(1U) + Record(deep);
    TreeOutlineNode back;
    EXPECT_TRUE(back.ReadMemory(Signed(Record(deep)), 0)) << "a file made by hand must not exhaust the stack";
    EXPECT_EQ(Levels(back), 64);
}

TEST(TypedFileDamage, CutAtEveryLengthOrWithAWrongByte)
{
    CEveryField good;
    Fill(good, 2);
    const std::string bytes = good.WriteMemory(kMagic);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        CEveryField object;
        EXPECT_FALSE(object.ReadMemory(bytes.substr(0, length), kMagic) && object.WriteMemory(kMagic) == bytes)
            << length;
    }
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (const char wrong : {'\0', '\x7F', '\xFF', static_cast<char>(bytes[at] + 1)}) {
            std::string noise = bytes;
            noise[at] = wrong;
            CEveryField object;
            object.ReadMemory(noise, kMagic); // must come back, with whatever it made of it
        }
    }
}

TEST(TypedFileDamage, OwnFilesGetACopyOthersDoNot)
{
    const CTemporaryRoot root;
    CEveryField good;
    Fill(good, 1);
    const std::string bytes = good.WriteMemory(kMagic);
    struct CCase {
        const char* name;
        std::string content;
        bool own;
        bool reads;
        bool kept;
    };
    const CCase cases[] = {
        {"whole", bytes, true, true, false},
        {"noise", std::string(5000, '\x5A'), true, false, true},
        {"cut in the first fields", bytes.substr(0, 40), true, false, true},
        {"cut in a child, which alone is lost", bytes.substr(0, bytes.size() - 3), true, true, true},
        {"empty", "", true, false, false},
        {"noise elsewhere", std::string(5000, '\x5A'), false, false, false},
        {"wrong magic", good.WriteMemory(kMagic + 1), true, false, true},
    };
    for (const CCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = c.own ? getAppDirectory("file.zttf") : root.file("file.zttf");
        ASSERT_TRUE(write_to_file(path, c.content));
        CEveryField object;
        EXPECT_EQ(object.ReadFile(path, {}, kMagic), c.reads);
        ASSERT_TRUE(good.WriteFile(path, {}, kMagic));
        std::string copy;
        EXPECT_EQ(read_whole_file(path + ".damaged", copy), c.kept);
        if (c.kept) {
            EXPECT_EQ(copy, c.content);
        }
        std::remove((path + ".damaged").c_str());
    }
}

TEST(TypedFileDamage, AFailedWriteLeavesTheOldFile)
{
    const CTemporaryRoot root;
    CEveryField good;
    ASSERT_TRUE(good.WriteFile(root.file("f"), {}, kMagic));
    CProbe failing([](CStream& stream) {
        int value = 1;
        return CSection(stream).declare(value) && false;
    });
    EXPECT_FALSE(failing.WriteFile(root.file("f"), {}, kMagic));
    EXPECT_TRUE(CEveryField().ReadFile(root.file("f"), {}, kMagic));
    EXPECT_EQ(CSerializable::readMagic(root.file("missing")), 0);
    EXPECT_EQ(CSerializable::readMagic(root.path()), 0);
    ASSERT_TRUE(write_to_file(root.file("f"), Signed(Record(Bytes(kMagic) + "x"))));
    EXPECT_EQ(CSerializable::readMagic(root.file("f")), 0) << "a first section that holds more is no magic";
}
