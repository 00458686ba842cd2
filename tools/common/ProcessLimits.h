// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PROCESSLIMITS_H
#define PROCESSLIMITS_H

#include <QByteArray>

#include <sys/types.h>

/// Limits that the kernel holds this process to. None is raised above what the process was started with.
namespace ProcessLimits {

/**
 * The process gets at most @p bytes of data, not counting code; what needs more throws std::bad_alloc. 0 takes the limit
 * away again. Programs with AddressSanitizer have no limit: it keeps more data than the program.
 */
void limitMemory(qint64 bytes);

/// After @p seconds of processor time the process prints @p message on standard error, and exits with @p status, wherever
/// it is. Called once.
void limitProcessorTime(int seconds, const QByteArray &message, int status);
/// The process runs on to its end, so that what it has begun to write is whole.
void allowMoreProcessorTime();

/// The process is killed when its parent ends. False when the parent is gone already, as it is not @p parent.
bool endWithParent(pid_t parent);

} // namespace ProcessLimits

#endif
