// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GENERATEDMANIFEST_H
#define GENERATEDMANIFEST_H

#include <QByteArray>

namespace bench {

/**
 * A compiled manifest with @p activities activities. Each one has a name, a label that refers to a text of
 * generatedTable(), and an intent filter with an action and a category. The first of every hundred is a launcher. There
 * are no icons.
 */
QByteArray generatedManifest(int activities);

} // namespace bench

#endif
