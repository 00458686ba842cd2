// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/NameChooser.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace SorrelKit {

namespace {

using Kind = SetPackageKind;
using Reason = Selection::Reason;

// The name of a split, also when only that of its file is known.
QString nameOf(const SetMember &member)
{
    return member.hasManifest ? member.facts.splitName : member.facts.path;
}

} // namespace

NameChooser::NameChooser(const std::vector<SetMember> &members, const DeviceMatch &match)
    : m_match(match), m_selection(match)
{
    for (const SetMember &member : members) {
        if (member.facts.kind == Kind::Base)
            m_bases.push_back(&member);
        else if (member.facts.kind == Kind::Standalone)
            m_standalones.push_back(&member);
        else
            m_others.push_back(&member);
    }
}

SplitChoice NameChooser::choose()
{
    if (const SetMember *const base = bestBase()) {
        m_selection.add(*base, Reason::Always, QStringLiteral("for every device"));
        addSplits(*base);
    } else if (const SetMember *const standalone = bestStandalone()) {
        m_selection.add(*standalone, Reason::Standalone, QStringLiteral("the whole application"));
    } else {
        failForBases();
    }
    return m_selection.choice();
}

template <typename Compare>
const SetMember *NameChooser::best(const Members &candidates, const Compare &isBetter) const
{
    const SetMember *found = nullptr;
    for (const SetMember *member : candidates) {
        const int sdk = member->facts.minSdkVersion;
        if (sdk > m_match.device().sdkVersion())
            continue;
        const int foundSdk = found != nullptr ? found->facts.minSdkVersion : -1;
        if (found == nullptr || sdk > foundSdk || (sdk == foundSdk && isBetter(*member, *found)))
            found = member;
    }
    return found;
}

const SetMember *NameChooser::bestBase() const
{
    return best(m_bases, [](const SetMember &a, const SetMember &b) {
        // A manifest is known better than a name, and tools write "base".
        const auto rank = [](const SetMember &member) {
            return member.facts.path.section(QLatin1Char('/'), -1).startsWith(QLatin1String("base")) ? 1 : 0;
        };
        return a.hasManifest != b.hasManifest ? a.hasManifest : rank(a) > rank(b);
    });
}

const SetMember *NameChooser::bestStandalone() const
{
    Members fitting;
    std::copy_if(m_standalones.cbegin(), m_standalones.cend(), std::back_inserter(fitting),
                 [this](const SetMember *member) { return fitsAbi(*member); });
    return best(fitting, [this](const SetMember &a, const SetMember &b) {
        const int rank = m_match.abiRank(a.facts.abis);
        const int otherRank = m_match.abiRank(b.facts.abis);
        if (rank != otherRank)
            return rank < otherRank;
        const int density = m_match.bestDensity(b.target.densities + a.target.densities);
        return a.target.densities.contains(density) && !b.target.densities.contains(density);
    });
}

void NameChooser::failForBases()
{
    Members all = m_bases;
    all.insert(all.end(), m_standalones.cbegin(), m_standalones.cend());
    if (all.empty()) {
        m_selection.fail(Selection::Code::MissingPackage, QStringLiteral("the set has no base package for the device"));
        return;
    }
    int lowestSdk = all.front()->facts.minSdkVersion;
    QStringList abis;
    for (const SetMember *member : all) {
        lowestSdk = qMin(lowestSdk, member->facts.minSdkVersion);
        abis += member->facts.abis;
    }
    if (lowestSdk > m_match.device().sdkVersion())
        m_selection.failForSdk(lowestSdk);
    else
        m_selection.failForAbi(abis);
}

bool NameChooser::fitsAbi(const SetMember &member) const
{
    return member.facts.abis.isEmpty() || !m_match.bestAbi(member.facts.abis).isEmpty();
}

bool NameChooser::belongsTo(const SetMember &member, const SetMember &base)
{
    return !member.hasManifest || !base.hasManifest || member.application == base.application;
}

NameChooser::Members NameChooser::splitsOf(const SetMember &base) const
{
    // Tools write the splits of each variant, with its number in the names of the files.
    const auto isBetter = [&](const SetMember &a, const SetMember &b) {
        return a.target.variant == base.target.variant && b.target.variant != base.target.variant;
    };
    Members splits;
    QHash<QString, int> places;
    for (const SetMember *member : m_others) {
        if (!belongsTo(*member, base))
            continue;
        const int place = places.value(nameOf(*member), -1);
        if (place < 0) {
            places.insert(nameOf(*member), int(splits.size()));
            splits.push_back(member);
        } else if (isBetter(*member, *splits.at(std::size_t(place)))) {
            splits.at(std::size_t(place)) = member;
        }
    }
    return splits;
}

NameChooser::Members NameChooser::modulesAmong(const Members &splits) const
{
    Members modules;
    std::copy_if(splits.cbegin(), splits.cend(), std::back_inserter(modules),
                 [](const SetMember *member) { return member->facts.kind == Kind::Feature; });
    return modules;
}

void NameChooser::addSplits(const SetMember &base)
{
    const Members splits = splitsOf(base);
    QHash<QString, const SetMember *> byName;
    Members chosen{&base};
    for (const SetMember *module : modulesAmong(splits)) {
        byName.insert(module->target.module, module);
        if (!module->isInstallTime || module->conditionSdk > m_match.device().sdkVersion()
            || !m_match.hasFeatures(module->conditionFeatures))
            continue;
        const Reason reason = module->hasConditions ? Reason::Condition : Reason::Always;
        m_selection.add(*module, reason,
                        module->hasConditions ? QStringLiteral("module for such devices")
                                              : QStringLiteral("for every device"));
        chosen.push_back(module);
    }
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        for (const QString &name : chosen.at(i)->usedSplits) {
            const SetMember *const used = byName.value(name);
            if (used == nullptr || m_selection.contains(*used))
                continue;
            m_selection.add(*used, Reason::Dependency,
                            QStringLiteral("module that %1 uses").arg(chosen.at(i)->target.module));
            chosen.push_back(used);
        }
    }
    QSet<QString> modules;
    for (const SetMember *module : chosen)
        modules.insert(module->target.module);
    QStringList abis;
    for (const SetMember *module : chosen)
        abis += module->facts.abis;
    for (const SetMember *split : splits) {
        if (split->facts.kind == Kind::Configuration && modules.contains(split->target.module))
            abis += split->facts.abis;
    }
    const QString abi = m_match.bestAbi(abis);
    if (!abis.isEmpty() && abi.isEmpty())
        m_selection.failForAbi(abis);
    for (const SetMember *module : chosen)
        addConfigurations(splits, module->target.module, abi);
}

void NameChooser::addConfigurations(const Members &splits, const QString &module, const QString &abi)
{
    Members fitting;
    QVector<int> densities;
    bool hasLanguage = false;
    const auto reads = [this](const QString &language) { return m_match.reads(language); };
    for (const SetMember *split : splits) {
        const SplitTarget &target = split->target;
        if (split->facts.kind != Kind::Configuration || target.module != module
            || (!target.abis.isEmpty() && !target.abis.contains(abi)))
            continue;
        if (!target.languages.isEmpty()) {
            if (std::none_of(target.languages.cbegin(), target.languages.cend(), reads))
                continue;
            hasLanguage = true;
        }
        densities += target.densities;
        fitting.push_back(split);
    }
    const int density = m_match.bestDensity(densities);
    for (const SetMember *split : fitting) {
        const SplitTarget &target = split->target;
        if (!target.densities.isEmpty() && !target.densities.contains(density))
            continue;
        if (target.isFallback && hasLanguage)
            continue;
        if (!target.abis.isEmpty())
            m_selection.add(*split, Reason::Abi, QStringLiteral("native code for %1").arg(abi));
        else if (!target.languages.isEmpty())
            m_selection.add(*split, Reason::Language,
                            QStringLiteral("language %1").arg(target.languages.join(QLatin1Char(' '))));
        else if (!target.densities.isEmpty())
            m_selection.add(*split, Reason::ScreenDensity, QStringLiteral("screen of %1 dots per inch").arg(density));
        else if (target.isFallback)
            m_selection.add(*split, Reason::Fallback, QStringLiteral("nothing else is closer to the device"));
        else
            m_selection.add(*split, Reason::Always, QStringLiteral("its name is for no device in particular"));
    }
}

} // namespace SorrelKit
