#include "KdPreviewScaler.h"

#include <QRgb>

#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#define KDPREVIEW_SSE2
#include <emmintrin.h>
#endif

namespace KdPreviewScaler {

namespace {

constexpr int kBytesPerPixel = 4;
constexpr quint32 kOpaque = 0xff000000U;
constexpr quint64 kChannels = 0x00ff00ff00ff00ffULL;

const uchar* place(const uchar* row, int column)
{
    return row + std::ptrdiff_t(column) * kBytesPerPixel;
}

quint32 pixelAt(const uchar* row, int column)
{
    quint32 pixel = 0;
    std::memcpy(&pixel, place(row, column), sizeof pixel);
    return pixel;
}

// Four channels of 8 bits in four lanes of 16, so that one multiplication weighs them all.

quint64 toLanes(quint32 pixel)
{
    return (quint64(pixel & 0xff00ff00U) << 24U) | (pixel & 0x00ff00ffU);
}

quint32 fromLanes(quint64 lanes)
{
    return quint32(lanes | (lanes >> 24U));
}

quint64 between(quint64 one, quint64 other, quint32 part)
{
    return ((one * (kWhole - part) + other * part) >> 8U) & kChannels;
}

#ifdef KDPREVIEW_SSE2

/** Two pixels that lie side by side, each channel in 16 bits, weighed by rows. */
__m128i pairAt(const Rows& rows, int column, __m128i upperPart, __m128i lowerPart, __m128i* all)
{
    const auto* const above = reinterpret_cast<const __m128i*>(place(rows.upper, column));
    const auto* const below = reinterpret_cast<const __m128i*>(place(rows.lower, column));
    const __m128i upper = _mm_loadl_epi64(above);
    const __m128i lower = _mm_loadl_epi64(below);
    *all = _mm_and_si128(*all, _mm_and_si128(upper, lower));
    const __m128i zero = _mm_setzero_si128();
    return _mm_srli_epi16(_mm_add_epi16(_mm_mullo_epi16(_mm_unpacklo_epi8(upper, zero), upperPart),
                                        _mm_mullo_epi16(_mm_unpacklo_epi8(lower, zero), lowerPart)),
                          8);
}

/** The same for their mixture; its channels are in the lower half. */
__m128i mixedPair(__m128i pair, quint32 part)
{
    const __m128i second = _mm_set1_epi16(short(part));
    const __m128i first = _mm_set1_epi16(short(kWhole - part));
    const __m128i weighed = _mm_mullo_epi16(pair, _mm_unpacklo_epi64(first, second));
    return _mm_srli_epi16(_mm_add_epi16(weighed, _mm_srli_si128(weighed, 8)), 8);
}

/** @return false, with any pixels in out, when one that counts is not opaque. */
bool fillOpaque(quint32* out, const Rows& rows, const std::vector<Neighbours>& columns, int begin,
                int end)
{
    const __m128i lowerPart = _mm_set1_epi16(short(rows.part));
    const __m128i upperPart = _mm_set1_epi16(short(kWhole - rows.part));
    __m128i all = _mm_set1_epi32(-1);
    for (int x = begin; x < end; ++x) {
        const Neighbours& column = columns[std::size_t(x)];
        const __m128i pair = pairAt(rows, column.first, upperPart, lowerPart, &all);
        const __m128i mixture = mixedPair(pair, column.part);
        out[x] = quint32(_mm_cvtsi128_si32(_mm_packus_epi16(mixture, mixture)));
    }
    const __m128i opaque = _mm_set1_epi32(int(kOpaque));
    const __m128i isOpaque = _mm_cmpeq_epi32(_mm_and_si128(all, opaque), opaque);
    return (_mm_movemask_epi8(isOpaque) & 0xff) == 0xff;
}

#else

bool fillOpaque(quint32* /*out*/, const Rows& /*rows*/, const std::vector<Neighbours>& /*columns*/,
                int /*begin*/, int /*end*/)
{
    return false;
}

#endif

} // namespace

quint32 mixed(const Rows& rows, const Neighbours& columns)
{
    const int second = columns.first + (rows.width > 1 ? 1 : 0);
    quint32 a = pixelAt(rows.upper, columns.first);
    quint32 b = pixelAt(rows.upper, second);
    quint32 c = pixelAt(rows.lower, columns.first);
    quint32 d = pixelAt(rows.lower, second);
    if ((a & b & c & d) < kOpaque) {
        a = qPremultiply(a);
        b = qPremultiply(b);
        c = qPremultiply(c);
        d = qPremultiply(d);
    }
    const quint64 left = between(toLanes(a), toLanes(c), rows.part);
    const quint64 right = between(toLanes(b), toLanes(d), rows.part);
    return fromLanes(between(left, right, columns.part)) | kOpaque;
}

void fill(quint32* out, const Rows& rows, const std::vector<Neighbours>& columns, int begin,
          int end, bool* isOpaque)
{
    if (*isOpaque && rows.width > 1 && fillOpaque(out, rows, columns, begin, end)) {
        return;
    }
    *isOpaque = false;
    for (int x = begin; x < end; ++x) {
        out[x] = mixed(rows, columns[std::size_t(x)]);
    }
}

} // namespace KdPreviewScaler
