#pragma once

#include "core/files.h"
#include "core/folders.h"

#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

/// Starts the fuzzer from inputs that the project's own builders made, besides those of its corpus folders. To be
/// called from LLVMFuzzerInitialize; the files, which are kept in memory where the system has such a folder, are gone
/// at the end. Inputs grow up to `longest` bytes unless the command line says otherwise; 0 leaves that to the fuzzer.
inline void AddBuiltSeeds(int* argc, char*** argv, const std::vector<std::string>& seeds, std::size_t longest = 0)
{
    static std::string folder =
        std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + "/zentara-seeds-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) return;
    std::atexit([] { deleteDirectorySingleLevel(folder); });
    static std::string argument = "-seed_inputs=";
    for (const std::string& seed : seeds) {
        const std::string path = add_folder(folder, std::to_string(&seed - seeds.data()).c_str());
        write_to_file(path, seed);
        argument += (argument.back() == '=' ? "" : ",") + path;
    }
    static std::vector<char*> arguments(*argv, *argv + *argc);
    arguments.insert(arguments.begin() + 1, argument.data());
    static std::string most = "-max_len=" + std::to_string(longest);
    if (longest != 0) arguments.insert(arguments.begin() + 1, most.data());
    arguments.push_back(nullptr);
    *argc = static_cast<int>(arguments.size()) - 1;
    *argv = arguments.data();
}
