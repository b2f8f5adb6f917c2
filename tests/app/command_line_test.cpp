#include "app/command_line.h"
#include "core/text.h"
#include "support/temporary_root.h"

#include <fstream>

#include <gtest/gtest.h>

namespace {

using strings = std::vector<std::string>;

CCommandLine Parse(std::vector<const char*> argv)
{
    return CCommandLine::Parse(int(argv.size()), argv.data());
}

TEST(CommandLine, TakesTheProfilePairOut)
{
    const struct {
        const char* name;
        std::vector<const char*> argv;
        const char* profile;
        strings arguments;
    } cases[] = {
        {"program_alone", {"zentara"}, "default", {"zentara"}},
        {"files_keep_their_order", {"zentara", "b.rlt", "a.rlt"}, "default", {"zentara", "b.rlt", "a.rlt"}},
        {"profile_in_the_middle", {"zentara", "a", "-profile", "boat", "b"}, "boat", {"zentara", "a", "b"}},
        {"profile_in_last_place_is_ignored", {"zentara", "a", "-profile"}, "default", {"zentara", "a"}},
        {"the_last_profile_counts", {"zentara", "-profile", "x", "-profile", "y"}, "y", {"zentara"}},
        {"no_arguments_at_all", {}, "default", {}},
    };
    for (const auto& row : cases) {
        const CCommandLine line = Parse(row.argv);
        EXPECT_EQ(line.profile, row.profile) << row.name;
        EXPECT_EQ(line.arguments, row.arguments) << row.name;
    }
}

/// What the other instance makes of a message.
strings Received(const std::string& message)
{
    strings pieces;
    break_string_args(message, ' ', pieces);
    for (std::string& piece : pieces) piece = LocalPath(piece);
    return pieces;
}

TEST(CommandLine, FilesArriveWholeInTheOtherInstance)
{
    const CTemporaryRoot root;
    const strings names = {"plain.rlt", "with blank.rlt", "per%20cent and blank.rlt",
                           "\xC3\xA4\xC3\xB6 \xE2\x82\xAC#?.rlt"};
    for (const std::string& name : names) {
        std::ofstream(root.file(name)) << "x";
        for (const std::string& argument : {root.file(name), name}) { // absolute, and relative to the folder
            const strings received = Received(JoinForOtherInstance({"zentara", argument}, root.path()));
            EXPECT_EQ(received, (strings{"zentara", root.file(name)})) << argument;
        }
    }
    // What is no file travels as it stands.
    EXPECT_EQ(JoinForOtherInstance({"zentara", "-profile", "boat", "not here"}, root.path()),
              "zentara -profile boat not here");
    EXPECT_EQ(LocalPath("file://%zz"), "file://%zz");
    EXPECT_EQ(LocalPath("file://elsewhere/a%20b"), "file://elsewhere/a%20b") << "another machine's file is not ours";
}

} // namespace
