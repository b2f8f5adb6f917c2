#pragma once

/// A function compiled for InstructionSet::avx2; only defined where there is such a processor. What is to exist for
/// both sets from one text is an always-inline function that a plain one and one of these call.
#ifdef __x86_64__
#define ZT_AVX2 __attribute__((target("avx2,bmi,bmi2,lzcnt")))
#endif
#define ZT_ALWAYS_INLINE [[gnu::always_inline]] inline
