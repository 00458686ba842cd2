// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTSCAN_H
#define MANIFESTSCAN_H

#include "PoolScan.h"
#include "RawBytes.h"

#include <QStringList>

/**
 * Compares the attributes of a manifest with the texts that they were written as. Each attribute of binary XML has a typed
 * value, which Android takes, and may have the text of the source beside it, which some readers take.
 *
 * Meets raw input: ends at the first chunk that is out of its bounds.
 */
class ManifestScan
{
public:
    /// Characters of texts and values that are compared at most; further attributes are not looked at.
    static constexpr int MaxCompared = 4 << 20;
    /// Attributes of other texts than values whose names are kept.
    static constexpr int MaxNames = 6;

    explicit ManifestScan(const QByteArray &bytes);

    /// Whether every chunk is within its bounds.
    bool isRegular() const { return m_isRegular; }
    /// How many of Android's attributes were written as a text that is not their value, up to the first chunk that is not
    /// regular, and up to MaxNames names of them.
    int differentTexts() const { return m_differentTexts; }
    const QStringList &namesOfDifferentTexts() const { return m_namesOfDifferentTexts; }

private:
    bool scanChunk(qint64 at, qint64 size);
    bool scanElement(qint64 at, qint64 size);
    void checkText(qint64 record);
    /// Whether the attribute @p id with the value of @p type and @p data may have been written as the string @p raw.
    bool agrees(quint32 id, quint32 raw, quint8 type, quint32 data);
    QString string(quint32 index);

    RawBytes m_bytes;
    PoolScan m_pool;
    RawBytes m_ids; ///< of attributes, by the indices of their names
    int m_compared = 0;
    int m_differentTexts = 0;
    QStringList m_namesOfDifferentTexts;
    bool m_isRegular = false;
};

#endif
