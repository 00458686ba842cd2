// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GENERATEDMANIFEST_H
#define GENERATEDMANIFEST_H

#include <QByteArray>

namespace bench {

/**
 * A manifest with so many activities, as the member AndroidManifest.xml holds it. Each activity has a name, a label that
 * refers to one of the texts of generatedTable(), and an intent filter with an action and a category; in the first of
 * every hundred, this makes it a launcher. There are no icons.
 */
QByteArray generatedManifest(int activities);

} // namespace bench

#endif
