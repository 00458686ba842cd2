// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TOOL_H
#define TOOL_H

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

namespace fixture {

/// What a program answered.
struct ToolRun {
    int status = -1; ///< -1 when it did not start, took more than 30 s, or crashed
    QByteArray output;
    QByteArray errors;
};

/// How a program is run.
struct ToolSetting {
    QMap<QString, QString> environment; ///< beside what the test has, in the locale C.UTF-8; a null value removes one
    QString outputFile;                 ///< in place of a pipe, when it is not null
    QString directory;                  ///< to run in, when it is not null
    QByteArray input;
};

/// Runs the installed program @p program with @p arguments, to its end.
ToolRun runTool(const QString &program, const QStringList &arguments, const ToolSetting &setting = {});
/// The same for `sorrel`.
ToolRun runSorrel(const QStringList &arguments, const ToolSetting &setting = {});
/// Runs @p script by Bash, for arguments and names of files that are no text, which QProcess does not pass.
ToolRun runShell(const QString &script, const ToolSetting &setting = {});
/// A word of Bash that stands for @p bytes.
QString shellWord(const QByteArray &bytes);
/// Runs `sorrel` with a terminal of 80 columns for all three streams, which are one then. A terminal ends lines by CR LF.
ToolRun runSorrelOnTerminal(const QStringList &arguments, const ToolSetting &setting = {});

} // namespace fixture

#endif
