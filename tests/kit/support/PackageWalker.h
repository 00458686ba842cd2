// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEWALKER_H
#define PACKAGEWALKER_H

#include <QtGlobal>

namespace SorrelKit {
class Package;
}

namespace fixture {

/**
 * Calls every query of @p package: every text, the labels and files of every launcher, the icons of the first @p
 * iconCount launchers with @p iconSize pixels and each mask, and the names and values of its resources (of every
 * thousandth when there are thousands). Returns the number of results, or -1 when a picture has another size or format
 * than DrawableRenderer::icon() promises.
 */
qint64 visit(const SorrelKit::Package &package, int iconCount, int iconSize);

} // namespace fixture

#endif
