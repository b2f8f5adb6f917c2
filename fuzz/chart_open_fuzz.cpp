#include "built_seeds.h"
#include "chart/chart_writer.h"
#include "chart/rastelle1.h"
#include "core/message_sink.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

/// What the reader maps, linked in the place of the system's call: a block of the heap as long as the mapping. The
/// sanitizer sees a read past its last byte, where a real mapping would go on to the end of the page.
extern "C" void* __wrap_mmap(void*, std::size_t length, int, int, int file, off_t start)
{
    void* const block = std::malloc(length);
    if (pread(file, block, length, start) != static_cast<ssize_t>(length)) abort(); // past the end of the file
    return block;
}
extern "C" int __wrap_munmap(void* block, std::size_t)
{
    std::free(block);
    return 0;
}

namespace {

struct SilentSink : IMessageSink {
    void Show(ZT_HWND, const std::string&, const std::string&, std::function<void()>) override {}
    void Hint(ZT_HWND, const std::string&) override {}
    void Status(const std::string&) override {}
};

/// A file in memory that is reached by a path, as the reader wants it.
class MemoryFile {
public:
    MemoryFile() : file(memfd_create("chart", 0)), path("/proc/self/fd/" + std::to_string(file)) {}
    void Fill(const std::uint8_t* head, std::size_t head_size, const std::uint8_t* tail, std::size_t tail_size,
              std::size_t size)
    {
        if (ftruncate(file, 0) != 0 || ftruncate(file, static_cast<off_t>(size)) != 0) abort();
        if (pwrite(file, head, head_size, 0) < 0 ||
            pwrite(file, tail, tail_size, static_cast<off_t>(size - tail_size)) < 0)
            abort();
    }
    const char* Path() const { return path.c_str(); }

private:
    int file;
    std::string path;
};

} // namespace

/// Small whole charts, laid out as the inputs are.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    std::vector<std::string> seeds;
    for (const int tiles : {1, 2}) {
        CChartWriter writer;
        writer.Size(tiles, tiles).Title("A").Type("Nautical").DepthUnits("m").DatumShift(1, 2);
        writer.Outline({{0, 0}, {0, 1}, {1, 1}}).ExtraName("x").DownloadUrl("u");
        const auto chart = writer.Bytes(writer.Plain(3));
        std::string seed("\0\0\2\1", 4);
        seed.append(chart.begin(), chart.begin() + 0x60);
        seeds.push_back(seed.append(chart.begin() + 0x45A0, chart.end()));
    }
    AddBuiltSeeds(argc, argv, seeds);
    return 0;
}

/// Opens a made-up file as a chart, then reads everything a view would read of it. The input's first bytes say how the
/// rest is laid out: as header and as the end of a file of a chosen size, with the middle zero, so that short inputs
/// make whole files.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static SilentSink sink;
    static MemoryFile file;
    static auto thread = std::make_unique<ThreadDataForRead>();
    static std::vector<unsigned int> pixels(256 * 256);
    if (size < 4) return 0;
    SetMessageSink(&sink);
    const std::size_t head = std::min<std::size_t>(size - 4, 0x60);
    const std::size_t tail = std::min<std::size_t>(size - 4 - head, 0x4000);
    const std::size_t file_size = std::max<std::size_t>(head + tail, 0x45A0 + tail + (data[0] | (data[1] & 3) << 8));
    file.Fill(data + 4, head, data + 4 + head, tail, (data[1] & 0x80) != 0 ? head + tail : file_size);
    CRastelle1 chart;
    bool opened = false;
    int calls = 0;
    chart.Open({}, file.Path(), [&](bool ok) {
        opened = ok;
        ++calls;
    });
    if (calls != 1 || opened != chart.open) abort();
    if (!opened) return 0;
    chart.GetTitle();
    chart.GetCopyright();
    CPolygon boundary;
    chart.getBoundaryPolygon(boundary);
    chart.doesContain(0.0, 0.0);
    const int level = data[2] % 7 - 2;
    const int x = static_cast<int>(data[3] & 7) * 64 - 64;
    chart.ReadRectRGB(x, 0, 64, 64, 256, level, pixels.data(), thread.get());
    return 0;
}
