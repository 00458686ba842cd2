// SPDX-License-Identifier: LGPL-2.1-or-later
#include "StampBuilder.h"

#include "Bytes.h"

#include <QCryptographicHash>

namespace fixture {

StampBuilder::StampBuilder(const TestKey &signer) : key(signer), certificate(signer.certificate()) {}

QByteArray StampBuilder::build() const
{
    QVector<QByteArray> signedSchemes;
    for (const StampedScheme &scheme : schemes) {
        QVector<QByteArray> digests;
        for (const NumberedBytes &each : scheme.digests)
            digests.append(Bytes().u32(each.id).raw(prefixed(each.bytes)).data());
        signedSchemes.append(Bytes().u32(scheme.id).raw(signatures(prefixedAll(digests), scheme.algorithms)).data());
    }
    QByteArray stamp = prefixed(certificate) + prefixed(prefixedAll(signedSchemes));
    if (hasAttributes) {
        QVector<QByteArray> list;
        for (const NumberedBytes &each : attributes)
            list.append(Bytes().u32(each.id).raw(each.bytes).data());
        const QByteArray signedAttributes = prefixed(prefixedAll(list));
        stamp += prefixed(signedAttributes) + signatures(signedAttributes, attributeAlgorithms);
    }
    return prefixed(stamp + afterFields) + afterStamp;
}

QByteArray StampBuilder::certificateHash() const
{
    return QCryptographicHash::hash(certificate, QCryptographicHash::Sha256);
}

QByteArray StampBuilder::signatures(const QByteArray &data, const QVector<quint32> &algorithms) const
{
    QVector<QByteArray> list;
    for (const quint32 algorithm : algorithms) {
        SorrelKit::SignatureMethod method;
        if (algorithm == 0x0104)
            method.hash = SorrelKit::HashAlgorithm::Sha512;
        list.append(Bytes().u32(algorithm).raw(prefixed(key.sign(method, data))).data());
    }
    return prefixed(prefixedAll(list));
}

} // namespace fixture
