// SPDX-License-Identifier: LGPL-2.1-or-later

// make_icons APP DIR: draws the pictures of one sample application into its res directory.

#include "GalleryPictures.h"
#include "IconSources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QPainter>

#include <cstdio>

namespace {

QImage draw(const IconSource &icon)
{
    QImage image(icon.width, icon.height, QImage::Format_ARGB32);
    image.fill(QColor::fromRgba(icon.frame));
    const int border = qMin(icon.width, icon.height) / 8;
    QPainter painter(&image);
    painter.fillRect(image.rect().adjusted(border, border, -border, -border), QColor::fromRgba(icon.area));
    return image;
}

bool write(const QImage &image, const char *file, const QDir &resources)
{
    const QString path = resources.filePath(QLatin1String(file));
    if (!QDir().mkpath(QFileInfo(path).path())) {
        std::fprintf(stderr, "make_icons: cannot create the directory of %s\n", qPrintable(path));
        return false;
    }
    QImageWriter writer(path);
    writer.setQuality(100);
    if (!writer.write(image)) {
        std::fprintf(stderr, "make_icons: %s: %s%s\n", qPrintable(path), qPrintable(writer.errorString()),
                     writer.error() == QImageWriter::UnsupportedFormatError
                         ? " (are Qt's image format plugins installed?)"
                         : "");
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: make_icons APP DIR\n", stderr);
        return 2;
    }

    const QDir resources(arguments.at(2));
    for (const IconSource &icon : iconSources) {
        if (arguments.at(1) != QLatin1String(icon.app))
            continue;
        if (!write(draw(icon), icon.file, resources))
            return 1;
    }
    if (arguments.at(1) != QLatin1String("gallery"))
        return 0;
    for (const GalleryPicture &picture : galleryPictures()) {
        if (!write(picture.image, picture.file, resources))
            return 1;
    }
    return 0;
}
