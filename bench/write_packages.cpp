// SPDX-License-Identifier: LGPL-2.1-or-later
// write_packages DIRECTORY: writes generated packages, which are measured beside the packages of build tools. Their
// tables have 10,000, 100,000 and 1,000,000 values over 20 configurations. Other programs can read one of them,
// table-1MB.apk, whose table has 50,000 values.

#include "GeneratedManifest.h"
#include "GeneratedTable.h"
#include "ZippedPackage.h"

#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fputs("usage: write_packages DIRECTORY\n", stderr);
        return 2;
    }
    constexpr int Configurations = 20;
    struct {
        const char *name;
        int values;
        int activities;
    } const packages[] = {{"generated-10k", 10000, 100},
                          {"generated-100k", 100000, 1000},
                          {"generated-1M", 1000000, 1000},
                          {"table-1MB", 50000, 100}};
    for (const auto &package : packages) {
        bench::writePackage(
            QStringLiteral("%1/%2.apk").arg(QString::fromLocal8Bit(argv[1]), QLatin1String(package.name)),
            bench::generatedTable({package.values, Configurations, false}),
            bench::generatedManifest(package.activities));
    }
    return 0;
}
