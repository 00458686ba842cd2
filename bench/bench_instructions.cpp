// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_instructions ROW/PACKAGE: runs one row for PACKAGE.apk in the working directory, for Callgrind to count:
//
//     valgrind --tool=callgrind --instr-atstart=no bench_instructions manifest/atlas
//
// The row runs once before it is counted, so that the setup of the process is not counted.

#include "ApkFile.h"
#include "Floor.h"
#include "launchers/LauncherFinder.h"

#include <SorrelKit/Entry.h>
#include <SorrelKit/IconFile.h>
#include <SorrelKit/Package.h>

#include <QDomDocument>
#include <QMap>

#include <cstdio>
#include <cstring>
#include <memory>

#include <valgrind/callgrind.h>

namespace {

/// A row: prepared, run and destroyed. Every run has an object of its own.
class Row
{
public:
    explicit Row(const QString &fileName) : m_fileName(fileName) {}
    virtual ~Row() = default;

    /// Returns whether everything could be read.
    virtual bool run() = 0;

protected:
    QString m_fileName;
};

class FloorRow : public Row
{
public:
    using Row::Row;
    bool run() override
    {
        bench::FloorTimes times;
        return bench::readFloor(m_fileName, times);
    }
};

class ResourcesRow : public Row
{
public:
    using Row::Row;
    bool run() override
    {
        const ApkFile apk(m_fileName);
        return apk.resources().isValid();
    }
};

class ManifestRow : public Row
{
public:
    using Row::Row;
    bool run() override
    {
        const ApkFile apk(m_fileName);
        apk.resources();
        apk.getManifest();
        return apk.getError() == 0;
    }
};

/// Everything is loaded before the row runs. Entries get no icons.
class LaunchersRow : public Row
{
public:
    explicit LaunchersRow(const QString &fileName) : Row(fileName)
    {
        const ApkFile apk(fileName);
        m_manifest = apk.getManifest();
        m_resources = apk.resources();
    }
    bool run() override { return !LauncherFinder(m_manifest, m_resources, nullptr).launchers(false).isEmpty(); }

private:
    QDomDocument m_manifest;
    ApkResources m_resources;
};

/// A package of the kit, asked for everything that a list of applications shows.
class KitRow : public Row
{
public:
    using Row::Row;
    bool run() override
    {
        const SorrelKit::Package package(m_fileName);
        bool good = !package.packageName().isEmpty() && package.minSdkVersion() > 0;
        const QList<SorrelKit::Entry> launchers = package.launchers();
        for (const SorrelKit::Entry &launcher : launchers) {
            good = good && !launcher.labels().isEmpty();
            launcher.iconFiles();
        }
        return good && !launchers.isEmpty() && package.isValid();
    }
};

std::unique_ptr<Row> makeRow(const QString &name, const QString &fileName)
{
    if (name == QLatin1String("floor"))
        return std::make_unique<FloorRow>(fileName);
    if (name == QLatin1String("resources"))
        return std::make_unique<ResourcesRow>(fileName);
    if (name == QLatin1String("manifest"))
        return std::make_unique<ManifestRow>(fileName);
    if (name == QLatin1String("launchers"))
        return std::make_unique<LaunchersRow>(fileName);
    if (name == QLatin1String("kit"))
        return std::make_unique<KitRow>(fileName);
    return nullptr;
}

} // namespace

int main(int argc, char *argv[])
{
    const QString name = QString::fromLocal8Bit(argc == 2 ? argv[1] : "");
    const QString row = name.section(QLatin1Char('/'), 0, 0);
    const QString fileName = name.section(QLatin1Char('/'), 1) + QLatin1String(".apk");
    const auto first = makeRow(row, fileName);
    if (first == nullptr) {
        std::fputs("usage: bench_instructions floor|resources|manifest|launchers|kit/PACKAGE\n", stderr);
        return 2;
    }
    const auto counted = makeRow(row, fileName);
    bool good = first->run();
    CALLGRIND_START_INSTRUMENTATION;
    good = counted->run() && good;
    CALLGRIND_STOP_INSTRUMENTATION;
    if (!good) {
        std::fprintf(stderr, "%s could not be read\n", qPrintable(fileName));
        return 1;
    }
    return 0;
}
