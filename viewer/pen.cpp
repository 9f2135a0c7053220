#include "pen.h"

#include "failure.h"
#include "formats.h"

namespace view {

namespace {

std::string numbers(std::initializer_list<int32_t> values)
{
    std::string text;
    for (const int32_t value : values)
        text += (text.empty() ? "" : ", ") + std::to_string(value);
    return text;
}

std::string setter(const char* what, const std::string& value)
{
    return std::string("vexlor_context_set_") + what + "(ctx, " + value + ")";
}

} // namespace

Pen::Pen(bool simd, Clock clock)
    : ctx_(tool::new_context(simd ? tool::simd_all : tool::simd_none)), clock_(std::move(clock))
{
    line("vexlor_context_create(&ctx)");
    if (simd)
        line(setter("simd", "true"));
}

void Pen::describe(const Named& surface)
{
    const vexlor_surface_desc& d = *surface.desc;
    line(std::string("vexlor_surface_desc_init(&") + surface.name + ", " +
         numbers({d.width, d.height, static_cast<int32_t>(d.stride)}) + ", " + surface.name +
         "_pixels, VEXLOR_FMT_" + std::string(tool::format_name(d.format)) + ")");
}

void Pen::filter(uint32_t value)
{
    constexpr const char* names[] = {"VEXLOR_FILTER_NONE", "VEXLOR_FILTER_MEAN", "VEXLOR_FILTER_CATROM"};
    line(setter("filter", names[value]));
    vexlor_context_set_filter(ctx_.get(), value);
}

void Pen::alpha_op(uint32_t value)
{
    constexpr const char* names[] = {"VEXLOR_ALPHA_OP_NONE", "VEXLOR_ALPHA_OP_TEST", "VEXLOR_ALPHA_OP_BLEND"};
    line(setter("alpha_op", names[value]));
    vexlor_context_set_alpha_op(ctx_.get(), value);
}

void Pen::alpha_src(uint32_t value)
{
    constexpr const char* names[] = {"VEXLOR_ALPHA_SRC_GLOBAL", "VEXLOR_ALPHA_SRC_PIXEL"};
    line(setter("alpha_src", names[value]));
    vexlor_context_set_alpha_src(ctx_.get(), value);
}

void Pen::alpha_mode(uint32_t value)
{
    constexpr const char* names[] = {"VEXLOR_ALPHA_STRAIGHT", "VEXLOR_ALPHA_PREMULTIPLIED"};
    line(setter("alpha_mode", names[value]));
    vexlor_context_set_alpha_mode(ctx_.get(), value);
}

void Pen::alpha_dst_op(uint32_t value)
{
    constexpr const char* names[] = {"VEXLOR_ALPHA_DST_BLEND", "VEXLOR_ALPHA_DST_REPLACE",
                                     "VEXLOR_ALPHA_DST_ONE"};
    line(setter("alpha_dst_op", names[value]));
    vexlor_context_set_alpha_dst_op(ctx_.get(), value);
}

void Pen::alpha_value(uint8_t value)
{
    line(setter("alpha_value", std::to_string(value)));
    vexlor_context_set_alpha_value(ctx_.get(), value);
}

void Pen::alpha_test(uint32_t test, uint8_t reference)
{
    constexpr const char* names[] = {"LESS", "LESS_EQUAL", "EQUAL", "GREATER_EQUAL", "GREATER", "NOT_EQUAL"};
    line(setter("alpha_test", std::string("VEXLOR_ALPHA_TEST_") + names[test]));
    line(setter("alpha_ref", std::to_string(reference)));
    vexlor_context_set_alpha_test(ctx_.get(), test);
    vexlor_context_set_alpha_ref(ctx_.get(), reference);
}

void Pen::scale(const Named& src, const Named& dst, tool::Rect from, tool::Rect to)
{
    line(std::string("vexlor_scale(ctx, &") + src.name + ", &" + dst.name + ", " +
         numbers({from.x, from.y, from.width, from.height}) + ", " +
         numbers({to.x, to.y, to.width, to.height}) + ")");
    const double start = clock_();
    drawn("scale", start,
          vexlor_scale(ctx_.get(), src.desc, dst.desc, from.x, from.y, from.width, from.height, to.x, to.y,
                       to.width, to.height));
}

void Pen::copy(const Named& src, const Named& dst, tool::Rect from, tool::Point to)
{
    line(std::string("vexlor_copy(ctx, &") + src.name + ", &" + dst.name + ", " +
         numbers({from.x, from.y, to.x, to.y, from.width, from.height}) + ")");
    const double start = clock_();
    drawn("copy", start,
          vexlor_copy(ctx_.get(), src.desc, dst.desc, from.x, from.y, to.x, to.y, from.width, from.height));
}

void Pen::drawn(const char* operation, double start, uint32_t result)
{
    seconds_ += clock_() - start;
    if (result == VEXLOR_OK)
        return;
    calls_ += "/* returns " + std::to_string(result) + " */\n";
    throw tool::Refused(operation, result);
}

} // namespace view
