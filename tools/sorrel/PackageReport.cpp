// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageReport.h"

#include <QJsonArray>
#include <QStringList>
#include <QTextStream>

using SorrelKit::IconFile;
using SorrelKit::Launcher;

namespace {

constexpr int KeyWidth = 16;

QString printable(QString text)
{
    for (QChar &character : text) {
        const QChar::Category category = character.category();
        const bool steers = category == QChar::Other_Control || category == QChar::Separator_Line
                            || category == QChar::Separator_Paragraph
                            || (character >= QChar(0x202a) && character <= QChar(0x202e))
                            || (character >= QChar(0x2066) && character <= QChar(0x2069));
        if (steers)
            character = QChar::ReplacementCharacter;
    }
    return text;
}

void writeLine(QTextStream &out, int indent, const QString &key, const QString &value)
{
    out << (QString(indent, QLatin1Char(' ')) + key).leftJustified(KeyWidth) << ' ' << printable(value) << '\n';
}

// Pictures by their size, what is drawn in any size by its kind.
QString iconTexts(const QVector<IconFile> &icons)
{
    QStringList texts;
    for (const IconFile &icon : icons) {
        const QString size = QStringLiteral("%1x%2").arg(icon.size.width()).arg(icon.size.height());
        texts.append(icon.size.isEmpty() ? printable(icon.kind) : size);
    }
    return texts.isEmpty() ? QStringLiteral("none") : texts.join(QLatin1Char(' '));
}

QJsonObject iconToJson(const IconFile &icon)
{
    QJsonObject json{{QStringLiteral("kind"), icon.kind}, {QStringLiteral("path"), icon.path}};
    if (!icon.size.isEmpty()) {
        json.insert(QStringLiteral("width"), icon.size.width());
        json.insert(QStringLiteral("height"), icon.size.height());
    }
    return json;
}

QJsonObject launcherToJson(const Launcher &launcher)
{
    QJsonObject labels;
    const QMap<QString, QString> byLanguage = launcher.labels();
    for (auto label = byLanguage.cbegin(); label != byLanguage.cend(); ++label)
        labels.insert(label.key(), label.value());
    QJsonArray icons;
    for (const IconFile &icon : launcher.iconFiles())
        icons.append(iconToJson(icon));
    return {
        {QStringLiteral("package"), launcher.packageName()},
        {QStringLiteral("name"), launcher.name()},
        {QStringLiteral("class"), launcher.className()},
        {QStringLiteral("labels"), labels},
        {QStringLiteral("icons"), icons},
    };
}

} // namespace

PackageReport::PackageReport(const QString &file, bool includeDisabled) : m_file(file), m_package(file)
{
    for (const Launcher &launcher : m_package.launchers()) {
        if (includeDisabled || launcher.isShown())
            m_launchers.append(launcher);
    }
}

QString PackageReport::toText() const
{
    QString text;
    QTextStream out(&text);
    out << printable(m_file) << '\n';
    writeLine(out, 2, QStringLiteral("package"), m_package.packageName());
    if (m_package.versionCode() != 0 || !m_package.versionName().isEmpty())
        writeLine(out, 2, QStringLiteral("version"),
                  QStringLiteral("%1 (%2)").arg(m_package.versionName()).arg(m_package.versionCode()));
    writeLine(out, 2, QStringLiteral("minimum SDK"), QString::number(m_package.minSdkVersion()));
    if (!m_package.splits().isEmpty())
        writeLine(out, 2, QStringLiteral("splits"), m_package.splits().join(QLatin1Char(' ')));
    if (m_launchers.isEmpty())
        writeLine(out, 2, QStringLiteral("launcher"), QStringLiteral("none"));
    for (const Launcher &launcher : m_launchers) {
        writeLine(out, 2, QStringLiteral("launcher"), launcher.name());
        const QMap<QString, QString> labels = launcher.labels();
        for (auto label = labels.cbegin(); label != labels.cend(); ++label)
            writeLine(out, 4, QStringLiteral("label ") + printable(label.key()), label.value());
        writeLine(out, 4, QStringLiteral("icons"), iconTexts(launcher.iconFiles()));
    }
    return text;
}

QJsonObject PackageReport::toJson() const
{
    QJsonArray launchers;
    for (const Launcher &launcher : m_launchers)
        launchers.append(launcherToJson(launcher));
    return {
        {QStringLiteral("file"), m_file},
        {QStringLiteral("error"),
         QJsonObject{{QStringLiteral("code"), int(m_package.error())}, {QStringLiteral("text"), errorText()}}},
        {QStringLiteral("package"), m_package.packageName()},
        // As a text: numbers in JSON have 53 bits.
        {QStringLiteral("versionCode"), QString::number(m_package.versionCode())},
        {QStringLiteral("versionName"), m_package.versionName()},
        {QStringLiteral("minSdkVersion"), m_package.minSdkVersion()},
        {QStringLiteral("targetSdkVersion"), m_package.targetSdkVersion()},
        {QStringLiteral("splits"), QJsonArray::fromStringList(m_package.splits())},
        {QStringLiteral("launchers"), launchers},
    };
}
