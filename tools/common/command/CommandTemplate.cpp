// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CommandTemplate.h"

#include <algorithm>
#include <utility>

namespace {

bool isEscapedInQuotes(QChar character)
{
    return QStringLiteral("\"`$\\").contains(character);
}

bool needsQuotesInTemplate(QChar character)
{
    return QStringLiteral("\"`$\\'\t><~|&;*?#()").contains(character);
}

// "%p, %a, %c and %%"
QString listOfCodes(const QString &codes)
{
    QStringList names;
    for (const QChar code : codes)
        names.append(QLatin1Char('%') + code);
    return names.join(QLatin1String(", ")) + QLatin1String(" and %%");
}

} // namespace

CommandTemplate::CommandTemplate(const QString &text, const QString &codes)
{
    // A byte that is not UTF-8 is half of a surrogate pair here, which a file cannot contain.
    if (!text.isValidUtf16())
        m_error = QStringLiteral("The command is not UTF-8.");
    else
        split(text);
    if (m_error.isEmpty())
        check(codes);
}

bool CommandTemplate::canBeArgument(const QString &text)
{
    const bool hasControls = std::any_of(text.cbegin(), text.cend(), [](QChar character) {
        return character.category() == QChar::Other_Control && !QStringLiteral("\t\n\r").contains(character);
    });
    return !hasControls && text.isValidUtf16();
}

void CommandTemplate::split(const QString &text)
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
            if (character == QLatin1Char('\\') && i + 1 < text.size() && isEscapedInQuotes(text.at(i + 1)))
                character = text.at(++i);
            argument += character;
        } else if (character == QLatin1Char(' ')) {
            if (isArgument)
                m_arguments.append(argument);
            argument.clear();
            isArgument = false;
        } else if (needsQuotesInTemplate(character)) {
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

void CommandTemplate::check(const QString &codes)
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
            const QChar code = i + 1 < argument.size() ? argument.at(i + 1) : QChar();
            if (code != QLatin1Char('%') && !codes.contains(code))
                m_error = QStringLiteral("'%1' is no code of the command; there are %2.")
                              .arg(argument.mid(i, 2), listOfCodes(codes));
        }
    }
}

bool CommandTemplate::has(QChar code) const
{
    return std::any_of(m_arguments.cbegin(), m_arguments.cend(), [code](const QString &argument) {
        for (int i = 0; i + 1 < argument.size(); ++i) {
            if (argument.at(i) == QLatin1Char('%') && argument.at(++i) == code)
                return true;
        }
        return false;
    });
}

QStringList CommandTemplate::arguments(const Value &valueOf, QString *fault) const
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
                argument += code;
                continue;
            }
            argument += valueOf(code, argument.isEmpty(), fault);
            if (!fault->isEmpty())
                return {};
        }
        arguments.append(argument);
    }
    return arguments;
}
