// SPDX-License-Identifier: LGPL-2.1-or-later
#include "JarSeeds.h"

#include "JarSigner.h"

using namespace fixture;

QByteArray jarSeedFile()
{
    return "Signature-Version: 1.0\r\n\r\n";
}

QVector<Member> jarSeedMembers()
{
    return {{QStringLiteral("a"), "text"}, {QStringLiteral("res/b"), QByteArray(500, 'x')}};
}

QVector<Member> signatureBlockSeeds()
{
    QVector<Member> seeds;
    const auto add = [&seeds](const char *name, const TestKey &key, const JarOptions &options) {
        seeds.append({QString::fromLatin1(name), jarSignatureBlock(jarSeedFile(), key, options)});
    };
    JarOptions options;
    add("rsa", TestKey::rsa(), options);
    add("ec", TestKey::ec(), options);
    options.hasWrongInfoFirst = true;
    add("two-signers", TestKey::ec(), options);
    options.hasSignedAttributes = true;
    add("attributes", TestKey::ec(), options);
    options.certificate.issuerName = "Issuer";
    options.certificate.issuerKeyId = "id";
    options.certificateDer = TestKey::ec().certificate(options.certificate, TestKey::ec(2));
    add("issued", TestKey::ec(), options);
    CertificateFields issuer;
    issuer.commonName = "Issuer";
    options.otherCertificates = {TestKey::ec(2).certificate(issuer), TestKey::rsa(1, 1024).certificate()};
    add("chain", TestKey::ec(), options);
    return seeds;
}

QVector<Member> jarManifestSeeds()
{
    QVector<Member> seeds;
    const auto add = [&seeds](const char *name, const JarOptions &options) {
        const QByteArray manifest = jarManifest(jarSeedMembers(), options);
        seeds.append({QString::fromLatin1(name), manifest + '\0' + jarSignatureFile(manifest, options)});
    };
    JarOptions options;
    add("sha256", options);
    options.lineEnd = "\n";
    options.schemes = "2, 3";
    add("schemes", options);
    options.schemes = QByteArray();
    options.hasMainDigest = true;
    options.digests = {SorrelKit::HashAlgorithm::Sha1, SorrelKit::HashAlgorithm::Sha512};
    options.digestAlgorithms = "SHA-512 SHA1";
    add("listed", options);
    options.hasManifestDigest = false;
    options.createdBy = "signtool";
    options.lineEnd = "\r";
    add("sections", options);
    return seeds;
}
