// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/Selection.h"

#include "limits/ByteSum.h"

#include <algorithm>

namespace SorrelKit {

namespace {

bool isWhole(const SetMember &member)
{
    return member.facts.kind == SetPackageKind::Base || member.facts.kind == SetPackageKind::Standalone;
}

QString sortedNames(const QSet<QString> &names)
{
    QStringList sorted(names.cbegin(), names.cend());
    sorted.sort();
    return sorted.join(QStringLiteral(", "));
}

} // namespace

void Selection::add(const SetMember &member, Reason reason, const QString &text)
{
    if (m_known.contains(&member))
        return;
    m_known.insert(&member);
    m_chosen.push_back({&member, reason, text});
}

void Selection::fail(Code code, const QString &message)
{
    if (failed())
        return;
    m_code = code;
    m_message = message;
}

void Selection::failForSdk(int needed)
{
    if (needed <= m_match.device().sdkVersion()) {
        fail(Code::MissingPackage,
             QStringLiteral("the set lacks the variant for SDK %1").arg(m_match.device().sdkVersion()));
        return;
    }
    fail(Code::SdkTooLow,
         QStringLiteral("needs SDK %1, and the device has SDK %2").arg(needed).arg(m_match.device().sdkVersion()));
}

void Selection::failForAbi(const QStringList &abis)
{
    if (!m_match.bestAbi(abis).isEmpty()) {
        fail(Code::MissingPackage, QStringLiteral("the set lacks the package for a processor that the device prefers"));
        return;
    }
    fail(Code::NoNativeCode, QStringLiteral("no native code for %1, only for %2")
                                 .arg(m_match.device().abis().join(QStringLiteral(", ")),
                                      sortedNames(QSet<QString>(abis.cbegin(), abis.cend()))));
}

SplitChoice Selection::choice()
{
    if (!failed())
        checkBase();
    if (!failed())
        checkSdk();
    if (!failed())
        checkNativeCode();
    if (!failed())
        checkSplits();
    if (failed())
        return SetAccess::choice(m_code, m_message);
    std::stable_partition(m_chosen.begin(), m_chosen.end(), [](const Chosen &each) { return isWhole(*each.member); });
    QList<SetPackage> packages;
    QStringList abis;
    for (const Chosen &each : m_chosen)
        abis += each.member->facts.abis;
    const QString abi = m_match.bestAbi(abis);
    const bool extractsLibraries = m_chosen.front().member->extractsLibraries;
    qint64 libraryBytes = 0;
    for (const Chosen &each : m_chosen) {
        SetPackageData facts = each.member->facts;
        facts.reason = each.reason;
        facts.reasonText = each.text;
        packages.append(SetAccess::package(facts));
        if (extractsLibraries)
            libraryBytes = byteSum(libraryBytes, each.member->libraryBytes.value(abi));
    }
    return SetAccess::choice(packages, libraryBytes);
}

void Selection::checkBase()
{
    const auto mayBeBase = [](const Chosen &each) {
        return isWhole(*each.member) || each.member->facts.kind == SetPackageKind::Unknown;
    };
    const auto isBase = [](const Chosen &each) { return isWhole(*each.member) && each.member->hasManifest; };
    if (std::none_of(m_chosen.cbegin(), m_chosen.cend(), mayBeBase))
        fail(Code::MissingPackage, QStringLiteral("the set has no base package for the device"));
    else if (std::none_of(m_chosen.cbegin(), m_chosen.cend(), isBase))
        fail(Code::CannotRead, QStringLiteral("could not read the manifest of the base package for the device"));
}

void Selection::checkSdk()
{
    int needed = 0;
    for (const Chosen &each : m_chosen)
        needed = qMax(needed, each.member->facts.minSdkVersion);
    if (needed > m_match.device().sdkVersion())
        failForSdk(needed);
}

void Selection::checkNativeCode()
{
    QStringList abis;
    for (const Chosen &each : m_chosen)
        abis += each.member->facts.abis;
    if (!abis.isEmpty() && m_match.bestAbi(abis).isEmpty())
        failForAbi(abis);
}

void Selection::checkSplits()
{
    QSet<QString> required;
    QSet<QString> types;
    QSet<QString> used;
    QSet<QString> modules{QString(), QStringLiteral("base")};
    bool needsSplit = false;
    for (const Chosen &each : m_chosen) {
        const SetMember &member = *each.member;
        required.unite(QSet<QString>(member.requiredSplitTypes.cbegin(), member.requiredSplitTypes.cend()));
        types.unite(QSet<QString>(member.splitTypes.cbegin(), member.splitTypes.cend()));
        used.unite(QSet<QString>(member.usedSplits.cbegin(), member.usedSplits.cend()));
        modules.insert(member.facts.splitName);
        needsSplit = needsSplit || (isWhole(member) && member.isSplitRequired);
    }
    if (!required.subtract(types).isEmpty()) {
        fail(Code::MissingPackage,
             QStringLiteral("the set lacks a split of a required type: %1").arg(sortedNames(required)));
    } else if (!used.subtract(modules).isEmpty()) {
        fail(Code::MissingPackage, QStringLiteral("the set lacks a required module: %1").arg(sortedNames(used)));
    } else if (needsSplit && m_chosen.size() == 1) {
        fail(Code::MissingPackage, QStringLiteral("the base requires splits, and there is none for the device"));
    }
}

} // namespace SorrelKit
