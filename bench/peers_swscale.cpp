// swscale: conversion and scaling between any two formats. RGB is scaled by way of YUV.
#include "peers.h"

#include <memory>

extern "C" {
#include <libavutil/log.h>
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

namespace bench {
namespace {

AVPixelFormat format_of(uint32_t format)
{
    switch (format) {
    case VEXLOR_FMT_565: return AV_PIX_FMT_RGB565LE;
    case VEXLOR_FMT_U8Y8V8Y8: return AV_PIX_FMT_UYVY422;
    case VEXLOR_FMT_B8G8R8A8: return AV_PIX_FMT_BGRA;
    case VEXLOR_FMT_B8G8R8X8: return AV_PIX_FMT_BGR0;
    case VEXLOR_FMT_X8R8G8B8: return AV_PIX_FMT_0RGB;
    default: return AV_PIX_FMT_NONE;
    }
}

Drawing scaler(const Scene& scene, const char* name, int flags, AVPixelFormat in, AVPixelFormat out)
{
    const Picture &from = scene.source, &to = scene.target;
    double catrom[2] = {0, 0.5}; // b and c of the cubic; only SWS_BICUBIC reads them
    const std::shared_ptr<SwsContext> context(sws_getContext(from.width(), from.height(), in, to.width(),
                                                             to.height(), out, flags, nullptr, nullptr,
                                                             flags & SWS_BICUBIC ? catrom : nullptr),
                                              sws_freeContext);
    demand(context != nullptr, name);
    return {name, [&, context, name] {
                const uint8_t* const rows[4] = {from.pixels()};
                uint8_t* const out_rows[4] = {to.pixels()};
                const int strides[4] = {from.stride()}, out_strides[4] = {to.stride()};
                demand(sws_scale(context.get(), rows, strides, 0, from.height(), out_rows, out_strides) ==
                           to.height(),
                       name);
            }};
}

std::vector<Drawing> drawings(const Scene& scene)
{
    const Job& job = scene.job;
    const AVPixelFormat in = format_of(job.from), out = format_of(job.to);
    switch (job.work) {
    case Work::copy_opaque: return {scaler(scene, "swscale", SWS_POINT, AV_PIX_FMT_BGR0, AV_PIX_FMT_BGRA)};
    case Work::convert: return {scaler(scene, "swscale", SWS_POINT, in, out)};
    case Work::scale: break;
    default: return {};
    }
    switch (job.filter) {
    case Filter::nearest: return {scaler(scene, "swscale", SWS_POINT, in, out)};
    case Filter::linear:
        return {scaler(scene, "swscale", SWS_BILINEAR, in, out),
                scaler(scene, "swscale fast", SWS_FAST_BILINEAR, in, out)};
    case Filter::box: return {scaler(scene, "swscale", SWS_AREA, in, out)};
    case Filter::catrom: return {scaler(scene, "swscale", SWS_BICUBIC, in, out)};
    case Filter::gauss: return {scaler(scene, "swscale", SWS_GAUSS, in, out)};
    }
    return {};
}

} // namespace

Peer swscale_peer()
{
    av_log_set_level(AV_LOG_ERROR);
    const unsigned v = swscale_version();
    return {"swscale",
            std::to_string(v >> 16) + '.' + std::to_string(v >> 8 & 0xFF) + '.' + std::to_string(v & 0xFF),
            drawings};
}

} // namespace bench
