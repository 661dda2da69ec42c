#include "QPNGUnfilter.h"

#include <cstdlib>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

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

// Four byte-wise sums, or floors of averages, in one word: the top bit of each byte is handled apart
// so that no carry crosses into the next byte.
inline quint32 addBytes(quint32 x, quint32 y)
{
    return ((x & 0x7F7F7F7Fu) + (y & 0x7F7F7F7Fu)) ^ ((x ^ y) & 0x80808080u);
}

inline quint32 averageBytes(quint32 x, quint32 y)
{
    return (x & y) + (((x ^ y) >> 1) & 0x7F7F7F7Fu);
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

void sub4(uchar* row, qsizetype size)
{
    quint32 left = 0;
    for (qsizetype x = 0; x + 4 <= size; x += 4) {
        left = addBytes(load32(row + x), left);
        store32(row + x, left);
    }
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

void average4(uchar* row, const uchar* prior, qsizetype size)
{
    quint32 left = 0;
    for (qsizetype x = 0; x + 4 <= size; x += 4) {
        left = addBytes(load32(row + x), averageBytes(left, load32(prior + x)));
        store32(row + x, left);
    }
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
// One pixel at a time, since each depends on the one before; the four channels side by side in
// 16-bit lanes, where the predictor's differences fit.
void paeth4(uchar* row, const uchar* prior, qsizetype size)
{
    const __m128i zero = _mm_setzero_si128();
    const auto widen = [&](const uchar* p) {
        return _mm_unpacklo_epi8(_mm_cvtsi32_si128(int(load32(p))), zero);
    };
    const auto absolute = [&](__m128i v) { return _mm_max_epi16(v, _mm_sub_epi16(zero, v)); };
    __m128i a = zero;
    __m128i c = zero;
    for (qsizetype x = 0; x + 4 <= size; x += 4) {
        const __m128i b = widen(prior + x);
        const __m128i pa = absolute(_mm_sub_epi16(b, c));
        const __m128i pb = absolute(_mm_sub_epi16(a, c));
        const __m128i pc = absolute(_mm_sub_epi16(_mm_add_epi16(a, b), _mm_add_epi16(c, c)));
        const __m128i least = _mm_min_epi16(pa, _mm_min_epi16(pb, pc));
        const __m128i takeA = _mm_cmpeq_epi16(pa, least);
        const __m128i takeB = _mm_andnot_si128(takeA, _mm_cmpeq_epi16(pb, least));
        const __m128i takeC = _mm_andnot_si128(_mm_or_si128(takeA, takeB), _mm_set1_epi16(-1));
        const __m128i predictor = _mm_or_si128(_mm_or_si128(_mm_and_si128(takeA, a), _mm_and_si128(takeB, b)),
                                               _mm_and_si128(takeC, c));
        const __m128i sum = _mm_and_si128(_mm_add_epi16(widen(row + x), predictor), _mm_set1_epi16(0xFF));
        store32(row + x, quint32(_mm_cvtsi128_si32(_mm_packus_epi16(sum, zero))));
        a = sum;
        c = b;
    }
}
#else
void paeth4(uchar* row, const uchar* prior, qsizetype size)
{
    paethRow(row, prior, size, 4);
}
#endif

} // namespace

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
