// The choice of the interpolation row for a context's state.
#include "support/recorder.h"
#include <gtest/gtest.h>

TEST(LerpRows, AreChosenByTheState)
{
    constexpr vexlor_lerp_8888_fn table[4][3] = {
        {vexlor_1d_lerp_8888, vexlor_1d_lerp_pre_8888},
        {vexlor_1d_lerp_arepl_8888, vexlor_1d_lerp_pre_arepl_8888},
        {vexlor_1d_lerp_aone_8888, vexlor_1d_lerp_pre_aone_8888},
    };
    constexpr vexlor_lerp_565_fn table_565[] = {vexlor_1d_lerp_565, vexlor_1d_lerp_pre_565, nullptr};
    const Context ctx = make_context();
    for (uint32_t op = 0; op < 4; ++op)
        for (uint32_t mode = 0; mode < 3; ++mode) {
            ctx->alpha_dst_op = op == 3 ? 0x80000000 : op;
            ctx->alpha_mode = mode == 2 ? 0x80000001 : mode;
            EXPECT_EQ(vexlor_choose_1d_lerp_8888(ctx.get()), table[op][mode]) << op << ' ' << mode;
            EXPECT_EQ(vexlor_choose_1d_lerp_565(ctx.get()), table_565[mode]) << op << ' ' << mode;
        }
}
