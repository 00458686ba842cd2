// SPDX-License-Identifier: LGPL-2.1-or-later
#include "sets/SetMember.h"

#include "format/AndroidAttributes.h"

namespace SorrelKit {

namespace {

using Kind = SetPackageKind;

constexpr int CodeNameSdkVersion = 10000;

const XmlAttribute *attributeOf(const XmlElement &element, quint32 id, const char *name)
{
    const XmlAttribute *const attribute = id != 0 ? element.attribute(id) : nullptr;
    return attribute != nullptr ? attribute : element.attribute(QString::fromLatin1(name));
}

QString textOf(const XmlElement &element, quint32 id, const char *name)
{
    const XmlAttribute *const attribute = attributeOf(element, id, name);
    return attribute != nullptr ? attribute->plainText() : QString();
}

bool isTrue(const XmlElement &element, quint32 id, const char *name)
{
    const XmlAttribute *const attribute = attributeOf(element, id, name);
    return attribute != nullptr && attribute->value.boolean().value_or(attribute->text == QLatin1String("true"));
}

int sdkVersionOf(const XmlAttribute *attribute)
{
    if (attribute == nullptr || attribute->value.isReference())
        return 1;
    if (const auto version = attribute->value.integer())
        return *version;
    bool isNumber = false;
    const int version = attribute->text.toInt(&isNumber);
    return isNumber ? version : CodeNameSdkVersion;
}

std::optional<qint64> versionCodeOf(const XmlElement &root)
{
    quint64 parts[] = {0, 0};
    const quint32 ids[] = {Attr::VersionCodeMajor, Attr::VersionCode};
    for (int i = 0; i < 2; ++i) {
        const XmlAttribute *const attribute = root.attribute(ids[i]);
        const auto value = attribute != nullptr ? attribute->value.integer() : std::make_optional(0);
        if (!value)
            return std::nullopt;
        parts[i] = quint32(*value);
    }
    return qint64(parts[0] << 32U | parts[1]);
}

QStringList listOf(const QString &text)
{
    return QStringList(text.split(QLatin1Char(','), Qt::SkipEmptyParts).mid(0, SetMember::MaxSplitNames));
}

const XmlElement *childOf(const XmlElement &element, const char *name)
{
    for (const XmlElement &child : element.children) {
        if (child.name == QLatin1String(name))
            return &child;
    }
    return nullptr;
}

} // namespace

void SetMember::readManifest(const Manifest &manifest)
{
    const XmlElement &root = manifest.root();
    hasManifest = true;
    application = manifest.packageName();
    facts.splitName = manifest.splitName();
    facts.minSdkVersion = sdkVersionOf(manifest.childAttribute(QStringLiteral("uses-sdk"), Attr::MinSdkVersion));
    versionCode = versionCodeOf(root);
    const XmlAttribute *const extracts = manifest.applicationAttribute(Attr::ExtractNativeLibs);
    extractsLibraries =
        extracts == nullptr || extracts->value.boolean().value_or(extracts->text != QLatin1String("false"));
    isSplitRequired = isTrue(root, Attr::IsSplitRequired, "isSplitRequired");
    requiredSplitTypes = listOf(textOf(root, Attr::RequiredSplitTypes, "requiredSplitTypes"));
    splitTypes = listOf(textOf(root, Attr::SplitTypes, "splitTypes"));
    for (const XmlElement &child : root.children) {
        if (child.name == QLatin1String("uses-split") && usedSplits.size() < MaxSplitNames)
            usedSplits.append(textOf(child, Attr::Name, "name"));
        else if (child.name == QLatin1String("module"))
            readDelivery(child);
    }
    target = SplitTarget::of(facts.splitName, facts.path);
    if (facts.splitName.isEmpty()) {
        facts.kind = target.isStandalone ? Kind::Standalone : Kind::Base;
        target.module = QStringLiteral("base");
        return;
    }
    const XmlAttribute *const owner = root.attribute(QStringLiteral("configForSplit"));
    const bool isFeature = isTrue(root, Attr::IsFeatureSplit, "isFeatureSplit");
    facts.kind = !isFeature && (owner != nullptr || target.isConfiguration) ? Kind::Configuration : Kind::Feature;
    if (facts.kind == Kind::Feature)
        target.module = facts.splitName;
    else if (owner != nullptr)
        target.module = owner->text.isEmpty() ? QStringLiteral("base") : owner->text;
}

void SetMember::classify()
{
    if (!hasManifest) {
        target = SplitTarget::of(describedSplit, facts.path);
        if (target.isStandalone)
            facts.kind = Kind::Standalone;
        else if (target.isConfiguration)
            facts.kind = Kind::Configuration;
        else if (!target.module.isEmpty())
            facts.kind = target.module == QLatin1String("base") ? Kind::Base : Kind::Feature;
    }
    facts.module = target.module;
    facts.languages = target.languages;
    facts.screenDensities = QList<int>(target.densities.cbegin(), target.densities.cend());
    for (const QString &abi : target.abis) {
        if (!facts.abis.contains(abi))
            facts.abis.append(abi);
    }
    facts.abis.sort();
}

void SetMember::readDelivery(const XmlElement &module)
{
    if (isTrue(module, 0, "onDemand"))
        isInstallTime = false;
    const XmlElement *const delivery = childOf(module, "delivery");
    if (delivery == nullptr)
        return;
    const XmlElement *const installTime = childOf(*delivery, "install-time");
    isInstallTime = installTime != nullptr || delivery->children.isEmpty();
    const XmlElement *const conditions = installTime != nullptr ? childOf(*installTime, "conditions") : nullptr;
    if (conditions == nullptr)
        return;
    hasConditions = true;
    for (const XmlElement &condition : conditions->children) {
        if (condition.name == QLatin1String("device-feature") && conditionFeatures.size() < MaxSplitNames)
            conditionFeatures.append(textOf(condition, Attr::Name, "name"));
        else if (condition.name == QLatin1String("min-sdk"))
            conditionSdk = sdkVersionOf(condition.attribute(QStringLiteral("value")));
    }
}

} // namespace SorrelKit
