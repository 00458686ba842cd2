// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ZipBuilder.h"

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

// When @p isRaw, the contents are what @p method made already, and each delivers @p size bytes.
QByteArray archiveOf(const QVector<Member> &members, int method, bool isRaw = false, qint64 size = 0)
{
    QBuffer buffer;
    QuaZip archive(&buffer);
    bool good = archive.open(QuaZip::mdCreate);
    for (const Member &member : members) {
        QuaZipNewInfo info(member.name);
        info.uncompressedSize = quint64(size);
        QuaZipFile file(&archive);
        good = good && file.open(QIODevice::WriteOnly, info, nullptr, 0, method, levelFor(member.content), isRaw);
        good = good && file.write(member.content) == member.content.size();
        file.close();
    }
    archive.close();
    if (!good)
        qFatal("could not make an archive");
    return buffer.data();
}

} // namespace

QByteArray zip(const QVector<Member> &members, Compression compression)
{
    return archiveOf(members, compression == Compression::Deflated ? Z_DEFLATED : 0);
}

QByteArray zipOfDeflated(const QVector<Member> &members, qint64 size)
{
    return archiveOf(members, Z_DEFLATED, true, size);
}

QByteArray deflatedBehindEmptyBlocks(int size, const QByteArray &data)
{
    const QByteArray block("\0\0\0\xff\xff", 5);
    // Without the length that qCompress() puts in front, and what zlib has around deflated data.
    return block.repeated(size / int(block.size())) + qCompress(data).mid(4 + 2).chopped(4);
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
