/* libvexlor: fills, copies, blends, converts and scales rectangles of pixels in ordinary memory, in software.
 *
 * This header is the whole public interface and its reference manual. It serves C99 and C++.
 *
 * In short: create a context, describe two surfaces, set the context's state, draw.
 *
 *     vexlor_context* ctx;
 *     vexlor_context_create(&ctx);
 *     vexlor_surface_desc camera, screen;
 *     vexlor_surface_desc_init(&camera, 640, 480, 640 * 2, frame, VEXLOR_FMT_U8Y8V8Y8);
 *     vexlor_surface_desc_init(&screen, 640, 480, 640 * 4, pixels, VEXLOR_FMT_B8G8R8X8);
 *     uint32_t result = vexlor_copy(ctx, &camera, &screen, 0, 0, 0, 0, 640, 480);
 *     vexlor_context_destroy(ctx);
 *
 * Rules that hold everywhere
 *
 *  - Sizes, positions and counts are pixels; strides and the counts of memory routines are bytes.
 *  - Rectangles are never clipped: they are accepted whole or refused. vexlor_surface_clip clips beforehand.
 *    Where x + w or y + h exceeds 2^31 - 1, the check passes, nothing is drawn, and the result is as decided
 *    otherwise; the same holds for equivalent unknown formats whose pixels differ in size.
 *  - A drawing call that returns another code than VEXLOR_OK has written nothing.
 *  - The library reads and writes pixels inside [pixels, E) only, E = pixels + (height - 1) * stride + width
 *    * bytes per pixel, as long as a surface's stride is at least its row's bytes. A buffer of exactly that
 *    size is enough. Rows may start at any address. vexlor_fill alone can be made to go further: by a
 *    rectangle, which it does not check, and by an unknown format with rows of an odd number of bytes, behind
 *    which it may write one byte more (see Fill).
 *  - Integer arithmetic is unsigned 32-bit and wraps; >> of an unsigned value is logical, & binds weaker than
 *    >>.
 *  - Only the low 5 bits of a `shift` argument count.
 *  - The library has no global state, takes no locks, logs nothing and opens nothing. One context serves one
 *    thread at a time; any number of contexts may draw at once, and descriptors are only read.
 *  - Row routines trust their caller: they check no pointer and never fail. They keep no state, so any number
 *    of threads may run them on disjoint rows. A count of 0 touches nothing. Unless said otherwise they go
 *    through the row upwards from pixel 0, and source and destination rows must not partly overlap.
 */
#ifndef VEXLOR_H
#define VEXLOR_H

#include <stdbool.h>
#include <stdint.h>

#if defined(__GNUC__)
#define VEXLOR_API __attribute__((visibility("default")))
#else
#define VEXLOR_API
#endif

#ifdef __cplusplus
#define VEXLOR_DEFAULT(value) = (value) /* a default argument, for C++ callers */
extern "C" {
#else
#define VEXLOR_DEFAULT(value)
#endif

/* ---- Result codes: what the drawing calls return. The first check that fails decides. ---------------------- */

/* clang-format off */
#define VEXLOR_OK 0u                   /* done; also when the routine's slot is empty and nothing was drawn */
#define VEXLOR_NULL_POINTER 1u         /* the context or a descriptor is a null pointer */
#define VEXLOR_STRIDE_TOO_SHORT 2u     /* plain copy: the rectangle's row is longer than a surface's stride */
#define VEXLOR_NOT_CONVERTIBLE 3u      /* the two formats cannot be combined */
#define VEXLOR_UNSUPPORTED_FORMAT 4u   /* the operation does not know the format */
#define VEXLOR_NO_SOURCE_ALPHA 5u      /* per-pixel alpha or the alpha test needs a source with an alpha channel */
#define VEXLOR_BAD_RECTANGLE 6u        /* negative origin, size below 1, or (copy, scale) reaching past a surface */
#define VEXLOR_OVERLAP 7u              /* the rectangles overlap on one surface where that is not possible */
#define VEXLOR_UNSUPPORTED_ALPHA 8u    /* a combination of alpha_op, alpha_src, alpha_dst_op, alpha_mode */
#define VEXLOR_UNSUPPORTED_FILL 9u     /* fill: alpha_op is 1 or above 2, or alpha_src is not 0 when blending */
/* clang-format on */

/* ---- Format codes ------------------------------------------------------------------------------------------
 *
 * Names give the components in memory byte order, lowest address first. Byte-order chart:
 *
 *     code        name        byte 0   byte 1   byte 2   byte 3    bits of the little-endian word
 *     0x00000010  565         gggbbbbb rrrrrggg                    R 11-15, G 5-10, B 0-4 of 16 bits
 *     0x00000050  Y8V8Y8U8    Y0       V        Y1       U         one word is two pixels, left one Y0
 *     0x80000050  U8Y8V8Y8    U        Y0       V        Y1        one word is two pixels, left one Y0
 *     0x20000020  X8R8G8B8    X        R        G        B         X 0-7, R 8-15, G 16-23, B 24-31
 *     0x60000020  A8R8G8B8    A        R        G        B         A 0-7, R 8-15, G 16-23, B 24-31
 *     0xA0000020  B8G8R8X8    B        G        R        X         B 0-7, G 8-15, R 16-23, X 24-31
 *     0xE0000020  B8G8R8A8    B        G        R        A         B 0-7, G 8-15, R 16-23, A 24-31
 *
 * Bits: 0-5 bits per pixel; 29 a 32-bit RGB format; 30 an alpha channel; 31 the second layout of a family. */

#define VEXLOR_FMT_565 0x00000010u
#define VEXLOR_FMT_Y8V8Y8U8 0x00000050u
#define VEXLOR_FMT_U8Y8V8Y8 0x80000050u
#define VEXLOR_FMT_X8R8G8B8 0x20000020u
#define VEXLOR_FMT_A8R8G8B8 0x60000020u
#define VEXLOR_FMT_B8G8R8X8 0xA0000020u
#define VEXLOR_FMT_B8G8R8A8 0xE0000020u

/* ---- Values of the context's state -------------------------------------------------------------------------- */

#define VEXLOR_FILTER_NONE 0u   /* nearest sample */
#define VEXLOR_FILTER_MEAN 1u   /* box where reducing, linear where enlarging; so is any value above 2 */
#define VEXLOR_FILTER_CATROM 2u /* Gaussian where reducing, Catmull-Rom where enlarging */

#define VEXLOR_ALPHA_STRAIGHT 0u      /* alpha_mode: source colour is not multiplied by its alpha */
#define VEXLOR_ALPHA_PREMULTIPLIED 1u /* alpha_mode: source colour is multiplied by its alpha already */

#define VEXLOR_ALPHA_OP_NONE 0u  /* alpha_op: pixels are written as they are */
#define VEXLOR_ALPHA_OP_TEST 1u  /* alpha_op: copy writes the pixels that pass the alpha test */
#define VEXLOR_ALPHA_OP_BLEND 2u /* alpha_op: the source is blended over the destination */

#define VEXLOR_ALPHA_SRC_GLOBAL 0u /* alpha_src: one weight for all, alpha_value */
#define VEXLOR_ALPHA_SRC_PIXEL 1u  /* alpha_src: each source pixel's own alpha */

#define VEXLOR_ALPHA_DST_BLEND 0u   /* alpha_dst_op: the alpha byte is blended like a colour */
#define VEXLOR_ALPHA_DST_REPLACE 1u /* alpha_dst_op: the alpha byte is replaced by the source's */
#define VEXLOR_ALPHA_DST_ONE 2u     /* alpha_dst_op: the alpha byte becomes 0xFF */

#define VEXLOR_ALPHA_TEST_LESS 0u          /* alpha_test: copy where alpha <  alpha_ref */
#define VEXLOR_ALPHA_TEST_LESS_EQUAL 1u    /* alpha_test: copy where alpha <= alpha_ref */
#define VEXLOR_ALPHA_TEST_EQUAL 2u         /* alpha_test: copy where alpha == alpha_ref */
#define VEXLOR_ALPHA_TEST_GREATER_EQUAL 3u /* alpha_test: copy where alpha >= alpha_ref */
#define VEXLOR_ALPHA_TEST_GREATER 4u       /* alpha_test: copy where alpha >  alpha_ref */
#define VEXLOR_ALPHA_TEST_NOT_EQUAL 5u /* alpha_test: copy where alpha != alpha_ref; others copy nothing */

/* ---- Surfaces ------------------------------------------------------------------------------------------------ */

/* A rectangle of pixels in memory that the caller owns and keeps alive while drawing. Nothing is checked when
 * it is filled; the drawing calls check what they say. Pixel (x, y) is at pixels + y * stride + x * bytes per
 * pixel, bytes per pixel = (format & 0x3F) >> 3. */
typedef struct vexlor_surface_desc {
    int32_t width;   /* pixels */
    int32_t height;  /* rows */
    uint32_t stride; /* bytes from the start of one row to the start of the next */
    uint8_t* pixels; /* first byte of row 0 */
    uint32_t format; /* VEXLOR_FMT_... */
} vexlor_surface_desc;

/* Allocates a zero-filled descriptor, stores it in *out and returns it; a null pointer when memory is short. */
VEXLOR_API vexlor_surface_desc* vexlor_surface_desc_create(vexlor_surface_desc** out);
/* Frees a descriptor, never its pixels. Null is accepted. */
VEXLOR_API void vexlor_surface_desc_destroy(vexlor_surface_desc* desc);
/* Stores the five fields, unchecked. */
VEXLOR_API void vexlor_surface_desc_init(vexlor_surface_desc* desc, int32_t width, int32_t height,
                                         uint32_t stride, void* pixels, uint32_t format);
/* 1 when both are the same descriptor or agree in all five fields, else 0: the test for "one surface". */
VEXLOR_API int32_t vexlor_surface_equals(const vexlor_surface_desc* a, const vexlor_surface_desc* b);
/* Clips the rectangle to the surface in place. One wholly outside comes back with *w or *h of 0 or below. */
VEXLOR_API void vexlor_surface_clip(const vexlor_surface_desc* surface, int32_t* x, int32_t* y, int32_t* w,
                                    int32_t* h);

/* Bit position of the alpha (or X) byte in a 32-bit pixel: 24 for B8G8R8X8 and B8G8R8A8, 0 for any other
 * code. */
VEXLOR_API uint32_t vexlor_fmt_get_alpha_shift(uint32_t format);
/* True for equal codes, and for two codes with bit 29 and the same alpha shift (they differ in having alpha). */
VEXLOR_API bool vexlor_fmt_is_equiv(uint32_t a, uint32_t b);
/* True when pixels of src can become pixels of dst: equivalent formats at any width, and YUV 4:2:2 to 32-bit
 * RGB when src_width is even. Widths are those of the rectangles; the heights are not used. */
VEXLOR_API bool vexlor_surface_is_convertible(const vexlor_surface_desc* src, int32_t src_width,
                                              int32_t src_height, const vexlor_surface_desc* dst,
                                              int32_t dst_width, int32_t dst_height);

/* ---- Kinds of row routine --------------------------------------------------------------------------------------
 * One C type per family, so that slots and callers can swap any member for another. */

typedef void (*vexlor_memcpy_fn)(void* dst, const void* src, uint32_t bytes);
typedef void (*vexlor_memset_fn)(void* dst, uint32_t value, uint32_t bytes);
typedef void (*vexlor_fill_blend_fn)(uint32_t color, uint32_t* row, uint32_t count, uint32_t weight,
                                     uint32_t alpha_shift);
typedef void (*vexlor_copy_src_fn)(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift);
typedef void (*vexlor_copy_gbl_fn)(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g,
                                   uint32_t shift);
typedef void (*vexlor_copy_gbl_565_fn)(const uint16_t* src, uint16_t* dst, uint32_t count, uint32_t g);
typedef void (*vexlor_copy_gbl_yuv_fn)(const void* src, void* dst, int32_t count, uint32_t g);
typedef void (*vexlor_copy_test_fn)(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t test,
                                    uint32_t reference, uint32_t shift);
typedef void (*vexlor_convert_fn)(const void* src, void* dst, int32_t count);

/* ---- Context ---------------------------------------------------------------------------------------------------
 *
 * Everything a drawing call needs besides surfaces and rectangles. The setters store and do not judge: a
 * value without meaning is refused by the drawing call that consults it, but for alpha_test (nothing passes)
 * and filter (as 1).
 *
 * The routine slots may be read, called and replaced between drawing calls. An empty (null) slot draws
 * nothing and the drawing call returns VEXLOR_OK. */

typedef struct vexlor_cache vexlor_cache;

typedef struct vexlor_context {
    uint32_t filter; /* VEXLOR_FILTER_...; scale only */
    uint32_t color;  /* fill colour, a pixel of the destination's format; 16-bit formats use the low half */
    uint32_t alpha_test;   /* VEXLOR_ALPHA_TEST_...; copy with alpha_op 1 */
    uint32_t alpha_mode;   /* VEXLOR_ALPHA_STRAIGHT or _PREMULTIPLIED; blends of copy and scale */
    uint32_t alpha_op;     /* VEXLOR_ALPHA_OP_... */
    uint32_t alpha_src;    /* VEXLOR_ALPHA_SRC_...; with alpha_op 2 */
    uint32_t alpha_dst_op; /* VEXLOR_ALPHA_DST_...; 32-bit RGB destinations only */
    uint8_t alpha_value;   /* global alpha, 0 to 255 */
    uint8_t alpha_ref;     /* reference of the alpha test, 0 to 255 */

    vexlor_memcpy_fn memcpy;
    vexlor_memcpy_fn memcpy_stream;
    vexlor_memcpy_fn memmove;
    vexlor_memcpy_fn memmove_stream;
    vexlor_memset_fn memset;
    vexlor_fill_blend_fn fill_blend_over_8888;
    vexlor_fill_blend_fn fill_blend_over_aone_8888;
    vexlor_fill_blend_fn fill_blend_over_arepl_8888;
    vexlor_copy_src_fn copy_opaque_aone_8888;
    vexlor_copy_src_fn copy_blend_over_src_8888;
    vexlor_copy_src_fn copy_blend_over_src_aone_8888;
    vexlor_copy_src_fn copy_blend_over_src_arepl_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_aone_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_arepl_8888;
    vexlor_copy_src_fn copy_blend_over_src_pre_8888;
    vexlor_copy_src_fn copy_blend_over_src_pre_aone_8888;
    vexlor_copy_src_fn copy_blend_over_src_pre_arepl_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_pre_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_pre_aone_8888;
    vexlor_copy_gbl_fn copy_blend_over_gbl_pre_arepl_8888;
    vexlor_copy_gbl_565_fn copy_blend_over_gbl_565;
    vexlor_convert_fn Y8V8Y8U8_2_X8R8G8B8;
    vexlor_convert_fn Y8V8Y8U8_2_B8G8R8X8;
    vexlor_convert_fn U8Y8V8Y8_2_X8R8G8B8;
    vexlor_convert_fn U8Y8V8Y8_2_B8G8R8X8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_Y8V8Y8U8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_U8Y8V8Y8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8;
    vexlor_copy_gbl_yuv_fn copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8;
    vexlor_copy_test_fn copy_test_8888;

    vexlor_cache* cache; /* owned; rows of filtered YUV scaling */

    /* Filtered YUV scaling: entry 2p + 1 turns a source row into 32-bit working pixels, entry 2p a working row into
     * the destination's format. Pairs p: 0 Y8V8Y8U8 and 1 U8Y8V8Y8 into themselves; 2 Y8V8Y8U8 into X/A8R8G8B8,
     * 3 into B8G8R8X/A8; 4 U8Y8V8Y8 into X/A8R8G8B8, 5 into B8G8R8X/A8. */
    vexlor_convert_fn conversions[12];
} vexlor_context;

/* Allocates a context with all state 0, the portable routine in every slot and an empty row cache, and stores
 * it in *out; stores a null pointer when memory is short. */
VEXLOR_API void vexlor_context_create(vexlor_context** out);
/* Frees the context and its cache. Null is accepted. */
VEXLOR_API void vexlor_context_destroy(vexlor_context* ctx);
/* Fills every slot anew: with the portable routines (false), or with the SSE and SSE2 routines that the
 * processor has in place of some of them (true). State and cache stay. Not while the context draws.
 *
 * With SIMD on, defined bytes change in exactly these places:
 *  - copies of 565 and YUV rows of odd width, from 128 bytes on: no pixel is carried along behind the
 *    rectangle;
 *  - opaque fills of rows from 128 bytes on that do not start at a multiple of 16 bytes, or are not a
 *    multiple of 16 bytes long: before the first 16-byte boundary the colour's low half goes into both halves
 *    of a pixel, and of the bytes behind the last only the first is written (see vexlor_memset_stream_sse);
 *  - plain copies of YUV into X8R8G8B8 and A8R8G8B8: channels differ by at most 1, and the X byte is 0 (see
 *    the _sse2 converters);
 *  - filtered scaling of YUV into X8R8G8B8, A8R8G8B8 and YUV: by what the filter, and the way back, make of
 *    that. */
VEXLOR_API void vexlor_context_set_simd(vexlor_context* ctx, bool enable);

VEXLOR_API void vexlor_context_set_filter(vexlor_context* ctx, uint32_t filter);
VEXLOR_API void vexlor_context_set_color(vexlor_context* ctx, uint32_t color);
VEXLOR_API void vexlor_context_set_alpha_mode(vexlor_context* ctx, uint32_t mode);
VEXLOR_API void vexlor_context_set_alpha_value(vexlor_context* ctx, uint8_t value);
VEXLOR_API void vexlor_context_set_alpha_src(vexlor_context* ctx, uint32_t src);
VEXLOR_API void vexlor_context_set_alpha_dst_op(vexlor_context* ctx, uint32_t op);
VEXLOR_API void vexlor_context_set_alpha_op(vexlor_context* ctx, uint32_t op);
VEXLOR_API void vexlor_context_set_alpha_test(vexlor_context* ctx, uint32_t test);
VEXLOR_API void vexlor_context_set_alpha_ref(vexlor_context* ctx, uint8_t reference);

/* From here on the prototypes of a family stand in columns. */
/* clang-format off */

/* ---- Fill ------------------------------------------------------------------------------------------------------
 *
 * Paints the rectangle with the context's color: written (alpha_op 0) or blended with alpha_value (alpha_op
 * 2).
 *
 * **The rectangle is not checked against the surface. x + width <= the surface's width and y + height <= its
 * height are the caller's duty; a fill that reaches further writes there.**
 *
 *  - Opaque: every row is one call of slot memset. Any format is accepted, known or not, unless bit 29 is set
 *    and alpha_dst_op is 2 or more; its bytes per pixel count (the memory touched is the row's for even sizes
 *    only). With alpha_dst_op 2 on a 32-bit RGB format the alpha byte is forced to 0xFF and, by long-standing
 *    contract, the row call is memset(row, color, width): only the first `width` bytes of each row, a quarter
 *    of its pixels, are written (one more where the width is odd, as vexlor_memset does).
 *  - Blended: 32-bit RGB only, through the slot of alpha_dst_op. The colour's own alpha byte is blended like
 *    the others and never is a weight. alpha_mode is not consulted.
 *
 * Returns, in this order: VEXLOR_NULL_POINTER; VEXLOR_BAD_RECTANGLE; opaque with bit 29 and alpha_dst_op 2 or
 * more: VEXLOR_UNSUPPORTED_ALPHA (above 2), VEXLOR_UNSUPPORTED_FORMAT (no 32-bit RGB code); blended:
 * VEXLOR_UNSUPPORTED_FILL, VEXLOR_UNSUPPORTED_FORMAT, VEXLOR_UNSUPPORTED_ALPHA (alpha_dst_op above 2). */
VEXLOR_API uint32_t vexlor_fill(const vexlor_context* ctx, const vexlor_surface_desc* dst, int32_t x, int32_t y,
                                int32_t width, int32_t height);

/* Rows of the blended fill. Per byte position, with colour byte c, pixel byte p and w the weight:
 *
 *     blended = p + ((c - p) * w >> 8)       mod 256, all four bytes alike, no rounding term
 *
 * computed two bytes at a time in 32-bit words, bytes 0 and 2 together and 1 and 3. count: pixels. weight: 0
 * to 256. A weight of 0 keeps the pixel, 256 gives the colour.
 * At w = 257 (arepl, weight 256) there is one exception: where c = 0 < p at byte 0 or 1 and c = p two bytes
 * above, that upper byte becomes c - 1. */
VEXLOR_API void vexlor_1d_fill_blend_over_8888(uint32_t color, uint32_t* row, uint32_t count, uint32_t weight,
                                               uint32_t alpha_shift VEXLOR_DEFAULT(0)); /* w = weight; shift unused */
VEXLOR_API void vexlor_1d_fill_blend_over_aone_8888(uint32_t color, uint32_t* row, uint32_t count, uint32_t weight,
                                                    uint32_t alpha_shift); /* w = weight; alpha byte 0xFF */
/* w = weight + (weight != 0), up to 257; the alpha byte is cleared and the weight, unshifted, is ORed in at
 * bit 0. */
VEXLOR_API void vexlor_1d_fill_blend_over_arepl_8888(uint32_t color, uint32_t* row, uint32_t count, uint32_t weight,
                                                     uint32_t alpha_shift);
/* Calls span once per row of the rectangle with the context's color, weight = alpha_value + (alpha_value !=
 * 0) and the format's alpha shift. Unchecked. */
VEXLOR_API void vexlor_2d_fill_blend_over_8888(const vexlor_context* ctx, const vexlor_surface_desc* dst,
                                               vexlor_fill_blend_fn span, int32_t x, int32_t y, int32_t width,
                                               int32_t height);

/* ---- Copy ------------------------------------------------------------------------------------------------------
 *
 * Transfers a w x h rectangle from (sx, sy) of src to (dx, dy) of dst, by alpha_op:
 *
 *  - 0, plain: equivalent formats are copied, row by row, through slot memcpy_stream; with alpha_dst_op 2 and
 *    32-bit RGB the alpha byte becomes 0xFF. Rectangles that overlap on one surface are copied right: upwards
 *    when the source lies above, through slot memmove_stream when both start in the same row; only the
 *    alpha_dst_op 2 copy always goes top down, pixel 0 first. YUV 4:2:2 becomes 32-bit RGB through the four
 *    converter slots. The word copy moves a row of w * bytes per pixel = 4 k + 2 bytes as 4 k + 4: one more
 *    16-bit pixel of the row is carried along, inside the surfaces.
 *  - 1, alpha test: 32-bit source with alpha, alpha_dst_op 1; pixels that pass (alpha_test, alpha_ref) are
 *    copied. Any code of 32 bits per pixel with bit 30 passes for one with alpha, here and in blends by pixel:
 *    0x40000020 is no known format, and is accepted.
 *  - 2, blend: by alpha_src with the source pixel's alpha (32-bit formats with alpha), or with alpha_value
 *    (32-bit RGB, 565, and YUV 4:2:2 into 32-bit RGB). 565 and YUV blends consult neither alpha_mode nor
 *    alpha_dst_op.
 *
 * Returns, in this order:
 *     all             VEXLOR_NULL_POINTER, VEXLOR_BAD_RECTANGLE, VEXLOR_UNSUPPORTED_ALPHA (alpha_op above 2)
 *     plain           VEXLOR_NOT_CONVERTIBLE, VEXLOR_STRIDE_TOO_SHORT, VEXLOR_UNSUPPORTED_ALPHA (32-bit RGB,
 *                     alpha_dst_op above 2), VEXLOR_UNSUPPORTED_FORMAT (unknown 32-bit code, alpha_dst_op 2)
 *     test            VEXLOR_NOT_CONVERTIBLE, VEXLOR_UNSUPPORTED_FORMAT, VEXLOR_NO_SOURCE_ALPHA, VEXLOR_OVERLAP,
 *                     VEXLOR_UNSUPPORTED_ALPHA (alpha_dst_op not 1)
 *     blend, pixel    VEXLOR_NOT_CONVERTIBLE, VEXLOR_UNSUPPORTED_FORMAT, VEXLOR_NO_SOURCE_ALPHA, VEXLOR_OVERLAP,
 *                     VEXLOR_UNSUPPORTED_ALPHA (alpha_dst_op above 2, alpha_mode above 1)
 *     blend, global   VEXLOR_NOT_CONVERTIBLE, VEXLOR_OVERLAP, VEXLOR_UNSUPPORTED_ALPHA (as above, 32-bit RGB),
 *                     VEXLOR_UNSUPPORTED_FORMAT (other sources; YUV into YUV)
 *     blend, other    VEXLOR_UNSUPPORTED_ALPHA (alpha_src above 1)
 */
VEXLOR_API uint32_t vexlor_copy(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx, int32_t dy,
                                int32_t w, int32_t h);

/* Drivers: compute the first row addresses, then call a row routine once per row. Unchecked; h = 0 calls
 * nothing. Both addresses use the source's bytes per pixel, but for S32D32, where each surface uses its own.
 * g is alpha_value + (alpha_value != 0); shift is the alpha shift of the source format. The 565 and test
 * drivers read their slot of the context before each row and stop when it is empty. */
VEXLOR_API void vexlor_2d_copy_blend_over_src_8888(const vexlor_surface_desc* src, const vexlor_surface_desc* dst,
                                                   vexlor_copy_src_fn row, int32_t sx, int32_t sy, int32_t dx,
                                                   int32_t dy, int32_t w, int32_t h);
VEXLOR_API void vexlor_2d_copy_blend_over_gbl_8888(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                                   const vexlor_surface_desc* dst, vexlor_copy_gbl_fn row, int32_t sx,
                                                   int32_t sy, int32_t dx, int32_t dy, int32_t w, int32_t h);
VEXLOR_API void vexlor_2d_copy_blend_over_gbl_565(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                                  const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx,
                                                  int32_t dy, int32_t w, int32_t h);
VEXLOR_API void vexlor_2d_copy_blend_over_gbl_S32D32(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                                     const vexlor_surface_desc* dst, vexlor_copy_gbl_yuv_fn row,
                                                     int32_t sx, int32_t sy, int32_t dx, int32_t dy, int32_t w,
                                                     int32_t h);
VEXLOR_API void vexlor_2d_copy_test_8888(const vexlor_context* ctx, const vexlor_surface_desc* src,
                                         const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t dx,
                                         int32_t dy, int32_t w, int32_t h);

/* Rows that blend 32-bit pixels by the source pixel's alpha. shift: bit position of the alpha byte, 0 or 24
 * for the known formats. With source byte s, destination byte d, a the source pixel's alpha and f = a + (a !=
 * 0), 0 to 256:
 *
 *     straight          d + ((s - d) * f >> 8)                mod 256
 *     premultiplied     s + d - (d * f >> 8)                  mod 256, bytes 0 and 1
 *                       s + d - (d * f >> 8) - borrow         mod 256, bytes 2 and 3
 *
 * All four bytes are blended alike; no pixel is skipped and no sum saturates. The borrow is part of the
 * contract: two bytes share a 32-bit word, and the fraction of the upper byte's product is taken off with it.
 * It is 1 when (d * f mod 256) * 256 > s' + d' - (d' * f >> 8), s' and d' being the bytes two places lower,
 * else 0. */
VEXLOR_API void vexlor_1d_copy_blend_over_src_8888          (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift); /* alpha blended too */
VEXLOR_API void vexlor_1d_copy_blend_over_src_aone_8888     (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift); /* alpha byte 0xFF */
VEXLOR_API void vexlor_1d_copy_blend_over_src_arepl_8888    (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift); /* alpha of the source */
VEXLOR_API void vexlor_1d_copy_blend_over_src_pre_8888      (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift); /* premultiplied */
VEXLOR_API void vexlor_1d_copy_blend_over_src_pre_aone_8888 (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift);
VEXLOR_API void vexlor_1d_copy_blend_over_src_pre_arepl_8888(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift);

/* The same with one factor for the whole row, from g, 0 to 256. The plain rows take f = g and ignore shift.
 * The aone and arepl rows raise it once more, f = g + (g != 0), so 256 blends at 257 (straight: where
 * s = 0 < d at byte 0 or 1 and s = d two bytes above, that upper byte becomes s - 1); arepl clears the alpha byte
 * and ORs g, unshifted, in at bit 0. */
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_8888          (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift VEXLOR_DEFAULT(0));
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_aone_8888     (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_arepl_8888    (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_pre_8888      (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift VEXLOR_DEFAULT(0));
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_pre_aone_8888 (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_pre_arepl_8888(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift);

/* Four pixels at a time. Straight rows equal the portable ones. Premultiplied rows lack the borrow, in bytes
 * 2 and 3 of the pixels between the destination's first 16-byte boundary and the last 0 to 3; they sit in no
 * slot. A destination that is not 4-byte aligned is blended like the portable rows throughout. */
VEXLOR_API void vexlor_1d_copy_blend_over_src_8888_sse2    (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift);
VEXLOR_API void vexlor_1d_copy_blend_over_src_pre_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_8888_sse2    (const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift VEXLOR_DEFAULT(0));
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_pre_8888_sse2(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t g, uint32_t shift VEXLOR_DEFAULT(0));

/* 565 pixels. g, 0 to 256, is used as it comes with shifts of 5 and 6, by contract: weights of 32 (red, blue)
 * and 64 (green) give the source, larger ones scale the difference up and wrap inside the masks:
 *
 *     G  = (((s & 0x07E0) - (d & 0x07E0)) * g >> 6) + (d & 0x07E0) & 0x07E0
 *     RB = (((s & 0xF81F) - (d & 0xF81F)) * g >> 5) + (d & 0xF81F) & 0xF81F */
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_565(const uint16_t* src, uint16_t* dst, uint32_t count, uint32_t g);

/* Copies 32-bit pixels with the alpha byte set to 0xFF. Each pixel is read, then written, from pixel 0 up,
 * also when the rows overlap. */
VEXLOR_API void vexlor_1d_copy_opaque_aone_8888(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t shift);
/* Copies the 32-bit pixels whose alpha passes test (VEXLOR_ALPHA_TEST_...) against reference, compared as
 * 32-bit numbers; leaves the others alone. A test above 5 copies nothing. */
VEXLOR_API void vexlor_1d_copy_test_8888(const uint32_t* src, uint32_t* dst, uint32_t count, uint32_t test,
                                         uint32_t reference, uint32_t shift);

/* YUV 4:2:2 rows blended with the factor g, 0 to 256, used as it comes. Source pixels become RGB by the
 * integer rule below with an alpha byte of 255, and are blended straight over the destination pixel, all four
 * bytes. Rows into YUV convert the destination to RGB, blend, and convert back, chroma from the pair's first
 * pixel. count: pixels, count / 2 pairs are processed; an odd last pixel is left alone, and a count below 2,
 * or negative, does nothing. */
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8           (const void* src, void* dst, int32_t count, uint32_t g);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_A8R8G8B8(const void* src, void* dst, int32_t count, uint32_t g);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_Y8V8Y8U8_2_B8G8R8A8(const void* src, void* dst, int32_t count, uint32_t g);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8           (const void* src, void* dst, int32_t count, uint32_t g);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_A8R8G8B8(const void* src, void* dst, int32_t count, uint32_t g);
VEXLOR_API void vexlor_1d_copy_blend_over_gbl_U8Y8V8Y8_2_B8G8R8A8(const void* src, void* dst, int32_t count, uint32_t g);

/* ---- Scale -----------------------------------------------------------------------------------------------------
 *
 * Stretches or shrinks the sw x sh rectangle at (sx, sy) of src into the dw x dh rectangle at (dx, dy) of
 * dst. Sizes and origins are meant to stay below 32768: positions are 16.16 fixed point, a step is (source
 * length << 16) / destination length, truncated.
 *
 *     alpha_op 0 or 1, or 2 with alpha_src 0    opaque; there is no global-alpha blend
 *     alpha_op 2 with alpha_src 1               blended by the scaled pixel's own alpha
 *     filter 0                                  nearest sample, from half a step inside the rectangle (pixel centres)
 *     filter 2                                  Gaussian where an axis is kept or reduced, Catmull-Rom where enlarged
 *     any other filter                          box mean where an axis is kept or reduced, linear where enlarged
 *
 * Formats: equivalent ones (565, 32-bit RGB, YUV 4:2:2 of one order), and YUV 4:2:2 into 32-bit RGB at even
 * source widths. Blended scaling takes equivalent 32-bit formats with alpha. Filtered scaling starts at the
 * rectangle's first row, unfiltered half a step below it: the two sample different rows.
 *
 * By contract, unfiltered opaque scaling repeats a destination row by a copy of dw x 4 bytes through slot
 * memcpy_stream (which must be there for any of it): in 565 that is twice the rectangle's width, and the dw
 * pixels right of the rectangle, as far as the surface reaches, are those of the row above; where dw x 4
 * exceeds the stride the copy runs over the following rows too. YUV into RGB leaves the last column alone
 * when dw is odd, but in repeated rows; its source starts at the pair that holds sx. YUV into YUV works in
 * whole pairs, sw / 2 of them from pair sx / 2 into dw / 2 from pair dx / 2, and repeats (dw / 2) x 4 bytes.
 * Filtered, a YUV row starts at pixel sx even when that is odd, its last pixel is sx + sw - 2, and of an odd
 * dw into YUV the last pixel is left alone.
 *
 * Filtered YUV scaling needs slot memcpy and both converters of its pair, or draws nothing. It converts source
 * rows into the context's row cache, and the cache remembers how many
 * rows an earlier scale made it hold: after one that reduced the height, a scale with fewer rows per
 * destination row lags behind its source (see vexlor_cache_update). Use a fresh context, or a fresh cache in
 * its place, where that matters.
 *
 * Returns, in this order: VEXLOR_NULL_POINTER, VEXLOR_BAD_RECTANGLE, VEXLOR_OVERLAP, VEXLOR_UNSUPPORTED_ALPHA
 * (alpha_op above 2, alpha_src above 1 when blending), then:
 *     opaque, unfiltered    VEXLOR_NOT_CONVERTIBLE; VEXLOR_UNSUPPORTED_FORMAT; 32-bit RGB: VEXLOR_UNSUPPORTED_ALPHA
 *                           (alpha_dst_op above 2); YUV into YUV with dw 1: VEXLOR_BAD_RECTANGLE
 *     opaque, filtered      the same, without the last
 *     blended, unfiltered   VEXLOR_NOT_CONVERTIBLE, VEXLOR_UNSUPPORTED_FORMAT (not 32 bits per pixel),
 *                           VEXLOR_NO_SOURCE_ALPHA, VEXLOR_UNSUPPORTED_FORMAT, VEXLOR_UNSUPPORTED_ALPHA (alpha_dst_op
 *                           above 2, alpha_mode above 1)
 *     blended, filtered     VEXLOR_NOT_CONVERTIBLE, VEXLOR_NO_SOURCE_ALPHA, VEXLOR_UNSUPPORTED_FORMAT,
 *                           VEXLOR_UNSUPPORTED_ALPHA (the same)
 *
 * Without memory for the rows that filtered scaling needs in between, nothing is drawn and VEXLOR_OK
 * returned. */
VEXLOR_API uint32_t vexlor_scale(vexlor_context* ctx, const vexlor_surface_desc* src, const vexlor_surface_desc* dst,
                                 int32_t sx, int32_t sy, int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw,
                                 int32_t dh);

/* The four drivers behind it, after its own checks: pointers, rectangles and overlap are the caller's duty. */
VEXLOR_API uint32_t vexlor_scale_opaque_nofilter         (vexlor_context* ctx, const vexlor_surface_desc* src, const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw, int32_t dh);
VEXLOR_API uint32_t vexlor_scale_opaque_filter           (vexlor_context* ctx, const vexlor_surface_desc* src, const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw, int32_t dh);
VEXLOR_API uint32_t vexlor_scale_blend_over_src_nofilter (vexlor_context* ctx, const vexlor_surface_desc* src, const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw, int32_t dh);
VEXLOR_API uint32_t vexlor_scale_blend_over_src_filter   (vexlor_context* ctx, const vexlor_surface_desc* src, const vexlor_surface_desc* dst, int32_t sx, int32_t sy, int32_t sw, int32_t sh, int32_t dx, int32_t dy, int32_t dw, int32_t dh);

/* Spans of unfiltered scaling: one destination row from one source row. Destination unit i comes from source
 * unit x + i * step, 16.16, truncated. x, step: 16.16; count: destination pixels; dst_format: read for its
 * alpha shift. The YUV spans step through pairs: each step converts one pair to two pixels as the row
 * converter of the same name does, count / 2 times, so an odd last pixel is left alone. */
typedef void (*vexlor_scale_span_fn)(const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_opaque_nofilt_32                  (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step); /* 32-bit units, unchanged */
VEXLOR_API void vexlor_1d_scale_opaque_nofilt_aone_8888           (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step); /* alpha byte 0xFF */
VEXLOR_API void vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_X8R8G8B8 (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_opaque_nofilt_Y8V8Y8U8_2_B8G8R8X8 (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_X8R8G8B8 (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_opaque_nofilt_U8Y8V8Y8_2_B8G8R8X8 (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
/* Blending spans: as the vexlor_1d_lerp row of the same name does, both alpha shifts being that of
 * dst_format. */
VEXLOR_API void vexlor_1d_scale_blend_over_src_nofilt_8888           (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_blend_over_src_nofilt_8888_pre       (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_blend_over_src_nofilt_arepl_8888     (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_blend_over_src_nofilt_arepl_8888_pre (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_blend_over_src_nofilt_aone_8888      (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);
VEXLOR_API void vexlor_1d_scale_blend_over_src_nofilt_aone_8888_pre  (const void* src, void* dst, uint32_t dst_format, uint32_t count, int32_t x, int32_t step);

/* Interpolation rows: blend a finished row of source pixels over the destination, each by the source pixel's
 * own alpha, with the arithmetic of the vexlor_1d_copy_blend_over_src rows of the same kind. src_shift: bit
 * position of the source's alpha; dst_shift: of the destination's, used by the aone rows. Note the order:
 * destination first. */
typedef void (*vexlor_lerp_8888_fn)(uint32_t* dst, const uint32_t* src, uint32_t count, uint32_t src_shift, uint32_t dst_shift);
typedef void (*vexlor_lerp_565_fn)(uint16_t* dst, const uint16_t* src, uint32_t count, uint32_t shift);
VEXLOR_API void vexlor_1d_lerp_8888          (uint32_t* dst, const uint32_t* src, uint32_t count, uint32_t src_shift, uint32_t dst_shift VEXLOR_DEFAULT(0)); /* alpha blended too */
VEXLOR_API void vexlor_1d_lerp_pre_8888      (uint32_t* dst, const uint32_t* src, uint32_t count, uint32_t src_shift, uint32_t dst_shift VEXLOR_DEFAULT(0)); /* premultiplied */
VEXLOR_API void vexlor_1d_lerp_arepl_8888    (uint32_t* dst, const uint32_t* src, uint32_t count, uint32_t src_shift, uint32_t dst_shift VEXLOR_DEFAULT(0)); /* alpha of the source */
VEXLOR_API void vexlor_1d_lerp_pre_arepl_8888(uint32_t* dst, const uint32_t* src, uint32_t count, uint32_t src_shift, uint32_t dst_shift VEXLOR_DEFAULT(0));
VEXLOR_API void vexlor_1d_lerp_aone_8888     (uint32_t* dst, const uint32_t* src, uint32_t count, uint32_t src_shift, uint32_t dst_shift); /* alpha byte 0xFF */
VEXLOR_API void vexlor_1d_lerp_pre_aone_8888 (uint32_t* dst, const uint32_t* src, uint32_t count, uint32_t src_shift, uint32_t dst_shift);
/* 565: w = a + (a != 0), a = the pixel's 16 bits >> shift & 0xFF. Shifts of 5 and 6 though w runs to 256, as
 * in vexlor_1d_copy_blend_over_gbl_565. Premultiplied: s + d - (w * d >> 5), or >> 6 for green, then masked. */
VEXLOR_API void vexlor_1d_lerp_565    (uint16_t* dst, const uint16_t* src, uint32_t count, uint32_t shift);
VEXLOR_API void vexlor_1d_lerp_pre_565(uint16_t* dst, const uint16_t* src, uint32_t count, uint32_t shift);
/* The row for the context's alpha_dst_op and alpha_mode (565: alpha_mode alone); null for values without one. */
VEXLOR_API vexlor_lerp_8888_fn vexlor_choose_1d_lerp_8888(const vexlor_context* ctx);
VEXLOR_API vexlor_lerp_565_fn vexlor_choose_1d_lerp_565(const vexlor_context* ctx);

/* Writers: store a finished row, unchanged or with the alpha byte at dst_shift 0xFF. src_shift is not used. */
VEXLOR_API void vexlor_writer_arepl_8888(uint32_t* dst, const uint32_t* row, uint32_t count, uint32_t src_shift, uint32_t dst_shift);
VEXLOR_API void vexlor_writer_aone_8888 (uint32_t* dst, const uint32_t* row, uint32_t count, uint32_t src_shift, uint32_t dst_shift);

/* ---- Filters ---------------------------------------------------------------------------------------------------
 *
 * A filter writes one row of `count` pixels from up to four source rows. Names give the horizontal and the
 * vertical kernel. Addresses are those of pixels, 32-bit words (8888, any byte order, all channels alike) or
 * 16-bit ones (565):
 *
 *     first, last    top-left pixel of the source rectangle, and the last pixel that a tap may read
 *     row, row_end   leftmost pixel of the source row of this destination row, and the rightmost a tap may read
 *     params         steps, see below
 *     out            count pixels
 *
 * With acc = i * xstep for destination pixel i, whole() the integer part, w(p) = f + (f != 0) for f = bits
 * 8-15 of p:
 *
 *     mean      taps k, k + 1; k = whole(acc) + whole(xhalf). Result ((a + b) * 127 >> 8) per byte; 565: * 15 >> 5 for
 *               red and blue, * 31 >> 6 for green: every mean darkens a little. Vertically from the row yhalf_rows
 *               below; without a lower row the upper one is averaged with itself.
 *     linear    taps k = whole(acc), k + 1. Result a + ((b - a) * w(acc) >> 8) per byte; 565: >> 5 and >> 6, so that
 *               differences wrap. Vertically from row itself with w(ypos); without a lower row the upper one stands.
 *     gauss     taps k - 1, k, k + 1 with weights 1/4, 1/2, 1/4; k = whole(acc) + whole(xcentre), or whole(xhalf) when
 *               the vertical kernel is catrom. Vertically from the row ycentre_rows - 1 below.
 *     catrom    taps k - 1 .. k + 2; k = whole(acc) + whole(xhalf), phase t = fraction of acc / 65535, weights
 *               ((2 - t) t - 1) t, (3 t - 5) t t + 2, ((4 - 3 t) t + 1) t, (t - 1) t t, halved; the sum is clamped to
 *               0..1 (Catmull and Rom, "A class of local interpolating splines", 1974). Vertically from the row
 *               yhalf_rows - 1 below, phase from ypos.
 *
 * (whole(a) + whole(b) above is (acc & 0xFFFF0000) + b, shifted right by 16.) Taps beyond row_end, and left
 * of row, read the pixel there; linear's left tap alone is not tested. mean and linear use the lower row while
 * its left tap is not beyond last.
 *
 * gauss and catrom work on components 0..1. The phase, each weight, each channel of a row's result and each
 * final channel are stored as singles; between stores everything is double, and sums run from the first tap to
 * the last. When the first row ends above first, it is replaced by the whole stride from first on, and the rows
 * below follow at first + stride, first + 2 stride, ... Any row that starts behind last is replaced by the
 * whole stride up to last. With a rectangle narrower than the stride, taps in replaced rows fall on pixels
 * beside it. */
typedef struct vexlor_filter_params {
    uint32_t ypos;        /* 16.16 source row of this destination row; only its fraction is read */
    int32_t xstep;        /* 16.16 source pixels per destination pixel */
    int32_t xhalf;        /* xstep >> 1 */
    int32_t yhalf;        /* ystep >> 1; no filter reads it */
    int32_t yhalf_rows;   /* ystep >> 17 */
    int32_t ycentre_rows; /* (yhalf + 0x1000) >> 16 */
    int32_t xcentre;      /* xhalf + 0x1000 */
    uint32_t count;       /* destination pixels */
    uint32_t stride;      /* bytes between source rows */
} vexlor_filter_params;

typedef void (*vexlor_filter_fn)(const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);

/* The filter for the context's filter value and a scale from sw x sh to dw x dh, all at least 1. An axis is
 * enlarged when (to << 16) / from > 0x10000; the shift wraps for lengths from 32768 on. */
VEXLOR_API vexlor_filter_fn vexlor_scale_choose_filter_8888(const vexlor_context* ctx, int32_t sw, int32_t sh, int32_t dw, int32_t dh);
VEXLOR_API vexlor_filter_fn vexlor_scale_choose_filter_565 (const vexlor_context* ctx, int32_t sw, int32_t sh, int32_t dw, int32_t dh);

VEXLOR_API void vexlor_filter_xmean_ymean_8888     (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out); /* lower right tap tested by itself: falls back to the upper one alone */
VEXLOR_API void vexlor_filter_xmean_ylinear_8888   (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xlinear_ymean_8888   (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xlinear_ylinear_8888 (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xgauss_ygauss_8888   (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xgauss_ycatrom_8888  (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xcatrom_ygauss_8888  (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xcatrom_ycatrom_8888 (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xmean_ymean_565      (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xmean_ylinear_565    (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xlinear_ymean_565    (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xlinear_ylinear_565  (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xgauss_ygauss_565    (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xgauss_ycatrom_565   (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xcatrom_ygauss_565   (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);
VEXLOR_API void vexlor_filter_xcatrom_ycatrom_565  (const uint8_t* first, const uint8_t* last, const uint8_t* row, const uint8_t* row_end, const vexlor_filter_params* params, void* out);

/* ---- Colour packing --------------------------------------------------------------------------------------------
 *
 * Pixels as single-precision components, most significant field first, 0 to 1. Unpacking multiplies a field
 * by the constant and rounds once. Packing multiplies by the scale and cuts the exact product off toward
 * zero: it neither rounds nor clamps, so components outside 0..1 spill into other fields, negative ones as
 * the low 32 bits of a 64-bit integer. 8-bit and 6-bit fields survive the way there and back; 5-bit fields
 * come back one lower, but for 0, 19, 23, 27 and 31. */
VEXLOR_API extern const float VEXLOR_FXPT_inv63;  /* 1/63, 0x3C820821 */
VEXLOR_API extern const float VEXLOR_FXPT_inv31;  /* 1/31, 0x3D042108 */
VEXLOR_API extern const float VEXLOR_FXPT_inv255; /* 1/255, 0x3B808081 */
VEXLOR_API extern const float VEXLOR_FXPT_63;
VEXLOR_API extern const float VEXLOR_FXPT_31;
VEXLOR_API extern const float VEXLOR_FXPT_255;

VEXLOR_API void vexlor_color4_unpack_8888(uint32_t pixel, float out[4]);
VEXLOR_API void vexlor_color3_unpack_565(uint16_t pixel, float out[3]);
VEXLOR_API uint32_t vexlor_color4_pack_8888(const float in[4]);
VEXLOR_API uint32_t vexlor_color3_pack_565(const float in[3]); /* the pixel in the low 16 bits */

/* ---- Row cache -------------------------------------------------------------------------------------------------
 *
 * Source rows converted to another format, kept while a filter walks down a surface. A context owns one;
 * callers who drive rows themselves may make their own. One thread at a time. */
struct vexlor_cache {
    int32_t pitch;         /* bytes between rows in the buffer, a multiple of 16; only grows */
    int32_t capacity;      /* rows the buffer holds; only grows */
    uint8_t* buffer;       /* converted rows, 16-byte aligned; null until needed */
    uint8_t* last_row;     /* where the last row started when the buffer was allocated */
    uint8_t* first_source; /* address of the source row held in the first row; null: nothing valid */
};

/* Allocates a zero-filled cache and stores it in *out; a null pointer when memory is short. */
VEXLOR_API void vexlor_cache_init(vexlor_cache** out);
/* Frees the buffer and the cache. Null is accepted. */
VEXLOR_API void vexlor_cache_fini(vexlor_cache* cache);
/* Forgets which rows are held; keeps the memory. */
VEXLOR_API void vexlor_cache_reset(vexlor_cache* cache);
/* Makes the buffer hold the band of `rows` source rows that starts at *first, and returns its pitch.
 *
 *   convert            converts one source row: (source row, buffer row, count)
 *   copy               moves rows within the buffer, at distances that are a multiple of the pitch, 0 included
 *   in_unit, out_unit  bytes of a source unit (a YUV pair: 4) and of what it becomes (two 32-bit pixels: 8)
 *   count              pixels per convert call, at most one unit each. It starts at the band's first unit, so it may
 *                      read source pixels behind the band's last unit; rows are written whole.
 *   stride             bytes between source rows
 *   rows               rows of the band, at least 1
 *   *first, *last      in: first unit of the band, last unit of its first row. Out: the same places in the buffer.
 *
 * A band that begins where the held one does is not converted again. One that moved down by k rows moves the
 * rows behind the k-th up and converts k rows, from row (rows - k) of the band on, behind them; that counts
 * from the buffer's capacity, so a band shorter than the capacity lags behind its source. One that moved up
 * keeps the rows as they are. Start from vexlor_cache_reset, or a fresh cache, where that matters.
 *
 * One pitch before the first row repeats the first row and, where the band reaches the end of the buffer, one
 * pitch behind the band repeats its last row, for filters that look one row further. Without memory, and for
 * rows or in_unit below 1, out_unit below in_unit, *last + in_unit not above *first or rows above 2^31 - 1 bytes, the
 * cache is left empty, null is stored in both and 0 returned. */
VEXLOR_API int32_t vexlor_cache_update(vexlor_cache* cache, vexlor_convert_fn convert, vexlor_memcpy_fn copy,
                                       int32_t in_unit, int32_t out_unit, int32_t count, uint32_t stride,
                                       int32_t rows, uint8_t** first, uint8_t** last);

/* ---- Memory routines -------------------------------------------------------------------------------------------
 * Counts are bytes, meant to be even. Where they are not a multiple of the unit, the bytes touched are as
 * stated. */

VEXLOR_API void vexlor_memcpy_x86(void* dst, const void* src, uint32_t bytes); /* bytes / 4 words, then bytes % 4 16-bit units, forwards, also when the ranges overlap: 6 bytes copy 8 */
VEXLOR_API void vexlor_memmove(void* dst, const void* src, uint32_t bytes);    /* the C library's memmove */
/* Sets rows of 16- or 32-bit pixels. value: the 32-bit pattern, a 16-bit pixel in both halves. A destination
 * that is not 4-byte aligned first gets one 16-bit store of value's low half; then words; a rest of 1 to 3
 * bytes gets one 16-bit store. 0 bytes store nothing. */
VEXLOR_API void vexlor_memset(void* dst, uint32_t value, uint32_t bytes);
/* Copies words, after one 16-bit unit when a pointer is not 4-byte aligned but both are even. **It returns
 * only when both pointers are 4-byte aligned and bytes % 4 == 0, or both are even, not both 4-byte aligned,
 * and bytes % 4 == 2, or one is odd and bytes is 0; any other call copies on until it faults.** No slot holds
 * it; the library never calls it. */
VEXLOR_API void vexlor_memcpy(void* dst, const void* src, uint32_t bytes);

/* With SSE. Rows below the stated length take vexlor_memcpy_x86 or vexlor_memset. The streaming routines
 * write past the caches and end with a store fence; 2-byte steps bring the destination to a 16-byte boundary
 * first, which an odd one never reaches. */
VEXLOR_API void vexlor_memcpy16_sse(void* dst, const void* src, uint32_t bytes);      /* from 64 bytes on: whole 16-byte blocks only, both pointers 16-byte aligned */
VEXLOR_API void vexlor_memcpy_stream_sse(void* dst, const void* src, uint32_t bytes); /* from 128 bytes on: exactly bytes */
/* From 128 bytes on: 16-bit stores of value's low half up to a 16-byte boundary, 16-byte blocks, then value's
 * low byte once if anything is left; the rest of up to 14 bytes keeps what it held. */
VEXLOR_API void vexlor_memset_stream_sse(void* dst, uint32_t value, uint32_t bytes);

/* ---- YUV 4:2:2 converters --------------------------------------------------------------------------------------
 *
 * Integer studio-range BT.601 with coefficients times 256. count: pixels, count / 2 pairs are converted; an
 * odd last pixel is left alone, and a count below 2, or negative, does nothing. With C = Y - 16, D = U - 128,
 * E = V - 128, arithmetic shifts, each result clamped to 0..255 and the X byte 255:
 *
 *     R = (298 C + 409 E + 128) >> 8
 *     G = (298 C - 208 E - 100 D + 128) >> 8
 *     B = (298 C + 516 D + 128) >> 8
 *
 * and back, U and V from the pair's first pixel alone, X ignored (Y 16..235, U and V 16..239):
 *
 *     Y = ((66 R + 129 G + 25 B + 128) >> 8) + 16
 *     U = ((-38 R - 74 G + 112 B) >> 8) + 128
 *     V = ((112 R - 94 G - 18 B) >> 8) + 128 */
VEXLOR_API void vexlor_1d_Y8V8Y8U8_2_X8R8G8B8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_Y8V8Y8U8_2_B8G8R8X8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_U8Y8V8Y8_2_X8R8G8B8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_U8Y8V8Y8_2_B8G8R8X8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_X8R8G8B8_2_Y8V8Y8U8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_B8G8R8X8_2_Y8V8Y8U8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_X8R8G8B8_2_U8Y8V8Y8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_B8G8R8X8_2_U8Y8V8Y8(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_passthrough(const void* src, void* dst, int32_t count); /* count 32-bit words, unchanged; negative: none */

/* With SSE2. From the destination's first 16-byte boundary on (rows that are not 8-byte aligned have none)
 * two pairs at a time in single precision, one rounding per operation, to integers as the processor is set to
 * round, clamped to 0..255; the X byte is 0. Pairs before, and a last single one, are converted as above.
 * With Y' = 1.164 (Y - 16), U' = U - 128, V' = V - 128:
 *
 *     R = Y' + 1.596 V'        G = (Y' - 0.391 U') - 0.813 V'        B = Y' + 2.018 U' */
VEXLOR_API void vexlor_1d_Y8V8Y8U8_2_X8R8G8B8_sse2(const void* src, void* dst, int32_t count);
VEXLOR_API void vexlor_1d_U8Y8V8Y8_2_X8R8G8B8_sse2(const void* src, void* dst, int32_t count);
/* Their constants, one per row, four times each, 16-byte aligned: 16, 128, 1.164, 2.018, 1.596, -0.391,
 * -0.813. */
VEXLOR_API extern const float VEXLOR_YUV_2_RGB_SSE2_CONSTS[7][4];

#ifdef __cplusplus
}
#endif

#endif
