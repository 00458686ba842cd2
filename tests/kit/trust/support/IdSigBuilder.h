// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef IDSIGBUILDER_H
#define IDSIGBUILDER_H

#include "TestKey.h"

#include <QByteArray>
#include <QVector>

namespace fixture {

/// A certificate of @p key, the same for each call: signatures of EC and DSA are random.
QByteArray certificateOf(const TestKey &key);

/// A signing info of a v4 signature, and the key that makes its signature.
struct SigningInfo {
    quint32 schemeId = 0; ///< 0 for the first info, which has no number
    TestKey key = TestKey::rsa();
    SorrelKit::SignatureMethod method{SorrelKit::SignatureMethod::Key::Rsa, SorrelKit::HashAlgorithm::Sha256};
    quint32 algorithm = 0x0103;
    QByteArray apkDigest = QByteArray(32, 'd');
    QByteArray certificate = QByteArray();    ///< null for certificateOf() the key
    QByteArray additionalData = "additional"; ///< signed, without a meaning
    QByteArray publicKey = QByteArray();      ///< null for that of the key
};

/// The file of a v4 signature. Tests set the values that they want before build(), so the signatures fit them.
class IdSigBuilder
{
public:
    /// A good signature on @p package by one signer.
    explicit IdSigBuilder(const QByteArray &package);

    QByteArray build() const;

    quint32 version = 2;
    quint32 hashAlgorithm = 1;
    quint8 pageBits = 12;
    QByteArray salt;
    QByteArray rootHash;
    QVector<SigningInfo> infos{SigningInfo()};
    QByteArray afterInfos; ///< more bytes in the signing infos
    bool hasTree = true;
    QByteArray tree;

private:
    QByteArray signedData(const SigningInfo &info, const QByteArray &certificate) const;

    qint64 m_packageSize;
};

} // namespace fixture

#endif
