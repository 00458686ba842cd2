// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FINDCOMMAND_H
#define FINDCOMMAND_H

#include "Command.h"
#include "IndexOption.h"

#include <QCommandLineOption>

#include <limits>

/// `sorrel find`: prints the packages of an index that have some words.
class FindCommand : public Command
{
public:
    QString details() const override;
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override;
    void addOptions(QCommandLineParser &parser) const override;
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const IndexOption m_index{QStringLiteral(
        "The index of packages, an SQLite file; by default that of the user, in the folder for caches.")};
    const QCommandLineOption m_json{QStringLiteral("json"),
                                    QStringLiteral("Print a line of JSON for each launcher (docs/find.schema.json).")};
};

#endif
