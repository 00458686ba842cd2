// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SANDBOX_H
#define VIEWER_SANDBOX_H

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace Viewer {

/**
 * Takes from this process what a reader of packages does not need. A package that takes the process over can then read
 * the files of the system and the files that the reader was started for, and can write lines to the window.
 *
 * - By Landlock (Linux 5.13 and later), no file can be opened except those below /usr, the files that the caller names,
 *   and two that the C library reads.
 * - By seccomp, the process opens no file for writing, starts no program and no process, opens no socket, traces and
 *   signals no other process, and maps no more code. Starting a program and tracing kill it, because no library tries
 *   that; other calls return an error, because libraries have another way.
 *
 * Memory, threads of this process and open descriptors work as before.
 */
namespace Sandbox {

/// Confines the process for the rest of its life; @p files stay readable. Loads before what libraries load on demand:
/// Qt's plugins for pictures, and the configuration of OpenSSL. Precondition: this is the only thread. Returns the
/// names of what confines the process now, "landlock" and "seccomp"; a system may have neither.
QStringList enter(const QList<QByteArray> &files);

} // namespace Sandbox

} // namespace Viewer

#endif
