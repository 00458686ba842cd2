// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IdSigBuilder.h"

#include "Bytes.h"
#include "SigningBlockBuilder.h"

#include <QCryptographicHash>
#include <QMap>

namespace fixture {

namespace {

constexpr int IdSigPageSize = 4096;

QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QByteArray paddedToPage(const QByteArray &bytes)
{
    return bytes + QByteArray((IdSigPageSize - bytes.size() % IdSigPageSize) % IdSigPageSize, '\0');
}

} // namespace

QByteArray certificateOf(const TestKey &key)
{
    static QMap<QByteArray, QByteArray> certificates;
    QByteArray &certificate = certificates[key.publicKey()];
    if (certificate.isEmpty())
        certificate = key.certificate();
    return certificate;
}

IdSigBuilder::IdSigBuilder(const QByteArray &package) : m_packageSize(package.size())
{
    QByteArray level = paddedToPage(package);
    do {
        QByteArray hashes;
        for (int at = 0; at < level.size(); at += IdSigPageSize)
            hashes += hashOf(level.mid(at, IdSigPageSize));
        level = paddedToPage(hashes);
        tree.prepend(level);
    } while (level.size() > IdSigPageSize);
    rootHash = hashOf(level);
}

QByteArray IdSigBuilder::build() const
{
    Bytes signing;
    for (const SigningInfo &info : infos) {
        const QByteArray certificate = info.certificate.isNull() ? certificateOf(info.key) : info.certificate;
        const QByteArray bytes = Bytes()
                                     .raw(prefixed(info.apkDigest))
                                     .raw(prefixed(certificate))
                                     .raw(prefixed(info.additionalData))
                                     .raw(prefixed(info.publicKey.isNull() ? info.key.publicKey() : info.publicKey))
                                     .u32(info.algorithm)
                                     .raw(prefixed(info.key.sign(info.method, signedData(info, certificate))))
                                     .data();
        if (info.schemeId == 0)
            signing.raw(bytes);
        else
            signing.u32(info.schemeId).raw(prefixed(bytes));
    }
    signing.raw(afterInfos);
    const Bytes hashing = Bytes().u32(hashAlgorithm).u8(pageBits).raw(prefixed(salt)).raw(prefixed(rootHash));
    return Bytes()
        .u32(version)
        .raw(prefixed(hashing.data()))
        .raw(prefixed(signing.data()))
        .raw(hasTree ? prefixed(tree) : QByteArray())
        .data();
}

QByteArray IdSigBuilder::signedData(const SigningInfo &info, const QByteArray &certificate) const
{
    Bytes data;
    data.u32(m_packageSize).u32(0).u32(hashAlgorithm).u8(pageBits);
    for (const QByteArray &each : {salt, rootHash, info.apkDigest, certificate, info.additionalData})
        data.raw(prefixed(each));
    return Bytes().u32(data.size() + 4).raw(data.data()).data();
}

} // namespace fixture
