// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COST_H
#define COST_H

#include <QtGlobal>

#include <functional>

namespace fixture {

/// What a function took in a process of its own.
struct Cost {
    bool ended = false; ///< whether it came to its end, rather than to a signal
    double seconds = 0; ///< of processor time
    qint64 memory = 0;  ///< bytes by which the peak of resident memory rose above what was there before
};

/// Runs @p function in a process of its own, with Qt's log switched off; at most for @p limit seconds,
/// or ten times as many in an instrumented build.
Cost cost(const std::function<void()> &function, unsigned limit = 60);

/// The same, in a thread whose stack has @p stackSize bytes.
Cost costInThread(const std::function<void()> &function, unsigned stackSize);

/// Whether this build has sanitizers or counts what runs, so that neither time nor memory says anything.
constexpr bool isInstrumented()
{
#if SORREL_COVERAGE || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return true;
#else
    return false;
#endif
#else
    return false;
#endif
}

} // namespace fixture

#endif
