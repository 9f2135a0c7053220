// How the library does a job: through its three drawing calls, or row by row where it has only a row routine.
#include "job.h"

#include <memory>

namespace bench {
namespace {

struct Destroy {
    void operator()(vexlor_context* context) const { vexlor_context_destroy(context); }
};
using Context = std::unique_ptr<vexlor_context, Destroy>;

uint32_t filter_of(Filter filter)
{
    switch (filter) {
    case Filter::nearest: return VEXLOR_FILTER_NONE;
    case Filter::linear:
    case Filter::box: return VEXLOR_FILTER_MEAN;
    case Filter::catrom:
    case Filter::gauss: return VEXLOR_FILTER_CATROM;
    }
    return VEXLOR_FILTER_NONE;
}

void set_state(vexlor_context* context, const Job& job)
{
    vexlor_context_set_color(context, job.to == VEXLOR_FMT_565 ? fill_color & 0xFFFF : fill_color);
    vexlor_context_set_alpha_value(context, job.to == VEXLOR_FMT_565 ? weight_565 : weight);
    vexlor_context_set_alpha_ref(context, reference);
    vexlor_context_set_alpha_test(context, VEXLOR_ALPHA_TEST_GREATER_EQUAL);
    vexlor_context_set_filter(context, filter_of(job.filter));
    switch (job.work) {
    case Work::fill:
    case Work::copy:
    case Work::convert:
    case Work::scale: break;
    case Work::copy_opaque: vexlor_context_set_alpha_dst_op(context, VEXLOR_ALPHA_DST_ONE); break;
    case Work::alpha_test:
        vexlor_context_set_alpha_op(context, VEXLOR_ALPHA_OP_TEST);
        vexlor_context_set_alpha_dst_op(context, VEXLOR_ALPHA_DST_REPLACE);
        break;
    case Work::over_premultiplied:
    case Work::scale_over:
        vexlor_context_set_alpha_mode(context, VEXLOR_ALPHA_PREMULTIPLIED);
        [[fallthrough]];
    case Work::over: vexlor_context_set_alpha_src(context, VEXLOR_ALPHA_SRC_PIXEL); [[fallthrough]];
    case Work::fill_blend:
    case Work::global: vexlor_context_set_alpha_op(context, VEXLOR_ALPHA_OP_BLEND); break;
    }
}

uint32_t draw(vexlor_context* context, const Scene& scene)
{
    const vexlor_surface_desc &from = scene.source.surface(), &to = scene.target.surface();
    switch (scene.job.work) {
    case Work::fill:
    case Work::fill_blend: return vexlor_fill(context, &to, 0, 0, to.width, to.height);
    case Work::scale:
    case Work::scale_over:
        return vexlor_scale(context, &from, &to, 0, 0, from.width, from.height, 0, 0, to.width, to.height);
    case Work::convert:
        if (to.format == VEXLOR_FMT_U8Y8V8Y8) {
            for (int y = 0; y < to.height; ++y)
                vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(scene.source.row(y), scene.target.row(y), to.width);
            return VEXLOR_OK;
        }
        [[fallthrough]];
    case Work::copy:
    case Work::copy_opaque:
    case Work::alpha_test:
    case Work::over:
    case Work::over_premultiplied:
    case Work::global: return vexlor_copy(context, &from, &to, 0, 0, 0, 0, to.width, to.height);
    }
    return VEXLOR_UNSUPPORTED_FORMAT;
}

// A context of its own: what the row cache remembers of other scales changes pixels.
Drawing drawing(const Scene& scene, const char* name, bool simd)
{
    vexlor_context* fresh = nullptr;
    vexlor_context_create(&fresh);
    const std::shared_ptr<vexlor_context> context = Context(fresh);
    if (!context)
        refuse(name, "no memory for a context");
    vexlor_context_set_simd(context.get(), simd);
    set_state(context.get(), scene.job);
    return {name, [context, &scene, name] {
                if (const uint32_t code = draw(context.get(), scene); code != VEXLOR_OK)
                    refuse(name, "result code " + std::to_string(code));
            }};
}

} // namespace

std::vector<Drawing> library_drawings(const Scene& scene)
{
    return {drawing(scene, "portable", false), drawing(scene, "SIMD on", true)};
}

} // namespace bench
