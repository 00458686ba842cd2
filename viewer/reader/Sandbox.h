// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SANDBOX_H
#define VIEWER_SANDBOX_H

#include <QStringList>

namespace Viewer {

/// Takes from this process what a reader of packages does not need, so that a package that takes it over gets nothing
/// but the content of what it may read.
namespace Sandbox {

/// Confines the process for the rest of its life. Returns the names of what confines it now.
QStringList enter();

} // namespace Sandbox

} // namespace Viewer

#endif
