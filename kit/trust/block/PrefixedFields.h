// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PREFIXEDFIELDS_H
#define SORRELKIT_PREFIXEDFIELDS_H

#include "format/ByteView.h"

namespace SorrelKit {

/**
 * Reads the fields of a signature, one after another: integers, and bytes with their number before them, all
 * little-endian. Bytes may consist of fields themselves.
 *
 * Meets raw input. The first read beyond the end fails, and all reads after it: they return 0 or no bytes. Callers test
 * hasFailed() or isRead() before they use the values. A loop over hasMore() ends, because each field takes 4 bytes at
 * least.
 */
class PrefixedFields
{
public:
    /// No fields.
    PrefixedFields() = default;
    /// The fields in @p bytes, which outlive this object and the views that it returns.
    explicit PrefixedFields(const ByteView &bytes) : m_bytes(bytes) {}

    bool hasFailed() const { return m_hasFailed; }
    /// Whether bytes are left, and no read failed.
    bool hasMore() const { return !m_hasFailed && m_at < m_bytes.size(); }
    /// Whether all bytes were read, and no read failed.
    bool isRead() const { return !m_hasFailed && m_at == m_bytes.size(); }

    quint32 u32();
    /// The bytes of a field with their number before them.
    ByteView bytes();
    /// The same as fields, which have failed when this read fails.
    PrefixedFields fields();
    /// All bytes that are left.
    ByteView rest();

private:
    ByteView take(qint64 count);

    ByteView m_bytes;
    qint64 m_at = 0;
    bool m_hasFailed = false;
};

} // namespace SorrelKit

#endif
