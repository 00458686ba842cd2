// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PNGBYTES_H
#define PNGBYTES_H

#include <QByteArray>
#include <QImage>

/// The bytes of a PNG file with @p picture and its texts; empty for a null picture.
QByteArray pngBytes(const QImage &picture);

#endif
