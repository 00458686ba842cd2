// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diff/ByteComparison.h"

#include <cstring>

namespace SorrelKit {

std::optional<bool> ByteComparison::isSame(ByteSource &before, qint64 beforeAt, ByteSource &after, qint64 afterAt,
                                           qint64 count)
{
    constexpr qint64 PieceSize = 256 << 10;
    for (qint64 done = 0; done < count; done += PieceSize) {
        const qint64 size = qMin(PieceSize, count - done);
        if (!m_budget->spendWork(size / BytesPerWork + 1))
            return {};
        const SharedBytes a = before.view(beforeAt + done, size);
        const SharedBytes b = after.view(afterAt + done, size);
        if (a.size() != b.size() || std::memcmp(a.view().data(), b.view().data(), std::size_t(a.size())) != 0)
            return false;
        if (a.size() < size)
            break;
    }
    return true;
}

std::optional<bool> ByteComparison::isSame(ByteSource &before, ByteSource &after)
{
    return before.size() == after.size() ? isSame(before, 0, after, 0, before.size()) : false;
}

} // namespace SorrelKit
