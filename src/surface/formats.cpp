// The two predicates on format codes.
#include "surface/formats.h"

using namespace vexlor;

uint32_t vexlor_fmt_get_alpha_shift(uint32_t format) { return is_alpha_last(format) ? 24 : 0; }

bool vexlor_fmt_is_equiv(uint32_t a, uint32_t b)
{
    return a == b || (has_rgb32_bit(a) && has_rgb32_bit(b) &&
                      vexlor_fmt_get_alpha_shift(a) == vexlor_fmt_get_alpha_shift(b));
}
