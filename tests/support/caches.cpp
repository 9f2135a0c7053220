// A last cache that pictures of a few megabytes fill, whatever the processor has: they take ways of their own.
#include "isa/caches.h"

vexlor::u64 vexlor::last_cache() { return 16'000'000; }
