#include "QPNGUnfilter.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#if defined(__GNUC__)
#include <smmintrin.h>
#define TAVREL_PAETH_SSE41
#endif
#endif

namespace {

bool baselineOnly = false;

inline quint32 load32(const uchar* p)
{
    quint32 v;
    std::memcpy(&v, p, 4);
    return v;
}

inline void store32(uchar* p, quint32 v)
{
    std::memcpy(p, &v, 4);
}

inline uchar paeth(int a, int b, int c)
{
    const int pa = std::abs(b - c);
    const int pb = std::abs(a - c);
    const int pc = std::abs(a + b - 2 * c);
    return uchar(pa <= pb && pa <= pc ? a : (pb <= pc ? b : c));
}

void subRow(uchar* row, qsizetype size, int bpp)
{
    for (qsizetype x = bpp; x < size; ++x)
        row[x] = uchar(row[x] + row[x - bpp]);
}

void up(uchar* row, const uchar* prior, qsizetype size)
{
    for (qsizetype x = 0; x < size; ++x)
        row[x] = uchar(row[x] + prior[x]);
}

void averageRow(uchar* row, const uchar* prior, qsizetype size, int bpp)
{
    const qsizetype first = std::min<qsizetype>(bpp, size);
    if (!prior) {
        for (qsizetype x = bpp; x < size; ++x)
            row[x] = uchar(row[x] + (row[x - bpp] >> 1));
        return;
    }
    for (qsizetype x = 0; x < first; ++x)
        row[x] = uchar(row[x] + (prior[x] >> 1));
    for (qsizetype x = bpp; x < size; ++x)
        row[x] = uchar(row[x] + ((row[x - bpp] + prior[x]) >> 1));
}

void paethRow(uchar* row, const uchar* prior, qsizetype size, int bpp)
{
    const qsizetype first = std::min<qsizetype>(bpp, size);
    for (qsizetype x = 0; x < first; ++x)
        row[x] = uchar(row[x] + prior[x]);
    for (qsizetype x = bpp; x < size; ++x)
        row[x] = uchar(row[x] + paeth(row[x - bpp], prior[x], prior[x - bpp]));
}

#if defined(__SSE2__)
// Pixels of 4 bytes one at a time, since each depends on the one before, in the low lanes of a
// register; Paeth widens the channels to 16 bits, where the predictor's differences fit. Sums are
// taken byte-wise, so that they wrap as PNG wants without a mask.
inline __m128i pixel4(const uchar* p)
{
    return _mm_cvtsi32_si128(int(load32(p)));
}

inline void storePixel4(uchar* p, __m128i v)
{
    store32(p, quint32(_mm_cvtsi128_si32(v)));
}

void sub4(uchar* row, qsizetype size)
{
    __m128i left = _mm_setzero_si128();
    for (qsizetype x = 0; x + 4 <= size; x += 4) {
        left = _mm_add_epi8(pixel4(row + x), left);
        storePixel4(row + x, left);
    }
}

void average4(uchar* row, const uchar* prior, qsizetype size)
{
    const __m128i one = _mm_set1_epi8(1);
    __m128i left = _mm_setzero_si128();
    for (qsizetype x = 0; x + 4 <= size; x += 4) {
        const __m128i up = pixel4(prior + x);
        // avg_epu8 rounds up; PNG's average rounds down.
        const __m128i mean =
            _mm_sub_epi8(_mm_avg_epu8(left, up), _mm_and_si128(_mm_xor_si128(left, up), one));
        left = _mm_add_epi8(pixel4(row + x), mean);
        storePixel4(row + x, left);
    }
}

void paeth4Sse2(uchar* row, const uchar* prior, qsizetype size)
{
    const __m128i zero = _mm_setzero_si128();
    const auto absolute = [&](__m128i v) { return _mm_max_epi16(v, _mm_sub_epi16(zero, v)); };
    const auto choose = [](__m128i mask, __m128i yes, __m128i no) {
        return _mm_or_si128(_mm_and_si128(mask, yes), _mm_andnot_si128(mask, no));
    };
    __m128i a = zero;
    __m128i c = zero;
    for (qsizetype x = 0; x + 4 <= size; x += 4) {
        const __m128i b = _mm_unpacklo_epi8(pixel4(prior + x), zero);
        const __m128i towardsA = _mm_sub_epi16(b, c); // p - a
        const __m128i towardsB = _mm_sub_epi16(a, c); // p - b
        const __m128i pa = absolute(towardsA);
        const __m128i pb = absolute(towardsB);
        const __m128i pc = absolute(_mm_add_epi16(towardsA, towardsB));
        const __m128i least = _mm_min_epi16(pc, _mm_min_epi16(pa, pb));
        // Ties go to a, then to b.
        const __m128i nearest =
            choose(_mm_cmpeq_epi16(least, pa), a, choose(_mm_cmpeq_epi16(least, pb), b, c));
        a = _mm_add_epi8(_mm_unpacklo_epi8(pixel4(row + x), zero), nearest);
        storePixel4(row + x, _mm_packus_epi16(a, a));
        c = b;
    }
}

#if defined(TAVREL_PAETH_SSE41)
// The same with SSE4.1's absolute values, widening and blends: fewer steps from one pixel to the next.
__attribute__((target("sse4.1"))) void paeth4Sse41(uchar* row, const uchar* prior, qsizetype size)
{
    __m128i a = _mm_setzero_si128();
    __m128i c = a;
    for (qsizetype x = 0; x + 4 <= size; x += 4) {
        const __m128i b = _mm_cvtepu8_epi16(pixel4(prior + x));
        const __m128i towardsA = _mm_sub_epi16(b, c);
        const __m128i towardsB = _mm_sub_epi16(a, c);
        const __m128i pa = _mm_abs_epi16(towardsA);
        const __m128i pb = _mm_abs_epi16(towardsB);
        const __m128i pc = _mm_abs_epi16(_mm_add_epi16(towardsA, towardsB));
        const __m128i least = _mm_min_epi16(pc, _mm_min_epi16(pa, pb));
        const __m128i bOrC = _mm_blendv_epi8(c, b, _mm_cmpeq_epi16(least, pb));
        const __m128i nearest = _mm_blendv_epi8(bOrC, a, _mm_cmpeq_epi16(least, pa));
        a = _mm_add_epi8(_mm_cvtepu8_epi16(pixel4(row + x)), nearest);
        storePixel4(row + x, _mm_packus_epi16(a, a));
        c = b;
    }
}
#endif

void paeth4(uchar* row, const uchar* prior, qsizetype size)
{
#if defined(TAVREL_PAETH_SSE41)
    static const bool sse41 = __builtin_cpu_supports("sse4.1");
    if (sse41 && !baselineOnly) return paeth4Sse41(row, prior, size);
#endif
    paeth4Sse2(row, prior, size);
}
#else
// Elsewhere the byte loops serve every size.
void sub4(uchar* row, qsizetype size)
{
    subRow(row, size, 4);
}

void average4(uchar* row, const uchar* prior, qsizetype size)
{
    averageRow(row, prior, size, 4);
}

void paeth4(uchar* row, const uchar* prior, qsizetype size)
{
    paethRow(row, prior, size, 4);
}
#endif

} // namespace

void QPNGUnfilter::setBaselineOnly(bool only)
{
    baselineOnly = only;
}

bool QPNGUnfilter::row(uchar type, uchar* row, const uchar* prior, qsizetype size, int bpp)
{
    switch (type) {
    case None:
        return true;
    case Sub:
        if (bpp == 4)
            sub4(row, size);
        else
            subRow(row, size, bpp);
        return true;
    case Up:
        if (prior) up(row, prior, size);
        return true;
    case Average:
        if (bpp == 4 && prior)
            average4(row, prior, size);
        else
            averageRow(row, prior, size, bpp);
        return true;
    case Paeth:
        // With nothing above, the predictor is always the pixel to the left.
        if (!prior) return QPNGUnfilter::row(Sub, row, prior, size, bpp);
        if (bpp == 4)
            paeth4(row, prior, size);
        else
            paethRow(row, prior, size, bpp);
        return true;
    default:
        return false;
    }
}
