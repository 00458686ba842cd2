// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel-shelf: the commands of sorrel that use an index of packages.

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
    // The workers of `sorrel` itself are elsewhere; those of sorrel-trust have all of its parts.
    const Program program = content.program() == Program::Core ? Program::Trust : content.program();
    return std::make_unique<IndexedScan>(index, OtherProgram::neighbour(program), options, content);
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

int main(int argc, char *argv[])
{
    return CommandLine::run(argc, argv,
                            {
                                CommandLine::entry<FindCommand>("find"),
                                CommandLine::entry<IndexedScanCommand>("scan"),
                                CommandLine::entry<IndexedCatalog>("catalog"),
                            });
}
