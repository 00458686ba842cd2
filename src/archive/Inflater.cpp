// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/Inflater.h"

#include <libdeflate.h>
#include <zlib.h>

#include <limits>

namespace {

// libdeflate does not say how many bytes it has made of damaged data, and zlib does.
qint64 inflatedUpToFault(const ByteView &packed, QByteArray &bytes)
{
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        return 0;
    stream.next_in = const_cast<Bytef *>(packed.data());
    stream.avail_in = uInt(packed.size());
    stream.next_out = reinterpret_cast<Bytef *>(bytes.data());
    stream.avail_out = uInt(bytes.size());
    ::inflate(&stream, Z_FINISH);
    const qint64 made = bytes.size() - qint64(stream.avail_out);
    inflateEnd(&stream);
    return made;
}

} // namespace

void Inflater::Free::operator()(libdeflate_decompressor *decompressor) const
{
    libdeflate_free_decompressor(decompressor);
}

QByteArray Inflater::inflated(const ByteView &packed, qint64 size, bool *isWhole)
{
    if (isWhole != nullptr)
        *isWhole = false;
    constexpr qint64 Largest = std::numeric_limits<int>::max() - 64;
    const qint64 possible = packed.size() > Largest / MaxRatio ? Largest : packed.size() * MaxRatio;
    if (size < 0 || size > Largest || packed.size() > Largest)
        return {};
    if (m_decompressor == nullptr)
        m_decompressor.reset(libdeflate_alloc_decompressor());
    if (m_decompressor == nullptr)
        return {};
    // Memory that is not written to is not taken.
    QByteArray bytes(int(qMin(size, possible)), Qt::Uninitialized);
    std::size_t made = 0;
    const libdeflate_result result =
        libdeflate_deflate_decompress(m_decompressor.get(), packed.data(), std::size_t(packed.size()), bytes.data(),
                                      std::size_t(bytes.size()), &made);
    if (result != LIBDEFLATE_SUCCESS)
        made = std::size_t(inflatedUpToFault(packed, bytes));
    if (isWhole != nullptr)
        *isWhole = result == LIBDEFLATE_SUCCESS && qint64(made) == size;
    const bool isShort = qint64(made) < bytes.size();
    bytes.resize(int(made));
    if (isShort)
        bytes.squeeze();
    return bytes;
}

quint32 Inflater::checksum(const ByteView &bytes, quint32 before)
{
    return libdeflate_crc32(before, bytes.data(), std::size_t(bytes.size()));
}
