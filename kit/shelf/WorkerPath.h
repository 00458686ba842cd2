// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_WORKERPATH_H
#define SORRELKIT_WORKERPATH_H

#include <QString>

namespace SorrelKit {

/// The program of the workers: the value of SORREL_SHELF_WORKER; else `sorrel-draw` at its place relative to this
/// library, so a moved installation and the build tree work; else where the installation puts it.
QString workerPath();

} // namespace SorrelKit

#endif
