// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_JARVERIFIER_H
#define SORRELKIT_JARVERIFIER_H

#include "trust/jar/JarManifest.h"
#include "trust/jar/MemberDigests.h"
#include "trust/result/SchemeResult.h"
#include "trust/result/SdkRange.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>
#include <vector>

class Budget;
class ZipArchive;

namespace SorrelKit {

/**
 * v1, the signature scheme of JAR files (JAR File Specification), as Android verifies it.
 *
 * META-INF/MANIFEST.MF has a digest of each member. A signer has two files, META-INF/NAME.SF with digests of the
 * manifest, and META-INF/NAME.RSA, .DSA or .EC with the signature of the former. Every member has to be in the
 * manifest, and all members have to have the same signers. Directories, and members below META-INF, need no digest;
 * the latter are reported as unprotected, except the manifest and the files of signers. Names have case. Bytes before
 * the first member, which could be a program of another format, and bytes behind the archive's comment are refused.
 * Android refuses them, too.
 *
 * The manifest and signature files are parsed by JarManifest and SignatureFile, blocks are verified by
 * SignatureBlockFile, and members are compared by MemberDigests, which starts threads. Everything else happens in the
 * calling thread, and spends from the budget before it is done.
 */
class JarVerifier
{
public:
    /// Signers of a package.
    static constexpr int MaxSigners = 10;
    /// Bytes of the manifest, and of each signature file.
    static constexpr qint64 MaxManifestBytes = 32 << 20;
    /// Bytes of a block file.
    static constexpr qint64 MaxBlockBytes = 1 << 20;
    /// Work of looking up a member and its digests, besides the bytes of its section, and the bytes that it holds.
    static constexpr qint64 MemberWork = 256;
    static constexpr qint64 MemberBytes = 256;

    /// For @p archive, which is open and outlives this object, as @p budget does.
    JarVerifier(ZipArchive &archive, Budget *budget) : m_archive(archive), m_budget(budget) {}

    /// Verifies the package for all versions in @p sdk. @p foundSchemes are the newer schemes (2, 3) that it is signed
    /// with for these versions. The package has this scheme when it has a manifest and at least one block file.
    SchemeResult verify(SdkRange sdk, const QVector<int> &foundSchemes);

private:
    /// A signer whose signature and digests are right.
    struct JarSigner {
        Certificate certificate;
        std::vector<int> files; ///< numbers of the members that are the signer's
    };
    /// The signers of a member, one bit each.
    using SignerSet = quint16;

    bool hasSoundEnds();
    bool hasSoundNames();
    std::vector<int> blockFiles();
    bool readManifest(int number);
    /// The content of member @p number, whose name is sound; nothing, and an error, when it cannot be read or has more than @p maxBytes.
    std::optional<QByteArray> read(int number, qint64 maxBytes);
    void verifySigner(int block, const QVector<int> &foundSchemes);
    void compareWithManifest(const QByteArray &signatureFile, const QString &subject, const QVector<int> &foundSchemes,
                             JarSigner signer);
    void checkListedMembers();
    void checkMembers();
    void compareMembers();
    void addResults(const std::vector<int> &members, const std::vector<MemberDigests::Result> &results);
    void addUnprotected();
    void addSigners();
    QString nameOf(int number) const;

    ZipArchive &m_archive;
    Budget *m_budget;
    SdkRange m_sdk;
    SchemeResult m_result;
    JarManifest m_manifest;
    int m_manifestMember = -1;
    std::vector<JarSigner> m_signers;
    std::vector<SignerSet> m_signersOf;    ///< by the section of the manifest
    std::vector<SignatureIssue> m_skipped; ///< why signature files were skipped
    SignerSet m_packageSigners = 0;
};

} // namespace SorrelKit

#endif
