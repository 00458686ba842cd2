// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTCOMMAND_H
#define MANIFESTCOMMAND_H

#include "Command.h"

/// `sorrel manifest`: prints the manifest of a package as XML.
class ManifestCommand : public Command
{
public:
    QString details() const override;
    int run(const QCommandLineParser &parser, Console &console) const override;
};

#endif
