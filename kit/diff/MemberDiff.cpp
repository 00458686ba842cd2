// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diff/MemberDiff.h"

#include "diff/ByteComparison.h"
#include "diff/MemberCategory.h"

#include <algorithm>

namespace SorrelKit {

namespace {

TextChange::Kind kindOf(int beforeNumber, int afterNumber)
{
    if (beforeNumber < 0)
        return TextChange::Kind::Added;
    return afterNumber < 0 ? TextChange::Kind::Removed : TextChange::Kind::Changed;
}

} // namespace

void MemberDiff::compare(const QString &package, ZipArchive *before, ZipArchive *after)
{
    m_pairs.push_back({package, before, after});
    const Pair pair = m_pairs.back();
    const auto visit = [this](ZipArchive *archive, const auto &take) {
        if (archive == nullptr)
            return;
        ZipDirectory &directory = archive->directory();
        for (int number = 0; number < directory.count(); ++number) {
            const ByteView name = directory.name(number);
            if (!m_budget->spendWork(MemberWork + Budget::ByteWork * name.size())) {
                m_isComplete = false;
                return;
            }
            if (directory.find(name) == number)
                take(name, number);
        }
    };
    visit(before, [&](const ByteView &name, int number) {
        add(pair, number, after != nullptr ? after->directory().find(name) : -1);
    });
    visit(after, [&](const ByteView &name, int number) {
        if (before == nullptr || before->directory().find(name) < 0)
            add(pair, -1, number);
    });
}

void MemberDiff::add(const Pair &pair, int beforeNumber, int afterNumber)
{
    const SizeChange change = sizes(pair, beforeNumber, afterNumber);
    SizeChange &ofCategory =
        m_sizes.insert(change.category(), m_sizes.value(change.category(), SizeChange(change.category()))).value();
    for (SizeChange *sum : {&m_total, &ofCategory}) {
        sum->addBefore(change.packedBefore(), change.sizeBefore());
        sum->addAfter(change.packedAfter(), change.sizeAfter());
    }
    if (beforeNumber >= 0 && afterNumber >= 0 && isSame(pair, beforeNumber, afterNumber))
        return;
    m_isChanged.insert(change.category(), true);
    ++m_counts[kindOf(beforeNumber, afterNumber)];
    m_changes.push_back({int(m_pairs.size()) - 1, beforeNumber, afterNumber, qAbs(change.packedGrowth())});
    if (m_changes.size() >= 2 * std::size_t(MaxListed))
        cut();
}

bool MemberDiff::isSame(const Pair &pair, int beforeNumber, int afterNumber)
{
    if (m_areSameFiles)
        return true;
    const ZipDirectory::Member before = pair.before->directory().member(beforeNumber);
    const ZipDirectory::Member after = pair.after->directory().member(afterNumber);
    if (before.size != after.size || before.crc != after.crc)
        return false;
    if (before.method != after.method || before.packedSize != after.packedSize)
        return true;
    const ZipDirectory::LocalHeader beforeHeader = ZipDirectory::localHeader(pair.before->source(), before);
    const ZipDirectory::LocalHeader afterHeader = ZipDirectory::localHeader(pair.after->source(), after);
    if (!beforeHeader.isFound || !afterHeader.isFound)
        return beforeHeader.isFound == afterHeader.isFound;
    const std::optional<bool> same = ByteComparison(m_budget).isSame(
        pair.before->source(), beforeHeader.dataAt, pair.after->source(), afterHeader.dataAt, before.packedSize);
    m_isComplete = m_isComplete && same.has_value();
    return same.value_or(true);
}

SizeChange MemberDiff::sizes(const Pair &pair, int beforeNumber, int afterNumber)
{
    const bool isRemoved = afterNumber < 0;
    const ByteView name =
        isRemoved ? pair.before->directory().name(beforeNumber) : pair.after->directory().name(afterNumber);
    SizeChange sizes(MemberCategory::of(name));
    if (beforeNumber >= 0) {
        const ZipDirectory::Member member = pair.before->directory().member(beforeNumber);
        sizes.addBefore(member.packedSize, member.size);
    }
    if (afterNumber >= 0) {
        const ZipDirectory::Member member = pair.after->directory().member(afterNumber);
        sizes.addAfter(member.packedSize, member.size);
    }
    return sizes;
}

// Keeps the largest changes. The order of the archives decides among equal ones, so equal input has equal results.
void MemberDiff::cut()
{
    const auto isLarger = [](const Change &a, const Change &b) { return a.growth > b.growth; };
    std::stable_sort(m_changes.begin(), m_changes.end(), isLarger);
    if (m_changes.size() > std::size_t(MaxListed))
        m_changes.resize(MaxListed);
}

QList<SizeChange> MemberDiff::sizes() const
{
    QList<SizeChange> sizes;
    for (const SizeChange &size : m_sizes) {
        if (m_isChanged.value(size.category()))
            sizes.append(size);
    }
    std::stable_sort(sizes.begin(), sizes.end(), [](const SizeChange &a, const SizeChange &b) {
        return qAbs(a.packedGrowth()) > qAbs(b.packedGrowth());
    });
    return sizes;
}

QList<MemberChange> MemberDiff::members()
{
    cut();
    QList<MemberChange> members;
    qint64 bytesLeft = MaxListedBytes;
    for (const Change &change : m_changes) {
        const Pair &pair = m_pairs[std::size_t(change.pair)];
        const ByteView name = change.afterNumber < 0 ? pair.before->directory().name(change.beforeNumber)
                                                     : pair.after->directory().name(change.afterNumber);
        if (name.size() > bytesLeft)
            break;
        bytesLeft -= name.size();
        members.append(MemberChange(kindOf(change.beforeNumber, change.afterNumber), pair.package,
                                    ZipDirectory::nameText(name),
                                    sizes(pair, change.beforeNumber, change.afterNumber)));
    }
    return members;
}

} // namespace SorrelKit
