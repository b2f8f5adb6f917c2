#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = ZT_SOURCE_DIR;

/// Folder to level, from the table in ARCHITECTURE.md.
std::map<std::string, int> ReadTable()
{
    std::ifstream file(kRoot / "ARCHITECTURE.md");
    std::map<std::string, int> levels;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
        if (line == "<!-- rooms:begin -->") inside = true;
        if (line == "<!-- rooms:end -->") inside = false;
        int level = 0;
        char folder[64];
        if (inside && std::sscanf(line.c_str(), "| %d | %63[^ |] |", &level, folder) == 2) levels[folder] = level;
    }
    return levels;
}

/// The room of a path below src/: the longest folder of the table that it begins with; empty when none does.
std::string RoomOf(const std::string& path, const std::map<std::string, int>& levels)
{
    std::string best;
    for (const auto& [folder, level] : levels) {
        if (path.rfind(folder + "/", 0) == 0 && folder.size() > best.size()) best = folder;
    }
    return best;
}

std::vector<std::string> IncludesOf(const fs::path& path)
{
    std::ifstream file(path);
    std::vector<std::string> includes;
    for (std::string line; std::getline(file, line);) {
        char name[256];
        if (std::sscanf(line.c_str(), " # include \"%255[^\"]\"", name) == 1) includes.emplace_back(name);
    }
    return includes;
}

/// A line for each include of `source` (a path below src/) that its room may not have.
std::vector<std::string> WrongArrows(const std::string& source, const std::vector<std::string>& includes,
                                     const std::map<std::string, int>& levels)
{
    std::vector<std::string> wrong;
    const std::string room = RoomOf(source, levels);
    if (room.empty()) return {source + " lies in no room"};
    for (const std::string& include : includes) {
        if (include.ends_with(".moc")) continue;
        const std::string target = RoomOf(include, levels);
        if (target.empty()) {
            wrong.push_back(source + " includes \"" + include + "\", not written from src/");
        } else if (levels.at(target) > levels.at(room)) {
            wrong.push_back(source + " (" + room + ") includes " + include + " (" + target + ")");
        }
    }
    return wrong;
}

TEST(Layering, NoArrowRunsUp)
{
    const auto levels = ReadTable();
    ASSERT_GE(levels.size(), 10U);
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / "src")) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        ++files;
        const std::string source = fs::relative(entry.path(), kRoot / "src").string();
        for (const std::string& line : WrongArrows(source, IncludesOf(entry.path()), levels)) ADD_FAILURE() << line;
    }
    EXPECT_GT(files, 50);
}

TEST(Layering, RuleItselfCatchesFaults)
{
    const std::map<std::string, int> levels = {{"core", 1}, {"ui", 2}, {"ui/lists", 12}, {"chart", 4}};
    struct {
        const char* name;
        const char* source;
        const char* include;
        bool wrong;
    } const cases[] = {
        {"down", "chart/a.cpp", "core/b.h", false},
        {"same_room", "chart/a.cpp", "chart/b.h", false},
        {"up", "core/a.cpp", "chart/b.h", true},
        {"sub_folder_has_its_own_level", "ui/lists/a.cpp", "chart/b.h", false},
        {"its_parent_may_not", "ui/a.cpp", "ui/lists/b.h", true},
        {"relative", "chart/a.cpp", "b.h", true},
        {"outside_every_room", "other/a.cpp", "core/b.h", true},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(!WrongArrows(row.source, {row.include}, levels).empty(), row.wrong) << row.name;
    }
}

} // namespace
