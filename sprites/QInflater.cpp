#include "QInflater.h"

#include <libdeflate.h>

#include <memory>

namespace {

struct DecompressorDeleter
{
    void operator()(libdeflate_decompressor* decompressor) const
    {
        libdeflate_free_decompressor(decompressor);
    }
};

libdeflate_decompressor* decompressor()
{
    thread_local std::unique_ptr<libdeflate_decompressor, DecompressorDeleter> instance(
        libdeflate_alloc_decompressor());
    return instance.get();
}

} // namespace

QInflater::Result QInflater::zlib(const uchar* in, qsizetype inSize, uchar* out, qsizetype outSize,
                                  qsizetype* consumed)
{
    libdeflate_decompressor* inflater = decompressor();
    if (!inflater || inSize < 0 || outSize < 0) return Broken;
    size_t taken = 0;
    size_t written = 0;
    const libdeflate_result result =
        libdeflate_zlib_decompress_ex(inflater, in, size_t(inSize), out, size_t(outSize), &taken, &written);
    if (consumed) *consumed = qsizetype(taken);
    switch (result) {
    case LIBDEFLATE_SUCCESS:
        return written == size_t(outSize) ? Inflated : Short;
    case LIBDEFLATE_INSUFFICIENT_SPACE:
        return TooLong;
    default:
        return Broken;
    }
}
