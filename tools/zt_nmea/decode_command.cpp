#include "navdata/data_gps_position.h"
#include "nmea/nmea_sentence_type.h"
#include "overlays/gps_position.h"
#include "tools/zt_nmea/cli.h"
#include "tools/zt_nmea/input.h"
#include "tools/zt_nmea/sentence_fields.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// Where the sentence begins in the line; null when none does, or none that has a checksum.
char* FramedSentence(char* line)
{
    char* text = line + std::strcspn(line, "$!");
    return *text != 0 && std::strchr(text, '*') != nullptr ? text : nullptr;
}

/// The head of a sentence that no class reads: the second letter of its talker and what stands behind.
void DescribeHead(CJsonLine& json, const char* text)
{
    const std::string_view head(text + 1, std::strcspn(text + 1, ",*"));
    if (head.size() < 5)
        json("type", head);
    else
        json("type", head.substr(2))("talker", head[1]);
}

void DescribeSentence(CJsonLine& json, char* text)
{
    CNMEASentenceType* type = CNMEASentenceType::FindType(text);
    if (type == nullptr) {
        DescribeHead(json("result", "unknown"), text);
        return;
    }
    const char talker = text[2];
    CNMEASentence* sentence = type->GetInstance();
    ++sentence->use_count;
    const bool usable = sentence->Init(text);
    json("result", usable ? "ok" : "rejected")("type", type->id);
    if (type->id_offset == 3) json("talker", talker);
    if (usable) DescribeFields(json, type->id, *sentence);
    sentence->Release();
}

void DescribeLine(CJsonLine& json, char* line, CLineSplitter::Result result)
{
    char* text = result == CLineSplitter::kTooLong ? nullptr : FramedSentence(line);
    if (text == nullptr)
        json("result", "framing");
    else if (!CNMEASentence::check_checksum(text))
        json("result", "checksum");
    else
        DescribeSentence(json, text);
}

void PrintObject(const CJsonLine& json)
{
    std::puts(json.Object().c_str());
}

/// Prints what the arbitration makes of the sentences.
class CPositionPrinter : Listener<CDataGPSPosition> {
public:
    CPositionPrinter() { Connect(); }

    void Dispatch(long long number, char* line)
    {
        line_number = number;
        const char* text = FramedSentence(line);
        const CNMEASentenceType* type = text != nullptr ? CNMEASentenceType::FindType(text) : nullptr;
        source = type != nullptr ? type->id : "";
        CNMEASentence::DispatchSentence(line, nullptr);
    }

private:
    void OnUpdate(CDataGPSPosition& position) override
    {
        CJsonLine json;
        json("line", line_number)("lat", position.latitude)("lon", position.longitude)("time", position.time);
        json("status", position.status)("speed", position.speed);
        AddKnown(json, "course", position.course, CDataSpeedDirection::kNoCourse);
        json("source", source)("satellites_in_use", COverlayGPSPosition::theLatestPosition.satellites_in_use);
        AddKnown(json, "altitude", position.altitude, CDataGPSPosition().altitude);
        AddKnown(json, "accuracy", position.accuracy, CDataGPSPosition().accuracy);
        PrintObject(json);
    }
    static void AddKnown(CJsonLine& json, const char* name, float value, float unknown)
    {
        if (value == unknown)
            json.Null(name);
        else
            json(name, value);
    }

    long long line_number = 0;
    const char* source = "";
};

bool Decode(CInput& input, bool positions)
{
    CPositionPrinter printer;
    const auto take = [&](long long number, CLineSplitter& line, CLineSplitter::Result result) {
        if (!positions) {
            CJsonLine json;
            DescribeLine(json("line", number), line.Text(), result);
            PrintObject(json);
        } else if (result == CLineSplitter::kLine) {
            printer.Dispatch(number, line.Text());
        }
        return !OutputFailed();
    };
    return input.ForEachLine(take, [] { std::fflush(stdout); });
}

} // namespace

int DecodeCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption position(QStringLiteral("position"));
    parser.addOption(position);
    if (!ParseArguments(parser, arguments, 0, 1)) return kWrongUse;
    const QStringList names = parser.positionalArguments();
    const std::string name = names.isEmpty() ? "-" : names.front().toLocal8Bit().toStdString();
    CInput input;
    std::string fault;
    switch (input.Open(name, fault)) {
    case CInput::kWrongName:
        return WrongUse("\"" + name + "\" is neither tcp:HOST:PORT nor udp:PORT");
    case CInput::kCannotOpen:
        return Fail("cannot open " + name + ": " + fault);
    case CInput::kNone:
        break;
    }
    if (!Decode(input, parser.isSet(position))) return Fail("cannot read " + name + ": " + std::strerror(errno));
    return FinishOutput();
}
