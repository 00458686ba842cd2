// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_growth: measures how the time to load grows with the size. Every generated table and manifest has two rows:
// "load" decodes it, and "read" reads the same bytes through the same device. Takes the options of Google Benchmark.
// Run it with --benchmark_enable_random_interleaving=true and repetitions, so that a slow phase of the machine does
// not hit one size alone. Rows are named KIND/SHAPE/COUNT/WHAT, for example "table/20 dense/10000/load".

#include "GeneratedManifest.h"
#include "GeneratedTable.h"
#include "Loading.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;

/// Makes the bytes of one case on first use and drops those of the case before: all cases together take a gigabyte.
class Member
{
public:
    explicit Member(std::function<QByteArray()> generate) : m_generate(std::move(generate)) {}

    const QByteArray &bytes() const
    {
        if (lastMade != this) {
            last = QByteArray();
            last = m_generate();
            lastMade = this;
        }
        return last;
    }

private:
    static const Member *lastMade;
    static QByteArray last;
    std::function<QByteArray()> m_generate;
};

const Member *Member::lastMade = nullptr;
QByteArray Member::last;

using MemberPointer = std::shared_ptr<const Member>;

void countBytes(benchmark::State &state, const QByteArray &bytes)
{
    state.counters["bytes"] = double(bytes.size());
}

// The time does not include freeing the result.
template <typename Load>
void timeLoading(benchmark::State &state, const Load &load)
{
    for (auto _ : state) {
        const auto start = Clock::now();
        const auto result = load();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        if (!result.good) {
            state.SkipWithError("not loaded");
            break;
        }
    }
}

void timeReading(benchmark::State &state, const QByteArray &bytes)
{
    for (auto _ : state) {
        const auto start = Clock::now();
        const qint64 size = bench::readThrough(bytes);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        if (size != bytes.size()) {
            state.SkipWithError("not read");
            break;
        }
    }
    countBytes(state, bytes);
}

struct LoadedTable {
    ApkResources table;
    bool good;
};

struct LoadedDocument {
    QDomDocument document;
    bool good;
};

void timeTable(benchmark::State &state, const QByteArray &bytes)
{
    timeLoading(state, [&bytes] {
        const ApkResources table = bench::loadedTable(bytes);
        return LoadedTable{table, table.isValid()};
    });
    countBytes(state, bytes);
}

void timeManifest(benchmark::State &state, const QByteArray &bytes)
{
    static const ApkResources table = bench::loadedTable(bench::generatedTable({1000, 1, false}));
    timeLoading(state, [&bytes] {
        const QDomDocument document = bench::loadedDocument(bytes, table);
        return LoadedDocument{document, !document.isNull()};
    });
    countBytes(state, bytes);
}

using Timing = void (*)(benchmark::State &state, const QByteArray &bytes);

void add(const std::string &name, const MemberPointer &member, Timing loading, int iterations)
{
    const auto addRow = [&](const char *what, Timing timing) {
        benchmark::RegisterBenchmark((name + '/' + what).c_str(),
                                     [member, timing](benchmark::State &state) { timing(state, member->bytes()); })
            ->UseManualTime()
            ->Iterations(iterations)
            ->Unit(benchmark::kMillisecond);
    };
    addRow("load", loading);
    addRow("read", timeReading);
}

void addTables(int configurations, bool mostlyEmpty)
{
    constexpr int ValuesInAll = 1000000; // in all iterations of one repetition
    const std::string shape = std::to_string(configurations) + (mostlyEmpty ? " empty" : " dense");
    for (const int values : {10000, 100000, 1000000, 4000000}) {
        const bench::TableShape table{values, configurations, mostlyEmpty};
        add("table/" + shape + '/' + std::to_string(values),
            std::make_shared<Member>([table] { return bench::generatedTable(table); }), timeTable,
            qMax(1, ValuesInAll / values));
    }
}

void addManifests()
{
    constexpr int ActivitiesInAll = 10000;
    for (const int activities : {10, 100, 1000, 10000}) {
        add("manifest/activities/" + std::to_string(activities),
            std::make_shared<Member>([activities] { return bench::generatedManifest(activities); }), timeManifest,
            qMax(1, ActivitiesInAll / activities));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    for (const int configurations : {1, 20, 100}) {
        for (const bool mostlyEmpty : {false, true})
            addTables(configurations, mostlyEmpty);
    }
    addManifests();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
