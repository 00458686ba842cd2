// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNINGBLOCK_H
#define SORRELKIT_SIGNINGBLOCK_H

#include <SorrelKit/SignatureIssue.h>

#include <QByteArray>
#include <QString>
#include <QVector>

class ByteSource;
class ZipDirectory;

namespace SorrelKit {

/**
 * The APK signing block: values with numbers, between the members of an archive and its directory (APK Signature Scheme
 * v2, "APK Signing Block").
 *
 *     8 bytes   size of the block without this field
 *     pairs     8 bytes: size of the rest of the pair; 4 bytes: id; value
 *     8 bytes   size of the block again
 *     16 bytes  "APK Sig Block 42"
 *
 * The directory follows the block, and the end record follows the directory; the comment ends with the file. ZIP64 is
 * refused, as by Android. Android skips a block that is damaged, and looks for a v1 signature instead. Here, such a
 * package is refused.
 *
 * The directory of pairs is all that is held in memory. One thread at a time.
 */
class SigningBlock
{
public:
    /// The numbers of values. Others are skipped.
    enum Id : quint32 {
        SchemeV2 = 0x7109871a,
        SchemeV3 = 0xf05368c0,
        SchemeV31 = 0x1b93ad61,
        Padding = 0x42726577, ///< zeros, so that the block's size is a multiple of 4096
    };

    /// Bytes of a value that is read. A signer has some thousands of bytes.
    static constexpr qint64 MaxValueBytes = 8 << 20;
    /// Pairs of a block. Blocks in use have less than ten.
    static constexpr int MaxPairs = 1024;

    /// Finds the block of the archive in @p source, whose directory is @p directory; both outlive this object. Reads 12
    /// bytes for each pair.
    SigningBlock(ByteSource &source, const ZipDirectory &directory);

    /// Whether there is a block, and it can be read.
    bool isGood() const { return m_fault == SignatureIssue::Code::None && m_blockAt >= 0; }
    /// The fault of the block: BadBlock or TooCostly. None when it is good, or missing.
    SignatureIssue::Code fault() const { return m_fault; }
    QString faultDetail() const { return m_faultDetail; }

    /// The ids of all pairs, in their order.
    QVector<quint32> ids() const;
    /// Whether a pair has this id.
    bool contains(quint32 id) const { return find(id) != nullptr; }
    /// Bytes of the value of @p id; 0 when there is none.
    qint64 valueSize(quint32 id) const;
    /// The value of the first pair with this id. Empty when there is none, it is longer than MaxValueBytes, or cannot be
    /// read. Reads it again with each call.
    QByteArray value(quint32 id) const;

    // Offsets in the file. Precondition: isGood().
    qint64 blockAt() const { return m_blockAt; }
    qint64 directoryAt() const { return m_directoryAt; }
    qint64 endAt() const { return m_endAt; }

private:
    struct Pair {
        quint32 id;
        qint64 valueAt;
        qint64 valueSize;
    };

    bool fail(SignatureIssue::Code code, const char *detail);
    bool readEnd(const ZipDirectory &directory);
    bool readPairs();
    const Pair *find(quint32 id) const;

    ByteSource *m_source;
    SignatureIssue::Code m_fault = SignatureIssue::Code::None;
    QString m_faultDetail;
    qint64 m_blockAt = -1;
    qint64 m_directoryAt = -1;
    qint64 m_endAt = -1;
    QVector<Pair> m_pairs;
};

} // namespace SorrelKit

#endif
