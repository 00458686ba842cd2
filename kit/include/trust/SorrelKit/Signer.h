// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNER_H
#define SORRELKIT_SIGNER_H

#include <SorrelKit/Certificate.h>
#include <SorrelKit/PastSigner.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class SignerData;

/**
 * A signer of a package, by one scheme. Signatures::signers() returns these.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT Signer
{
    Q_GADGET
    Q_PROPERTY(SorrelKit::Certificate certificate READ certificate CONSTANT)
    Q_PROPERTY(Scheme scheme READ scheme CONSTANT)
    Q_PROPERTY(int minSdkVersion READ minSdkVersion CONSTANT)
    Q_PROPERTY(int maxSdkVersion READ maxSdkVersion CONSTANT)
    Q_PROPERTY(QList<SorrelKit::PastSigner> lineage READ lineage CONSTANT)

public:
    /// The ways in which Android packages are signed. @since 0.5.1
    enum class Scheme {
        None,
        V1,  ///< as a JAR: digests of members in text files
        V2,  ///< a block before the directory, over the whole file; Android 7 (API level 24) and later
        V3,  ///< the same with a lineage of keys; Android 9 (API level 28) and later
        V31, ///< the same for a key that only newer devices accept; Android 13 (API level 33) and later
        V4, ///< a file of its own with a Merkle tree; Android 11 (API level 30) and later, for incremental installation
        Stamp, ///< the stamp of a shop or another source, besides the signatures
    };
    Q_ENUM(Scheme)

    /// How the signers of an installed package and of its update relate. @since 0.5.1
    enum class Match {
        Unverified, ///< one of the packages is not verified
        Different,  ///< other people signed the update
        Same,       ///< the same keys signed both
        Rotated,    ///< the key of the installed package is in the lineage of the update's key, which accepts its data
        Rollback,   ///< the key of the update is in the lineage of the installed package's key, which accepts it
    };
    Q_ENUM(Match)

    /// No signer. @since 0.5.1
    Signer();
    /// The values of the arguments. @since 0.5.1
    Signer(const Certificate &certificate, Scheme scheme, int minSdkVersion, int maxSdkVersion,
           const QList<PastSigner> &lineage = {});
    /// A copy of @p other. @since 0.5.1
    Signer(const Signer &other);
    /// Takes the value of @p other. @since 0.5.1
    Signer(Signer &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Signer &operator=(const Signer &other);
    /// Takes the value of @p other. @since 0.5.1
    Signer &operator=(Signer &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Signer();
    /// Exchanges two values. @since 0.5.1
    void swap(Signer &other) noexcept { d.swap(other.d); }

    /// The certificate of the key that signed. @since 0.5.1
    Certificate certificate() const;
    /// The scheme by which it signed. @since 0.5.1
    Scheme scheme() const;
    /// The usual name of @p scheme ("v1", "v3.1", "stamp"); empty for Scheme::None. @since 0.5.1
    static QString schemeName(Scheme scheme);
    /// The lowest API level that the signature is for; 0 when the scheme does not limit it. @since 0.5.1
    int minSdkVersion() const;
    /// The highest API level that the signature is for; 2147483647 when the scheme does not limit it. @since 0.5.1
    int maxSdkVersion() const;
    /// The keys from the first one to that of certificate(); empty when the key was never changed. @since 0.5.1
    QList<PastSigner> lineage() const;

private:
    QSharedDataPointer<SignerData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Signer)
Q_DECLARE_METATYPE(SorrelKit::Signer)

#endif
