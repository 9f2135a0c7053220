#include "golden/golden.h"

#include "golden/parts.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <sstream>

namespace golden {

namespace {

constexpr const char* heading = "SIMD off          SIMD on           operation";
constexpr const char* nothing = "-               ";

struct Pair {
    std::string off, on;
};

void compare_one(Verdict& verdict, const std::string& what, const std::string& is,
                 const std::string& expected)
{
    if (is.empty() || expected == "-")
        return;
    ++verdict.compared;
    if (is != expected)
        verdict.differences.push_back(what + " is " + is + ", expected " + expected);
}

} // namespace

std::string Checksum::text() const
{
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value_));
    return text;
}

std::string checksum(const void* data, size_t size)
{
    Checksum sum;
    sum.add(data, size);
    return sum.text();
}

bool has_simd()
{
    vexlor_context* ctx = nullptr;
    vexlor_context_create(&ctx);
    if (ctx == nullptr)
        return false;
    vexlor_context_set_simd(ctx, true);
    const bool both = ctx->memset == vexlor_memset_stream_sse &&
                      ctx->copy_blend_over_src_8888 == vexlor_1d_copy_blend_over_src_8888_sse2;
    vexlor_context_destroy(ctx);
    return both;
}

std::vector<Line> draw_all()
{
    std::vector<Line> lines;
    add_draws(lines);
    add_rows(lines);
    return lines;
}

std::string table(const std::vector<Line>& lines)
{
    std::string text = std::string(heading) + "\n";
    for (const Line& line : lines)
        text += line.off + "  " + (line.on.empty() ? nothing : line.on) + "  " + line.operation + "\n";
    return text;
}

Verdict compare(const std::vector<Line>& drawn, const std::string& expected)
{
    std::map<std::string, Pair> known;
    std::istringstream lines(expected);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        Pair pair;
        std::string operation;
        words >> pair.off >> pair.on >> std::ws;
        if (line != heading && std::getline(words, operation))
            known[operation] = pair;
    }
    Verdict verdict;
    for (const Line& line : drawn) {
        const auto found = known.find(line.operation);
        if (found == known.end()) {
            verdict.differences.push_back(line.operation + " is not in the table");
            continue;
        }
        compare_one(verdict, line.operation, line.off, found->second.off);
        compare_one(verdict, line.operation + " with SIMD on", line.on, found->second.on);
        known.erase(found);
    }
    for (const auto& [operation, pair] : known)
        if (has_simd() || operation.find("_sse") == std::string::npos)
            verdict.differences.push_back(operation + " is in the table alone");
    return verdict;
}

} // namespace golden
