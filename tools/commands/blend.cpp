// vexlor blend: a rectangle of one picture over another, by the source's alpha or by one weight.
#include "../drawing.h"
#include "commands.h"

#include <algorithm>

namespace tool {

namespace {

struct BlendCommand : Command {
    void declare(Options& options) override
    {
        transfer.declare(options);
        options.number(
            "--global", global, 0, 255,
            "one weight for all pixels instead of the source's alpha. On 565 surfaces red and blue reach the "
            "source at 31, green at 63; above that they wrap around");
        options.flag("--premultiplied", premultiplied,
                     "the source's colour is multiplied by the weight beforehand (pictures are when they are "
                     "read; raw "
                     "frames must be)");
        options.word("--dst-alpha", alpha_dst_op, {"blend", "replace", "one"},
                     "what becomes of the alpha byte of a 32-bit surface");
    }

    void run() override
    {
        const bool by_pixel = global < 0;
        transfer.needs_alpha = true;
        if (premultiplied)
            transfer.premultiplied_by = by_pixel ? Transfer::own_alpha : global;
        const std::string weight = by_pixel ? "source alpha" : std::to_string(global);
        transfer.run((premultiplied ? "blend premultiplied by " : "blend by ") + weight,
                     [&](vexlor_context* ctx) {
                         vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_BLEND);
                         vexlor_context_set_alpha_src(ctx, by_pixel ? VEXLOR_ALPHA_SRC_PIXEL
                                                                    : VEXLOR_ALPHA_SRC_GLOBAL);
                         vexlor_context_set_alpha_mode(ctx, premultiplied ? VEXLOR_ALPHA_PREMULTIPLIED
                                                                          : VEXLOR_ALPHA_STRAIGHT);
                         vexlor_context_set_alpha_value(ctx, static_cast<uint8_t>(std::max(global, 0)));
                         vexlor_context_set_alpha_dst_op(ctx, alpha_dst_op);
                     });
    }

private:
    Transfer transfer;
    int32_t global = -1;
    bool premultiplied = false;
    uint32_t alpha_dst_op = VEXLOR_ALPHA_DST_BLEND;
};

} // namespace

const Entry blend_entry{"blend", "Blend a rectangle over a picture by its alpha or one weight",
                        "  vexlor blend night.jpg --alpha ramp:900:1300 --onto day.jpg -o dusk.png",
                        make_command<BlendCommand>};

} // namespace tool
