// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_queries: measures how the time of the kit's queries grows with the package. Every row opens a package by its
// name and makes one query. Takes the options of Google Benchmark. Run it with
// --benchmark_enable_random_interleaving=true and repetitions, so that a slow phase of the machine does not hit one
// size alone. Rows are named QUERY/WHAT GROWS/COUNT, for example "labels/activities/1000".

#include "Failure.h"
#include "GeneratedLaunchers.h"
#include "GeneratedManifest.h"
#include "GeneratedTable.h"
#include "ZippedPackage.h"

#include <SorrelKit/Entry.h>
#include <SorrelKit/IconFile.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/ResourceValue.h>
#include <SorrelKit/Resources.h>

#include <benchmark/benchmark.h>

#include <QMap>
#include <QTemporaryDir>

#include <chrono>
#include <string>

using SorrelKit::Entry;
using SorrelKit::Package;
using SorrelKit::Resources;

namespace {

// Each query returns the number of its results.
using Query = qint64 (*)(const Package &package);

qint64 packageName(const Package &package)
{
    return package.packageName().isEmpty() ? 0 : 1;
}

qint64 launchers(const Package &package)
{
    return package.launchers().size();
}

qint64 labels(const Package &package)
{
    qint64 count = 0;
    for (const Entry &launcher : package.launchers())
        count += launcher.labels().size();
    return count;
}

qint64 iconFiles(const Package &package)
{
    qint64 count = 0;
    for (const Entry &launcher : package.launchers())
        count += launcher.iconFiles().size();
    return count;
}

qint64 values(const Package &package)
{
    const Resources resources(package);
    qint64 count = 0;
    for (const quint32 id : resources.ids())
        count += resources.values(id).size();
    return count;
}

// The time does not include closing the package.
void timeQuery(benchmark::State &state, const QString &fileName, Query query, qint64 expected)
{
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        const auto start = Clock::now();
        const Package package(fileName);
        const qint64 results = query(package);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        if (results != expected) {
            state.SkipWithError(("has " + std::to_string(results) + " results").c_str());
            break;
        }
    }
}

void add(const std::string &name, int count, const QString &fileName, Query query, qint64 expected)
{
    benchmark::RegisterBenchmark(
        (name + '/' + std::to_string(count)).c_str(),
        [fileName, query, expected](benchmark::State &state) { timeQuery(state, fileName, query, expected); })
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}

constexpr int Configurations = 20;
constexpr int Activities = 1000;
constexpr int ActivitiesPerLauncher = 100;

void addValues(const QTemporaryDir &directory)
{
    constexpr int Launchers = Activities / ActivitiesPerLauncher;
    const QByteArray manifest = bench::generatedManifest(Activities);
    for (const int count : {10000, 50000, 250000, 1000000}) {
        const QString file = directory.filePath(QStringLiteral("values-%1.apk").arg(count));
        bench::writePackage(file, bench::generatedTable({count, Configurations, false}), manifest);
        add("package name/values", count, file, packageName, 1);
        add("launchers/values", count, file, launchers, Launchers);
        add("labels/values", count, file, labels, Launchers * Configurations);
        add("all values/values", count, file, values, count);
    }
}

void addActivities(const QTemporaryDir &directory)
{
    const QByteArray table = bench::generatedTable({10000, Configurations, false});
    for (const int count : {100, 500, 2500, 10000}) {
        const QString file = directory.filePath(QStringLiteral("activities-%1.apk").arg(count));
        const int found = count / ActivitiesPerLauncher;
        bench::writePackage(file, table, bench::generatedManifest(count));
        add("package name/activities", count, file, packageName, 1);
        add("launchers/activities", count, file, launchers, found);
        add("labels/activities", count, file, labels, found * Configurations);
    }
}

void addLaunchers(const QTemporaryDir &directory)
{
    for (const int count : {10, 50, 250, 1000}) {
        const QString file = directory.filePath(QStringLiteral("launchers-%1.apk").arg(count));
        bench::writeLaunchers(file, count);
        add("launchers/launchers", count, file, launchers, count);
        add("icon files/launchers", count, file, iconFiles, count);
    }
}

// The largest number of members that a directory without the records of ZIP64 states.
void addMembers(const QTemporaryDir &directory)
{
    constexpr int Own = 2; // table and manifest
    const QByteArray table = bench::generatedTable({1000, 1, false});
    const QByteArray manifest = bench::generatedManifest(ActivitiesPerLauncher);
    for (const int count : {1024, 4096, 16384, 65535}) {
        const QString file = directory.filePath(QStringLiteral("members-%1.apk").arg(count));
        QVector<bench::OtherMember> members;
        for (int i = Own; i < count; ++i)
            members.append({QStringLiteral("res/drawable-hdpi-v4/picture_%1.png").arg(i), QByteArray("x")});
        bench::writePackage(file, table, manifest, members);
        add("package name/members", count, file, packageName, 1);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QTemporaryDir directory;
    if (!directory.isValid())
        bench::fail(directory.errorString());
    addValues(directory);
    addActivities(directory);
    addLaunchers(directory);
    addMembers(directory);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
