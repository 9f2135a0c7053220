// vexlor sum: the golden checksums of everything that the library draws.
#include "../failure.h"
#include "../file.h"
#include "commands.h"
#include "golden/golden.h"

#include <cstdio>

namespace tool {

namespace {

struct SumCommand : Command {
    void declare(Options& options) override
    {
        options.text(
            "--check", file, "FILE",
            "compare with a table that this command has printed, and print what differs; exit status 0 when "
            "nothing does, else 1");
    }

    void run() override
    {
        const std::vector<golden::Line> drawn = golden::draw_all();
        if (file.empty()) {
            std::fputs(golden::table(drawn).c_str(), stdout);
            return;
        }
        const std::vector<uint8_t> expected = read_file(file, size_t{1} << 24);
        const golden::Verdict verdict = golden::compare(drawn, {expected.begin(), expected.end()});
        if (verdict.compared == 0)
            throw Failure(shown(file), "holds no table of checksums");
        for (const std::string& difference : verdict.differences)
            std::puts(difference.c_str());
        if (verdict.differences.empty())
            std::printf("all %d checksums are as expected\n", verdict.compared);
        status = verdict.differences.empty() ? 0 : 1;
    }

private:
    std::string file;
};

} // namespace

const Entry sum_entry{"sum",
                      "Print the checksums of everything that the library draws, the same on every machine",
                      "  vexlor sum >mine.txt; vexlor sum --check mine.txt", make_command<SumCommand>};

} // namespace tool
