// Where there is a system page the flags come from it, anew at every call. This program brings its own pages.
#include "support/recorder.h"
#include <gtest/gtest.h>
#include <sys/syspage.h>

static syspage_entry pages[2];
syspage_entry* _syspage_ptr;

TEST(SystemPage, IsReadAtEveryCall)
{
    const Context ctx = make_context();
    for (const syspage_entry& page : pages)
        for (const uint32_t flags : {0x8800u, 0x0000u, 0x0800u, 0x8000u, ~0x8800u}) {
            _syspage_ptr = &pages[&page - pages];
            _syspage_ptr->cpuinfo[0].flags = flags;
            _syspage_ptr->cpuinfo[1].flags = ~flags; // of the second processor
            vexlor_context_set_simd(ctx.get(), true);
            EXPECT_EQ(ctx->memset == vexlor_memset_stream_sse, (flags & 0x800) != 0) << flags;
            EXPECT_EQ(ctx->conversions[1] == vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2, (flags & 0x8000) != 0)
                << flags;
        }
    _syspage_ptr = nullptr;
    vexlor_context_set_simd(ctx.get(), false);
    EXPECT_EQ(ctx->memset, vexlor_memset);
}
