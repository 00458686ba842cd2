// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_INSTALLCOMMAND_H
#define VIEWER_INSTALLCOMMAND_H

#include "CommandTemplate.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace Viewer {

/// The command of the host that installs a package, as the user has set it. It is a CommandTemplate with the code %f
/// for the path of the file. No shell runs.
class InstallCommand
{
    Q_DECLARE_TR_FUNCTIONS(Viewer::InstallCommand)

public:
    InstallCommand() : InstallCommand(QString()) {}
    explicit InstallCommand(const QString &text);

    /// The command as the user wrote it.
    QString text() const { return m_text; }
    bool isEmpty() const { return m_text.isEmpty(); }
    /// Why nothing can be installed: there is no command, or it is wrong; empty when there is one.
    QString fault() const;
    /// The program and its arguments for @p file, an absolute path. Returns an empty list and sets @p fault when the
    /// command cannot contain the path.
    QStringList arguments(const QString &file, QString *fault) const;

private:
    QString m_text;
    CommandTemplate m_template;
};

} // namespace Viewer

#endif
