// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEWALKER_H
#define PACKAGEWALKER_H

#include <QtGlobal>

namespace SorrelKit {
class Package;
}

namespace fixture {

/**
 * Calls every query of @p package, with a small platform: every text and diagnostic, the permissions and features, the
 * labels and files of the entries of each kind, the names and values of its resources (of a hundred when there are
 * more), and the choice of packages for a phone. Draws the icons of the first @p iconCount launchers and of the first
 * entry of each other kind with @p iconSize pixels, their banners, and the frames of the application's icon. Masks, the
 * night, layers, directions and themes take turns from one icon to the next. Returns the number of results, or -1 when
 * a picture has another size or format than DrawableRenderer promises.
 */
qint64 visit(SorrelKit::Package package, int iconCount, int iconSize);

} // namespace fixture

#endif
