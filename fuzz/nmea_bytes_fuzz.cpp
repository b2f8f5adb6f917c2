// What comes from a serial port or a socket, byte by byte, with a listener of every class of sentence.
#include "built_seeds.h"
#include "nmea/line_assembler.h"
#include "nmea/mixed_sentences.h"
#include "nmea_watch.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    const std::vector<std::string> sentences = MixedSentences(38);
    std::vector<std::string> seeds{sentences[0], std::string(250, 'x') + "\n" + sentences[0] + "\r\n"};
    std::string second;
    for (const std::string& sentence : sentences) second += sentence + "\r\n";
    seeds.push_back(second);
    AddBuiltSeeds(argc, argv, seeds);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static CWatchOfAll watches;
    static CWirelessConnection connection;
    CLineAssembler assembler;
    int open = 0; // bytes of the line that is being assembled
    for (std::size_t i = 0; i < size; ++i) {
        const CLineAssembler::Result result = assembler.Add(static_cast<char>(data[i]), connection);
        if (data[i] == '\r') continue;
        open = result == CLineAssembler::kLineOpen ? open + 1 : 0;
        if (open >= CLineAssembler::kSize) std::abort();
    }
    return 0;
}
