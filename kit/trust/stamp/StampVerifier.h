// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_STAMPVERIFIER_H
#define SORRELKIT_STAMPVERIFIER_H

#include "trust/result/SchemeResult.h"
#include "trust/stamp/StampBlock.h"

class Budget;
class ZipArchive;

namespace SorrelKit {

class SigningBlock;

/**
 * Verifies the source stamp: a signature of a shop or another source, on the digests that the signers of the package
 * sign. Its block is in the signing block, where no other signature protects it. The member "stamp-cert-sha256", which
 * all signatures protect, has the SHA-256 of the stamp's certificate, so nobody can replace the stamp by their own.
 *
 * A stamp is found when the package has the member or the block. It is verified when
 * - the certificate is that of the member,
 * - the key signed the digests of each scheme that verified the package, by each signature of this scheme in the block,
 * - it signed the attributes, and they are known: the time of the stamp, and the lineage of its key, which leads to it.
 *
 * Signatures for other schemes are ignored: they are for versions of Android that nobody asked for.
 */
class StampVerifier
{
public:
    /// Bytes of META-INF/MANIFEST.MF, whose digest is that of v1.
    static constexpr qint64 MaxManifestBytes = 32 << 20;

    /// The stamp of @p archive, whose signing block is @p block. @p schemes has the results of v1, v2, v3 and v3.1;
    /// those that verified the package count. A stamp has one signature for v3 and v3.1, whose digests are the same.
    /// Decoding and verifying spend their cost from @p budget.
    static SchemeResult verify(ZipArchive &archive, const SigningBlock &block, const QVector<SchemeResult> &schemes,
                               Budget *budget);

private:
    StampVerifier(ZipArchive &archive, Budget *budget) : m_archive(archive), m_budget(budget) {}

    bool fail(SignatureIssue::Code code, const QString &detail = QString());
    void verifyStamp(const SigningBlock &block, const QVector<SchemeResult> &schemes);
    bool checkCertificate(const ByteView &der);
    bool checkSchemes(const StampBlock &stamp, const QVector<SchemeResult> &schemes);
    bool checkScheme(const StampBlock &stamp, quint32 number, const SchemeResult &scheme);
    bool checkSignatures(const QVector<StampBlock::Signature> &signatures, const ByteView &data, const QString &detail);
    bool checkAttributes(const StampBlock &stamp);
    bool checkTime(const ByteView &value);
    bool checkLineage(const ByteView &value);
    QByteArray signedDigests(const SchemeResult &scheme);

    ZipArchive &m_archive;
    Budget *m_budget;
    SchemeResult m_result{Signer::Scheme::Stamp};
    SignerFields m_signer;
};

} // namespace SorrelKit

#endif
