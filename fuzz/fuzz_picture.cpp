// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "ZipBuilder.h"
#include "launchers/ArchiveImages.h"
#include "launchers/LauncherFinder.h"
#include "picture/PictureStripper.h"

#include <QBuffer>

#include <quazip/quazip.h>

using namespace fixture;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString name = QStringLiteral("icon");
    QByteArray bytes = zip({{name, QByteArray(reinterpret_cast<const char *>(data), int(size))}}, Compression::Stored);
    QBuffer buffer(&bytes);
    QuaZip archive(&buffer);
    if (!archive.open(QuaZip::mdUnzip))
        qFatal("the archive of one picture cannot be opened");
    Budget budget(LauncherFinder::MaxWork, LauncherFinder::MaxBytes);
    const QImage image = ArchiveImages(&archive, budget).image(name);
    if (qMax(image.width(), image.height()) > PictureStripper::MaxSide
        || image.sizeInBytes() > PictureDecoder::MaxBytes)
        qFatal("a picture of %d x %d was not refused", image.width(), image.height());
    return 0;
}
