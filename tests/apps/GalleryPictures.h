// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef GALLERYPICTURES_H
#define GALLERYPICTURES_H

#include <QImage>
#include <QVector>

/**
 * The pictures of the application "gallery". Their four edges differ, so a turned, mirrored or stretched picture shows.
 */
struct GalleryPicture {
    const char *file; ///< below res/
    QImage image;
};

QVector<GalleryPicture> galleryPictures();

#endif
