// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_IDSIGFILE_H
#define SORRELKIT_IDSIGFILE_H

#include "format/ByteView.h"

#include <SorrelKit/SignatureIssue.h>

#include <QByteArray>
#include <QString>
#include <QVector>

class ByteSource;

namespace SorrelKit {

/**
 * The file of a v4 signature, NAME.apk.idsig (APK Signature Scheme v4). All integers are little-endian. Bytes have their
 * number before them, in 4 bytes.
 *
 *     4 bytes   version, 2
 *     bytes     hashing info: hash algorithm (4 bytes), logarithm of the page's size (1 byte), salt, root hash
 *     bytes     signing infos: that of v2 and v3, then id (4 bytes) and signing info of each newer scheme
 *     bytes     hash tree; may be missing
 *
 * A signing info is the digest that v2 or v3 sign, the certificate, additional data, the public key, the number of the
 * signature's algorithm (4 bytes), and the signature.
 *
 * The infos are held in memory; the tree stays in the file. One thread at a time.
 */
class IdSigFile
{
public:
    static constexpr quint32 Version = 2;
    /// Bytes of the hashing info, and of all signing infos. Files in use have some thousands.
    static constexpr qint64 MaxInfoBytes = 64 << 10;

    struct SigningInfo {
        quint32 schemeId = 0; ///< 0 for v2 and v3, SigningBlock::SchemeV31 for v3.1
        ByteView apkDigest;
        ByteView certificate;
        ByteView additionalData;
        ByteView publicKey;
        quint32 algorithm = 0;
        ByteView signature;
    };

    /// Reads @p source, except for the tree. False when fault() has a code.
    bool read(ByteSource &source);
    /// The fault of the file: UnknownV4Version or BadV4Signature.
    SignatureIssue::Code fault() const { return m_fault; }
    QString faultDetail() const { return m_faultDetail; }

    // Precondition of the following: read() returned true. Views are valid as long as this object.
    quint32 hashAlgorithm() const { return ByteView(m_hashing).u32(0); }
    int pageBits() const { return ByteView(m_hashing).u8(4); }
    ByteView salt() const { return m_salt; }
    ByteView rootHash() const { return m_rootHash; }
    /// At least one; each scheme has one at most.
    const QVector<SigningInfo> &signingInfos() const { return m_infos; }
    /// The bytes that @p info signs, for a package of @p packageSize bytes.
    QByteArray signedData(const SigningInfo &info, qint64 packageSize) const;

    bool hasTree() const { return m_treeAt >= 0; }
    // Precondition: hasTree(). The tree ends with the file.
    qint64 treeAt() const { return m_treeAt; }
    qint64 treeSize() const { return m_treeSize; }

private:
    bool fail(SignatureIssue::Code code, const QString &detail);
    bool readHashing();
    bool readSigning();
    bool readTree(ByteSource &source, qint64 at);

    SignatureIssue::Code m_fault = SignatureIssue::Code::None;
    QString m_faultDetail;
    QByteArray m_hashing;
    QByteArray m_signing;
    ByteView m_salt;
    ByteView m_rootHash;
    QVector<SigningInfo> m_infos;
    qint64 m_treeAt = -1;
    qint64 m_treeSize = 0;
};

} // namespace SorrelKit

#endif
