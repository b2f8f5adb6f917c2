// Writes the demo voyage, a log of sentences, to the file named on the command line.

#include "tools/voyage/voyage.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: zt-voyage OUT.txt\n");
        return 2;
    }
    const std::string text = WriteVoyage(SolentVoyage());
    std::FILE* file = std::fopen(argv[1], "wb");
    const bool written = file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const bool closed = file != nullptr && std::fclose(file) == 0;
    if (written && closed) return 0;
    std::fprintf(stderr, "zt-voyage: cannot write %s\n", argv[1]);
    return 1;
}
