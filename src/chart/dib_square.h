#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include <QImage>
#include <QPixmap>

class CRastelle;
struct ThreadDataForRead;

/// One finished picture of 256 x 256 pixels of a chart at one zoom level.
///
/// The pixmap shows the very bytes of `bits`, so it is dropped before the square is asked for again. Threads:
/// everything on the main thread, but Read, which runs on a worker while the square is in its hands.
struct DIB_square {
    static constexpr int kSide = 256; ///< pixels
    static constexpr int kSideShift = 8;
    static constexpr int kBytes = kSide * kSide * 4;
    /// Holds nothing and can be reused at once.
    static constexpr int kInvalidLevel = -999;

    DIB_square() = default;
    DIB_square(const DIB_square&) = delete;
    DIB_square& operator=(const DIB_square&) = delete;
    ~DIB_square();

    void Invalidate() { level = kInvalidLevel; }
    /// Makes the square stand for a place that has yet to be read. Main thread: drops the pixmap.
    void Claim(double to_x, double to_y, int to_level);
    /// Decodes the place into `bits`, which are allocated by the first read and kept.
    void Read(CRastelle& chart, ThreadDataForRead* thread);
    /// The picture for painting, made when needed. Main thread.
    const QPixmap& Pixmap();
    /// The picture's bytes, for a square that is not with the worker; null before the first read.
    const std::uint32_t* Bits() const { return bits.get(); }
    /// Squares of one chart pixel block of 1024 x 1024 have the same key, and keys rise along rows of blocks.
    std::int32_t ChunkKey() const;

    double x = 0.0; ///< top left corner in level coordinates, a multiple of 256
    double y = 0.0;
    int level = kInvalidLevel;
    bool placeholder = false; ///< a tile of the read came from a substitute fill
    int shortfall = 0;        ///< levels by which the data was coarser than wanted

    DIB_square* newer = nullptr; ///< links of the Dib_List that holds it
    DIB_square* older = nullptr;

private:
    struct AlignedFree {
        void operator()(std::uint32_t* memory) const;
    };
    std::unique_ptr<std::uint32_t, AlignedFree> bits;
    QImage image;                  ///< over `bits`
    std::optional<QPixmap> pixmap; ///< made by the first paint after a read
};
