// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COST_H
#define COST_H

#include <QtGlobal>

#include <functional>

namespace fixture {

/**
 * The costs of a function in a process of its own. They are counted, so a busy machine does not change them. Only the
 * file in SORREL_COSTS (see cost()) also has the time, for a benchmark.
 *
 * In a build with sanitizers all numbers are 0.
 */
struct Cost {
    bool ended = false;     ///< whether the function returned; false after a signal
    qint64 memory = 0;      ///< bytes on the heap: the peak above the use before
    qint64 allocated = 0;   ///< bytes of all allocated blocks, including freed ones
    qint64 allocations = 0; ///< number of these blocks
};

/**
 * Runs @p function in a process of its own, with Qt's log switched off. The process is killed after a minute of
 * processor time, or ten minutes in an instrumented build.
 *
 * When the environment variable SORREL_COSTS names a file, appends a line of JSON with the test, its row, the costs and
 * the seconds of processor time.
 */
Cost cost(const std::function<void()> &function);

/// The same, in a thread whose stack has @p stackSize bytes.
Cost costInThread(const std::function<void()> &function, unsigned stackSize);

/// Whether this build has sanitizers or counts coverage, so it takes several times the stack and the time.
constexpr bool isInstrumented()
{
    return SORREL_SANITIZED || SORREL_COVERAGE;
}

} // namespace fixture

#endif
