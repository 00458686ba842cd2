// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel-shelf.so: the commands of sorrel that use an index of packages. sorrel loads it, and calls its main().

#include "CatalogCommand.h"
#include "CommandLine.h"
#include "FindCommand.h"
#include "IndexedScan.h"
#include "OtherProgram.h"
#include "ScanCommand.h"

#include <memory>

namespace {

std::unique_ptr<PackageScan> indexedScan(const QString &index, const ScanOptions &options, const ReportContent &content)
{
    return std::make_unique<IndexedScan>(index, OtherProgram::path(content.program()), options, content);
}

class IndexedScanCommand : public ScanCommand
{
public:
    IndexedScanCommand() : ScanCommand(indexedScan) {}
};

class IndexedCatalog : public CatalogCommand
{
public:
    IndexedCatalog() : CatalogCommand(indexedScan) {}
};

} // namespace

extern "C" Q_DECL_EXPORT int sorrelModuleMain(int argc, char *argv[]);

int sorrelModuleMain(int argc, char *argv[])
{
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<FindCommand>("find"),
                                CommandLine::entry<IndexedScanCommand>("scan"),
                                CommandLine::entry<IndexedCatalog>("catalog"),
                            });
}
