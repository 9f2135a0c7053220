#include "parse.h"

#include "failure.h"

#include <charconv>
#include <limits>

namespace tool {

namespace {

template <class Number> bool read_number(const std::string& text, Number& value, int base = 10)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc{} && end == text.data() + text.size();
}

// Exactly `count` integers; throws with the form that was expected.
std::vector<int32_t> integers(const std::string& text, char separator, size_t count, const char* form)
{
    std::vector<int32_t> values;
    for (const std::string& part : split(text, separator)) {
        int32_t value = 0;
        if (!read_number(part, value))
            break;
        values.push_back(value);
    }
    if (values.size() != count || split(text, separator).size() != count)
        throw BadValue("'" + text + "' is not " + form);
    return values;
}

} // namespace

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

int32_t parse_integer(const std::string& text, int32_t low, int32_t high)
{
    int32_t value = 0;
    if (!read_number(text, value) || value < low || value > high)
        throw BadValue("'" + text + "' is not a number from " + std::to_string(low) + " to " +
                       std::to_string(high));
    return value;
}

uint32_t parse_hex(const std::string& text)
{
    uint32_t value = 0;
    if (!text.starts_with("0x") || !read_number(text.substr(2), value, 16))
        throw BadValue("'" + text + "' is not a hexadecimal number such as 0x80FF8000");
    return value;
}

Point parse_point(const std::string& text)
{
    const auto v = integers(text, ',', 2, "X,Y");
    return {v[0], v[1]};
}

Rect parse_rect(const std::string& text)
{
    const auto v = integers(text, ',', 4, "X,Y,W,H");
    return {v[0], v[1], v[2], v[3]};
}

std::string check_size(int64_t w, int64_t h)
{
    const std::string size = std::to_string(w) + "x" + std::to_string(h);
    if (w < 1 || h < 1)
        return size + " has no pixels";
    if (w > longest_side || h > longest_side)
        return size + " is too large: a side has at most " + std::to_string(longest_side) + " pixels";
    if (w * h > most_pixels)
        return size + " is too large: a picture has at most " + std::to_string(most_pixels) + " pixels";
    return {};
}

std::string size_text(int32_t width, int32_t height)
{
    return std::to_string(width) + "x" + std::to_string(height);
}

Size parse_size(const std::string& text)
{
    const auto v = integers(text, 'x', 2, "WxH");
    if (const std::string reason = check_size(v[0], v[1]); !reason.empty())
        throw BadValue(reason);
    return {v[0], v[1]};
}

Color parse_color(const std::string& text)
{
    uint32_t value = 0;
    if ((text.size() != 6 && text.size() != 8) || !read_number(text, value, 16))
        throw BadValue("'" + text + "' is not a colour RRGGBB or RRGGBBAA");
    if (text.size() == 6)
        value = value << 8 | 0xFF;
    const auto byte = [value](int shift) { return static_cast<uint8_t>(value >> shift & 0xFF); };
    return {byte(24), byte(16), byte(8), byte(0)};
}

} // namespace tool
