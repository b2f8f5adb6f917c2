#pragma once

#include "chart/instruction_set.h"
#include "chart/tile_decoder.h"

#include <cstdint>
#include <random>
#include <span>
#include <vector>

/// Chooses an instruction set for a test and brings the one before back.
class CWithInstructionSet {
public:
    explicit CWithInstructionSet(InstructionSet set) : before(SetInstructionSet(set)) {}
    ~CWithInstructionSet() { SetInstructionSet(before); }
    CWithInstructionSet(const CWithInstructionSet&) = delete;
    CWithInstructionSet& operator=(const CWithInstructionSet&) = delete;

private:
    InstructionSet before;
};

inline constexpr InstructionSet kInstructionSets[] = {InstructionSet::portable, InstructionSet::avx2};

/// What the decoder in force makes of a block.
struct DecodedTile {
    std::vector<unsigned char> pixels;
    TileNote note;
    bool placeholder = false;
};
DecodedTile Decode(std::span<const std::uint8_t> block, int rows);
/// What the plain decoder makes of it.
DecodedTile DecodePlainly(std::span<const std::uint8_t> block, int rows);

/// A byte-form tree of `leaves` leaves of random shape and pixels, followed by `bit_bytes` random bytes. Not made by
/// the encoder, so that codes of every length and both kinds of branches occur.
std::vector<std::uint8_t> RandomHuffmanBlock(std::mt19937& random, int leaves, int bit_bytes);
