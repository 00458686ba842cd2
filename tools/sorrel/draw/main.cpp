// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel-draw: the commands of sorrel that draw.

#include "CatalogCommand.h"
#include "CommandLine.h"
#include "DesktopCommand.h"
#include "DrawnIconCheck.h"
#include "IconCommand.h"
#include "LintCommand.h"
#include "ReportDrawnLint.h"
#include "ReportIcon.h"
#include "ReportSignatures.h"
#include "SignatureLint.h"
#include "WorkerCommand.h"

namespace {

class DrawingWorker : public WorkerCommand
{
public:
    DrawingWorker() : WorkerCommand({addIcon, addLauncherIcons, addDrawnLint, addSignatures}) {}
};

class DrawingLint : public LintCommand
{
public:
    DrawingLint() : LintCommand(SignatureLint::check, DrawnIconCheck::make) {}
};

} // namespace

int main(int argc, char *argv[])
{
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<IconCommand>("icon"),
                                CommandLine::entry<DrawingLint>("lint"),
                                CommandLine::entry<DesktopCommand>("desktop"),
                                CommandLine::entry<CatalogCommand>("catalog"),
                                CommandLine::entry<DrawingWorker>("worker"),
                            });
}
