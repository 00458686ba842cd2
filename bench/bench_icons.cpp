// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_icons: measures DrawableRenderer::icon() with 96 pixels, for icons of each kind. Takes the options of Google
// Benchmark. Every icon has two rows: "icon" draws the icon of a package whose manifest and table are read already, and
// "Qt" paints the same paths, or decodes the same file and scales it, with Qt alone. Rows are named ICON/WHAT.

#include "Failure.h"
#include "IconSamples.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/IconError.h>
#include <SorrelKit/IconRequest.h>
#include <SorrelKit/Package.h>

#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QGuiApplication>

namespace {

constexpr int Size = 96;

void iconRow(benchmark::State &state, const bench::IconSample &sample)
{
    QBuffer device;
    device.setData(sample.package);
    const SorrelKit::Package package(&device);
    SorrelKit::DrawableRenderer renderer(package);
    const SorrelKit::IconRequest request(Size);
    renderer.icon(request); // reads the manifest and the table
    for (auto _ : state) {
        benchmark::DoNotOptimize(renderer.icon(request));
        if (renderer.error()) {
            state.SkipWithError(renderer.error().text().toLocal8Bit().constData());
            break;
        }
    }
}

void qtRow(benchmark::State &state, const bench::IconSample &sample)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(sample.drawnByQt(Size));
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    for (const bench::IconSample &sample : bench::iconSamples()) {
        const auto addRow = [&sample](const char *what, auto timing) {
            benchmark::RegisterBenchmark((sample.name + '/' + what).c_str(), timing, sample)
                ->Unit(benchmark::kMicrosecond)
                ->UseRealTime();
        };
        addRow("icon", iconRow);
        addRow("Qt", qtRow);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
