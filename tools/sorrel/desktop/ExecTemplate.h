// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef EXECTEMPLATE_H
#define EXECTEMPLATE_H

#include <SorrelKit/Launcher.h>

#include <QString>
#include <QStringList>

/**
 * A command to start launchers with, of which the key `Exec` of desktop entries is made.
 *
 * It is written as that key is: arguments stand apart by spaces; one in double quotes may hold spaces, and every
 * character that means something to a shell, of which ", `, $ and \ have a \ in front. There is no shell: outside
 * quotes such a character is a mistake. In any argument but the first, which is the program,
 *
 * - %p stands for the name of the package;
 * - %a for the activity or alias, with its package, which is what Android calls the component, and starts;
 * - %c for the class that runs, with its package, which of an alias is its target's;
 * - %% for a percent sign.
 *
 * Names come from strangers, and may be anything. Each stays the part of the one argument that it stands in, to the
 * letter.
 */
class ExecTemplate
{
public:
    explicit ExecTemplate(const QString &text);

    /// Why it makes no sense; empty when it does.
    QString errorText() const { return m_error; }
    /// The value of the key `Exec` that starts @p launcher, before it is escaped as any value is. Empty, and @p fault
    /// tells why, when a name that it takes is missing, holds what no argument can (control characters but for tabs and
    /// ends of lines, halves of surrogate pairs), or would be an option to the program for the dash that it begins
    /// with.
    QString command(const SorrelKit::Launcher &launcher, QString *fault) const;

private:
    void split(const QString &text);
    void check();

    QStringList m_arguments; ///< with their codes
    QString m_error;
};

#endif
