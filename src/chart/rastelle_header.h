#pragma once

#include "chart/geo_ref_coeff.h"

#include <cstddef>
#include <cstdint>

/// Pixels along the side of a tile.
inline constexpr int kTileSide = 64;
inline constexpr int kTilePixels = kTileSide * kTileSide;
/// Palette slots that a pixel can name.
inline constexpr int kPaletteSize = 128;

/// The fixed part of a chart file (".rlt") as it lies at position 0, little-endian. A "pointer" is an absolute byte
/// position in the file, 0 for none; strings are Latin-1 and end with a zero byte.
struct CRastelleHeader {
    static constexpr std::uint32_t kMagic = 0x1423D5FF; ///< the lowest bit is free
    static constexpr std::uint32_t kVersionMask = 0x00FFFFFF;
    static constexpr std::uint32_t kHighestVersion = 5;
    static constexpr std::uint32_t kFamilyMask = 0xFF000000;
    static constexpr std::uint32_t kFamilyFlat = 0x00000000;
    static constexpr std::uint32_t kFamilyChunked = 0x01000000;
    static constexpr std::uint32_t kFamilyChunkedAlternative = 0x20000000;
    static constexpr std::uint32_t kFamilyRL2 = 0x10000000;
    /// Bytes that hold all scalar fields and the georeferencing, up to the palette.
    static constexpr std::size_t kScalarBytes = 0x1A0;
    /// The smallest chart file; a flat one has four bytes more for every tile.
    static constexpr std::size_t kFixedBytes = 0x45A8;
    /// Where the tile pointers of a flat chart begin, row by row.
    static constexpr std::size_t kTilePointers = 0x45A0;
    /// Tiles along a side that are still believed.
    static constexpr std::uint32_t kMaximumTiles = 1048576;

    std::uint32_t magic;
    std::uint32_t version; ///< low 24 bits: format version; high 8: file family
    std::uint32_t width;   ///< tiles
    std::uint32_t height;  ///< tiles
    std::uint32_t long_title;
    std::uint32_t title;
    std::uint32_t identifier;
    std::uint32_t edition;
    std::uint32_t revision;
    std::uint32_t unread_24;
    std::uint32_t copyright;
    std::uint32_t scale_text;
    std::uint32_t unread_30;
    std::uint32_t depth_units;
    std::uint32_t height_units;
    std::uint32_t unread_3c;
    std::uint32_t flags;
    std::uint32_t source_file_name;
    std::uint32_t unread_48[3];
    std::uint32_t extended_block; ///< pointer to a CRastelleExtendedBlock
    std::int32_t outline_count;   ///< below 1: no outline
    std::uint32_t outline;        ///< pointer to pairs of f64, latitude then longitude, degrees
    Geo_ref_coeff_t georeferencing;
    std::uint32_t palette[256];                                     ///< 0x00RRGGBB
    std::uint8_t interpolation_matrix[kPaletteSize * kPaletteSize]; ///< [a * 128 + b]: the index of an even mix of both

    bool HasChartMagic() const { return (magic | 1U) == kMagic; }
    std::uint32_t Family() const { return version & kFamilyMask; }
    static bool IsChunked(std::uint32_t family)
    {
        return family == kFamilyChunked || family == kFamilyChunkedAlternative;
    }
    /// Whether the size in tiles is one that a real chart can have.
    bool HasSaneSize() const { return width <= kMaximumTiles && height <= kMaximumTiles; }
};

/// What the pointer `extended_block` leads to.
struct CRastelleExtendedBlock {
    std::uint32_t chart_type;  ///< pointer to string, such as a series name
    std::uint32_t datum_shift; ///< pointer to two f64: latitude then longitude shift, degrees
    std::uint32_t unread[4];
    std::uint32_t extra_name;      ///< pointer to string
    std::uint32_t download_record; ///< pointer to a CRastelleDownloadRecord
};

struct CRastelleDownloadRecord {
    std::uint32_t size; ///< bytes of the record that count, this field included
    std::uint32_t url;  ///< pointer to string; counts when size is at least 8
};

static_assert(offsetof(CRastelleHeader, extended_block) == 0x54);
static_assert(offsetof(CRastelleHeader, georeferencing) == 0x60);
static_assert(offsetof(CRastelleHeader, palette) == CRastelleHeader::kScalarBytes);
static_assert(offsetof(CRastelleHeader, interpolation_matrix) == 0x5A0);
static_assert(sizeof(CRastelleHeader) == CRastelleHeader::kTilePointers);
static_assert(sizeof(CRastelleExtendedBlock) == 32 && sizeof(CRastelleDownloadRecord) == 8);
