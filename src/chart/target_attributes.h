#pragma once

/// A function compiled for InstructionSet::avx2 or avx512; only defined where there are such processors. What is to
/// exist for two sets from one text is an always-inline function that a plain one and one of these call.
#ifdef __x86_64__
#define ZT_AVX2 __attribute__((target("avx2,bmi,bmi2,lzcnt")))
#define ZT_AVX512 __attribute__((target("avx2,bmi,bmi2,lzcnt,avx512f,avx512bw,avx512vl,avx512vbmi")))
#endif
#define ZT_ALWAYS_INLINE [[gnu::always_inline]] inline
