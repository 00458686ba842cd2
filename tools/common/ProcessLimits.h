// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROCESSLIMITS_H
#define PROCESSLIMITS_H

#include <QByteArray>

#include <sys/types.h>

/// Limits of this process that the kernel enforces. None exceeds the limit that the process started with.
namespace ProcessLimits {

/**
 * Limits the data of the process to @p bytes, not counting code. A larger allocation throws std::bad_alloc. 0 removes
 * the limit. Programs with AddressSanitizer have no limit, because it keeps more data than the program.
 */
void limitMemory(qint64 bytes);

/// After @p seconds of processor time, the process prints @p message on standard error and exits with @p status. Call
/// it once.
void limitProcessorTime(int seconds, const QByteArray &message, int status);
/// Removes that limit, so the process can finish writing a file.
void allowMoreProcessorTime();

/// Kills the process when its parent ends. Returns false when @p parent has ended already.
bool endWithParent(pid_t parent);

} // namespace ProcessLimits

#endif
