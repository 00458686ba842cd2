// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DesktopEntry.h"

#include "LauncherMark.h"
#include "PosixLocale.h"
#include "SafeFileName.h"

#include <QLocale>

#include <algorithm>

using SorrelKit::Entry;

namespace {

// Readers strip spaces at both ends.
QByteArray escaped(const QString &value)
{
    QString text;
    for (int i = 0; i < value.size(); ++i) {
        const QChar character = value.at(i);
        if (character == QLatin1Char('\\'))
            text += QLatin1String("\\\\");
        else if (character == QLatin1Char('\n'))
            text += QLatin1String("\\n");
        else if (character == QLatin1Char('\t'))
            text += QLatin1String("\\t");
        else if (character == QLatin1Char('\r'))
            text += QLatin1String("\\r");
        else if (character == QLatin1Char(' ') && (i == 0 || i + 1 == value.size()))
            text += QLatin1String("\\s");
        else if (character.category() != QChar::Other_Control)
            text += character;
    }
    return text.toUtf8();
}

bool isDirection(QChar character)
{
    return (character >= QChar(0x202a) && character <= QChar(0x202e))
           || (character >= QChar(0x2066) && character <= QChar(0x2069));
}

QString shownLabel(const QString &label)
{
    QString text;
    for (const QChar character : label) {
        const QChar::Category category = character.category();
        if (category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            text += QLatin1Char('\n');
        else if (!isDirection(character) && (category != QChar::Other_Control || character.isSpace()))
            text += character;
    }
    if (text.size() > DesktopEntry::MaxLabelLength) {
        const bool splitsPair = text.at(DesktopEntry::MaxLabelLength - 1).isHighSurrogate();
        text.truncate(DesktopEntry::MaxLabelLength - (splitsPair ? 1 : 0));
    }
    return text;
}

// The first text that is visible; otherwise the name of the file.
QString shownName(const Entry &launcher, const QString &defaultLabel)
{
    for (const QString &text : {defaultLabel, launcher.label(QLocale::c()), launcher.name()}) {
        QString shown = shownLabel(text);
        if (!shown.trimmed().isEmpty())
            return shown;
    }
    return DesktopEntry::fileName(launcher);
}

// Readers take these for the extension of an icon file.
bool hasIconEnding(const QString &name)
{
    for (const char *ending : {".png", ".svg", ".xpm"}) {
        if (name.endsWith(QLatin1String(ending), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

bool hasAny(const QString &text, QLatin1String characters)
{
    return std::any_of(characters.cbegin(), characters.cend(),
                       [&](char character) { return text.contains(QLatin1Char(character)); });
}

} // namespace

DesktopEntry::DesktopEntry(const Entry &launcher, const QString &command, const QString &icon)
    : m_launcher(launcher), m_command(command), m_icon(icon)
{
    const QMap<QString, QString> labels = launcher.labels();
    m_name = shownName(launcher, labels.value(QString()));
    const LocalizedTexts localized = localizedTexts(labels);
    m_lostLanguages = localized.lostTags;
    for (auto text = localized.texts.cbegin(); text != localized.texts.cend(); ++text) {
        const QString shown = shownLabel(text.value());
        m_names.insert(text.key(), shown.trimmed().isEmpty() ? m_name : shown);
    }
}

QByteArray DesktopEntry::toUtf8() const
{
    QByteArray text = "[Desktop Entry]\nType=Application\n" + LauncherMark(m_launcher).entryLines();
    text += "X-Sorrel-VersionCode=" + QByteArray::number(m_versionCode) + '\n';
    text += "Name=" + escaped(m_name) + '\n';
    for (auto name = m_names.cbegin(); name != m_names.cend(); ++name)
        text += "Name[" + name.key().toUtf8() + "]=" + escaped(name.value()) + '\n';
    if (!m_icon.isEmpty())
        text += "Icon=" + escaped(m_icon) + '\n';
    return text + "Exec=" + escaped(m_command) + "\nTerminal=false\n";
}

QString DesktopEntry::fileName(const Entry &launcher)
{
    const QString package = launcher.packageName();
    const QString name = launcher.name();
    // Neither name contains the separator used below.
    const bool isPlain = !hasIconEnding(name) && !hasAny(package + name, QLatin1String("-/"));
    if (!isPlain)
        return safeFileName(QStringLiteral("%1/%2/%3").arg(package, name, QString::number(package.size())));
    return safeFileName(name.section(QLatin1Char('.'), 0, -2) == package ? name : package + QLatin1Char('-') + name);
}
