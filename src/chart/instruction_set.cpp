#include "chart/instruction_set.h"

#include <algorithm>
#ifdef __x86_64__
#include <cpuid.h>
#endif

namespace {

#ifdef __x86_64__
/// Without it the instruction would silently do something else.
bool HasLeadingZeroCount()
{
    constexpr unsigned kExtendedFeatures = 0x80000001;
    constexpr unsigned kLzcnt = 1U << 5;
    unsigned eax, ebx, ecx = 0, edx;
    return __get_cpuid(kExtendedFeatures, &eax, &ebx, &ecx, &edx) != 0 && (ecx & kLzcnt) != 0;
}
#endif

InstructionSet BestInstructionSet()
{
#ifdef __x86_64__
    __builtin_cpu_init();
    const bool vectors = __builtin_cpu_supports("avx2") != 0;
    const bool bits =
        __builtin_cpu_supports("bmi") != 0 && __builtin_cpu_supports("bmi2") != 0 && HasLeadingZeroCount();
    if (!vectors || !bits) return InstructionSet::portable;
    const bool wide = __builtin_cpu_supports("avx512bw") != 0 && __builtin_cpu_supports("avx512vl") != 0 &&
                      __builtin_cpu_supports("avx512vbmi") != 0;
    return wide ? InstructionSet::avx512 : InstructionSet::avx2;
#else
    return InstructionSet::portable;
#endif
}

InstructionSet Best()
{
    static const InstructionSet best = BestInstructionSet();
    return best;
}
InstructionSet in_use = Best();

} // namespace

InstructionSet TheInstructionSet()
{
    return in_use;
}

bool HasFastBitDeposit()
{
#ifdef __x86_64__
    static const bool fast = !__builtin_cpu_is("znver1") && !__builtin_cpu_is("znver2");
    return fast;
#else
    return false;
#endif
}

InstructionSet SetInstructionSet(InstructionSet set)
{
    const InstructionSet before = in_use;
    in_use = std::min(set, Best());
    return before;
}
