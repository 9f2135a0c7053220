#include "failure.h"

namespace tool {

namespace {

struct Result {
    const char* name;
    const char* meaning;
};

// By result code.
constexpr Result results[] = {
    {"VEXLOR_OK", "done"},
    {"VEXLOR_NULL_POINTER", "the context or a surface is missing"},
    {"VEXLOR_STRIDE_TOO_SHORT", "the rectangle's row is longer than a surface's stride"},
    {"VEXLOR_NOT_CONVERTIBLE", "the source's format cannot become the destination's, or a YUV width is odd"},
    {"VEXLOR_UNSUPPORTED_FORMAT", "this operation does not know the format"},
    {"VEXLOR_NO_SOURCE_ALPHA", "the source's format has no alpha channel, and this operation needs one"},
    {"VEXLOR_BAD_RECTANGLE", "the rectangle is empty, starts below 0 or reaches past a surface"},
    {"VEXLOR_OVERLAP", "the rectangles overlap on one surface, which this operation cannot do"},
    {"VEXLOR_UNSUPPORTED_ALPHA", "this combination of alpha settings is not supported"},
    {"VEXLOR_UNSUPPORTED_FILL", "a fill is either written or blended with a global weight"},
};

std::string describe(const std::string& operation, uint32_t result)
{
    const bool known = result < std::size(results);
    return operation + ": refused with result " + std::to_string(result) +
           (known ? std::string(", ") + results[result].name + ": " + results[result].meaning : "");
}

} // namespace

Refused::Refused(const std::string& operation, uint32_t result, const std::string& advice)
    : std::runtime_error(describe(operation, result) + (advice.empty() ? "" : ". " + advice))
{}

} // namespace tool
