// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ANDROIDCOLORS_H
#define SORRELKIT_ANDROIDCOLORS_H

#include <QtGlobal>

#include <optional>

namespace SorrelKit {

/**
 * The colour of the platform (`@android:color/...`) with the resource id @p id, when it is one of those that applications
 * may refer to and that are the same on every device. Of those that are lists of states, the default one.
 */
std::optional<quint32> androidColor(quint32 id);

} // namespace SorrelKit

#endif
