// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ExecTemplate.h"

#include <QStringList>

#include <algorithm>

using SorrelKit::Entry;

namespace {

// Characters that also need a backslash in quotes.
const QLatin1String escapedCharacters("\"`$\\");

bool contains(QLatin1String characters, QChar character)
{
    return std::find(characters.cbegin(), characters.cend(), character) != characters.cend();
}

// A few safe characters, which mean nothing to any shell.
bool needsNoQuotes(QChar character)
{
    const ushort unit = character.unicode();
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || (unit >= '0' && unit <= '9')
           || contains(QLatin1String("_./:@=+,-%"), character);
}

QString quoted(const QString &argument)
{
    if (!argument.isEmpty() && std::all_of(argument.cbegin(), argument.cend(), needsNoQuotes))
        return argument;
    QString text = QStringLiteral("\"");
    for (const QChar character : argument) {
        if (contains(escapedCharacters, character))
            text += QLatin1Char('\\');
        text += character;
    }
    return text + QLatin1Char('"');
}

QString nameOf(QChar code, const Entry &launcher)
{
    if (code == QLatin1Char('p'))
        return launcher.packageName();
    return code == QLatin1Char('a') ? launcher.name() : launcher.className();
}

QString kindOf(QChar code)
{
    if (code == QLatin1Char('p'))
        return QStringLiteral("package");
    return code == QLatin1Char('a') ? QStringLiteral("activity") : QStringLiteral("class");
}

// The error text when a command cannot contain @p name, at the start of an argument when @p isFirst; empty when it can.
QString faultOf(const QString &name, bool isFirst)
{
    if (name.isEmpty())
        return QStringLiteral("the %1 has no name");
    if (!CommandTemplate::canBeArgument(name))
        return QStringLiteral("the name of the %1 holds characters that no command can");
    if (isFirst && name.startsWith(QLatin1Char('-')))
        return QStringLiteral("the name of the %1 would be an option of the command");
    return {};
}

} // namespace

ExecTemplate::ExecTemplate(const QString &text) : m_command(text, QStringLiteral("pac")) {}

QString ExecTemplate::command(const Entry &launcher, QString *fault) const
{
    const auto nameFor = [&launcher](QChar code, bool isFirst, QString *problem) {
        QString name = nameOf(code, launcher);
        const QString text = faultOf(name, isFirst);
        if (!text.isEmpty())
            *problem = text.arg(kindOf(code));
        return name;
    };
    QStringList arguments = m_command.arguments(nameFor, fault);
    for (QString &argument : arguments)
        argument = quoted(argument.replace(QLatin1Char('%'), QLatin1String("%%")));
    return arguments.join(QLatin1Char(' '));
}
