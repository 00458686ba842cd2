// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THUMBNAILSHAPE_H
#define THUMBNAILSHAPE_H

#include <QByteArray>

/// The shape of adaptive icons in thumbnails, which the user sets in the file `sorrelrc` of KDE's configuration: the
/// key `Shape` of the group `Thumbnails`.
namespace ThumbnailShape {

/// The user's shape as `sorrel-thumbnailer --shape` takes it: "circle", "rounded", "squircle", or "none", which is also
/// the result for any other text. Reads the file, so a change counts at once.
QByteArray name();

} // namespace ThumbnailShape

#endif
