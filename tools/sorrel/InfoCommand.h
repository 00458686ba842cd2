// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef INFOCOMMAND_H
#define INFOCOMMAND_H

#include "Command.h"

#include <QCommandLineOption>

#include <limits>

/// `sorrel info`: prints the facts that a host needs to show or install packages.
class InfoCommand : public Command
{
public:
    QString details() const override;
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override
    {
        parser.addPositionalArgument(QStringLiteral("FILE"), fileText(), QStringLiteral("FILE..."));
    }
    void addOptions(QCommandLineParser &parser) const override;
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const QCommandLineOption m_json{QStringLiteral("json"),
                                    QStringLiteral("Print one JSON object per file, each on one line.")};
    const QCommandLineOption m_all{QStringLiteral("all"),
                                   QStringLiteral("Include launchers that home screens do not show.")};
};

#endif
