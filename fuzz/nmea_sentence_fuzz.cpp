// One sentence with the right checksum: what the classes make of any fields. The text goes out as it came.
#include "built_seeds.h"
#include "nmea/mixed_sentences.h"
#include "nmea_watch.h"

namespace {

/// The last raw text that went out.
class CRawText : public Listener<CNMEA_Raw> {
public:
    CRawText() { Connect(); }
    void OnUpdate(CNMEA_Raw& raw) override { text = raw.text; }
    std::string text;
};

/// The text as one sentence: without the characters that would end it early.
std::string SentenceOf(const std::uint8_t* data, std::size_t size)
{
    std::string text = "$";
    for (std::size_t i = 0; i < size && text.size() < 250; ++i)
        if (data[i] != 0 && data[i] != '\n' && data[i] != '\r' && data[i] != '*') text += static_cast<char>(data[i]);
    return WithChecksum(text);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    std::vector<std::string> seeds = MixedSentences(19);
    for (std::string& seed : seeds) seed = seed.substr(1, seed.size() - 4);
    AddBuiltSeeds(argc, argv, seeds);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static CWatchOfAll watches;
    static CRawText raw;
    static CWirelessConnection connection;
    raw.text = "none";
    const std::string sentence = SentenceOf(data, size);
    if (Dispatch(sentence, &connection) == 0) std::abort();
    const bool fits = sentence.size() <= 197;
    if (raw.text != (fits ? sentence + "\r\n" : "")) std::abort();
    return 0;
}
