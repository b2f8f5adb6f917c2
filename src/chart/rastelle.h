#pragma once

#include "chart/mapped_view.h"
#include "chart/rastelle_header.h"
#include "chart/thread_data_for_read.h"
#include "core/bounds.h"
#include "core/locks.h"
#include "core/polygon.h"
#include "core/zt_hwnd.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

class CMixTables;
class CProgressDialogData;

/// The reader of one raster chart file (".rlt"): header, texts, palette, georeferencing, outline and tiles.
///
/// The file is never read into memory: it is reached through at most two mapped views, the first from its start and
/// one that moves. Bad data gives a wrong picture and nothing else.
///
/// Threads: Create, Destroy, Open and Close on the main thread. Header, palette and georeferencing do not change
/// while open and may be read by any thread. Tiles may be read by any number of threads, each with its own
/// ThreadDataForRead; `view_lock` guards the moving view.
class CRastelle {
public:
    using Header = CRastelleHeader;
    /// What CreateNew does with a file that is no chart.
    enum class WrongMagic { remove, keep };

    CRastelle();
    CRastelle(const CRastelle&) = delete;
    CRastelle& operator=(const CRastelle&) = delete;

    virtual ~CRastelle();
    virtual void invalidate_read_cache(unsigned /*key*/) {}
    virtual void invalidate_read_cache() {}
    virtual bool is_writable() const { return false; }
    virtual void DownloadPolygon(const CPolygon*, CProgressDialogData*) {}
    virtual void DownloadRoute(const CPolyline*, double /*distance*/, CProgressDialogData*) {}
    virtual bool appearsFullyDownloadedWithin(const CBounds&) { return true; }
    /// Decodes tile (x, y) for a reduction by 2^level (0 to 6) into `out`: kTileSide >> level rows in stored order,
    /// with kTileMargin writable bytes behind them. 0, or 1 when there is nothing to read from.
    virtual int ReadBlock(int x, int y, int level, unsigned char* out, ThreadDataForRead* thread) = 0;
    /// The last step of opening: false refuses the chart.
    virtual bool OnOpen() { return true; }
    /// Decodes `count` (1 to ThreadDataForRead::kTilesInStep) neighbouring tiles from (x, y) to the right into
    /// thread->tiles, with what is known of them in thread->notes. Result as ReadBlock.
    virtual int ReadBlockRow(int x, int y, int count, int level, ThreadDataForRead* thread);

    /// The chart of a path, shared: each path is opened at most once, and every Create is answered by one Destroy. A
    /// chart that failed to open is returned closed. `done(chart, open)` is called exactly once, before Create returns,
    /// unless the result is null (not a chart, or a family without a reader): then not at all.
    static CRastelle* Create(ZT_HWND parent, const char* path, std::function<void(CRastelle*, bool)> done);
    /// A chart of its own for the caller, who deletes it. As Create otherwise.
    ///
    /// A regular file from which four bytes could be read that are not a chart's is deleted from the disk (its message
    /// is none), unless `wrong_magic` says keep.
    static CRastelle* CreateNew(ZT_HWND parent, const char* path, std::function<void(CRastelle*, bool)> done,
                                WrongMagic wrong_magic = WrongMagic::remove);
    /// Gives a chart of Create back; the last one deletes it.
    void Destroy();

    /// Opens the file and reports through `done`, exactly once; messages go through ShowMessage.
    void Open(ZT_HWND parent, const char* path, std::function<void(bool)> done);
    void Close();

    /// Texts as UTF-8, empty when the chart is not mapped.
    std::string GetTitle();
    std::string GetCopyright();
    std::string GetMapType();
    /// The string at a pointer of the header; empty when there is none.
    void GetHeaderString(unsigned pointer, std::string& out);
    /// The same from an open file, of at most 1023 bytes; moves the handle's position. For callers that do not map.
    static void GetString(int file, unsigned pointer, std::string& out);

    /// The bytes from a position of the file to the end of the view that shows it; null (or empty) when the position is
    /// not in the file. May move the second view: the bytes hold until the next call, so a caller beside other readers
    /// takes BlockReader.
    const void* get_addr(std::uint64_t position);
    /// Access to blocks for as long as it lives; keeps other readers from moving the view.
    class BlockReader {
    public:
        explicit BlockReader(CRastelle& chart_to_read) : chart(chart_to_read) {}
        /// As get_addr. Bytes of the first view need no lock and hold until Close; others until the next call that
        /// moves the view.
        std::span<const std::uint8_t> Bytes(std::uint64_t position);
        /// Whether Bytes(position) would end the life of what earlier calls have given.
        bool MovesView(std::uint64_t position) const;

    private:
        CRastelle& chart;
        std::unique_lock<CMutex> lock;
    };

    /// Pixel to position (degrees) with the datum shift, and back.
    void xy_to_latlong(int x, int y, double& lat, double& lon) const;
    void latlong_to_xy(double lat, double lon, double& x, double& y) const;
    /// Nautical miles per pixel at a pixel; 0 when closed.
    double get_scale(double x, double y) const;
    /// The chart's area with x as longitude and y as latitude, degrees; returns the number of vertices.
    int getBoundaryPolygon(CPolygon& polygon);
    bool doesContain(double lat, double lon);

    /// Bytes of the chart file and of its chunk folder, if it has one beside it.
    static long getRltFileSize(const std::string& path);
    /// Whether a chunked chart looks as if all of it were on the disk. Until chunks are read, this answers whether the
    /// chunk file exists.
    static bool appearsFullyDownloaded(const std::string& path);

    /// Fills `dest` (rows `stride` pixels apart, 0xFFRRGGBB) with the w x h output pixels whose top left corner is
    /// chart pixel (x, y), reduced by 2^level (up to 6) or magnified by 2^-level. Positions outside the chart show
    /// palette index 1. Reads whole tiles: x, y and the source size are multiples of kTileSide, or the source lies in
    /// one tile. Allocates nothing. 0, or 1 when a tile could not be read.
    int ReadRectRGB(int x, int y, int w, int h, int stride, int level, unsigned int* dest, ThreadDataForRead* thread);

    /// Decodes the first `rows` (1 to 64) stored rows of a tile from its coded block into `out`, which has kTileMargin
    /// more bytes. `block` reaches to the end of what may be read. Sets `placeholder` for a block without a picture.
    static TileNote UnpackBlock(std::span<const std::uint8_t> block, unsigned char* out, int rows, bool& placeholder);
    /// A block that is not Huffman-coded, one-colour or empty: tags 0x81 to 0xFF; returns the pixels written.
    static int ReadBlock_bitmap(std::span<const std::uint8_t> block, int rows, unsigned char* out);

    /// What is said about a chart of the RL2 family.
    static const char* const kRL2Message;
    /// Stored row p of a tile holds image row bitrev[p], the 6-bit reversal of p; its own inverse.
    static const unsigned char bitrev[64];

    bool open = false;
    int width_px = 0;
    int height_px = 0;
    std::uint32_t palette[kPaletteSize] = {}; ///< 0xFFRRGGBB
    double datum_lat_shift = 0.0;             ///< degrees
    double datum_lon_shift = 0.0;             ///< degrees
    bool has_datum_shift = false;
    std::string extra_name;
    std::string path;
    double centre_lon = 0.0;        ///< degrees
    const Header* header = nullptr; ///< in the first view; null when closed
    CRastelleExtendedBlock extended = {};
    CRastelleDownloadRecord download = {};

protected:
    /// Tile pointer of a flat chart; the tile lies on the chart.
    std::uint32_t TilePointer(int x, int y) const;

private:
    /// The text of the failure, empty for one without a message; nothing when the file is a good chart.
    std::optional<std::string> MapAndCheck(const char* new_path);
    std::optional<std::string> CheckHeader(const char* new_path);
    std::optional<std::string> MapTilePointers(const char* new_path);
    void LoadExtendedBlock();
    void LoadPalette();
    void LoadDatumShift();
    int ReadReduced(int x, int y, int w, int h, int stride, int level, unsigned int* dest, ThreadDataForRead* thread);
    int ReadMagnified(int x, int y, int w, int h, int stride, int power, unsigned int* dest, ThreadDataForRead* thread);
    template <class T>
    bool CopyFrom(std::uint64_t position, T& out, std::size_t bytes = sizeof(T));
    void AddOutline(CPolygon& polygon);
    std::span<const std::uint8_t> BaseBytes(std::uint64_t position) const;
    std::span<const std::uint8_t> HighBytes(std::uint64_t position);

    int file = -1;
    std::uint64_t file_size = 0;
    CMappedView base_view;
    CMutex view_lock; ///< guards the two below
    CMappedView high_view;
    std::uint64_t high_view_start = ~0ULL;
    std::unique_ptr<CMixTables> mix; ///< for reduced reads, made by Open
    std::optional<CPolygon> boundary;
};
