#pragma once

/// The instruction sets that the fast paths are written for, each of which includes those before. Each technique has a
/// file of its own with variants for the sets from which it gains; which one runs is decided here alone.
enum class InstructionSet {
    portable, ///< what the compiler's baseline offers
    avx2,     ///< AVX2 and BMI2
    avx512,   ///< AVX-512 with byte permutation (BW, VL, VBMI)
};

/// The set in use: the best that this processor has, unless a test or benchmark chose another.
InstructionSet TheInstructionSet();
/// Whether bit deposit is a single fast instruction; on some processors with BMI2 it is a long microprogram.
bool HasFastBitDeposit();
/// Chooses a set for the whole process; one that the processor lacks is ignored. Returns the one before. Not while
/// other threads read charts.
InstructionSet SetInstructionSet(InstructionSet set);
