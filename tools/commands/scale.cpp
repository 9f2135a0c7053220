// vexlor scale: a rectangle of one picture stretched or shrunk into a rectangle of another.
#include "../drawing.h"
#include "../failure.h"
#include "commands.h"

namespace tool {

namespace {

struct ScaleCommand : Command {
    void declare(Options& options) override
    {
        transfer.declare(options);
        options.word(
            "--filter", filter, {"none", "mean", "catrom"},
            "none takes the nearest pixel (default); mean averages a box where it reduces and is linear "
            "where it enlarges; catrom is Gaussian where it reduces and Catmull-Rom where it enlarges");
        options.flag("--blend", blend, "blend by the source's alpha instead of writing");
        options.flag("--premultiplied", premultiplied,
                     "the source's colour is multiplied by its alpha beforehand, as with the command blend");
        options.word(
            "--dst-alpha", alpha_dst_op, {"blend", "replace", "one"},
            "what becomes of the alpha byte of a 32-bit surface. Without --blend, `one` makes it 255 and "
            "the others write the source's");
    }

    void run() override
    {
        if (premultiplied && !blend)
            throw Failure("--premultiplied", "goes with --blend only");
        transfer.needs_alpha = blend;
        if (premultiplied)
            transfer.premultiplied_by = Transfer::own_alpha;
        const std::string filters[] = {"unfiltered", "by mean", "by catrom"};
        const std::string operation =
            blend ? premultiplied ? "blend premultiplied, scaled " : "blend, scaled " : "scale ";
        transfer.run(operation + filters[filter], [this](vexlor_context* ctx) {
            vexlor_context_set_filter(ctx, filter);
            vexlor_context_set_alpha_op(ctx, blend ? VEXLOR_ALPHA_OP_BLEND : VEXLOR_ALPHA_OP_NONE);
            vexlor_context_set_alpha_src(ctx, VEXLOR_ALPHA_SRC_PIXEL);
            vexlor_context_set_alpha_mode(ctx,
                                          premultiplied ? VEXLOR_ALPHA_PREMULTIPLIED : VEXLOR_ALPHA_STRAIGHT);
            vexlor_context_set_alpha_dst_op(ctx, alpha_dst_op);
        });
    }

private:
    Transfer transfer{true};
    uint32_t filter = VEXLOR_FILTER_NONE;
    bool blend = false;
    bool premultiplied = false;
    uint32_t alpha_dst_op = VEXLOR_ALPHA_DST_BLEND;
};

} // namespace

const Entry scale_entry{
    "scale", "Scale a rectangle, written or blended, with conversion from YUV 4:2:2 to 32-bit RGB",
    "  vexlor scale photo.jpg --from U8Y8V8Y8 --to B8G8R8X8 --size 640x360 --filter mean -o small.png",
    make_command<ScaleCommand>};

} // namespace tool
