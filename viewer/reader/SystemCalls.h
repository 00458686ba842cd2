// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SYSTEMCALLS_H
#define VIEWER_SYSTEMCALLS_H

namespace Viewer {

/// The system calls that this process may make, by a filter of libseccomp.
namespace SystemCalls {

/// Allows those that reading packages takes. Starting a program and tracing kill the process; all others fail. Returns
/// false when the program was built without libseccomp, or the system does not accept the filter. Precondition:
/// PR_SET_NO_NEW_PRIVS is set.
bool limit();

} // namespace SystemCalls

} // namespace Viewer

#endif
