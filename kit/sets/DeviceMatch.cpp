// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/DeviceMatch.h"

#include "format/Configuration.h"
#include "language/LanguageTag.h"

#include <algorithm>

namespace SorrelKit {

namespace {

QString languageOfTag(const QString &tag)
{
    return LanguageTag(LanguageTag(tag).language().toString()).toString();
}

} // namespace

DeviceMatch::DeviceMatch(const Device &device) : m_device(device)
{
    for (const QString &locale : device.locales())
        m_languages.insert(languageOfTag(locale));
    for (const QString &feature : device.features())
        m_features.insert(feature);
}

QString DeviceMatch::bestAbi(const QStringList &abis) const
{
    return m_device.abis().value(abiRank(abis));
}

int DeviceMatch::abiRank(const QStringList &abis) const
{
    const QStringList own = m_device.abis();
    return int(std::find_if(own.cbegin(), own.cend(), [&](const QString &abi) { return abis.contains(abi); })
               - own.cbegin());
}

int DeviceMatch::bestDensity(const QVector<int> &densities) const
{
    const Configuration device = Configuration::phone(m_device.screenDensity());
    Configuration best;
    for (const int density : densities) {
        Configuration candidate;
        candidate.density = density;
        if (best.density == 0 || candidate.isBetterThan(best, device))
            best = candidate;
    }
    return best.density;
}

bool DeviceMatch::reads(const QString &tag) const
{
    return m_languages.contains(languageOfTag(tag));
}

bool DeviceMatch::hasFeatures(const QStringList &features) const
{
    return std::all_of(features.cbegin(), features.cend(),
                       [this](const QString &feature) { return m_features.contains(feature); });
}

int DeviceMatch::bestSdk(const QVector<int> &versions) const
{
    int best = 0;
    for (const int version : versions) {
        if (version <= m_device.sdkVersion())
            best = qMax(best, version);
    }
    return best;
}

bool DeviceMatch::fitsSdk(const Targeting::Dimension<int> &versions) const
{
    const int other = bestSdk(versions.alternatives);
    if (versions.values.isEmpty())
        return other == 0;
    const int own = bestSdk(versions.values);
    return own > 0 && own >= other;
}

bool DeviceMatch::fitsAbi(const Targeting::Dimension<QString> &abis) const
{
    const auto rank = [this](const QVector<QString> &list) { return abiRank(QStringList(list.cbegin(), list.cend())); };
    const int none = int(m_device.abis().size());
    const int other = rank(abis.alternatives);
    if (abis.values.isEmpty())
        return other == none;
    const int own = rank(abis.values);
    return own < none && own <= other;
}

bool DeviceMatch::fitsAbiSet(const Targeting::Dimension<QStringList> &sets) const
{
    // Of two sets, the one with the better first processor is better; else the one with more of them.
    const auto isBetter = [](const QVector<int> &a, const QVector<int> &b) {
        const auto places = std::mismatch(a.cbegin(), a.cend(), b.cbegin(), b.cend());
        if (places.second == b.cend())
            return places.first != a.cend();
        return places.first != a.cend() && *places.first < *places.second;
    };
    const auto best = [&](const QVector<QStringList> &all) {
        QVector<int> found;
        for (const QStringList &abis : all) {
            const QVector<int> candidate = ranks(abis);
            if (!candidate.isEmpty() && (found.isEmpty() || isBetter(candidate, found)))
                found = candidate;
        }
        return found;
    };
    const QVector<int> other = best(sets.alternatives);
    if (sets.values.isEmpty())
        return other.isEmpty();
    const QVector<int> own = best(sets.values);
    return !own.isEmpty() && (other.isEmpty() || !isBetter(other, own));
}

bool DeviceMatch::fitsDensity(const Targeting::Dimension<int> &densities) const
{
    return densities.isAny() || densities.values.contains(bestDensity(densities.values + densities.alternatives));
}

bool DeviceMatch::fitsLanguage(const Targeting::Dimension<QString> &languages) const
{
    const auto readsAny = [this](const QVector<QString> &tags) {
        return std::any_of(tags.cbegin(), tags.cend(), [this](const QString &tag) { return reads(tag); });
    };
    return languages.values.isEmpty() ? !readsAny(languages.alternatives) : readsAny(languages.values);
}

QVector<int> DeviceMatch::ranks(const QStringList &abis) const
{
    QVector<int> found;
    for (const QString &abi : abis) {
        const int rank = int(m_device.abis().indexOf(abi));
        if (rank < 0)
            return {};
        found.append(rank);
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace SorrelKit
