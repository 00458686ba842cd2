// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SIGNEDPACKAGES_H
#define SIGNEDPACKAGES_H

#include "JarSigner.h"
#include "SigningBlockBuilder.h"
#include "TestKey.h"

#include <QByteArray>
#include <QVector>

/// Packages without findings of `sorrel lint` about anything but signatures.
namespace fixture {

/// Different @p number make different keys.
BlockSigner signerNamed(const QByteArray &commonName, int number = 1);

/// A package with the minimum SDK @p minSdk, without a signature.
QByteArray unsignedPackage(int minSdk = 24);
/// The same, signed by v2.
QByteArray signedByV2(const QVector<BlockSigner> &signers, int minSdk = 24);
/// The same for Android 4.3 and later, signed by v1, with members @p unprotected that are added afterwards.
QByteArray signedByV1(const JarOptions &options = JarOptions(), const QVector<Member> &unprotected = {});
/// Signed by v2 with @p old and by v3 with @p current, whose lineage begins with @p old and its @p flags.
QByteArray signedByRotated(const BlockSigner &old, BlockSigner current, quint32 flags = 31);
/// A set of a base and the split "config.de", each signed by v2.
QByteArray signedSet(const BlockSigner &base, const BlockSigner &split);
/// @p package with another byte in its first member.
QByteArray changed(QByteArray package);

} // namespace fixture

#endif
