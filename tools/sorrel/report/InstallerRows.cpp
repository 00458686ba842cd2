// SPDX-License-Identifier: LGPL-2.1-or-later
#include "InstallerRows.h"

#include "AndroidVersion.h"
#include "MemberSizes.h"
#include "PrintableText.h"
#include "ReportText.h"

#include <QStringList>

#include <algorithm>
#include <limits>

using SorrelKit::Feature;
using SorrelKit::Permission;

namespace {

QString bytesText(qint64 bytes, const QLocale &locale)
{
    constexpr qint64 Kilobyte = 1000;
    return bytes < Kilobyte ? QStringLiteral("%1 B").arg(locale.toString(bytes))
                            : locale.formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

// The key of a row, below the name of the file.
QString rowKey(const QString &words)
{
    return QStringLiteral("  ") + words;
}

// When a package for @p firstSdk and later requests @p permission; empty for always.
QString conditionText(const Permission &permission, int firstSdk)
{
    QStringList parts;
    const int last = permission.maxSdkVersion() > 0 ? permission.maxSdkVersion() : std::numeric_limits<int>::max();
    if (permission.minSdkVersion() > firstSdk || permission.maxSdkVersion() > 0)
        parts.append(AndroidVersion::range(std::max(permission.minSdkVersion(), firstSdk), last));
    if (!permission.isRequired())
        parts.append(ReportText::tr("optional"));
    return parts.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(parts.join(ReportText::tr(", ")));
}

QString featuresText(const QList<Feature> &features, bool areRequired)
{
    QStringList labels;
    for (const Feature &feature : features) {
        if (feature.isRequired() == areRequired && !labels.contains(ReportText::ofFeature(feature.label())))
            labels.append(ReportText::ofFeature(feature.label()));
    }
    return labels.join(ReportText::tr(", "));
}

} // namespace

InstallerRows::InstallerRows(const FileName &file, const SorrelKit::Package &package, const QLocale &locale,
                             Extent extent)
    : m_package(package), m_locale(locale), m_extent(extent)
{
    addAndroidVersions();
    addSizes(file);
    addPermissions();
    addFeatures();
    addProcessorsAndLanguages();
}

void InstallerRows::addAndroidVersions()
{
    m_rows.add(rowKey(ReportText::tr("minimum SDK")), AndroidVersion::withLevel(m_package.minSdkVersion()));
    if (m_package.targetSdkVersion() != m_package.minSdkVersion())
        m_rows.add(rowKey(ReportText::tr("target SDK")), AndroidVersion::withLevel(m_package.targetSdkVersion()));
}

void InstallerRows::addSizes(const FileName &file)
{
    const MemberSizes sizes = MemberSizes::of(file);
    if (sizes.file > 0)
        m_rows.add(rowKey(ReportText::tr("size")), bytesText(sizes.file, m_locale));
    QStringList parts;
    const auto add = [&](const QString &name, qint64 bytes) {
        if (bytes > 0)
            parts.append(QStringLiteral("%1 %2").arg(name, bytesText(bytes, m_locale)));
    };
    add(ReportText::tr("code"), sizes.code);
    add(ReportText::tr("libraries"), sizes.libraries);
    add(ReportText::tr("resources"), sizes.resources);
    add(ReportText::tr("other files"), sizes.others);
    if (!parts.isEmpty())
        m_rows.add(rowKey(ReportText::tr("unpacked")), parts.join(ReportText::tr(", ")));
}

void InstallerRows::addPermissions()
{
    QList<Permission> dangerous;
    QList<Permission> granted;
    QList<Permission> bySettings;
    QList<Permission> others;
    for (const Permission &permission : m_package.permissions()) {
        const Permission::Level level = permission.level();
        if (level == Permission::Level::Dangerous)
            dangerous.append(permission);
        else if (level == Permission::Level::Normal)
            granted.append(permission);
        else if (permission.flags().testFlag(Permission::Flag::AppOp))
            bySettings.append(permission);
        else
            others.append(permission);
    }
    addDangerous(dangerous);
    addList(rowKey(ReportText::tr("in settings")), bySettings);
    addList(rowKey(ReportText::tr("gets")), granted);
    if (showsAll())
        addList(rowKey(ReportText::tr("requests")), others);
    else if (!others.isEmpty())
        m_rows.add(rowKey(ReportText::tr("requests")), ReportText::tr("%1 more, which --all shows").arg(others.size()));
}

void InstallerRows::addDangerous(const QList<Permission> &permissions)
{
    constexpr int WordsIndent = 2;
    QString key = rowKey(ReportText::tr("asks for"));
    QStringList groups;
    for (const Permission &permission : permissions) {
        if (!groups.contains(permission.group()))
            groups.append(permission.group());
    }
    for (const QString &group : std::as_const(groups)) {
        bool isFirst = true;
        for (const Permission &permission : permissions) {
            if (permission.group() != group)
                continue;
            if (isFirst)
                m_rows.add(key, group.isEmpty() ? ReportText::tr("no group") : permission.groupLabel(m_locale),
                           ReportRows::Emphasis::Strong);
            isFirst = false;
            key.clear();
            addWords(QString(), permission, WordsIndent);
        }
    }
}

void InstallerRows::addList(const QString &key, const QList<Permission> &permissions)
{
    bool isFirst = true;
    for (const Permission &permission : permissions) {
        addWords(isFirst ? key : QString(), permission, 0);
        isFirst = false;
    }
}

void InstallerRows::addWords(const QString &key, const Permission &permission, int indent)
{
    constexpr int DetailsIndent = 2;
    const QString space(indent, QLatin1Char(' '));
    const QString details(indent + DetailsIndent, QLatin1Char(' '));
    const QString label = permission.label(m_locale);
    m_rows.addSafe(key, space + isolatedText(label) + conditionText(permission, m_package.minSdkVersion()));
    if (!showsAll())
        return;
    const QString description = permission.description(m_locale);
    if (!description.isEmpty())
        m_rows.addSafe(QString(), details + isolatedText(description));
    if (label != permission.name())
        m_rows.addSafe(QString(), details + isolatedText(permission.name()));
    if (permission.isImplied())
        m_rows.addSafe(QString(),
                       details + ReportText::tr("implied: %1").arg(isolatedText(permission.impliedReason())));
}

void InstallerRows::addFeatures()
{
    const QList<Feature> features = m_package.features();
    QString needed = featuresText(features, true);
    if (!m_package.openGlEsVersion().isNull())
        needed += (needed.isEmpty() ? QString() : ReportText::tr(", ")) + QStringLiteral("OpenGL ES ")
                  + m_package.openGlEsVersion().toString();
    if (!needed.isEmpty())
        m_rows.add(rowKey(ReportText::tr("needs")), needed);
    const QString optional = featuresText(features, false);
    if (!optional.isEmpty())
        m_rows.add(rowKey(ReportText::tr("can use")), optional);
    if (!showsAll())
        return;
    QString key = rowKey(ReportText::tr("implies"));
    for (const Feature &feature : m_package.impliedFeatures()) {
        m_rows.add(key, QStringLiteral("%1: %2").arg(ReportText::ofFeature(feature.label()), feature.impliedReason()));
        key.clear();
    }
}

void InstallerRows::addProcessorsAndLanguages()
{
    constexpr int ShownLanguages = 12;
    const QStringList processors = m_package.nativeAbis();
    if (!processors.isEmpty())
        m_rows.add(rowKey(ReportText::tr("processors")), processors.join(QLatin1Char(' ')));
    const QStringList languages = m_package.languages();
    if (languages.isEmpty())
        return;
    const bool isCut = !showsAll() && languages.size() > ShownLanguages;
    const QStringList shown = languages.mid(0, isCut ? ShownLanguages : int(languages.size()));
    m_rows.add(
        rowKey(ReportText::tr("languages")),
        isCut
            ? ReportText::tr("%1 and %2 more").arg(shown.join(QLatin1Char(' '))).arg(languages.size() - ShownLanguages)
            : shown.join(QLatin1Char(' ')));
}
