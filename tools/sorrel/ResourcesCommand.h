// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCESCOMMAND_H
#define RESOURCESCOMMAND_H

#include "Command.h"

#include <QCommandLineOption>

/// `sorrel resources`: lists the resources of a package or set of packages with their names and values, or all values
/// of one.
class ResourcesCommand : public Command
{
public:
    QString details() const override;
    int maxArguments() const override { return 2; }
    void addArguments(QCommandLineParser &parser) const override;
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const QCommandLineOption m_json{
        QStringLiteral("json"),
        QStringLiteral("Print one JSON object per resource, with all values, each on one line.")};
};

#endif
