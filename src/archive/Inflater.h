// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INFLATER_H
#define INFLATER_H

#include "format/ByteView.h"

#include <QByteArray>

#include <memory>

struct libdeflate_decompressor;

/// Inflates deflated data, the raw form of RFC 1951 that members of archives have. One thread at a time.
class Inflater
{
public:
    /// A byte of deflated data makes no more bytes: 258 of them for each two bits, and the end of the block.
    static constexpr qint64 MaxRatio = 1032;

    /**
     * The first @p size bytes of @p packed after inflating; fewer when it has fewer. Damaged data gives the bytes before
     * the fault. Takes memory for no more than @p packed can make. Damaged data, and data that makes more than
     * @p size bytes, take twice as long. Empty when @p size is 2 GiB or more, or memory runs out. @p isWhole is set to
     * whether sound data made just @p size bytes.
     */
    QByteArray inflated(const ByteView &packed, qint64 size, bool *isWhole = nullptr);
    /// The CRC-32 of ZIP archives, of @p bytes that follow those whose checksum is @p before.
    static quint32 checksum(const ByteView &bytes, quint32 before = 0);

private:
    struct Free {
        void operator()(libdeflate_decompressor *decompressor) const;
    };

    std::unique_ptr<libdeflate_decompressor, Free> m_decompressor; ///< made on first use
};

#endif
