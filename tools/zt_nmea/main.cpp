// zt-nmea: decodes, plays and filters sentences. docs/zt-nmea.md describes it.
#include "tools/zt_nmea/cli.h"

namespace {

constexpr CToolCommand kCommands[] = {
    {"decode", DecodeCommand, "decode [--position] [FILE | - | tcp:HOST:PORT | udp:PORT]    one JSON object a line"},
    {"play", PlayCommand, "play FILE --to tcp:PORT | udp:HOST:PORT | pty [--speed X]    at the log's own pace"},
    {"filter", FilterCommand, "filter RULE...                                               standard input to output"},
};

} // namespace

int main(int argc, char** argv)
{
    return RunTool(argc, argv, "zt-nmea", kCommands, "Exit code: 0 done, 1 failed, 2 wrongly called. See zt-nmea(1).");
}
