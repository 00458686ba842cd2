// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PASTSIGNER_H
#define SORRELKIT_PASTSIGNER_H

#include <SorrelKit/Certificate.h>

#include <QFlags>
#include <QMetaType>
#include <QSharedDataPointer>

namespace SorrelKit {

class PastSignerData;

/**
 * A certificate in the lineage of a signer who changed the key, and the trust that the signer still puts in it. Signer::
 * lineage() returns these.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT PastSigner
{
    Q_GADGET
    Q_PROPERTY(SorrelKit::Certificate certificate READ certificate CONSTANT)
    Q_PROPERTY(Capabilities capabilities READ capabilities CONSTANT)

public:
    /// The rights that the owner of a past key keeps. The numbers are those of the lineage's flags in a package.
    /// @since 0.5.1
    enum class Capability {
        InstalledData = 1, ///< be updated by the new key, and keep the data
        SharedUserId = 2,  ///< share a user id with the new key
        Permission = 4,    ///< receive permissions that need the signature of the new key
        Rollback = 8,      ///< be the key of an update of a package with the new key
        Auth = 16,         ///< use the accounts of the new key
    };
    Q_ENUM(Capability)
    Q_DECLARE_FLAGS(Capabilities, Capability)
    Q_FLAG(Capabilities)

    /// No certificate, without capabilities. @since 0.5.1
    PastSigner();
    /// The values of the arguments. @since 0.5.1
    PastSigner(const Certificate &certificate, Capabilities capabilities);
    /// A copy of @p other. @since 0.5.1
    PastSigner(const PastSigner &other);
    /// Takes the value of @p other. @since 0.5.1
    PastSigner(PastSigner &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    PastSigner &operator=(const PastSigner &other);
    /// Takes the value of @p other. @since 0.5.1
    PastSigner &operator=(PastSigner &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~PastSigner();
    /// Exchanges two values. @since 0.5.1
    void swap(PastSigner &other) noexcept { d.swap(other.d); }

    /// The certificate. @since 0.5.1
    Certificate certificate() const;
    /// The rights that its owner keeps. The last entry of a lineage, the signer's own, has all capabilities whatever the
    /// flags say. @since 0.5.1
    Capabilities capabilities() const;

private:
    QSharedDataPointer<PastSignerData> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PastSigner::Capabilities)

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::PastSigner)
Q_DECLARE_METATYPE(SorrelKit::PastSigner)

#endif
