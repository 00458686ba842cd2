// SPDX-License-Identifier: LGPL-2.1-or-later
//
// bench_processes [BENCHMARK-OPTION...] [NAME=COMMAND ARGUMENT...] ...: times commands as whole processes, from start
// to end. NAME=COMMAND begins a command and its arguments follow, so an argument must not have a "=" in it. Commands
// of one name run one after the other and are reported as one. Each repetition runs a command once. With
// --benchmark_repetitions and
// --benchmark_enable_random_interleaving=true, commands of different names alternate. Besides the time, the exit status and
// the peak of resident memory are reported; the peak is 0 when it is not above the peak of this process.

#include "ChildProcess.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

struct Sequence {
    std::string name;
    std::vector<Arguments> commands;
};

std::vector<Sequence> sequences(const Arguments &arguments)
{
    std::vector<Sequence> result;
    size_t current = 0;
    for (const std::string &argument : arguments) {
        const size_t sign = argument.find('=');
        if (sign != std::string::npos) {
            const std::string name = argument.substr(0, sign);
            current = 0;
            while (current < result.size() && result[current].name != name)
                ++current;
            if (current == result.size())
                result.push_back({name, {}});
            result[current].commands.push_back({argument.substr(sign + 1)});
        } else if (!result.empty()) {
            result[current].commands.back().push_back(argument);
        }
    }
    return result;
}

void wholeProcesses(benchmark::State &state, const std::vector<Arguments> &commands)
{
    for (auto _ : state) {
        double seconds = 0;
        int status = 0;
        long peakKib = 0;
        for (const Arguments &command : commands) {
            const ChildProcess process = ChildProcess::run(command);
            seconds += process.seconds;
            status = status == 0 ? process.status : status;
            peakKib = std::max(peakKib, process.peakKib);
        }
        if (status < 0) {
            state.SkipWithError("cannot be started");
            break;
        }
        state.SetIterationTime(seconds);
        state.counters["status"] = status;
        state.counters["peak_kib"] = double(peakKib > ChildProcess::ownPeakKib() ? peakKib : 0);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const std::vector<Sequence> wanted = sequences({argv + 1, argv + argc});
    if (wanted.empty()) {
        std::fputs("usage: bench_processes [BENCHMARK-OPTION...] [NAME=COMMAND ARGUMENT...] ...\n", stderr);
        return 2;
    }
    for (const Sequence &sequence : wanted) {
        // The first run brings the files into memory.
        for (const Arguments &command : sequence.commands)
            ChildProcess::run(command);
        benchmark::RegisterBenchmark(sequence.name.c_str(), wholeProcesses, sequence.commands)
            ->UseManualTime()
            ->Iterations(1);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
