// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTSCAN_H
#define MANIFESTSCAN_H

#include "RawBytes.h"

/**
 * Goes over the chunks of a binary XML document before ApkResources::loadXml() does, which by default ends the process
 * at a negative string index. A document whose chunks stand as build tools write them, each in its bounds and with
 * headers of the known sizes, is gone over in the same steps by both; in any other one a reader may be led elsewhere,
 * and there is no telling what it will meet.
 */
class ManifestScan
{
public:
    explicit ManifestScan(const QByteArray &bytes);

    /// Whether the chunks stand as they should.
    bool isRegular() const { return m_isRegular; }
    /// Whether the name of an element or attribute, or a prefix or URI, has a negative index. Found in regular chunks
    /// alone, up to the first that is not.
    bool hasNegativeIndex() const { return m_hasNegativeIndex; }
    /// Whether the document's chunk has no type, which Android reads as if it had.
    bool isUntyped() const { return m_isUntyped; }

private:
    bool scanChunk(qint64 at, qint64 size);
    bool scanPool(qint64 at, qint64 headerSize, qint64 size) const;
    bool scanElement(qint64 at, qint64 size);
    void checkIndex(qint64 at);

    RawBytes m_bytes;
    bool m_isRegular = false;
    bool m_hasNegativeIndex = false;
    bool m_isUntyped = false;
};

#endif
