// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEWALKER_H
#define PACKAGEWALKER_H

#include <QtGlobal>

namespace SorrelKit {
class Package;
}

namespace fixture {

/**
 * Asks @p package everything that a host can ask: every text, the labels and files of every launcher, and the icons of
 * the first @p iconCount of them, each of @p iconSize pixels, with one mask after another; and of its resources the names
 * and values, of each thousandth when there are thousands. Returns how many answers there were; -1 when a picture has another size or format than Launcher::icon() promises.
 */
qint64 visit(const SorrelKit::Package &package, int iconCount, int iconSize);

} // namespace fixture

#endif
