// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTCOMMAND_H
#define MANIFESTCOMMAND_H

#include "Command.h"

#include <QCommandLineOption>

/// `sorrel manifest`: prints the manifest of a package as XML.
class ManifestCommand : public Command
{
public:
    QString details() const override;
    void addOptions(QCommandLineParser &parser) const override;
    bool usesPlatform() const override { return true; }
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    const QCommandLineOption m_ids{
        QStringLiteral("ids"),
        QStringLiteral("Print references with the number of the resource in its type, such as \"@string/12\".")};
};

#endif
