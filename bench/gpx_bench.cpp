#include "core/files.h"
#include "core/folders.h"
#include "overlays/gpx_import.h"
#include "overlays/gpx_output.h"
#include "overlays/gpx_write.h"
#include "overlays/track_manager.h"
#include "ratio.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>

#include <QTemporaryDir>
#ifdef ZT_HAVE_PUGIXML
#include <pugixml.hpp>
#endif

namespace {

constexpr int kPoints = 1'000'000;

/// A track of a million points, and its file of about 100 MB.
class CLongTrack {
public:
    CLongTrack()
    {
        SetFolderRoot(folder.path().toStdString());
        path = folder.filePath(QStringLiteral("long.gpx")).toStdString();
        for (int i = 0; i < kPoints; ++i)
            track.addPoint({50.0 + 1e-5 * i, -4.0 + 0.02 * std::sin(0.003 * i), 1.6e9 + 10.0 * i, 12.0F}, false);
        Write();
        if (!read_whole_file(path, text)) std::abort();
    }
    ~CLongTrack() { SetFolderRoot({}); }

    void Write()
    {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        if (file == nullptr) std::abort();
        CGPXOutput out(file);
        out.write_header();
        WriteGPX(out, track);
        if (!out.Close()) std::abort();
        std::fclose(file);
    }
    void WriteBytes() const
    {
        std::FILE* file = std::fopen((path + ".copy").c_str(), "wb");
        if (file == nullptr || std::fwrite(text.data(), 1, text.size(), file) != text.size()) std::abort();
        std::fclose(file);
    }
    void Read() const
    {
        CBounds bounds;
        if (!ImportGPXFile(path, bounds)) std::abort();
        g_track_manager.ClearAll();
    }
    /// Reads the file once, and prints how much memory that took at most over the size of the file.
    void ReadAndTellPeak() const
    {
        std::ofstream("/proc/self/clear_refs") << "5"; // the peak counts from here
        const double before = MemoryOf("VmRSS:");
        Read();
        std::printf("{\"name\": \"gpx/read_1e6_points, peak memory\", \"ratio\": %.2f, \"baseline\": \"the file\"}\n",
                    (MemoryOf("VmHWM:") - before) / static_cast<double>(text.size()));
    }
    /// Reads the file and looks for every tag.
    void FindTags() const
    {
        std::string bytes;
        if (!read_whole_file(path, bytes)) std::abort();
        std::size_t tags = 0;
        const char* at = bytes.data();
        const char* const end = at + bytes.size();
        while ((at = static_cast<const char*>(std::memchr(at, '<', static_cast<std::size_t>(end - at)))) != nullptr) {
            ++tags;
            ++at;
        }
        if (tags < kPoints) std::abort();
    }

#ifdef ZT_HAVE_PUGIXML
    /// Reads the file into its tree, and nothing out of that.
    void ReadTree() const
    {
        pugi::xml_document document;
        if (!document.load_file(path.c_str())) std::abort();
    }
#endif
    void Babel() const
    {
        RunPeer("gpsbabel -t -i gpx -f '" + path + "' -o unicsv -F /dev/null");
    }

private:
    /// A line of the process's state, bytes.
    static double MemoryOf(const char* line)
    {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;) {
            double kib = 0.0;
            if (word == line && status >> kib) return 1024.0 * kib;
        }
        return 0.0;
    }

    QTemporaryDir folder;
    COverlayTrack track;
    std::string path;
    std::string text;
};

CLongTrack& LongTrack()
{
    static CLongTrack track;
    return track;
}

const bool registered = [] {
    RegisterRatio(
        "gpx/read_1e6_points",
        [] {
            static const bool told = (LongTrack().ReadAndTellPeak(), true);
            LongTrack().Read();
            (void)told;
        },
        "read and find every <", [] { LongTrack().FindTags(); });
#ifdef ZT_HAVE_PUGIXML
    RegisterRatio(
        "gpx/read_1e6_points_peer", [] { LongTrack().Read(); }, "pugixml, the tree alone",
        [] { LongTrack().ReadTree(); });
#endif
    if (HasPeer("gpsbabel"))
        RegisterRatio(
            "gpx/read_1e6_points_babel", [] { LongTrack().Read(); }, "gpsbabel, read and thrown away",
            [] { LongTrack().Babel(); }, 3);
    RegisterRatio(
        "gpx/write_1e6_points", [] { LongTrack().Write(); }, "one write of the same bytes",
        [] { LongTrack().WriteBytes(); });
    return true;
}();

} // namespace
