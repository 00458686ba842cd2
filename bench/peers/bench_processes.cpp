// SPDX-License-Identifier: LGPL-2.1-or-later
//
// bench_processes [BENCHMARK-OPTION...] [NAME=COMMAND ARGUMENT...] ...: how long each of these commands takes as a
// whole process, from its start to its end. NAME=COMMAND begins a command, and its arguments follow; an argument that
// has a "=" in it would begin another. Each repetition runs the command once; with --benchmark_repetitions and
// --benchmark_enable_random_interleaving=true, the commands alternate. Beside the time, the status and the peak of
// resident memory are counted, the latter as 0 when it is not above that of this process itself.

#include "ChildProcess.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

struct Command {
    std::string name;
    std::vector<std::string> arguments;
};

std::vector<Command> commands(const std::vector<std::string> &arguments)
{
    std::vector<Command> result;
    for (const std::string &argument : arguments) {
        const size_t sign = argument.find('=');
        if (sign != std::string::npos)
            result.push_back({argument.substr(0, sign), {argument.substr(sign + 1)}});
        else if (!result.empty())
            result.back().arguments.push_back(argument);
    }
    return result;
}

void wholeProcess(benchmark::State &state, const std::vector<std::string> &arguments)
{
    for (auto _ : state) {
        const ChildProcess process = ChildProcess::run(arguments);
        if (process.status < 0) {
            state.SkipWithError("cannot be started");
            break;
        }
        state.SetIterationTime(process.seconds);
        state.counters["status"] = process.status;
        state.counters["peak_kib"] = double(process.peakKib > ChildProcess::ownPeakKib() ? process.peakKib : 0);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const std::vector<Command> wanted = commands({argv + 1, argv + argc});
    if (wanted.empty()) {
        std::fputs("usage: bench_processes [BENCHMARK-OPTION...] [NAME=COMMAND ARGUMENT...] ...\n", stderr);
        return 2;
    }
    for (const Command &command : wanted) {
        // The first run brings its files into memory.
        ChildProcess::run(command.arguments);
        benchmark::RegisterBenchmark(command.name.c_str(), wholeProcess, command.arguments)
            ->UseManualTime()
            ->Iterations(1);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
