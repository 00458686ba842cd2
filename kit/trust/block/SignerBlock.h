// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNERBLOCK_H
#define SORRELKIT_SIGNERBLOCK_H

#include "trust/block/PrefixedFields.h"
#include "trust/result/SchemeResult.h"
#include "trust/result/SdkRange.h"

#include <QString>
#include <QVector>

class Budget;

namespace SorrelKit {

/// A signer whose signatures are right. The content of the package is still to be compared.
struct CheckedSigner {
    QString subject;
    VerifiedSigner verified;
    QVector<ContentDigest::Kind> kinds; ///< of the digests that the verified signatures are for: these must be right
};

/**
 * One signer in the value of v2, v3 or v3.1. Each field in parentheses has its size before it, and so has each element
 * of a list:
 *
 *     (signed data)
 *         (digests: (algorithm, (digest))...)
 *         (certificates: (certificate)...)
 *         v3: lowest API level, highest API level
 *         (attributes: (id, value)...)
 *     v3: lowest API level, highest API level, again
 *     (signatures: (algorithm, (signature))...)
 *     (public key)
 *
 * verify() proves that the owner of the first certificate signed the data. It does not look at the content of the
 * package, nor at the values of attributes.
 *
 * Bytes behind the public key are refused, because no signature covers them. Bytes behind the attributes are signed, and
 * ignored as on Android.
 */
class SignerBlock
{
public:
    enum class Form {
        V2,
        V3
    };
    struct Attribute {
        quint32 id = 0;
        ByteView value;
    };

    /// Elements of each list. Signers have one to three.
    static constexpr int MaxElements = 64;
    /// Work of decoding a byte of a certificate: it may consist of small fields.
    static constexpr qint64 CertificateByteWork = 8;

    /// The bytes of the signers in @p value of a scheme, at most @p most. When there is no signer, there are more, or
    /// the list is damaged, the result is empty, and @p issues has an error.
    static QVector<ByteView> signersIn(const ByteView &value, int most, IssueList *issues);
    /// "signer 1".
    static QString subjectOf(int number);

    /// The issues of the signer @p subject are added to @p issues. Both pointers outlive this object.
    SignerBlock(Form form, const QString &subject, IssueList *issues, Budget *budget);

    /// Reads the signer in @p bytes, which outlive this object, and verifies its signatures. Those for @p sdk count, in
    /// v3 those for its own API levels. False when there is an error.
    bool verify(const ByteView &bytes, const SdkRange &sdk);

    const QVector<Attribute> &attributes() const { return m_attributes; }
    /// The signer. Precondition: verify() returned true.
    CheckedSigner result(Signer::Scheme scheme) const;

private:
    struct Signature {
        quint32 id = 0;
        ByteView bytes;
    };

    bool fail(SignatureIssue::Code code, const QString &detail = QString());
    bool fail(SignatureIssue::Code code, const char *detail);
    bool readSignatures(PrefixedFields fields);
    bool verifySignatures(const ByteView &signedData, const ByteView &publicKey, const SdkRange &sdk);
    QVector<Signature> signaturesFor(const SdkRange &sdk) const;
    bool readSignedData(const ByteView &signedData, const ByteView &publicKey);
    bool readDigests(PrefixedFields fields);
    bool readCertificates(PrefixedFields fields);
    bool readAttributes(PrefixedFields fields);
    bool readSdk(PrefixedFields *fields, SdkRange *sdk);

    const Form m_form;
    const QString m_subject;
    IssueList *m_issues;
    Budget *m_budget;
    SdkRange m_sdk;
    QVector<Signature> m_signatures; ///< with unknown ones
    QVector<quint32> m_digestIds;    ///< the same
    QVector<ContentDigest> m_digests;
    QVector<ContentDigest::Kind> m_kinds;
    QVector<Certificate> m_certificates;
    QVector<Attribute> m_attributes;
};

} // namespace SorrelKit

#endif
