// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WORKERORDER_H
#define WORKERORDER_H

#include <QByteArray>
#include <QList>
#include <QStringList>

/// The content of the reports that a worker makes, and its limits: the arguments of the command `worker` of the tools.
struct WorkerOrder {
    /// The number of arguments behind the name of the command.
    static constexpr int ArgumentCount = 10;

    bool includesDisabled = false; ///< whether to add launchers that are not shown
    int iconSize = 0;              ///< width and height of the package's icon in pixels; 0 for none
    int iconMask = 0;              ///< an IconMask
    bool includesLint = false;
    bool lintDrawsIcons = false;
    bool includesSignatures = false;
    /// The icons of each launcher: "SIZE:MASK:NIGHT:MONOCHROME", separated by commas; empty for none.
    QByteArray launcherIcons;
    qint64 maxMemory = 0;  ///< bytes of data of the whole worker, not counting code; 0 is no limit
    double maxSeconds = 0; ///< for one file; 0 is no limit
    qint64 parent = 0;     ///< the process that the worker ends with

    /// The arguments of the program, beginning with the name of the command.
    QList<QByteArray> arguments() const;
    /// The order in @p arguments behind the name. Precondition: there are ArgumentCount.
    static WorkerOrder fromArguments(const QStringList &arguments);
    /// The arguments for the content alone: a key for reports.
    QByteArray content() const;
};

#endif
