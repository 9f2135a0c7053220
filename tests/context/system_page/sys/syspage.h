// Stands in for the header of systems that have a system page: the one entry that the library reads.
#pragma once
#include <cstdint>

struct syspage_entry {
    struct {
        uint32_t cpu, speed, flags;
    } cpuinfo[2];
};
extern syspage_entry* _syspage_ptr;
#define SYSPAGE_ENTRY(entry) (_syspage_ptr->entry)
