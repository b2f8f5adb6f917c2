// zt-chart: inspects, renders, checks and makes chart files. docs/zt-chart.md describes it.
#include "tools/zt_chart/cli.h"

namespace {

constexpr CToolCommand kCommands[] = {
    {"info", InfoCommand, "info FILE                                      header and catalogue record as JSON"},
    {"render", RenderCommand, "render FILE -o OUT.png [--level L] [--rect X,Y,W,H] [--indices]"},
    {"locate", LocateCommand, "locate FILE --xy X,Y | --latlon LAT,LON        pixel to position and back"},
    {"best", BestCommand, "best FOLDER... --at LAT,LON --scale S [--any-type] [--in|--out]"},
    {"verify", VerifyCommand, "verify FILE...                                 decodes every tile"},
    {"make", MakeCommand, "make INPUT -o OUT.rlt [--bounds S,W,N,E | --corners ... | --world-file FILE] [texts]"},
};

} // namespace

int main(int argc, char** argv)
{
    return RunTool(argc, argv, "zt-chart", kCommands,
                   "Inputs are only ever read. Exit code: 0 done, 1 failed, 2 wrongly called. See zt-chart(1).");
}
