// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Archives.h"

#include <QBuffer>
#include <QImage>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>
#include <zlib.h>

namespace fixture {

namespace {

// Deflating is the most that large fixtures take, and their packed size hardly matters.
int levelFor(const QByteArray &content)
{
    constexpr int Large = 1 << 16;
    return content.size() < Large ? Z_DEFAULT_COMPRESSION : Z_BEST_SPEED;
}

} // namespace

QByteArray zip(const QVector<Member> &members, Compression compression)
{
    const int method = compression == Compression::Deflated ? Z_DEFLATED : 0;
    QBuffer buffer;
    QuaZip archive(&buffer);
    bool good = archive.open(QuaZip::mdCreate);
    for (const Member &member : members) {
        QuaZipFile file(&archive);
        good = good
               && file.open(QIODevice::WriteOnly, QuaZipNewInfo(member.name), nullptr, 0, method,
                            levelFor(member.content));
        good = good && file.write(member.content) == member.content.size();
        file.close();
    }
    archive.close();
    if (!good)
        qFatal("could not make an archive");
    return buffer.data();
}

QByteArray package(const QByteArray &table, const QByteArray &manifest, const QVector<Member> &others)
{
    return zip(
        QVector<Member>{{QStringLiteral("AndroidManifest.xml"), manifest}, {QStringLiteral("resources.arsc"), table}}
        + others);
}

QByteArray picture(int width, int height, quint32 rgb, const char *format)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(rgb);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format))
        qFatal("could not write a picture as %s", format);
    return buffer.data();
}

} // namespace fixture
