// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef JARCHECK_H
#define JARCHECK_H

#include "JarSigner.h"
#include "trust/result/SchemeResult.h"
#include "trust/result/SdkRange.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <limits>

/// Helpers of the tests of v1: members, and JarVerifier with the budget of a call.
namespace fixture {

constexpr int NewestSdk = std::numeric_limits<int>::max();
constexpr qint64 JarWork = 400'000'000;
constexpr qint64 JarBytes = 64 << 20;

/// Verifies @p package; the verifier has to release the bytes that it held.
SorrelKit::SchemeResult verifyJar(const QByteArray &package, SorrelKit::SdkRange sdk = {24, NewestSdk},
                                  const QVector<int> &schemes = {});
/// The same for the archive of @p members.
SorrelKit::SchemeResult verifyJar(const QVector<Member> &members, SorrelKit::SdkRange sdk = {24, NewestSdk},
                                  const QVector<int> &schemes = {});

/// Three members that are not signed.
QVector<Member> unsignedMembers();
/// The same, signed.
QVector<Member> signedMembers(const JarOptions &options = JarOptions(), const TestKey &key = TestKey::rsa());

QStringList textsOf(const QList<SorrelKit::SignatureIssue> &issues);
/// The texts of all errors, with semicolons between them.
QString errorsOf(const SorrelKit::SchemeResult &result);
QString warningsOf(const SorrelKit::SchemeResult &result);

} // namespace fixture

#endif
