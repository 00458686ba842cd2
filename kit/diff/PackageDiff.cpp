// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/PackageDiff.h>

#include "diff/ByteComparison.h"
#include "diff/ComponentDiff.h"
#include "diff/MemberDiff.h"
#include "diff/PackageArchives.h"
#include "diff/TextList.h"

#include <QMap>
#include <QSharedData>

namespace SorrelKit {

class PackageDiffData : public QSharedData
{
public:
    /// The budget of comparing members and bytes: 1 GiB of each file.
    static constexpr qint64 MaxWork = 1 << 28;
    /// Bytes of the directories of both archives.
    static constexpr qint64 MaxDirectoryBytes = 40 << 20;
    /// The budget of the packages of both sets: each as much as PackageData spends.
    static constexpr qint64 MaxSetWork = 1 << 28;
    static constexpr qint64 MaxSetBytes = 256 << 20;

    void compareManifests(const Package &before, const Package &after);
    void compareSignatures(const Signatures &before, const Signatures &after);
    void compareFiles(const Package &before, const Package &after);
    /// Whether the lists have no difference.
    bool isEmpty() const;

    bool isComplete = true;
    bool isSameApplication = false;
    Signer::Match signerMatch = Signer::Match::Unverified;
    QList<TextChange> signers;
    QList<TextChange> facts;
    QList<TextChange> permissions;
    QList<TextChange> features;
    QList<ComponentChange> components;
    QList<TextChange> launchers;
    QList<TextChange> labels;
    QList<TextChange> nativeAbis;
    QList<TextChange> splits;
    QList<TextChange> schemes;
    SizeChange fileSize;
    QList<SizeChange> sizes;
    QList<MemberChange> members;
    QMap<TextChange::Kind, int> memberCounts;
    bool hasOtherBytes = false;
};

void PackageDiffData::compareManifests(const Package &before, const Package &after)
{
    isComplete = before.isValid() && after.isValid();
    isSameApplication = !before.packageName().isEmpty() && before.packageName() == after.packageName();
    facts = TextList::facts(after).changesSince(TextList::facts(before));
    permissions = TextList::names(after.permissionNames()).changesSince(TextList::names(before.permissionNames()));
    features = TextList::features(after).changesSince(TextList::features(before));
    components = ComponentDiff::changes(before.components(), after.components());
    launchers = TextList::launchers(after).changesSince(TextList::launchers(before));
    labels = TextList::labels(after).changesSince(TextList::labels(before));
    nativeAbis = TextList::names(after.nativeAbis()).changesSince(TextList::names(before.nativeAbis()));
    splits = TextList::names(after.splits()).changesSince(TextList::names(before.splits()));
}

void PackageDiffData::compareSignatures(const Signatures &before, const Signatures &after)
{
    signerMatch = Signatures::compareSigners(before, after);
    signers = TextList::signers(after).changesSince(TextList::signers(before));
    schemes = TextList::schemes(after).changesSince(TextList::schemes(before));
}

void PackageDiffData::compareFiles(const Package &before, const Package &after)
{
    Budget work(MaxWork, MaxDirectoryBytes);
    Budget beforeSet(MaxSetWork, MaxSetBytes / 2);
    Budget afterSet(MaxSetWork, MaxSetBytes / 2);
    PackageArchives beforeArchives(before, &work, &beforeSet);
    PackageArchives afterArchives(after, &work, &afterSet);
    bool areSame = false;
    bool areDifferent = false;
    if (beforeArchives.source() != nullptr && afterArchives.source() != nullptr) {
        const auto same = ByteComparison(&work).isSame(*beforeArchives.source(), *afterArchives.source());
        isComplete = isComplete && same.has_value();
        areSame = same.value_or(false);
        areDifferent = !same.value_or(true);
    }
    MemberDiff diff(&work, areSame);
    for (const PackageArchives::Archive &archive : beforeArchives.archives())
        diff.compare(archive.name, archive.archive.get(), afterArchives.find(archive.name));
    for (const PackageArchives::Archive &archive : afterArchives.archives()) {
        if (beforeArchives.find(archive.name) == nullptr)
            diff.compare(archive.name, nullptr, archive.archive.get());
    }
    if (beforeArchives.source() != nullptr)
        fileSize.addBefore(beforeArchives.source()->size(), diff.total().sizeBefore());
    if (afterArchives.source() != nullptr)
        fileSize.addAfter(afterArchives.source()->size(), diff.total().sizeAfter());
    sizes = diff.sizes();
    members = diff.members();
    for (const TextChange::Kind kind : {TextChange::Kind::Added, TextChange::Kind::Removed, TextChange::Kind::Changed})
        memberCounts.insert(kind, diff.count(kind));
    isComplete = isComplete && diff.isComplete() && !work.isSpent() && !beforeSet.isSpent() && !afterSet.isSpent();
    hasOtherBytes = areDifferent && isEmpty();
}

bool PackageDiffData::isEmpty() const
{
    const bool haveSameTexts = signers.isEmpty() && facts.isEmpty() && permissions.isEmpty() && features.isEmpty()
                               && launchers.isEmpty() && labels.isEmpty() && nativeAbis.isEmpty() && splits.isEmpty()
                               && schemes.isEmpty();
    return haveSameTexts && components.isEmpty() && sizes.isEmpty();
}

PackageDiff::PackageDiff() : d(new PackageDiffData) {}

PackageDiff::PackageDiff(const Package &before, const Package &after) : PackageDiff()
{
    d->compareManifests(before, after);
    d->compareFiles(before, after);
}

PackageDiff::PackageDiff(const Package &before, const Package &after, const Signatures &beforeSignatures,
                         const Signatures &afterSignatures)
    : PackageDiff()
{
    d->compareManifests(before, after);
    d->compareSignatures(beforeSignatures, afterSignatures);
    d->compareFiles(before, after);
}

PackageDiff::PackageDiff(const PackageDiff &other) = default;
PackageDiff::PackageDiff(PackageDiff &&other) noexcept = default;
PackageDiff &PackageDiff::operator=(const PackageDiff &other) = default;
PackageDiff &PackageDiff::operator=(PackageDiff &&other) noexcept = default;
PackageDiff::~PackageDiff() = default;

bool PackageDiff::isEmpty() const
{
    return d->isEmpty() && !d->hasOtherBytes;
}

bool PackageDiff::isComplete() const
{
    return d->isComplete;
}

bool PackageDiff::isSameApplication() const
{
    return d->isSameApplication;
}

Signer::Match PackageDiff::signerMatch() const
{
    return d->signerMatch;
}

QList<TextChange> PackageDiff::signers() const
{
    return d->signers;
}

QList<TextChange> PackageDiff::facts() const
{
    return d->facts;
}

QList<TextChange> PackageDiff::permissions() const
{
    return d->permissions;
}

QList<TextChange> PackageDiff::features() const
{
    return d->features;
}

QList<ComponentChange> PackageDiff::components() const
{
    return d->components;
}

QList<TextChange> PackageDiff::launchers() const
{
    return d->launchers;
}

QList<TextChange> PackageDiff::labels() const
{
    return d->labels;
}

QList<TextChange> PackageDiff::nativeAbis() const
{
    return d->nativeAbis;
}

QList<TextChange> PackageDiff::splits() const
{
    return d->splits;
}

QList<TextChange> PackageDiff::schemes() const
{
    return d->schemes;
}

SizeChange PackageDiff::fileSize() const
{
    return d->fileSize;
}

QList<SizeChange> PackageDiff::sizes() const
{
    return d->sizes;
}

QList<MemberChange> PackageDiff::members() const
{
    return d->members;
}

int PackageDiff::memberCount(TextChange::Kind kind) const
{
    return d->memberCounts.value(kind);
}

bool PackageDiff::hasOtherBytes() const
{
    return d->hasOtherBytes;
}

} // namespace SorrelKit
