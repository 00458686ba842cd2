// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PNGPICTURE_H
#define VIEWER_PNGPICTURE_H

#include <QImage>
#include <QJsonValue>

namespace Viewer {

/// The PNG file @p base64, which a reader wrote; a null picture for other content, and when a side is above @p maxSide.
/// Nothing but PNG is decoded, and a picture that is too large is not.
QImage pngPicture(const QJsonValue &base64, int maxSide);

} // namespace Viewer

#endif
