// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GALLERYPICTURES_H
#define GALLERYPICTURES_H

#include <QImage>
#include <QVector>

/**
 * The pictures of the application "gallery". Unlike those of IconSources.h, no two of their edges are alike, so that one
 * sees which way a picture is turned, mirrored or stretched.
 */
struct GalleryPicture {
    const char *file; ///< below res/
    QImage image;
};

QVector<GalleryPicture> galleryPictures();

#endif
