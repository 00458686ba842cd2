// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageReport.h"

#include "DetailsJson.h"
#include "InstallerRows.h"
#include "PrintableText.h"
#include "ReportJson.h"
#include "ReportText.h"
#include "UsedPlatform.h"

#include <QJsonArray>
#include <QLocale>
#include <QStringList>

using SorrelKit::Entry;
using SorrelKit::IconFile;

namespace {

// The language of the user's messages, which may differ from that of the number format.
QLocale userLocale()
{
    const QStringList languages = QLocale::system().uiLanguages();
    return languages.isEmpty() ? QLocale() : QLocale(languages.constFirst());
}

// The key of the label in @p labels that is shown in @p locale.
QString shownLanguage(const QMap<QString, QString> &labels, const QString &label, const QLocale &locale)
{
    QString tag = locale.bcp47Name();
    while (!tag.isEmpty() && labels.value(tag) != label)
        tag.truncate(qMax(0, tag.lastIndexOf(QLatin1Char('-'))));
    return labels.value(tag) == label ? tag : labels.key(label);
}

// A picture file has its size; a drawable of any size has its kind.
QString iconTexts(const QList<IconFile> &icons)
{
    QStringList texts;
    for (const IconFile &icon : icons) {
        const QString size = QStringLiteral("%1x%2").arg(icon.size().width()).arg(icon.size().height());
        texts.append(icon.size().isEmpty() ? printableText(icon.kind()) : size);
    }
    return texts.isEmpty() ? ReportText::tr("none") : texts.join(QLatin1Char(' '));
}

QJsonArray featuresToJson(const QList<SorrelKit::Feature> &features)
{
    QJsonArray json;
    for (const SorrelKit::Feature &feature : features)
        json.append(
            QJsonObject{{QStringLiteral("name"), feature.name()}, {QStringLiteral("required"), feature.isRequired()}});
    return json;
}

QJsonObject errorToJson(int code, const QString &text)
{
    return {{QStringLiteral("code"), code}, {QStringLiteral("text"), text}};
}

QJsonObject launcherToJson(const Entry &launcher)
{
    return {
        {QStringLiteral("package"), launcher.packageName()},
        {QStringLiteral("name"), launcher.name()},
        {QStringLiteral("class"), launcher.className()},
        {QStringLiteral("labels"), ReportJson::labels(launcher.labels())},
        {QStringLiteral("icons"), ReportJson::icons(launcher.iconFiles())},
    };
}

} // namespace

PackageReport::PackageReport(const FileName &file, bool showsAll)
    : m_file(file), m_showsAll(showsAll), m_package(UsedPlatform::package(file))
{
    for (const Entry &launcher : m_package.launchers()) {
        if (showsAll || launcher.isShown())
            m_launchers.append(launcher);
    }
}

QString PackageReport::toText(const TextStyle &style, const ReportRows &more) const
{
    ReportRows rows;
    const auto add = [&](const QString &key, const QString &value) { rows.add(key, value); };
    const QLocale locale = userLocale();
    ReportText::useLanguage(locale);
    if (!m_package.labels().isEmpty())
        rows.add(QStringLiteral("  ") + ReportText::tr("name"), m_package.label(locale), ReportRows::Emphasis::Strong);
    add(QStringLiteral("  ") + ReportText::tr("package"), m_package.packageName());
    if (m_package.versionCode() != 0 || !m_package.versionName().isEmpty())
        add(QStringLiteral("  ") + ReportText::tr("version"),
            QStringLiteral("%1 (%2)").arg(m_package.versionName()).arg(m_package.versionCode()));
    const InstallerRows::Extent extent = m_showsAll ? InstallerRows::Extent::All : InstallerRows::Extent::Short;
    rows.add(InstallerRows(m_file, m_package, locale, extent).rows());
    if (!m_package.splits().isEmpty())
        add(QStringLiteral("  ") + ReportText::tr("splits"), m_package.splits().join(QLatin1Char(' ')));
    if (m_launchers.isEmpty())
        add(QStringLiteral("  ") + ReportText::tr("launcher"), ReportText::tr("none"));
    for (const Entry &launcher : m_launchers) {
        add(QStringLiteral("  ") + ReportText::tr("launcher"), launcher.name());
        if (!m_showsAll) {
            rows.add(QStringLiteral("    ") + ReportText::tr("label"), launcher.label(locale),
                     ReportRows::Emphasis::Strong);
            continue;
        }
        QMap<QString, QString> labels = launcher.labels();
        if (!labels.isEmpty()) {
            const QString shown = shownLanguage(labels, launcher.label(locale), locale);
            rows.add(QStringLiteral("    ") + ReportText::tr("label") + QLatin1Char(' ') + shown, labels.take(shown),
                     ReportRows::Emphasis::Strong);
        }
        for (auto label = labels.cbegin(); label != labels.cend(); ++label)
            add(QStringLiteral("    ") + ReportText::tr("label") + QLatin1Char(' ') + label.key(), label.value());
        add(QStringLiteral("    ") + ReportText::tr("icons"), iconTexts(launcher.iconFiles()));
    }
    rows.add(more);
    return style.title(printableText(m_file.text())) + QLatin1Char('\n') + rows.toText(style);
}

QJsonObject PackageReport::toJson() const
{
    QJsonArray launchers;
    for (const Entry &launcher : m_launchers)
        launchers.append(launcherToJson(launcher));
    QJsonObject json = m_file.toJson();
    json.insert(QStringLiteral("error"), errorToJson(int(m_package.error().code()), errorText()));
    json.insert(QStringLiteral("package"), m_package.packageName());
    // A string, because JSON numbers have 53 bits.
    json.insert(QStringLiteral("versionCode"), QString::number(m_package.versionCode()));
    json.insert(QStringLiteral("versionName"), m_package.versionName());
    json.insert(QStringLiteral("minSdkVersion"), m_package.minSdkVersion());
    json.insert(QStringLiteral("targetSdkVersion"), m_package.targetSdkVersion());
    json.insert(QStringLiteral("permissions"), QJsonArray::fromStringList(m_package.permissionNames()));
    json.insert(QStringLiteral("features"), featuresToJson(m_package.features()));
    json.insert(QStringLiteral("nativeAbis"), QJsonArray::fromStringList(m_package.nativeAbis()));
    json.insert(QStringLiteral("splits"), QJsonArray::fromStringList(m_package.splits()));
    json.insert(QStringLiteral("labels"), ReportJson::labels(m_package.labels()));
    json.insert(QStringLiteral("launchers"), launchers);
    return json;
}

QJsonObject PackageReport::toDetailedJson() const
{
    QJsonObject json = toJson();
    json.insert(QStringLiteral("details"), DetailsJson::of(m_file, m_package, userLocale()));
    return json;
}

QJsonObject PackageReport::failure(const FileName &file, int code, const QString &text)
{
    QJsonObject json = PackageReport(FileName()).toJson();
    const QJsonObject name = file.toJson();
    for (auto member = name.begin(); member != name.end(); ++member)
        json.insert(member.key(), member.value());
    json.insert(QStringLiteral("error"), errorToJson(code, text));
    return json;
}
