// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SignedPackages.h"

#include "Apk.h"
#include "LintFixture.h"
#include "RawZip.h"

namespace fixture {

namespace {

/// ECDSA with SHA-256.
constexpr quint32 Algorithm = 0x0201;

QByteArray packageWith(const QByteArray &manifest)
{
    return rawZip(lintMembers({}, manifest));
}

QByteArray manifestFor(int minSdk)
{
    LintManifest manifest;
    manifest.minSdk = minSdk;
    manifest.targetSdk = 29;
    return lintManifest(manifest);
}

LineageLevel levelOf(const BlockSigner &signer)
{
    return {signer.key, signer.certificates.first(), Algorithm, 31, -1, {}, {}};
}

} // namespace

BlockSigner signerNamed(const QByteArray &commonName, int number)
{
    const TestKey key = TestKey::ec(number);
    CertificateFields fields;
    fields.commonName = commonName;
    BlockSigner signer(key, {Algorithm});
    signer.certificates = {key.certificate(fields)};
    return signer;
}

QByteArray unsignedPackage(int minSdk)
{
    return packageWith(manifestFor(minSdk));
}

QByteArray signedByV1(const JarOptions &options, const QVector<Member> &unprotected)
{
    constexpr int JellyBeanMr2 = 18;
    QVector<Member> members;
    for (const RawMember &each : lintMembers({}, manifestFor(JellyBeanMr2)))
        members.append({QString::fromLatin1(each.name), each.content});
    return zip(signedJar(members, TestKey::rsa(), options) + unprotected);
}

QByteArray signedByV2(const QVector<BlockSigner> &signers, int minSdk)
{
    return SigningBlockBuilder(unsignedPackage(minSdk)).v2(signers).build();
}

QByteArray signedByRotated(const BlockSigner &old, BlockSigner current, quint32 flags)
{
    LineageLevel first = levelOf(old);
    first.flags = flags;
    current.attribute(SigningBlockBuilder::LineageAttribute, lineage({first, levelOf(current)}));
    return SigningBlockBuilder(unsignedPackage()).v2({old}).v3({current}).build();
}

QByteArray signedSet(const BlockSigner &base, const BlockSigner &split)
{
    const QByteArray manifest =
        XmlBuilder::manifest()
            .empty(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x")),
                                                plainText(QStringLiteral("split"), QStringLiteral("config.de"))})
            .endNamespace(QStringLiteral("android"), androidUri)
            .build();
    const QByteArray signedSplit = SigningBlockBuilder(packageWith(manifest)).v2({split}).build();
    return rawZip({{"base.apk", signedByV2({base})}, {"config.de.apk", signedSplit}});
}

QByteArray changed(QByteArray package)
{
    const int at = int(package.indexOf("resources.arsc")) + 100;
    package[at] = char(package.at(at) ^ 1);
    return package;
}

} // namespace fixture
