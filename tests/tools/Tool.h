// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TOOL_H
#define TOOL_H

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

namespace fixture {

/// The result of a program.
struct ToolRun {
    int status = -1; ///< -1 when it did not start, took more than 30 s, or crashed
    QByteArray output;
    QByteArray errors;
};

/// The environment of a program.
struct ToolSetting {
    /// Added to the environment of the test, in the locale C.UTF-8 and without a platform. A null value removes a variable.
    QMap<QString, QString> environment;
    QString outputFile; ///< instead of a pipe, when it is not null
    QString directory;  ///< the working directory, when it is not null
    QByteArray input;
};

/// Runs the installed program @p program with @p arguments until it ends.
ToolRun runTool(const QString &program, const QStringList &arguments, const ToolSetting &setting = {});
/// The same for `sorrel`.
ToolRun runSorrel(const QStringList &arguments, const ToolSetting &setting = {});
/// Runs @p script by Bash. Its arguments and file names may be any bytes, which QProcess cannot pass.
ToolRun runShell(const QString &script, const ToolSetting &setting = {});
/// A word of Bash for @p bytes.
QString shellWord(const QByteArray &bytes);
/// Runs `sorrel` with a terminal of 80 columns for all three streams. A terminal ends lines with CR LF.
ToolRun runSorrelOnTerminal(const QStringList &arguments, const ToolSetting &setting = {});

} // namespace fixture

#endif
