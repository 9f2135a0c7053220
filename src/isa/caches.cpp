#include "isa/caches.h"

#if __has_include(<unistd.h>)
#include <unistd.h>
#endif

vexlor::u64 vexlor::last_cache()
{
#if defined(_SC_LEVEL3_CACHE_SIZE)
    const long bytes = sysconf(_SC_LEVEL3_CACHE_SIZE);
    return bytes > 0 ? static_cast<u64>(bytes) : 0;
#else
    return 0;
#endif
}
