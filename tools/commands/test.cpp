// vexlor test: copies the pixels of a rectangle whose alpha passes a comparison.
#include "../drawing.h"
#include "commands.h"

namespace tool {

namespace {

struct TestCommand : Command {
    void declare(Options& options) override
    {
        transfer.declare(options);
        options.word("--test", test, {"less", "less-equal", "equal", "greater-equal", "greater", "not-equal"},
                     "copy where the source's alpha is so, compared with --ref (default: greater-equal)");
        options.number("--ref", reference, 0, 255, "reference of the test (default: 128)");
    }

    void run() override
    {
        transfer.needs_alpha = true;
        transfer.run("copy by alpha test", [this](vexlor_context* ctx) {
            vexlor_context_set_alpha_op(ctx, VEXLOR_ALPHA_OP_TEST);
            vexlor_context_set_alpha_test(ctx, test);
            vexlor_context_set_alpha_ref(ctx, static_cast<uint8_t>(reference));
            // The one destination treatment that the library allows here.
            vexlor_context_set_alpha_dst_op(ctx, VEXLOR_ALPHA_DST_REPLACE);
        });
    }

private:
    Transfer transfer;
    uint32_t test = VEXLOR_ALPHA_TEST_GREATER_EQUAL;
    int32_t reference = 128;
};

} // namespace

const Entry test_entry{
    "test", "Copy the pixels whose alpha passes a test",
    "  vexlor test moon.png --test greater-equal --ref 128 --onto sky.png --at 200,80 -o sprite.png",
    make_command<TestCommand>};

} // namespace tool
