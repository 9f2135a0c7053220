// vexlor copy: a rectangle of one picture into another, converted on the way where the library can.
#include "../drawing.h"
#include "commands.h"

namespace tool {

namespace {

struct CopyCommand : Command {
    void declare(Options& options) override
    {
        transfer.declare(options);
        options.word("--dst-alpha", alpha_dst_op, {"blend", "replace", "one"},
                     "`one` makes the alpha byte 255; the others copy it");
    }

    void run() override
    {
        transfer.run("copy",
                     [this](vexlor_context* ctx) { vexlor_context_set_alpha_dst_op(ctx, alpha_dst_op); });
    }

private:
    Transfer transfer;
    uint32_t alpha_dst_op = VEXLOR_ALPHA_DST_BLEND;
};

} // namespace

const Entry copy_entry{"copy", "Copy a rectangle, with conversion from YUV 4:2:2 to 32-bit RGB",
                       "  vexlor copy frame.yuv --format U8Y8V8Y8 --size 640x360 --to B8G8R8X8 -o frame.png",
                       make_command<CopyCommand>};

} // namespace tool
