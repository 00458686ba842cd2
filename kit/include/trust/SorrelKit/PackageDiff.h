// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEDIFF_H
#define SORRELKIT_PACKAGEDIFF_H

#include <SorrelKit/ComponentChange.h>
#include <SorrelKit/MemberChange.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/Signatures.h>
#include <SorrelKit/SizeChange.h>
#include <SorrelKit/TextChange.h>
#include <SorrelKit/TrustExport.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>

namespace SorrelKit {

class PackageDiffData;

/**
 * The differences between two packages, or sets of packages: what a user wants to know before an update.
 *
 *     const SorrelKit::Signatures ours(installed);
 *     const SorrelKit::Signatures theirs(update);
 *     const SorrelKit::PackageDiff diff(installed, update, ours, theirs);
 *     if (diff.signerMatch() == SorrelKit::Signer::Match::Different)
 *         return refuse();
 *     show(diff.permissions());
 *
 * The constructor compares; the other functions return its results, which stay valid when the packages are gone, take
 * constant time and cannot fail. A package that cannot be read has no facts and no members.
 *
 * **Members** are compared by name. Two members are equal when their sizes and checksums in the directories of the
 * archives are, and their compressed bytes too. The compressed bytes of members that were compressed in different ways
 * are not compared, and neither are those beyond the limits; a stranger may forge the checksum of such a member. Among
 * members of one name the last counts. In sets, the splits of one name are compared, and the members of the set itself
 * that are no packages are not.
 *
 * **Cost.** 2 seconds and 64 MiB at most besides reading both packages (docs/limits.md), and 256 MiB for sets with
 * compressed packages. Equal members are read.
 *
 * **Threads and copies.** The constructor uses both packages like any of their queries. Copies share their data and are
 * cheap. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT PackageDiff
{
    Q_GADGET
    Q_PROPERTY(bool empty READ isEmpty CONSTANT)
    Q_PROPERTY(bool complete READ isComplete CONSTANT)
    Q_PROPERTY(bool sameApplication READ isSameApplication CONSTANT)
    Q_PROPERTY(SorrelKit::Signer::Match signerMatch READ signerMatch CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> signers READ signers CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> facts READ facts CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> permissions READ permissions CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> features READ features CONSTANT)
    Q_PROPERTY(QList<SorrelKit::ComponentChange> components READ components CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> launchers READ launchers CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> labels READ labels CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> nativeAbis READ nativeAbis CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> splits READ splits CONSTANT)
    Q_PROPERTY(QList<SorrelKit::TextChange> schemes READ schemes CONSTANT)
    Q_PROPERTY(SorrelKit::SizeChange fileSize READ fileSize CONSTANT)
    Q_PROPERTY(QList<SorrelKit::SizeChange> sizes READ sizes CONSTANT)
    Q_PROPERTY(QList<SorrelKit::MemberChange> members READ members CONSTANT)
    Q_PROPERTY(bool otherBytes READ hasOtherBytes CONSTANT)

public:
    /// No differences between no packages. @since 0.5.1
    PackageDiff();
    /// Compares the packages without their signatures: signerMatch() is Signer::Match::Unverified, and
    /// signers() and schemes() are empty. @since 0.5.1
    PackageDiff(const Package &before, const Package &after);
    /// Compares the packages and their signatures, which belong to them. @since 0.5.1
    PackageDiff(const Package &before, const Package &after, const Signatures &beforeSignatures,
                const Signatures &afterSignatures);
    /// A copy of @p other. @since 0.5.1
    PackageDiff(const PackageDiff &other);
    /// Takes the value of @p other. @since 0.5.1
    PackageDiff(PackageDiff &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    PackageDiff &operator=(const PackageDiff &other);
    /// Takes the value of @p other. @since 0.5.1
    PackageDiff &operator=(PackageDiff &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~PackageDiff();
    /// Exchanges two values. @since 0.5.1
    void swap(PackageDiff &other) noexcept { d.swap(other.d); }

    /// Whether nothing differs. When isComplete() is true, both files then have the same bytes. @since 0.5.1
    bool isEmpty() const;
    /// Whether everything was compared. False when one of the packages cannot be read, or exceeds a limit: members may
    /// be missing, and equal checksums count as equal content. @since 0.5.1
    bool isComplete() const;

    /// Whether both have the same package name, which is not empty. @since 0.5.1
    bool isSameApplication() const;
    /// How the signers relate; Signatures::compareSigners() has the rules. @since 0.5.1
    Signer::Match signerMatch() const;
    /// Signers that came or went: the certificate's SHA-256 digest in hexadecimal digits, and its subject as the value.
    /// @since 0.5.1
    QList<TextChange> signers() const;
    /// Changes of "package", "versionName", "versionCode", "minSdkVersion", "targetSdkVersion" and "openGlEsVersion", in
    /// this order; the values as texts. @since 0.5.1
    QList<TextChange> facts() const;
    /// Permissions that came or went, in the order of the manifests, first the added ones. The lists below have the same
    /// order. @since 0.5.1
    QList<TextChange> permissions() const;
    /// Features that came, went or changed; the values are "required" and "optional". @since 0.5.1
    QList<TextChange> features() const;
    /// Components that came, went or changed in a value of Component. Those for which ComponentChange::isOpened() is true
    /// are first. @since 0.5.1
    QList<ComponentChange> components() const;
    /// Launchers that came, went or changed, by Entry::name(); the values are "shown" and "hidden". @since 0.5.1
    QList<TextChange> launchers() const;
    /// The application's labels by language tag. @since 0.5.1
    QList<TextChange> labels() const;
    /// Processors for which native code came or went. @since 0.5.1
    QList<TextChange> nativeAbis() const;
    /// Splits of a set that came or went. @since 0.5.1
    QList<TextChange> splits() const;
    /// Signature schemes that verified in one of the packages alone: "v1", "v2", "v3", "v3.1" and "v4". @since 0.5.1
    QList<TextChange> schemes() const;

    /// The bytes of both files, and of all their members after unpacking. @since 0.5.1
    SizeChange fileSize() const;
    /// The sizes of each category with a member that differs, those that grew or shrank most in the archive first.
    /// @since 0.5.1
    QList<SizeChange> sizes() const;
    /// Members that came, went or changed, those that grew or shrank most in the archive first. There are up to 16384 of
    /// them, and fewer when their paths are longer than usual. @since 0.5.1
    QList<MemberChange> members() const;
    /// The number of members that came, went or changed, including those that members() leaves out. @since 0.5.1
    int memberCount(TextChange::Kind kind) const;
    /// Whether the files differ although nothing else does: in the order or dates of members, in bytes between them, or
    /// in the signing block. @since 0.5.1
    bool hasOtherBytes() const;

private:
    QSharedDataPointer<PackageDiffData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::PackageDiff)
Q_DECLARE_METATYPE(SorrelKit::PackageDiff)

#endif
