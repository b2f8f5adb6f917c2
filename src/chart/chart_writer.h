#pragma once

#include "chart/geo_ref_coeff.h"
#include "chart/polynomial_projection.h"
#include "chart/rastelle_header.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <vector>

/// How the pixels of a tile are coded.
enum class TileCoding { smallest, huffman, run_length, bit_packed, one_colour };

/// The coded block of one tile of kTilePixels indices (0 to 127), rows in image order. `one_colour` takes the first
/// pixel's for all; a tile of a single colour cannot be bit-packed and becomes a one-colour block. Returns the block.
std::vector<std::uint8_t> EncodeTile(const unsigned char* indices, TileCoding coding);

/// For each pair of colours (0xRRGGBB) the one of the palette that is nearest to their mean, [a * 128 + b].
std::vector<std::uint8_t> BuildInterpolationMatrix(std::span<const std::uint32_t> palette);

/// Writes flat charts (".rlt"): set what the chart is to say, then give its pixels band by band. Texts are given as
/// UTF-8 and stored as Latin-1 ("?" for what that lacks); an empty one is left out.
class CChartWriter {
public:
    /// Fills `band`, kTileSide rows of (tiles across * kTileSide) indices from 0 to 127, with tile row `tile_y`. Called
    /// for each row once, from the top. False gives up.
    using band_source = std::function<bool(int tile_y, unsigned char* band)>;

    CChartWriter();

    CChartWriter& Size(int tiles_across, int tiles_down);
    CChartWriter& Title(const std::string& text) { return Text(&CRastelleHeader::title, text); }
    CChartWriter& LongTitle(const std::string& text) { return Text(&CRastelleHeader::long_title, text); }
    CChartWriter& Identifier(const std::string& text) { return Text(&CRastelleHeader::identifier, text); }
    CChartWriter& Edition(const std::string& text) { return Text(&CRastelleHeader::edition, text); }
    CChartWriter& Revision(const std::string& text) { return Text(&CRastelleHeader::revision, text); }
    CChartWriter& Copyright(const std::string& text) { return Text(&CRastelleHeader::copyright, text); }
    CChartWriter& ScaleText(const std::string& text) { return Text(&CRastelleHeader::scale_text, text); }
    CChartWriter& DepthUnits(const std::string& text) { return Text(&CRastelleHeader::depth_units, text); }
    CChartWriter& HeightUnits(const std::string& text) { return Text(&CRastelleHeader::height_units, text); }
    CChartWriter& SourceFileName(const std::string& text) { return Text(&CRastelleHeader::source_file_name, text); }
    /// Chart type, such as a series name; the catalogue groups by it.
    CChartWriter& Type(const std::string& text);
    CChartWriter& ExtraName(const std::string& text);
    CChartWriter& DownloadUrl(const std::string& text);
    CChartWriter& Flags(std::uint32_t flags);
    /// Degrees, added to what the georeferencing gives.
    CChartWriter& DatumShift(double lat, double lon);
    CChartWriter& Outline(std::vector<GeoPoint> points);
    CChartWriter& Georeferencing(const Geo_ref_coeff_t& coefficients);
    /// Up to 128 colours 0xRRGGBB.
    CChartWriter& Palette(std::span<const std::uint32_t> colours);
    /// 128 x 128 indices; without it BuildInterpolationMatrix makes one of the palette.
    CChartWriter& Matrix(std::vector<std::uint8_t> indices);
    CChartWriter& Coding(TileCoding coding);
    /// For tests: header words as they stand, a tile's block as it stands, the least position of the blocks.
    CChartWriter& Magic(std::uint32_t magic);
    CChartWriter& Version(std::uint32_t version_with_family);
    CChartWriter& RawTile(int x, int y, std::vector<std::uint8_t> block);
    CChartWriter& BlocksFrom(std::uint32_t position);

    /// Writes the chart, replacing a file only when all went well. False when the source gave up, the disk refused, or
    /// the file would pass 4 GiB.
    bool Write(const std::string& path, const band_source& source) const;
    /// The chart in memory; empty on failure.
    std::vector<std::uint8_t> Bytes(const band_source& source) const;
    /// A source for an index image of the chart's whole size, rows `stride` bytes apart, that outlives its use.
    band_source Image(const unsigned char* indices, std::size_t stride) const;
    /// A source of one index everywhere.
    band_source Plain(unsigned char index) const;

private:
    class Output; // a file or memory, written in order with jumps

    CChartWriter& Text(std::uint32_t CRastelleHeader::*field, const std::string& text);
    bool WriteTo(Output& output, const band_source& source) const;
    bool WriteTexts(Output& output, CRastelleHeader& finished) const;
    bool WriteTiles(Output& output, const band_source& source, std::vector<std::uint32_t>& pointers) const;
    std::vector<std::uint8_t> Block(int x, int y, const unsigned char* band) const;

    CRastelleHeader header;
    std::vector<std::pair<std::uint32_t CRastelleHeader::*, std::string>> texts;
    std::string type;
    std::string extra_name;
    std::string download_url;
    bool has_datum_shift = false;
    double datum_shift[2] = {0.0, 0.0};
    std::vector<GeoPoint> outline;
    std::vector<std::uint8_t> matrix;
    std::size_t palette_size = 0;
    TileCoding coding = TileCoding::smallest;
    std::map<std::pair<int, int>, std::vector<std::uint8_t>> raw_tiles;
    std::uint32_t blocks_from = 0;
};
