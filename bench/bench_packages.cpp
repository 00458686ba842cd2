// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_packages FILE...: measures queries, and the ZIP library alone, for each package. Also takes the options of
// Google Benchmark. Run it with --benchmark_enable_random_interleaving=true and repetitions, so that compared rows
// alternate. Rows are named ROW/PACKAGE, for example manifest/atlas.aapt2.apk.
//
// The rows "floor", "resources" and "manifest" create and destroy their objects within the measured time. The rows
// for queries after the manifest (package, sdk, launchers) load the manifest before. Entries have icons in the row
// "pictures", and none in the row "launchers".

#include "ApkFile.h"
#include "Failure.h"
#include "Floor.h"
#include "Loading.h"
#include "ZippedPackage.h"
#include "launchers/LauncherFinder.h"

#include <QDomDocument>
#include <QFileInfo>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A package that is measured. Members that are decoded by themselves are in memory.
struct Package {
    QString fileName;
    QByteArray table;
    QByteArray manifest;
    int members;
};

void floorRow(benchmark::State &state, const Package &package)
{
    bench::FloorTimes times;
    for (auto _ : state) {
        if (!bench::readFloor(package.fileName, times)) {
            state.SkipWithError("not read");
            break;
        }
    }
    const auto perIteration = [](double seconds) {
        return benchmark::Counter(seconds, benchmark::Counter::kAvgIterations);
    };
    state.counters["directory"] = perIteration(times.directory);
    state.counters["table"] = perIteration(times.table);
    state.counters["manifest"] = perIteration(times.manifest);
    state.counters["table_bytes"] = package.table.size();
    state.counters["manifest_bytes"] = package.manifest.size();
    state.counters["members"] = package.members;
}

void resourcesRow(benchmark::State &state, const Package &package)
{
    for (auto _ : state) {
        ApkFile apk(package.fileName);
        if (!apk.resources().isValid()) {
            state.SkipWithError("no table");
            break;
        }
    }
}

void manifestRow(benchmark::State &state, const Package &package)
{
    for (auto _ : state) {
        ApkFile apk(package.fileName);
        benchmark::DoNotOptimize(apk.resources());
        benchmark::DoNotOptimize(apk.getManifest());
        if (apk.getError() != 0) {
            state.SkipWithError("no manifest");
            break;
        }
    }
}

// Times a query of an object that has the manifest already. The time includes destroying the result.
template <typename Query>
void timeLoaded(benchmark::State &state, const QString &fileName, const Query &query)
{
    for (auto _ : state) {
        ApkFile apk(fileName);
        apk.getManifest();
        const auto start = Clock::now();
        query(apk);
        state.SetIterationTime(since(start));
        if (apk.getError() != 0) {
            state.SkipWithError("no answer");
            break;
        }
    }
}

void packageRow(benchmark::State &state, const Package &package)
{
    timeLoaded(state, package.fileName, [](ApkFile &apk) { benchmark::DoNotOptimize(apk.mainPackage()); });
}

void sdkRow(benchmark::State &state, const Package &package)
{
    timeLoaded(state, package.fileName, [](ApkFile &apk) { benchmark::DoNotOptimize(apk.minSdkVersion()); });
}

void launchersRow(benchmark::State &state, const Package &package)
{
    int entries = 0;
    for (auto _ : state) {
        const ApkFile apk(package.fileName);
        const QDomDocument manifest = apk.getManifest();
        const ApkResources resources = apk.resources();
        const auto start = Clock::now();
        entries = LauncherFinder(manifest, resources, nullptr).launchers(false).size();
        state.SetIterationTime(since(start));
    }
    state.counters["entries"] = entries;
}

void picturesRow(benchmark::State &state, const Package &package)
{
    timeLoaded(state, package.fileName, [](ApkFile &apk) { apk.getLauncherInfo(false); });
}

void tableRow(benchmark::State &state, const Package &package)
{
    for (auto _ : state) {
        if (!bench::loadedTable(package.table).isValid()) {
            state.SkipWithError("no table");
            break;
        }
    }
}

void documentRow(benchmark::State &state, const Package &package)
{
    const ApkResources table = bench::loadedTable(package.table);
    for (auto _ : state) {
        if (bench::loadedDocument(package.manifest, table).isNull()) {
            state.SkipWithError("no manifest");
            break;
        }
    }
}

struct Row {
    const char *name;
    void (*run)(benchmark::State &state, const Package &package);
    bool manualTime;
};

constexpr Row rows[] = {
    {"floor", floorRow, false},
    {"resources", resourcesRow, false},
    {"manifest", manifestRow, false},
    {"package", packageRow, true},
    {"sdk", sdkRow, true},
    {"launchers", launchersRow, true},
    {"pictures", picturesRow, true},
    {"table", tableRow, false},
    {"document", documentRow, false},
};

// A repetition takes about a tenth of a second, the steps that are not timed included.
int iterations(const Package &package)
{
    constexpr double Seconds = 0.1;
    double best = 1e9;
    for (int i = 0; i < 3; ++i) {
        const auto start = Clock::now();
        ApkFile apk(package.fileName);
        apk.getManifest();
        if (apk.getError() != 0)
            bench::fail(QStringLiteral("%1: %2").arg(package.fileName, apk.getErrorString()));
        best = std::min(best, since(start));
    }
    return qBound(2, int(Seconds / best), 500);
}

void addRows(const Package &package)
{
    const std::string name = QFileInfo(package.fileName).fileName().toStdString();
    const int count = iterations(package);
    for (const Row &row : rows) {
        auto *added = benchmark::RegisterBenchmark((std::string(row.name) + '/' + name).c_str(), row.run, package);
        added->Iterations(count)->Unit(benchmark::kMicrosecond);
        if (row.manualTime)
            added->UseManualTime();
        else
            added->UseRealTime();
    }
}

Package prepared(const QString &fileName)
{
    return {fileName, bench::member(fileName, bench::tableName), bench::member(fileName, bench::manifestName),
            bench::memberCount(fileName)};
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    if (argc < 2) {
        std::fputs("usage: bench_packages [BENCHMARK-OPTION...] FILE...\n", stderr);
        return 2;
    }
    for (int i = 1; i < argc; ++i)
        addRows(prepared(QString::fromLocal8Bit(argv[i])));
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
