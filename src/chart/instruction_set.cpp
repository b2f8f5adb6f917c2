#include "chart/instruction_set.h"

namespace {

InstructionSet BestInstructionSet()
{
#ifdef __x86_64__
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2")) return InstructionSet::avx2;
#endif
    return InstructionSet::portable;
}

const InstructionSet best = BestInstructionSet();
InstructionSet in_use = best;

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
    in_use = set <= best ? set : best;
    return before;
}
