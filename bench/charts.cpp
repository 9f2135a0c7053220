// The charts: bars for ratio and share, small panels for the width curves. Colours work on light and dark pages.
#include "report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace bench {
namespace {

constexpr const char* portable_color = "#7f9cc0";
constexpr const char* simd_color = "#e07b39";
constexpr const char* text_color = "#808080";

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::string escaped(const std::string& text)
{
    std::string out;
    for (const char c : text)
        out += c == '&' ? "&amp;" : c == '<' ? "&lt;" : std::string(1, c);
    return out;
}

class Svg {
public:
    Svg(double width, double height)
    {
        text_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + number(width) + ' ' +
                number(height) + "\" font-family=\"sans-serif\" font-size=\"11\">\n";
    }
    void rect(double x, double y, double w, double h, const char* fill)
    {
        text_ += "<rect x=\"" + number(x) + "\" y=\"" + number(y) + "\" width=\"" + number(w) +
                 "\" height=\"" + number(h) + "\" fill=\"" + fill + "\"/>\n";
    }
    void line(double x1, double y1, double x2, double y2, double thickness)
    {
        text_ += "<line x1=\"" + number(x1) + "\" y1=\"" + number(y1) + "\" x2=\"" + number(x2) + "\" y2=\"" +
                 number(y2) + "\" stroke=\"" + text_color + "\" stroke-width=\"" + number(thickness) +
                 "\"/>\n";
    }
    void text(double x, double y, const std::string& words, const char* anchor = "start")
    {
        text_ += "<text x=\"" + number(x) + "\" y=\"" + number(y) + "\" text-anchor=\"" + anchor +
                 "\" fill=\"" + text_color + "\">" + escaped(words) + "</text>\n";
    }
    void curve(const std::vector<std::pair<double, double>>& points, const char* color)
    {
        text_ += "<polyline fill=\"none\" stroke=\"" + std::string(color) + "\" points=\"";
        for (const auto& [x, y] : points)
            text_ += number(x) + ',' + number(y) + ' ';
        text_ += "\"/>\n";
    }
    std::string finish() const { return text_ + "</svg>\n"; }

private:
    std::string text_;
};

// Bars of two values per row, along an axis with marks. place() puts a value at 0..1 of the axis; bars start at `from`.
struct Bars {
    std::string title;
    std::vector<double> marks;
    double from;
    const char* unit;
    double (*place)(double);
};

using Values = double (*)(const Result&, const Timing&);

std::string bar_chart(const Bars& bars, const std::vector<const Result*>& results, Values value)
{
    constexpr double left = 230, width = 560, top = 62, pitch = 27, bar = 11;
    const double bottom = top + pitch * static_cast<double>(results.size());
    Svg svg(left + width + 60, bottom + 14);
    svg.text(10, 18, bars.title);
    svg.rect(left, 26, 10, 10, portable_color);
    svg.text(left + 14, 35, "portable");
    svg.rect(left + 80, 26, 10, 10, simd_color);
    svg.text(left + 94, 35, "SIMD on");
    for (const double mark : bars.marks) {
        const double x = left + width * bars.place(mark);
        svg.line(x, top - 6, x, bottom, mark == bars.from ? 1.2 : 0.3);
        svg.text(x, top - 10, number(mark) + bars.unit, "middle");
    }
    double y = top;
    const double base = bars.place(bars.from);
    for (const Result* result : results) {
        svg.text(left - 8, y + 17, result->name(), "end");
        const auto draw = [&](const Timing& timing, double at, const char* color) {
            const double v = value(*result, timing), end = std::clamp(bars.place(v), 0.0, 1.0);
            svg.rect(left + width * std::min(base, end), at, width * std::abs(end - base), bar, color);
            svg.text(left + width * std::max(base, end) + 4, at + 10, number(v));
        };
        draw(result->portable, y + 1, portable_color);
        draw(result->simd, y + 1 + bar + 1, simd_color);
        y += pitch;
    }
    return svg.finish();
}

double place_ratio(double ratio) { return (std::log2(std::max(ratio, 1e-9)) + 5) / 8; } // 1/32 to 8
double place_share(double share) { return share / 120; }

std::string ratio_chart(const std::string& size, const std::vector<const Result*>& results)
{
    const Bars bars = {"Times as fast as the best peer, " + size,
                       {0.03125, 0.0625, 0.125, 0.25, 0.5, 1, 2, 4, 8},
                       1,
                       "",
                       place_ratio};
    return bar_chart(bars, results, [](const Result& r, const Timing& t) { return r.ratio(t); });
}

std::string share_chart(const std::string& size, const std::vector<const Result*>& results)
{
    const Bars bars = {
        "Share of the machine's limit, " + size, {0, 20, 40, 60, 80, 100}, 0, " %", place_share};
    return bar_chart(bars, results, [](const Result& r, const Timing& t) { return 100 * r.share(t); });
}

std::string width_chart(const std::vector<Curve>& curves)
{
    constexpr int columns = 3;
    constexpr double panel_width = 300, panel_height = 130, plot_width = 240, plot_height = 80, left = 40,
                     top = 36;
    const auto rows = static_cast<double>((curves.size() + columns - 1) / columns);
    Svg svg(columns * panel_width, rows * panel_height + 30);
    svg.text(10, 18, "Nanoseconds per pixel at widths 1 to 130 (those below 8 may run off the top)");
    for (size_t i = 0; i < curves.size(); ++i) {
        const Curve& curve = curves[i];
        const double x0 = static_cast<double>(i % columns) * panel_width + left;
        const double y0 = static_cast<double>(i / columns) * panel_height + top + 18;
        const auto per_pixel = [&](size_t width) {
            return curve.seconds[width - 1] / static_cast<double>(width) * 1e9;
        };
        double highest = 0;
        for (size_t width = 8; width <= curve.seconds.size(); ++width)
            highest = std::max(highest, 1.1 * per_pixel(width));
        svg.text(x0, y0 - 6, curve.family);
        svg.line(x0, y0, x0, y0 + plot_height, 0.6);
        svg.line(x0, y0 + plot_height, x0 + plot_width, y0 + plot_height, 0.6);
        svg.text(x0 - 4, y0 + 8, number(highest), "end");
        svg.text(x0 - 4, y0 + plot_height, "0", "end");
        std::vector<std::pair<double, double>> points;
        for (size_t width = 1; width <= curve.seconds.size(); ++width)
            points.emplace_back(x0 + plot_width * static_cast<double>(width) /
                                         static_cast<double>(curve.seconds.size()),
                                y0 + plot_height * (1 - std::min(per_pixel(width) / highest, 1.0)));
        svg.curve(points, simd_color);
    }
    return svg.finish();
}

} // namespace

std::vector<std::pair<std::string, std::string>> charts(const Report& report)
{
    std::vector<std::pair<std::string, std::string>> files;
    for (const std::string& size : report.sizes()) {
        std::vector<const Result*> all, compared;
        for (const Result& result : report.results) {
            if (result.size() != size)
                continue;
            all.push_back(&result);
            if (result.best_peer())
                compared.push_back(&result);
        }
        if (!compared.empty())
            files.emplace_back("ratio-" + size + ".svg", ratio_chart(size, compared));
        files.emplace_back("share-" + size + ".svg", share_chart(size, all));
    }
    if (!report.curves.empty())
        files.emplace_back("widths.svg", width_chart(report.curves));
    return files;
}

} // namespace bench
