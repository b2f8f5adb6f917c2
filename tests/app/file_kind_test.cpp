#include "app/file_kind.h"
#include "support/temporary_root.h"

#include <fstream>

#include <sys/stat.h>

#include <gtest/gtest.h>

namespace {

std::string Word(std::uint32_t value)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += char(value >> (8 * i));
    return bytes;
}

std::string Typed(std::uint32_t magic)
{
    return Word(0x73ACF249) + "\xBE" + Word(9) + Word(magic);
}

TEST(FileKind, ContentFirstThenExtension)
{
    const CTemporaryRoot root;
    const struct {
        const char* name;
        const char* file;
        std::string content;
        file_kind kind;
    } cases[] = {
        {"chart_called_gpx", "a.gpx", Word(0x1423D5FF), file_kind::chart},
        {"gpx_called_txt", "a.txt", "<?xml version='1.0'?>", file_kind::gpx},
        {"gpx_without_declaration", "b.txt", "<gpx>", file_kind::gpx},
        {"other_markup", "c.txt", "<html", file_kind::gpx},
        {"package", "d", Word(0x319E8613), file_kind::package},
        {"pages", "e.bin", Typed(0x47F8FB82), file_kind::pages},
        {"page", "f.bin", Typed(0x71831AB9), file_kind::page},
        {"typed_of_another_kind", "g.zttf", Typed(0xCA2EAF82), file_kind::unknown},
        {"typed_of_another_kind_by_extension", "g.pstf", Typed(0xCA2EAF82), file_kind::pages},
        {"typed_and_cut_off", "h.bin", Word(0x73ACF249), file_kind::unknown},
        {"noise_by_extension_of_any_case", "i.RLT", "noise", file_kind::chart},
        {"noise", "j.noise", "noise", file_kind::unknown},
        {"shorter_than_a_word", "k.rlt", "<", file_kind::chart},
        {"empty_without_extension", "l", "", file_kind::unknown},
        {"dot_in_the_folder_only", "m.rlt/../n", Word(0x12345678), file_kind::unknown},
    };
    ::mkdir(root.file("m.rlt").c_str(), 0700);
    for (const auto& row : cases) {
        std::ofstream(root.file(row.file), std::ios::binary) << row.content;
        EXPECT_EQ(SortFile(root.file(row.file)), row.kind) << row.name;
    }
    EXPECT_EQ(SortFile(root.file("missing.ztpkg")), file_kind::package) << "what cannot be read goes by its extension";
    ::mkfifo(root.file("fifo.gpx").c_str(), 0600);
    EXPECT_EQ(SortFile(root.file("fifo.gpx")), file_kind::gpx) << "and is never waited for";
}

} // namespace
