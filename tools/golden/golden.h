// Golden checksums: one line per operation and setting, over pseudo-random pictures that are the same everywhere. The
// library promises its bytes on every machine, so a build whose table differs from the stored one is broken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace golden {

struct Line {
    std::string operation;
    std::string off; // checksum with SIMD off, or of a row routine, which knows no such state
    std::string on;  // with SIMD on, at fixed alignment; empty for row routines and without SSE and SSE2
};

// Draws everything. Row routines of SSE and SSE2 are left out where the processor lacks them.
std::vector<Line> draw_all();

// As text, one line each under a heading.
std::string table(const std::vector<Line>& lines);

// A checksum as the table has it.
std::string checksum(const void* data, size_t size);

struct Verdict {
    int compared = 0;                     // checksums
    std::vector<std::string> differences; // a sentence each
};

// Checksums that cannot be drawn on this processor are not compared.
Verdict compare(const std::vector<Line>& drawn, const std::string& expected);

} // namespace golden
