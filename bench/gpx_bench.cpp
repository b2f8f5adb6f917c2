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
#include <memory>

#include <QTemporaryDir>

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

private:
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
        "gpx/read_1e6_points", [] { LongTrack().Read(); }, "read and find every <", [] { LongTrack().FindTags(); });
    RegisterRatio(
        "gpx/write_1e6_points", [] { LongTrack().Write(); }, "one write of the same bytes",
        [] { LongTrack().WriteBytes(); });
    return true;
}();

} // namespace
