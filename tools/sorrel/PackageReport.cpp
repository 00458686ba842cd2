// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageReport.h"

#include <ApkFile.h>

#include <QJsonArray>
#include <QStringList>
#include <QTextStream>

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

QString iconSizes(const QList<QImage> &icons)
{
    QStringList sizes;
    for (const QImage &icon : icons)
        sizes.append(QStringLiteral("%1x%2").arg(icon.width()).arg(icon.height()));
    return sizes.isEmpty() ? QStringLiteral("none") : sizes.join(QLatin1Char(' '));
}

QJsonObject launcherToJson(const ApkLauncherInfo &launcher)
{
    QJsonObject labels;
    const QMap<QString, QString> byLocale = launcher.labels();
    for (auto label = byLocale.cbegin(); label != byLocale.cend(); ++label)
        labels.insert(label.key(), label.value());
    QJsonArray icons;
    for (const QImage &icon : launcher.icons())
        icons.append(QJsonObject{{QStringLiteral("width"), icon.width()}, {QStringLiteral("height"), icon.height()}});
    return {
        {QStringLiteral("package"), launcher.launcherPackage()},
        {QStringLiteral("class"), launcher.launcherClass()},
        {QStringLiteral("labels"), labels},
        {QStringLiteral("icons"), icons},
    };
}

} // namespace

PackageReport::PackageReport(const QString &file, bool includeDisabled) : m_file(file)
{
    ApkFile apk(file);
    m_package = apk.mainPackage();
    // Every query would read a package that cannot be read anew, and answer what these stand at.
    if (apk.getError() == 0) {
        m_minSdkVersion = apk.minSdkVersion();
        m_launchers = apk.getLauncherInfo(includeDisabled);
    }
    m_errorCode = apk.getError();
    m_errorText = apk.getErrorString();
}

QString PackageReport::toText() const
{
    QString text;
    QTextStream out(&text);
    out << printable(m_file) << '\n';
    writeLine(out, 2, QStringLiteral("package"), m_package);
    writeLine(out, 2, QStringLiteral("minimum SDK"), QString::number(m_minSdkVersion));
    if (m_launchers.isEmpty())
        writeLine(out, 2, QStringLiteral("launcher"), QStringLiteral("none"));
    for (const ApkLauncherInfo &launcher : m_launchers) {
        writeLine(out, 2, QStringLiteral("launcher"), launcher.launcherClass());
        const QMap<QString, QString> labels = launcher.labels();
        for (auto label = labels.cbegin(); label != labels.cend(); ++label)
            writeLine(out, 4, QStringLiteral("label ") + printable(label.key()), label.value());
        writeLine(out, 4, QStringLiteral("icons"), iconSizes(launcher.icons()));
    }
    return text;
}

QJsonObject PackageReport::toJson() const
{
    QJsonArray launchers;
    for (const ApkLauncherInfo &launcher : m_launchers)
        launchers.append(launcherToJson(launcher));
    return {
        {QStringLiteral("file"), m_file},
        {QStringLiteral("error"),
         QJsonObject{{QStringLiteral("code"), m_errorCode}, {QStringLiteral("text"), m_errorText}}},
        {QStringLiteral("package"), m_package},
        {QStringLiteral("minSdkVersion"), m_minSdkVersion},
        {QStringLiteral("launchers"), launchers},
    };
}
