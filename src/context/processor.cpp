// Where the processor's flags come from: the operating system's system page where there is one, the processor
// itself elsewhere.
#include "context/processor.h"

#if defined(VEXLOR_HAS_SYSTEM_PAGE)
#include <sys/syspage.h>

vexlor::u32 vexlor::processor_flags() { return SYSPAGE_ENTRY(cpuinfo)->flags; }
#else
#include <cpuid.h>

vexlor::u32 vexlor::processor_flags()
{
    u32 eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (!__get_cpuid(1, &eax, &ebx, &ecx, &edx))
        return 0;
    return (edx & bit_SSE ? flag_sse : 0) | (edx & bit_SSE2 ? flag_sse2 : 0);
}
#endif
