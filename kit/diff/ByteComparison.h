// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_BYTECOMPARISON_H
#define SORRELKIT_BYTECOMPARISON_H

#include "archive/ByteSource.h"
#include "limits/Budget.h"

#include <optional>

namespace SorrelKit {

/// Compares ranges of bytes of two files, in pieces.
class ByteComparison
{
public:
    /// Bytes of each file that one unit of work compares. Files that were read before take less time.
    static constexpr qint64 BytesPerWork = 4;

    /// Spends from @p budget, which outlives this object.
    explicit ByteComparison(Budget *budget) : m_budget(budget) {}

    /// Whether the @p count bytes of @p before from @p beforeAt on, or those that exist, are the bytes of @p after from
    /// @p afterAt on; nothing when the budget is too small.
    std::optional<bool> isSame(ByteSource &before, qint64 beforeAt, ByteSource &after, qint64 afterAt, qint64 count);
    /// The same for whole files.
    std::optional<bool> isSame(ByteSource &before, ByteSource &after);

private:
    Budget *m_budget;
};

} // namespace SorrelKit

#endif
