// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JARSIGNER_H
#define JARSIGNER_H

#include "TestKey.h"
#include "ZipBuilder.h"

#include <QByteArray>
#include <QVector>

#include <functional>

namespace fixture {

using Edit = std::function<void(QByteArray &bytes)>;

/// How a package is signed by v1. A test changes what it is about.
struct JarOptions {
    using Hash = SorrelKit::HashAlgorithm;

    QByteArray name = "CERT";                     ///< base name of the signature file and the block file
    QByteArray extension = QByteArray();          ///< of the block file; null for that of the key
    QVector<Hash> digests = {Hash::Sha256};       ///< of members, sections and the manifest
    Hash signatureHash = Hash::Sha256;            ///< of the signature
    QByteArray signatureAlgorithm = QByteArray(); ///< OID of the signature, in hexadecimal; null for that of the key
    Hash signedHash = Hash::Sha256;               ///< hash that the signature is made with when the OID is given
    bool hasManifestDigest = true;                ///< the signature file has digests of the whole manifest
    bool hasMainDigest = false;                   ///< and of its main section
    bool hasSectionDigests = true;                ///< and of each section
    QByteArray createdBy = "1.0 (Test)";          ///< of the signature file; null for none
    QByteArray schemes = QByteArray();            ///< X-Android-APK-Signed; null for none
    QByteArray digestAlgorithms = QByteArray();   ///< Digest-Algorithms of each section; null for none
    QByteArray lineEnd = "\r\n";
    bool hasSignedAttributes = false; ///< the signature is that of attributes, one of which is the digest
    bool hasContentType = true;       ///< one of the attributes
    bool hasMessageDigest = true;     ///< the same
    CertificateFields certificate = CertificateFields();
    QByteArray certificateDer = QByteArray();   ///< the signer's certificate; null to make it
    QVector<QByteArray> otherCertificates = {}; ///< behind the signer's, in DER
    bool hasCertificate = true;                 ///< the signer's
    bool hasWrongInfoFirst = false;             ///< a SignerInfo with a wrong signature precedes the right one

    Edit editManifest = {};      ///< before the signature file is made
    Edit editSignatureFile = {}; ///< before it is signed
    Edit editSignature = {};     ///< before it is put into the block
    Edit editBlock = {};         ///< at last
};

/// The name of a digest's attribute without "-Digest": "SHA1", "SHA-256".
QByteArray jarName(SorrelKit::HashAlgorithm hash);
/// A line of a manifest, folded at 72 bytes.
QByteArray jarLine(const QByteArray &name, const QByteArray &value, const QByteArray &lineEnd = "\r\n");

/// META-INF/MANIFEST.MF, with a section for each member outside META-INF.
QByteArray jarManifest(const QVector<Member> &members, const JarOptions &options = JarOptions());
/// The signature file for @p manifest.
QByteArray jarSignatureFile(const QByteArray &manifest, const JarOptions &options = JarOptions());
/// The signature block file: a SignedData of PKCS #7 with the signature of @p signatureFile by @p key, in DER.
QByteArray jarSignatureBlock(const QByteArray &signatureFile, const TestKey &key,
                             const JarOptions &options = JarOptions());

/// @p members, and behind them the manifest, the signature file and the block file.
QVector<Member> signedJar(const QVector<Member> &members, const TestKey &key, const JarOptions &options = JarOptions());
/// Adds another signer's two files to a package of signedJar().
void addJarSigner(QVector<Member> &members, const TestKey &key, const JarOptions &options);

/// The content of the member @p name, for changes. Precondition: it exists.
QByteArray &contentOf(QVector<Member> &members, const QString &name);

/// A value of ASN.1 in DER: its tag, length, and @p content.
QByteArray der(int tag, const QByteArray &content);

} // namespace fixture

#endif
