// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THUMBNAILPROGRAM_H
#define THUMBNAILPROGRAM_H

#include <QByteArray>

/**
 * The program `sorrel-thumbnailer` of this plugin's installation, which draws an icon in a process of its own. It
 * limits its processor time and its memory.
 */
namespace ThumbnailProgram {

/// The longest time in seconds that the program is waited for. It is far above the limit of processor time, so it only
/// ends a program whose file does not deliver any bytes.
constexpr int MaxSeconds = 300;
/// The maximum size of a picture in bytes: above that of 1024 x 1024 pixels without compression.
constexpr int MaxBytes = 8 << 20;

/// The icon of the package in the file @p path, drawn @p size pixels wide and high in the shape @p shape, as a PNG
/// file; empty when there is none. Blocks until the program ends.
QByteArray png(const QByteArray &path, int size, const QByteArray &shape);

} // namespace ThumbnailProgram

#endif
