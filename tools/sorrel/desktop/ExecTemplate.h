// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef EXECTEMPLATE_H
#define EXECTEMPLATE_H

#include "CommandTemplate.h"

#include <SorrelKit/Entry.h>

#include <QString>

/**
 * A command that starts launchers, for the key `Exec` of desktop entries. These codes are replaced:
 *
 * - %p by the name of the package;
 * - %a by the activity or alias with its package, which is the component that Android starts;
 * - %c by the class that runs, with its package; for an alias, this is the class of its target;
 * - %% by a percent sign.
 *
 * The names come from strangers and may have any characters. Each stays within its argument, unchanged.
 */
class ExecTemplate
{
public:
    explicit ExecTemplate(const QString &text);

    /// The error text of an invalid template; empty when it is valid.
    QString errorText() const { return m_command.errorText(); }
    /// The value of the key `Exec` that starts @p launcher, before the escapes that every value needs. Returns an empty
    /// text and sets @p fault when a name is missing, when it has characters that no argument can have (control
    /// characters except tabs and line ends, halves of surrogate pairs), or when it begins with a dash and the program
    /// would read it as an option.
    QString command(const SorrelKit::Entry &launcher, QString *fault) const;

private:
    CommandTemplate m_command;
};

#endif
