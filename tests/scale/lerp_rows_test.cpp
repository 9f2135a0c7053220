// Interpolation rows and writers against the models of one pixel, and the choice of the row for a context's state.
#include "support/recorder.h"
#include "support/rows.h"

namespace {

using model::Alpha;

// `shift` is where the source's alpha lies; the destination's comes in `color`, of which five bits count too.
template <auto Mix, Alpha Rule> void blend(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    Mix(s, d, model::raised(model::alpha_of(model::load(s), args.shift)));
    model::finish(Rule, d, Rule == Alpha::one ? args.color : args.shift,
                  model::load(s) & model::alpha_bits(args.shift));
}

uint32_t weight_565(const uint8_t* s, uint32_t shift)
{
    return model::raised(model::alpha_of(model::load<uint16_t>(s), shift));
}

void straight_565(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    model::gbl_565(s, d, {.g = weight_565(s, args.shift)});
}

// A fraction of a step that is taken off costs the whole step, and what blue falls below 0 costs red.
void premultiplied_565(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    const int w = static_cast<int>(weight_565(s, args.shift));
    const int from = model::load<uint16_t>(s), to = model::load<uint16_t>(d);
    const int from_green = from / 32 % 64, to_green = to / 32 % 64;
    const int from_red_blue = from - from_green * 32, to_red_blue = to - to_green * 32;
    const int green = ((from_green + to_green) * 32 - to_green * w / 2) >> 5 & 63;
    const int red_blue = from_red_blue + to_red_blue - to_red_blue * w / 32;
    model::store(d, static_cast<uint16_t>((red_blue >> 11 & 31) * 2048 + green * 32 + (red_blue & 31)));
}

void arepl_writer(const uint8_t* s, uint8_t* d, const RowArgs&) { std::memcpy(d, s, 4); }
void aone_writer(const uint8_t* s, uint8_t* d, const RowArgs& args)
{
    model::store(d, model::load(s) | model::alpha_bits(args.color));
}

template <auto* Routine> void lerp(const uint8_t* s, uint8_t* d, uint32_t n, const RowArgs& args)
{
    Routine(words(d), words(s), n, args.shift, args.color);
}
template <auto* Routine> void lerp_565(const uint8_t* s, uint8_t* d, uint32_t n, const RowArgs& args)
{
    Routine(reinterpret_cast<uint16_t*>(d), reinterpret_cast<const uint16_t*>(s), n, args.shift);
}

constexpr RowCase rows[] = {
    {lerp<vexlor_1d_lerp_8888>, blend<model::straight, Alpha::blended>, pixel_32},
    {lerp<vexlor_1d_lerp_pre_8888>, blend<model::premultiplied, Alpha::blended>, pixel_32},
    {lerp<vexlor_1d_lerp_arepl_8888>, blend<model::straight, Alpha::replaced>, pixel_32},
    {lerp<vexlor_1d_lerp_pre_arepl_8888>, blend<model::premultiplied, Alpha::replaced>, pixel_32},
    {lerp<vexlor_1d_lerp_aone_8888>, blend<model::straight, Alpha::one>, pixel_32},
    {lerp<vexlor_1d_lerp_pre_aone_8888>, blend<model::premultiplied, Alpha::one>, pixel_32},
    {lerp<vexlor_writer_arepl_8888>, arepl_writer, pixel_32},
    {lerp<vexlor_writer_aone_8888>, aone_writer, pixel_32},
};
constexpr RowCase rows_565[] = {
    {lerp_565<vexlor_1d_lerp_565>, straight_565, pixel_16},
    {lerp_565<vexlor_1d_lerp_pre_565>, premultiplied_565, pixel_16},
};

} // namespace

TEST(LerpRows, EqualTheModel)
{
    check_rows(rows);
    check_rows(rows_565);
}

// A source pixel's bits are its alpha too: all pixels, each over many others.
TEST(LerpRows, EqualTheModelForEvery565Pixel)
{
    sweep_rows(rows_565, 64, [](uint32_t step, uint32_t i, uint8_t* s, uint8_t* d, RowArgs& args) {
        constexpr uint32_t shifts[] = {0, 5, 8, 11};
        args.shift = shifts[step % 4];
        model::store(s, static_cast<uint16_t>(i));
        model::store(d, static_cast<uint16_t>(shuffled(i, 2 * step * 509 + 1) ^ step * 0x2545));
    });
}

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
