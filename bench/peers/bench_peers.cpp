// SPDX-License-Identifier: LGPL-2.1-or-later
//
// bench_peers [BENCHMARK-OPTION...] FILE: times opening the package, reading its table and its manifest, and
// returning the package name and the minimum SDK. Sorrel does it with a new ApkFile each time, Android's own resource
// library in the same process. Android's library leaves the table in place and makes no tree of the manifest; ApkFile
// decodes both.

#include <ApkFile.h>

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

#ifdef SORREL_HAS_ANDROIDFW
void androidfw(benchmark::State &state, const std::string &file)
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
#ifdef SORREL_HAS_ANDROIDFW
    benchmark::RegisterBenchmark("androidfw", androidfw, std::string(argv[1]))->UseRealTime();
#endif
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
