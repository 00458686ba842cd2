// SPDX-License-Identifier: LGPL-2.1-or-later
//
// bench_peers [BENCHMARK-OPTION...] FILE: times the queries of Sorrel and of Android's own resource library for a package
// in one process, with a new object each time.
//
// "sorrel" and "androidfw_opening" open the package, read its table and its manifest, and return the package name and
// the minimum SDK. Android's library leaves the table in place and makes no tree of the manifest; ApkFile decodes both.
//
// "kit" and "androidfw" return the package name, the minimum SDK, the launchers with their classes and their labels in
// every language, and the files of their icons.

#include <ApkFile.h>

#include <SorrelKit/Package.h>

#ifdef SORREL_HAS_ANDROIDFW
#include "AndroidfwPackage.h"
#endif

#include <benchmark/benchmark.h>

#include <QFile>

#include <cstdio>
#include <string>

namespace {

void sorrel(benchmark::State &state, const QString &file)
{
    for (auto _ : state) {
        ApkFile apk(file);
        benchmark::DoNotOptimize(apk.resources());
        benchmark::DoNotOptimize(apk.getManifest());
        benchmark::DoNotOptimize(apk.mainPackage());
        benchmark::DoNotOptimize(apk.minSdkVersion());
        if (apk.getError() != 0) {
            state.SkipWithError(apk.getErrorString().toLocal8Bit().constData());
            break;
        }
    }
}

void kit(benchmark::State &state, const QString &file)
{
    for (auto _ : state) {
        const SorrelKit::Package package(file);
        benchmark::DoNotOptimize(package.packageName());
        benchmark::DoNotOptimize(package.minSdkVersion());
        const QList<SorrelKit::Entry> launchers = package.launchers();
        for (const SorrelKit::Entry &launcher : launchers) {
            benchmark::DoNotOptimize(launcher.className());
            benchmark::DoNotOptimize(launcher.labels());
            benchmark::DoNotOptimize(launcher.iconFiles());
        }
        if (!package.isValid()) {
            state.SkipWithError("cannot be read");
            break;
        }
    }
}

#ifdef SORREL_HAS_ANDROIDFW
void androidfw(benchmark::State &state, const std::string &file)
{
    for (auto _ : state) {
        const peer::AndroidfwPackage package(file);
        benchmark::DoNotOptimize(package.package());
        benchmark::DoNotOptimize(package.minSdkVersion());
        const std::vector<peer::Launcher> launchers = package.launchers();
        for (const peer::Launcher &launcher : launchers)
            benchmark::DoNotOptimize(package.iconFiles(launcher));
        if (!package.isOpen()) {
            state.SkipWithError("cannot be read");
            break;
        }
    }
}

void androidfwOpening(benchmark::State &state, const std::string &file)
{
    for (auto _ : state) {
        const peer::AndroidfwPackage package(file);
        benchmark::DoNotOptimize(package.package());
        benchmark::DoNotOptimize(package.minSdkVersion());
        if (!package.isOpen()) {
            state.SkipWithError("cannot be read");
            break;
        }
    }
}
#endif

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fputs("usage: bench_peers [BENCHMARK-OPTION...] FILE\n", stderr);
        return 2;
    }
    benchmark::RegisterBenchmark("sorrel", sorrel, QFile::decodeName(argv[1]))->UseRealTime();
    benchmark::RegisterBenchmark("kit", kit, QFile::decodeName(argv[1]))->UseRealTime();
#ifdef SORREL_HAS_ANDROIDFW
    benchmark::RegisterBenchmark("androidfw_opening", androidfwOpening, std::string(argv[1]))->UseRealTime();
    benchmark::RegisterBenchmark("androidfw", androidfw, std::string(argv[1]))->UseRealTime();
#endif
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
