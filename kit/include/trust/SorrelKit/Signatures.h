// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATURES_H
#define SORRELKIT_SIGNATURES_H

#include <SorrelKit/Package.h>
#include <SorrelKit/SignatureIssue.h>
#include <SorrelKit/SignatureRequest.h>
#include <SorrelKit/Signer.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class SignaturesData;

/**
 * The signatures of a package, or of all packages of a set, verified as Android does on devices of some versions: nobody
 * changed the package since the owner of a key signed it.
 *
 *     SorrelKit::Package update(fileName);
 *     const SorrelKit::Signatures signatures(update);
 *     if (!SorrelKit::Signatures::sameSigner(installed, signatures))
 *         return refuse(signatures.errors());
 *
 * The constructor verifies; the other functions return its results, which stay valid when the package is gone, take
 * constant time and cannot fail. The bytes that are verified are those that @p package has open, so its other facts are
 * of the same file even when another file takes its name. A program that writes into the open file can still change
 * what is read later.
 *
 * Everything that is not proven is an error, so isVerified() is true only when each scheme that a version of Android in
 * the range looks at is right.
 *
 * **Cost.** The digests of the whole file, on all processors, and 2 seconds and 64 MiB at most besides
 * (docs/limits.md). A large file is mapped, not copied.
 *
 * **Threads and copies.** The constructor uses @p package like any of its queries, and ends the threads that it starts.
 * Copies share their data and are cheap. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT Signatures
{
    Q_GADGET
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(bool verified READ isVerified CONSTANT)
    Q_PROPERTY(QList<SorrelKit::Signer> signers READ signers CONSTANT)
    Q_PROPERTY(SorrelKit::Certificate stamp READ stamp CONSTANT)
    Q_PROPERTY(QList<SorrelKit::SignatureIssue> errors READ errors CONSTANT)
    Q_PROPERTY(QList<SorrelKit::SignatureIssue> warnings READ warnings CONSTANT)
    Q_PROPERTY(int minSdkVersion READ minSdkVersion CONSTANT)
    Q_PROPERTY(int maxSdkVersion READ maxSdkVersion CONSTANT)
    Q_PROPERTY(QList<SorrelKit::Signatures> packages READ packages CONSTANT)

public:
    /// No package: isVerified() is false, with SignatureIssue::Code::CannotOpen. @since 0.5.1
    Signatures();
    /// Verifies @p package, which need not live longer than the call. @since 0.5.1
    explicit Signatures(const Package &package, const SignatureRequest &request = SignatureRequest());
    /// A copy of @p other. @since 0.5.1
    Signatures(const Signatures &other);
    /// Takes the value of @p other. @since 0.5.1
    Signatures(Signatures &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Signatures &operator=(const Signatures &other);
    /// Takes the value of @p other. @since 0.5.1
    Signatures &operator=(Signatures &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Signatures();
    /// Exchanges two values. @since 0.5.1
    void swap(Signatures &other) noexcept { d.swap(other.d); }

    /// Whether the package is as its signers left it, for all versions of Android from minSdkVersion() to
    /// maxSdkVersion(). A set is verified when all packages are, and have the same signers. @since 0.5.1
    bool isVerified() const;
    /// The schemes that verified, in the order of Signer::Scheme, without Scheme::Stamp. Android looks at the newest
    /// one that it knows, so an older one may be missing although it is in the package. A set has the schemes by which
    /// all packages verified. @since 0.5.1
    QList<Signer::Scheme> schemes() const;
    /// The signers on a device of the newest version that was verified: those by the newest scheme in schemes() except
    /// Scheme::V4, which has no signers of its own; of a set, those of its base. Empty when nothing verified. Several
    /// people may sign a package by v1 and v2; by v3 and v3.1, one does. @since 0.5.1
    QList<Signer> signers() const;
    /// The signers by @p scheme; empty when it did not verify. By Scheme::V3 and Scheme::V31, each is for API levels of
    /// its own. A set has the signers of its base. @since 0.5.1
    QList<Signer> signers(Signer::Scheme scheme) const;
    /// The certificate of the source stamp; null when there is none, or it did not verify. A stamp has no effect on
    /// isVerified(). @since 0.5.1
    Certificate stamp() const;
    /// The reasons why isVerified() is false; of a set, those of its packages, too. Empty when it is true. At most 256
    /// for each scheme of a package. @since 0.5.1
    QList<SignatureIssue> errors() const;
    /// Weaknesses, and what Android ignores. @since 0.5.1
    QList<SignatureIssue> warnings() const;
    /// The lowest API level that was verified. @since 0.5.1
    int minSdkVersion() const;
    /// The highest API level that was verified; 2147483647 for all newer ones. @since 0.5.1
    int maxSdkVersion() const;

    /// The packages of a set, first the base; empty for a single package. Packages that SorrelKit::Package skips are
    /// skipped here, too. @since 0.5.1
    QList<Signatures> packages() const;
    /// Name of the split in a set ("config.de"); empty for a base and a single package. @since 0.5.1
    QString name() const;

    /// How the signers of @p installed and @p update relate, on a device of the newest version that both were verified
    /// for. @since 0.5.1
    static Signer::Match compareSigners(const Signatures &installed, const Signatures &update);
    /// Whether Android would accept @p update in place of @p installed, as far as signers are concerned: compareSigners()
    /// returns Same, Rotated or Rollback. @since 0.5.1
    static bool sameSigner(const Signatures &installed, const Signatures &update);

private:
    explicit Signatures(SignaturesData *data);

    QSharedDataPointer<SignaturesData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Signatures)
Q_DECLARE_METATYPE(SorrelKit::Signatures)

#endif
