#pragma once

#include <string>
#include <vector>

/// What stands on the command line: `program [-profile NAME] [file ...]`.
struct CCommandLine {
    std::string profile = "default";
    /// The arguments other than the -profile pair, the program's own name included, in their order.
    std::vector<std::string> arguments;

    /// A "-profile" in last place is ignored.
    static CCommandLine Parse(int argc, const char* const* argv);
};

/// The arguments as one message for the primary instance: joined by blanks. A path that holds a blank travels as a
/// percent-encoded file URL, so that it arrives whole. Relative paths are made absolute against `folder`, since the
/// other instance has a folder of its own.
std::string JoinForOtherInstance(const std::vector<std::string>& arguments, const std::string& folder);

/// The local path behind an argument: a file URL is decoded, anything else stands as it is.
std::string LocalPath(const std::string& argument);
