#include "core/files.h"
#include "core/numbers.h"
#include "nmea/mixed_sentences.h"
#include "nmea/nmea_sentence_type.h"
#include "ratio.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include <QStandardPaths>

namespace {

constexpr std::size_t kSentences = 400'000;

/// A log of many sentences, one a line.
struct CLogScene {
    CLogScene()
    {
        for (const std::string& sentence : MixedSentences(kSentences)) text += sentence + "\n";
    }

    /// Calls `take(begin, length)` for each line.
    template <class Take>
    void ForEachLine(Take take)
    {
        char* at = text.data();
        char* const end = at + text.size();
        while (at != end) {
            auto* line_end = static_cast<char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
            take(at, static_cast<std::size_t>(line_end - at));
            at = line_end + 1;
        }
    }

    std::string text;
};

CLogScene& TheLog()
{
    static CLogScene scene;
    return scene;
}

void FindLineEnds()
{
    std::size_t longest = 0;
    TheLog().ForEachLine([&longest](const char*, std::size_t length) { longest = std::max(longest, length); });
    if (longest == 0) std::abort();
}

/// Takes the program's own listeners away from the sentences, those of the rooms that are linked as well.
class CSilence {
public:
    CSilence()
    {
        for (CNMEASentenceType* type = CNMEASentenceType::list; type != nullptr; type = type->next)
            kept.emplace_back(type->source, std::exchange(*type->source, nullptr));
    }
    ~CSilence()
    {
        for (const auto& [source, listeners] : kept) *source = listeners;
    }

private:
    std::vector<std::pair<CDataSource**, CDataSource*>> kept;
};

/// The number of lines that went to a listener, each taken where it stands: without a listener it is not altered.
int Dispatch(CLogScene& log)
{
    int taken = 0;
    log.ForEachLine([&taken](char* begin, std::size_t length) {
        taken += CNMEASentence::DispatchSentence(begin, length, nullptr);
    });
    return taken;
}

/// The decimal numbers of a log's sentences.
struct CNumberScene {
    CNumberScene()
    {
        for (std::string& sentence : MixedSentences(5000)) {
            char* fields[20];
            CNMEASentence::SplitArgs(sentence.data(), 20, fields);
            for (int i = 1; i < 20; ++i)
                if (std::strchr(fields[i], '.') != nullptr && ParseDouble(fields[i])) numbers.emplace_back(fields[i]);
        }
    }
    std::vector<std::string> numbers;
};

CNumberScene& TheNumbers()
{
    static CNumberScene scene;
    return scene;
}

template <class Parse>
void SumNumbers(Parse parse)
{
    double sum = 0.0;
    for (const std::string& number : TheNumbers().numbers) sum += parse(number);
    if (!(sum > 0.0)) std::abort();
}

/// Parses every sentence of the log for a listener of its class, in a copy, since parsing overwrites the text.
void ParseLog()
{
    static CLogScene copy = TheLog();
    copy.text = TheLog().text;
    const CSilence silence;
    const CHearingOfAll hearing;
    if (Dispatch(copy) < static_cast<int>(kSentences) * 9 / 10) std::abort();
}

/// Another decoder of sentences, which is a program of its own, on the same log in memory.
void RunGpsdecode()
{
    static const std::string path = [] {
        const std::string file = "/dev/shm/zentara_bench.nmea";
        if (!write_to_file(file, TheLog().text)) std::abort();
        std::atexit([] { std::remove("/dev/shm/zentara_bench.nmea"); });
        return file;
    }();
    if (std::system(("gpsdecode < " + path + " > /dev/null").c_str()) != 0) std::abort();
}

const bool nmea_rows = [] {
    RegisterRatio(
        "nmea/400000_sentences_unheard",
        [] {
            const CSilence silence;
            if (Dispatch(TheLog()) != 0) std::abort();
        },
        "finding the line ends", FindLineEnds);
    RegisterRatio("nmea/400000_sentences_parsed", ParseLog, "finding the line ends", FindLineEnds);
    if (!QStandardPaths::findExecutable("gpsdecode").isEmpty())
        RegisterRatio("nmea/400000_sentences_parsed_of_gpsdecode", ParseLog, "gpsdecode", RunGpsdecode, 3);
    RegisterRatio(
        "nmea/decimal_to_double", [] { SumNumbers([](const std::string& text) { return *ParseDouble(text); }); },
        "strtod", [] { SumNumbers([](const std::string& text) { return std::strtod(text.c_str(), nullptr); }); });
    return true;
}();

} // namespace
