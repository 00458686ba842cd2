// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COST_H
#define COST_H

#include <QtGlobal>

#include <functional>

namespace fixture {

/**
 * What a function took in a process of its own: counted, so that the numbers repeat and a busy machine does not change
 * them. Time is not among them; SORREL_COSTS (see cost()) has it for a benchmark.
 *
 * In a build with sanitizers all numbers are 0.
 */
struct Cost {
    bool ended = false;     ///< whether it came to its end, rather than to a signal
    qint64 memory = 0;      ///< bytes on the heap: the peak above what was in use before
    qint64 allocated = 0;   ///< bytes of all blocks that it allocated, freed ones included
    qint64 allocations = 0; ///< number of these blocks
};

/**
 * Runs @p function in a process of its own, with Qt's log switched off. A process that takes a minute of processor time,
 * or ten in an instrumented build, is ended.
 *
 * Where the environment variable SORREL_COSTS names a file, appends a line of JSON: the test and its row, with the
 * numbers and the seconds of processor time.
 */
Cost cost(const std::function<void()> &function);

/// The same, in a thread whose stack has @p stackSize bytes.
Cost costInThread(const std::function<void()> &function, unsigned stackSize);

/// Whether this build has sanitizers or counts what runs, so that it takes several times the stack and the time.
constexpr bool isInstrumented()
{
    return SORREL_SANITIZED || SORREL_COVERAGE;
}

} // namespace fixture

#endif
