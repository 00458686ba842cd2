// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_FILERULES_H
#define VIEWER_FILERULES_H

#include <QByteArray>
#include <QList>

namespace Viewer {

/// The files that this process may open, by Landlock (the system calls of linux/landlock.h).
namespace FileRules {

/// Allows reading @p files, the folder /usr and what the C library reads at run time, and nothing else. A folder among
/// the files is left out. Descriptors that are open stay usable. Returns false when the system has no Landlock.
/// Precondition: PR_SET_NO_NEW_PRIVS is set.
bool apply(const QList<QByteArray> &files);

} // namespace FileRules

} // namespace Viewer

#endif
