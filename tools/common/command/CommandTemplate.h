// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMANDTEMPLATE_H
#define COMMANDTEMPLATE_H

#include <QString>
#include <QStringList>

#include <functional>

/**
 * A command that a user gives, with codes that a program replaces.
 *
 * It has the syntax of the key `Exec` of desktop entries. Spaces separate arguments. An argument in double quotes may
 * have spaces and characters that are special to a shell, with a \ before each ", `, $ and \. No shell runs, so such a
 * character outside quotes is an error. The first argument is the program. In the other arguments, % and a letter is a
 * code, and %% is a percent sign.
 *
 * A value that replaces a code comes from strangers and may have any characters. It stays within its argument,
 * unchanged.
 */
class CommandTemplate
{
public:
    /// Returns the value of @p code. @p isFirst is true at the start of an argument. Sets @p fault when the command
    /// cannot contain the value.
    using Value = std::function<QString(QChar code, bool isFirst, QString *fault)>;

    /// Each character of @p codes is a code ("pac" for %p, %a and %c).
    CommandTemplate(const QString &text, const QString &codes);

    /// Whether a program can take @p text as an argument: it has no control characters except tabs and line ends, and
    /// no halves of surrogate pairs.
    static bool canBeArgument(const QString &text);

    /// The error text of an invalid template; empty when it is valid.
    QString errorText() const { return m_error; }
    /// Whether an argument has the code @p code.
    bool has(QChar code) const;
    /// The program and its arguments, with values for the codes; an empty list when @p valueOf sets @p fault.
    QStringList arguments(const Value &valueOf, QString *fault) const;

private:
    void split(const QString &text);
    void check(const QString &codes);

    QStringList m_arguments; ///< with codes, before their replacement
    QString m_error;
};

#endif
