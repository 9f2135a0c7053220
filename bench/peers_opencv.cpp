// OpenCV, core and imgproc, on one thread. Its cubic is that of a = -0.75, with as many taps as Catmull-Rom.
#include "peers.h"

#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace bench {
namespace {

cv::Mat view(const Picture& picture)
{
    const int type = (picture.format() & 0x3F) == 0x10 ? CV_16UC1 : CV_8UC4;
    return {picture.height(), picture.width(), picture.format() & 0x40 ? CV_8UC2 : type, picture.pixels(),
            static_cast<size_t>(picture.stride())};
}

std::vector<Drawing> resized(const Scene& scene)
{
    const cv::Mat in = view(scene.source), out = view(scene.target);
    const Filter filter = scene.job.filter;
    if (in.type() == CV_8UC2) {
        if (filter == Filter::nearest)
            return {};
        // Two passes: the source whole into RGB, then scaled.
        const int how = filter == Filter::linear ? cv::INTER_LINEAR
                        : filter == Filter::box  ? cv::INTER_AREA
                                                 : cv::INTER_CUBIC;
        return {{"OpenCV 2-pass", [in, out, how, rgb = cv::Mat(in.rows, in.cols, CV_8UC4)]() mutable {
                     cv::cvtColor(in, rgb, cv::COLOR_YUV2BGRA_UYVY);
                     cv::resize(rgb, out, out.size(), 0, 0, how);
                 }}};
    }
    if (in.type() == CV_16UC1 && filter != Filter::nearest)
        return {}; // it would filter 565 pixels as numbers
    const auto resize = [in, out](int how) {
        return [in, out, how] { cv::resize(in, out, out.size(), 0, 0, how); };
    };
    switch (filter) {
    case Filter::nearest: return {{"OpenCV", resize(cv::INTER_NEAREST)}};
    case Filter::linear: return {{"OpenCV", resize(cv::INTER_LINEAR)}};
    case Filter::box: return {{"OpenCV", resize(cv::INTER_AREA)}};
    case Filter::catrom: return {{"OpenCV", resize(cv::INTER_CUBIC)}};
    case Filter::gauss:
        // The library's kernel is 1/4, 1/2, 1/4 in each direction: so is this blur of 3 x 3. pyrDown has five taps.
        return {{"OpenCV blur, nearest",
                 [in, out, soft = cv::Mat(in.rows, in.cols, CV_8UC4)] {
                     cv::GaussianBlur(in, soft, cv::Size(3, 3), 0);
                     cv::resize(soft, out, out.size(), 0, 0, cv::INTER_NEAREST);
                 }},
                {"OpenCV pyrDown", [in, out] { cv::pyrDown(in, out, out.size()); }}};
    }
    return {};
}

std::vector<Drawing> drawings(const Scene& scene)
{
    const Picture &from = scene.source, &to = scene.target;
    const bool yuv = from.format() & 0x40;
    cv::Mat in = view(from), out = view(to);
    switch (scene.job.work) {
    case Work::fill: {
        const auto part = [](int shift) { return static_cast<double>(fill_color >> shift & 0xFF); };
        const cv::Scalar color = out.type() == CV_16UC1 ? cv::Scalar(fill_color & 0xFFFF)
                                                        : cv::Scalar(part(0), part(8), part(16), part(24));
        return {{"OpenCV", [out, color]() mutable { out.setTo(color); }}};
    }
    case Work::copy: return {{"OpenCV", [in, out] { in.copyTo(out); }}};
    case Work::global: {
        if (out.type() == CV_16UC1)
            return {};
        const double w = weight / 255.0;
        if (!yuv)
            return {{"OpenCV", [in, out, w] { cv::addWeighted(in, w, out, 1 - w, 0, out); }}};
        return {{"OpenCV 2-pass", [in, out, w, rgb = cv::Mat(in.rows, in.cols, CV_8UC4)]() mutable {
                     in_bands(in.rows, in.cols * 4, [&](int y, int rows) {
                         cv::Mat part = rgb.rowRange(0, rows), target = out.rowRange(y, y + rows);
                         cv::cvtColor(in.rowRange(y, y + rows), part, cv::COLOR_YUV2BGRA_UYVY);
                         cv::addWeighted(part, w, target, 1 - w, 0, target);
                     });
                 }}};
    }
    case Work::convert:
        if (!yuv)
            return {}; // it has no way from RGB to UYVY
        // Its bytes are B, G, R, A also where the library's are the other way round.
        return {
            {"OpenCV", [in, out] { cv::cvtColor(in, out, cv::COLOR_YUV2BGRA_UYVY); }, VEXLOR_FMT_B8G8R8A8}};
    case Work::scale: return resized(scene);
    default: return {};
    }
}

} // namespace

Peer opencv_peer()
{
    cv::setNumThreads(1);
    cv::setUseOptimized(true);
    return {"OpenCV", CV_VERSION, drawings};
}

} // namespace bench
