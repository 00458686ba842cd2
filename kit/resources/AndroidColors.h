// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ANDROIDCOLORS_H
#define SORRELKIT_ANDROIDCOLORS_H

#include <QtGlobal>

#include <optional>

namespace SorrelKit {

/**
 * The platform colour (`@android:color/...`) with the resource id @p id, when applications may refer to it and it is
 * the same on every device. For a list of states, the default colour.
 */
std::optional<quint32> androidColor(quint32 id);

} // namespace SorrelKit

#endif
