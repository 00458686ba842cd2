// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ExecTemplate.h"

#include <algorithm>
#include <utility>

using SorrelKit::Entry;

namespace {

// Characters that need quotes. The first four also need a backslash in quotes.
const QLatin1String escapedCharacters("\"`$\\");
const QLatin1String reservedCharacters("\"`$\\'\t><~|&;*?#()");

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

bool canBeArgument(const QString &name)
{
    const bool hasControls = std::any_of(name.cbegin(), name.cend(), [](QChar character) {
        return character.category() == QChar::Other_Control && !contains(QLatin1String("\t\n\r"), character);
    });
    return !hasControls && name.isValidUtf16();
}

// The error text when a command cannot contain @p name, at the start of an argument when @p isFirst; empty when it can.
QString faultOf(const QString &name, bool isFirst)
{
    if (name.isEmpty())
        return QStringLiteral("the %1 has no name");
    if (!canBeArgument(name))
        return QStringLiteral("the name of the %1 holds characters that no command can");
    if (isFirst && name.startsWith(QLatin1Char('-')))
        return QStringLiteral("the name of the %1 would be an option of the command");
    return {};
}

} // namespace

ExecTemplate::ExecTemplate(const QString &text)
{
    // A byte that is not UTF-8 is half of a surrogate pair here, which the file cannot contain.
    if (!text.isValidUtf16())
        m_error = QStringLiteral("The command is not UTF-8.");
    else
        split(text);
    if (m_error.isEmpty())
        check();
}

void ExecTemplate::split(const QString &text)
{
    bool isQuoted = false;
    bool isArgument = false;
    QString argument;
    for (int i = 0; i < text.size(); ++i) {
        QChar character = text.at(i);
        if (character.category() == QChar::Other_Control) {
            m_error = QStringLiteral("The command holds a control character.");
            return;
        }
        if (character == QLatin1Char('"')) {
            isQuoted = !isQuoted;
            isArgument = true;
        } else if (isQuoted) {
            if (character == QLatin1Char('\\') && i + 1 < text.size() && contains(escapedCharacters, text.at(i + 1)))
                character = text.at(++i);
            argument += character;
        } else if (character == QLatin1Char(' ')) {
            if (isArgument)
                m_arguments.append(argument);
            argument.clear();
            isArgument = false;
        } else if (contains(reservedCharacters, character)) {
            m_error =
                QStringLiteral("In the command, %1 has to stand in double quotes; there is no shell.").arg(character);
            return;
        } else {
            argument += character;
            isArgument = true;
        }
    }
    if (isQuoted)
        m_error = QStringLiteral("In the command, a double quote is not closed.");
    if (isArgument)
        m_arguments.append(argument);
}

void ExecTemplate::check()
{
    const QString program = m_arguments.value(0);
    if (program.isEmpty()) {
        m_error = QStringLiteral("The command names no program.");
    } else if (program.contains(QLatin1Char('%')) || program.contains(QLatin1Char('='))) {
        m_error = QStringLiteral("The program of the command, '%1', may hold neither % nor =.").arg(program);
    }
    for (const QString &argument : std::as_const(m_arguments)) {
        for (auto i = argument.indexOf(QLatin1Char('%')); i >= 0 && m_error.isEmpty();
             i = argument.indexOf(QLatin1Char('%'), i + 2)) {
            if (!contains(QLatin1String("pac%"), i + 1 < argument.size() ? argument.at(i + 1) : QChar()))
                m_error = QStringLiteral("'%1' is no code of the command; there are %p, %a, %c and %%.")
                              .arg(argument.mid(i, 2));
        }
    }
}

QString ExecTemplate::command(const Entry &launcher, QString *fault) const
{
    QStringList arguments;
    for (const QString &pattern : m_arguments) {
        QString argument;
        for (int i = 0; i < pattern.size(); ++i) {
            if (pattern.at(i) != QLatin1Char('%')) {
                argument += pattern.at(i);
                continue;
            }
            const QChar code = pattern.at(++i);
            if (code == QLatin1Char('%')) {
                argument += QLatin1String("%%");
                continue;
            }
            const QString name = nameOf(code, launcher);
            const QString problem = faultOf(name, argument.isEmpty());
            if (!problem.isEmpty()) {
                *fault = problem.arg(kindOf(code));
                return {};
            }
            argument += QString(name).replace(QLatin1Char('%'), QLatin1String("%%"));
        }
        arguments.append(quoted(argument));
    }
    return arguments.join(QLatin1Char(' '));
}
