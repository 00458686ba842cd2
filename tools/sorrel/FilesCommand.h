// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILESCOMMAND_H
#define FILESCOMMAND_H

#include "Command.h"

#include <QCommandLineOption>

/// `sorrel files`: lists the members of a package or set of packages, in the order of its directory.
class FilesCommand : public Command
{
public:
    QString details() const override;
    void addOptions(QCommandLineParser &parser) const override;
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const QCommandLineOption m_json{QStringLiteral("json"),
                                    QStringLiteral("Print one JSON object per file, each on one line.")};
};

#endif
