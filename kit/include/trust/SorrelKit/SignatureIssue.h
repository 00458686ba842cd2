// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATUREISSUE_H
#define SORRELKIT_SIGNATUREISSUE_H

#include <SorrelKit/Signer.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class SignatureIssueData;

/**
 * A reason why a package is not verified, or something about its signatures that a host may want to know: a code for
 * programs, and a text for people. Signatures::errors() and Signatures::warnings() return these.
 *
 * Texts may have texts of the package, with any characters; a program that shows them has to make them harmless. Copies
 * share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be used in
 * different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT SignatureIssue
{
    Q_GADGET
    Q_PROPERTY(Code code READ code CONSTANT)
    Q_PROPERTY(SorrelKit::Signer::Scheme scheme READ scheme CONSTANT)
    Q_PROPERTY(QString subject READ subject CONSTANT)
    Q_PROPERTY(QString detail READ detail CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)

public:
    /// Kinds of issues. New ones may be added. @since 0.5.1
    enum class Code {
        None,       ///< "no error"
        CannotOpen, ///< "the package cannot be opened": the file is missing, or is no archive; Package::error() has more
        NotSigned, ///< "the package has no signature that this version of Android accepts": nothing signed the package for the API levels that were asked for
        TooCostly, ///< "verification takes too much": the package would cost more than docs/limits.md allows
        TooManyIssues,        ///< "there are more issues than are listed"
        NoSdkVersion,         ///< "no API level is in the range"
        SchemeRequired,       ///< "the package needs a newer signature scheme"
        SignersDiffer,        ///< "the signature schemes have different signers"
        SetSignersDiffer,     ///< "the packages of the set have different signers"
        SchemeStripped,       ///< "a signature was removed"
        UnknownScheme,        ///< "a signature scheme is unknown"
        BadBlock,             ///< "the signing block is damaged"
        NoSigner,             ///< "there is no signer"
        TooManySigners,       ///< "there are too many signers"
        BadSigner,            ///< "a signer is damaged"
        NoKnownSignature,     ///< "no signature has a known algorithm"
        UnknownAlgorithm,     ///< "an algorithm is unknown"
        BadSignature,         ///< "a signature is wrong"
        AlgorithmsDiffer,     ///< "signatures and digests have different algorithms"
        BadPublicKey,         ///< "a public key is damaged"
        NoCertificate,        ///< "there is no certificate"
        BadCertificate,       ///< "a certificate is damaged"
        KeysDiffer,           ///< "the certificate has another key than the signer"
        DigestsDiffer,        ///< "digests of the same content differ"
        ContentChanged,       ///< "the content was changed"
        BadAttribute,         ///< "an attribute is damaged"
        UnknownAttribute,     ///< "an attribute is unknown"
        SdkVersionsDiffer,    ///< "API levels of a signer differ"
        SdkVersionsOverlap,   ///< "several signers are for the same API levels"
        SdkVersionsUncovered, ///< "no signer is for some API levels"
        BadLineage,           ///< "the lineage of keys is damaged"
        LineageDiffers,       ///< "the lineage of keys does not lead to the signer"
        NoJarManifest,        ///< "there is no META-INF/MANIFEST.MF"
        BadJarManifest,       ///< "a manifest or signature file is damaged"
        DuplicateSection,     ///< "a section occurs twice"
        DuplicateMember,      ///< "a member occurs twice"
        MissingMember,        ///< "a member is missing"
        UnreadableMember,     ///< "a member cannot be read"
        MissingSignatureFile, ///< "a signature block has no signature file"
        BadSignatureBlock,    ///< "a signature block is damaged"
        UnsupportedAlgorithm, ///< "some versions of Android do not know an algorithm"
        UnknownDigest,        ///< "no digest has a known algorithm"
        ManifestChanged,      ///< "the manifest was changed"
        SectionChanged,       ///< "a section of the manifest was changed"
        UnlistedMember,       ///< "a member is not in the manifest"
        UnsignedMember,       ///< "a member is not signed"
        MemberChanged,        ///< "a member was changed"
        UnprotectedMember,    ///< "a member is not protected by signatures"
        MemberSignersDiffer,  ///< "members have different signers"
        BadV4Signature,       ///< "the v4 signature is damaged"
        UnknownV4Version,     ///< "the version of the v4 signature is unknown"
        RootHashDiffers,      ///< "the root hash is wrong"
        HashTreeDiffers,      ///< "the hash tree is wrong"
        V4Differs,            ///< "the v4 signature is for another package"
        NoStamp,              ///< "there is no source stamp"
        BadStamp,             ///< "the source stamp is damaged"
        StampDiffers,         ///< "the source stamp is for another package"
        WeakHash,             ///< "a hash is weak"
        WeakKey,              ///< "a key is weak"
        DebugCertificate,     ///< "the certificate is for tests"
        Expired,              ///< "the certificate has expired"
        NotYetValid,          ///< "the certificate is not valid yet"
    };
    Q_ENUM(Code)

    /// No issue. @since 0.5.1
    SignatureIssue();
    /// The values of the arguments. @since 0.5.1
    SignatureIssue(Code code, Signer::Scheme scheme, const QString &subject = QString(),
                   const QString &detail = QString());
    /// A copy of @p other. @since 0.5.1
    SignatureIssue(const SignatureIssue &other);
    /// Takes the value of @p other. @since 0.5.1
    SignatureIssue(SignatureIssue &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    SignatureIssue &operator=(const SignatureIssue &other);
    /// Takes the value of @p other. @since 0.5.1
    SignatureIssue &operator=(SignatureIssue &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~SignatureIssue();
    /// Exchanges two values. @since 0.5.1
    void swap(SignatureIssue &other) noexcept { d.swap(other.d); }

    /// The kind of the issue. @since 0.5.1
    Code code() const;
    /// The scheme that has the issue; Signer::Scheme::None for the package as a whole. @since 0.5.1
    Signer::Scheme scheme() const;
    /// The member ("classes.dex"), signer ("signer 1", "CERT") or package of a set that the issue is about; empty for
    /// the package as a whole. @since 0.5.1
    QString subject() const;
    /// The fault, in English ("SHA-256 of the member"); may be empty. @since 0.5.1
    QString detail() const;
    /// The text of code() in English, with subject() before it and detail() behind it when there are any
    /// ("classes.dex: a member was changed: SHA-256"). @since 0.5.1
    QString message() const;

private:
    QSharedDataPointer<SignatureIssueData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::SignatureIssue)
Q_DECLARE_METATYPE(SorrelKit::SignatureIssue)

#endif
