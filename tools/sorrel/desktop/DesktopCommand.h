// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DESKTOPCOMMAND_H
#define DESKTOPCOMMAND_H

#include "Command.h"
#include "IconOptions.h"

#include <QCommandLineOption>

/// `sorrel desktop`: writes desktop entries and icons of a package's launchers, for hosts that run it.
class DesktopCommand : public Command
{
public:
    QString details() const override;
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const QCommandLineOption m_output{
        {QStringLiteral("o"), QStringLiteral("output")},
        QStringLiteral("Write below 'applications' and 'icons' in this directory, such as ~/.local/share."),
        QStringLiteral("DIR")};
    const QCommandLineOption m_exec{
        QStringLiteral("exec"),
        QStringLiteral("Start a launcher by this command, written as in the key Exec of an entry: %p is the package, "
                       "%a the activity or alias, %c the class that runs."),
        QStringLiteral("COMMAND")};
    const IconOptions m_icon{48};
    const QCommandLineOption m_all{QStringLiteral("all"),
                                   QStringLiteral("Include launchers that home screens do not show.")};
    const QCommandLineOption m_json{QStringLiteral("json"),
                                    QStringLiteral("Print a JSON object that names the written files.")};
};

#endif
