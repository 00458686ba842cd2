// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/TocChooser.h"

#include <algorithm>

namespace SorrelKit {

namespace {

using Apk = TocReader::Apk;
using Module = TocReader::Module;
using Variant = TocReader::Variant;
using Reason = Selection::Reason;

bool isConditional(const Module &module)
{
    return !module.features.isEmpty() || !module.sdkVersions.isAny();
}

} // namespace

TocChooser::TocChooser(const TocReader &toc, const std::vector<SetMember> &members, const DeviceMatch &match)
    : m_toc(toc), m_match(match), m_selection(match)
{
    for (const SetMember &member : members)
        m_members.insert(member.facts.path, &member);
}

SplitChoice TocChooser::choose()
{
    const Variant *const variant = bestVariant();
    if (variant != nullptr) {
        for (const Module &module : variant->modules) {
            if (fits(module))
                addModule(module);
        }
        for (const Apk &apk : m_toc.assets()) {
            const SetMember *const member = m_members.value(apk.path);
            if (member != nullptr && member->isInstallTime && fits(apk))
                addApk(apk, Module());
        }
    }
    return m_selection.choice();
}

bool TocChooser::isBetter(const Variant &a, const Variant &b) const
{
    const int sdk = m_match.bestSdk(a.targeting.sdkVersions.values);
    const int otherSdk = m_match.bestSdk(b.targeting.sdkVersions.values);
    if (sdk != otherSdk)
        return sdk > otherSdk;
    const auto abiRank = [this](const QVector<QString> &abis) {
        return m_match.abiRank(QStringList(abis.cbegin(), abis.cend()));
    };
    const int rank = abiRank(a.targeting.abis.values);
    const int otherRank = abiRank(b.targeting.abis.values);
    if (rank != otherRank)
        return rank < otherRank;
    const QVector<int> &densities = a.targeting.densities.values;
    const QVector<int> &others = b.targeting.densities.values;
    const int density = m_match.bestDensity(densities + others);
    if (densities.contains(density) != others.contains(density))
        return densities.contains(density);
    return a.number > b.number;
}

const Variant *TocChooser::bestVariant()
{
    const Variant *best = nullptr;
    bool fitsSdk = false;
    bool fitsAbi = false;
    int lowestSdk = 0;
    QStringList abis;
    for (const Variant &variant : m_toc.variants()) {
        const Targeting &targeting = variant.targeting;
        for (const int sdk : targeting.sdkVersions.values)
            lowestSdk = lowestSdk == 0 ? sdk : qMin(lowestSdk, sdk);
        if (!m_match.fitsSdk(targeting.sdkVersions))
            continue;
        fitsSdk = true;
        abis += QStringList(targeting.abis.values.cbegin(), targeting.abis.values.cend());
        for (const QStringList &set : targeting.abiSets.values)
            abis += set;
        if (!m_match.fitsAbi(targeting.abis) || !m_match.fitsAbiSet(targeting.abiSets))
            continue;
        fitsAbi = true;
        if (m_match.fitsTexture(targeting.textures) && m_match.fitsDensity(targeting.densities)
            && (best == nullptr || isBetter(variant, *best)))
            best = &variant;
    }
    if (m_toc.variants().isEmpty())
        m_selection.fail(Selection::Code::BadContents, QStringLiteral("toc.pb has no variant"));
    else if (!fitsSdk)
        m_selection.failForSdk(lowestSdk);
    else if (!fitsAbi)
        m_selection.failForAbi(abis);
    else if (best == nullptr)
        m_selection.fail(Selection::Code::NoScreen,
                         QStringLiteral("no variant is for the device's graphics and a screen of %1 dots per inch")
                             .arg(m_match.device().screenDensity()));
    return best;
}

bool TocChooser::fits(const Module &module) const
{
    return module.isInstallTime && m_match.fitsSdk(module.sdkVersions) && m_match.hasFeatures(module.features);
}

bool TocChooser::fits(const Apk &apk) const
{
    const Targeting &targeting = apk.targeting;
    return apk.kind != Apk::Kind::Other && m_match.fitsSdk(targeting.sdkVersions) && m_match.fitsAbi(targeting.abis)
           && m_match.fitsAbiSet(targeting.abiSets) && m_match.fitsDensity(targeting.densities)
           && m_match.fitsLanguage(targeting.languages) && m_match.fitsTexture(targeting.textures);
}

void TocChooser::addModule(const Module &module)
{
    QStringList abis;
    bool hasAbi = false;
    for (const Apk &apk : module.apks) {
        const bool isFitting = fits(apk);
        abis += QStringList(apk.targeting.abis.values.cbegin(), apk.targeting.abis.values.cend());
        hasAbi = hasAbi || (isFitting && !apk.targeting.abis.isAny());
        if (isFitting)
            addApk(apk, module);
    }
    if (!abis.isEmpty() && !hasAbi)
        m_selection.failForAbi(abis);
}

void TocChooser::addApk(const Apk &apk, const Module &module)
{
    const SetMember *const member = m_members.value(apk.path);
    if (member == nullptr) {
        m_selection.fail(Selection::Code::MissingPackage, QStringLiteral("the set lacks the package %1").arg(apk.path));
        return;
    }
    const Targeting &targeting = apk.targeting;
    const QVector<QString> &abis = targeting.abis.values;
    if (apk.kind == Apk::Kind::Standalone || apk.kind == Apk::Kind::System) {
        m_selection.add(*member, Reason::Standalone, QStringLiteral("the whole application"));
    } else if (!abis.isEmpty()) {
        m_selection.add(
            *member, Reason::Abi,
            QStringLiteral("native code for %1").arg(m_match.bestAbi(QStringList(abis.cbegin(), abis.cend()))));
    } else if (!targeting.languages.values.isEmpty()) {
        QStringList read;
        std::copy_if(targeting.languages.values.cbegin(), targeting.languages.values.cend(), std::back_inserter(read),
                     [this](const QString &language) { return m_match.reads(language); });
        m_selection.add(*member, Reason::Language, QStringLiteral("language %1").arg(read.join(QLatin1Char(' '))));
    } else if (!targeting.densities.values.isEmpty()) {
        m_selection.add(
            *member, Reason::ScreenDensity,
            QStringLiteral("screen of %1 dots per inch").arg(m_match.bestDensity(targeting.densities.values)));
    } else if (!targeting.textures.values.isEmpty()) {
        m_selection.add(*member, Reason::Texture, QStringLiteral("textures for the device's graphics"));
    } else if (!targeting.languages.isAny() || !targeting.abis.isAny() || !targeting.textures.isAny()) {
        m_selection.add(*member, Reason::Fallback, QStringLiteral("nothing else is closer to the device"));
    } else if (isConditional(module)) {
        m_selection.add(*member, Reason::Condition, QStringLiteral("module for such devices"));
    } else {
        m_selection.add(*member, Reason::Always, QStringLiteral("for every device"));
    }
}

} // namespace SorrelKit
