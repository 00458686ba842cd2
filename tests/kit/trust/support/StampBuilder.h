// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef STAMPBUILDER_H
#define STAMPBUILDER_H

#include "SigningBlockBuilder.h"

namespace fixture {

/// The digests of a scheme that a stamp signs.
struct StampedScheme {
    quint32 id;
    QVector<NumberedBytes> digests;
    QVector<quint32> algorithms{0x0103}; ///< one signature for each
};

/// The value of a source stamp. Tests set what they want before build(), so the signatures fit it.
class StampBuilder
{
public:
    static constexpr quint32 Id = 0x6dff800d;
    static constexpr quint32 OldId = 0x2b09189e;
    static constexpr quint32 TimeAttribute = 0xe43c5946;
    static constexpr quint32 LineageAttribute = 0x9d6303f7;

    /// A stamp by @p signer, an RSA key, with a certificate that is made for it.
    explicit StampBuilder(const TestKey &signer);

    QByteArray build() const;
    /// The content of the member that belongs to the certificate.
    QByteArray certificateHash() const;

    TestKey key;
    QByteArray certificate;
    QVector<StampedScheme> schemes;
    bool hasAttributes = true;
    QVector<NumberedBytes> attributes;
    QVector<quint32> attributeAlgorithms{0x0103};
    QByteArray afterFields; ///< more bytes in the stamp
    QByteArray afterStamp;  ///< more bytes in the value

private:
    QByteArray signatures(const QByteArray &data, const QVector<quint32> &algorithms) const;
};

} // namespace fixture

#endif
