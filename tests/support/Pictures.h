// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTURES_H
#define PICTURES_H

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

/// Picture files, good ones and such as no editor writes.
namespace fixture {

/// Bits, of which a byte holds the lowest first, as WebP has them.
class BitWriter
{
public:
    BitWriter &put(quint32 value, int count);
    QByteArray data() const { return m_data; }

private:
    QByteArray m_data;
    int m_count = 0;
};

/// A chunk of a PNG, with its checksum.
QByteArray pngChunk(const char *type, const QByteArray &data);
/// @p data as PNG and ZIP pack them; qUncompress() takes it with four bytes in front.
QByteArray deflated(const QByteArray &data);
/// @p png with @p chunks right behind its header.
QByteArray withPngChunks(QByteArray png, const QByteArray &chunks);
/// A black PNG. Its pixels are as many as the header says, or not there at all.
QByteArray blackPng(int width, int height, int bits = 8, bool isInterlaced = false, bool hasPixels = true);

/// A PNG of one pixel whose packed pixels unpack to @p excess bytes more than there should be; the pixel is black.
QByteArray overfullPng(int excess);
/// The same, without a checksum at its end; it unpacks to @p mebibytes.
QByteArray endlessPng(int mebibytes);

QByteArray progressiveJpeg(int width, int height);
/// A segment of a JPEG.
QByteArray jpegSegment(int marker, const QByteArray &data);
/// @p jpeg with @p segments right behind its start.
QByteArray withJpegSegments(QByteArray jpeg, const QByteArray &segments);
/// A JPEG of 8 x 8 pixels in one colour, of a component for each of @p samples, which are called by @p ids. There is
/// nothing in it of an application.
QByteArray plainJpeg(const QByteArray &samples, const QByteArray &ids);
/// @p jpeg, a progressive one, with its last scan repeated until it has @p count.
QByteArray withScans(const QByteArray &jpeg, int count);

/// A black GIF whose screen is @p screen and whose picture is @p frame.
QByteArray gif(QSize screen, QSize frame, int disposal = 0);
/// A GIF of 16 x 16 pixels whose codes, @p count of them, stand for four thousand pixels each at last.
QByteArray gifOfLongCodes(int count);

/// The Windows icon of @p pictures, files of PNG or what bitmapOfIcon() makes, each of the size @p size.
QByteArray windowsIcon(const QVector<QByteArray> &pictures, QSize size);
/// A bitmap as such an icon has it, of a pattern. The palette of one with up to 8 bits a pixel is full.
QByteArray bitmapOfIcon(QSize size, int bits);

/// The file in RIFF of these chunks.
QByteArray webp(const QByteArray &chunks);
QByteArray webpChunk(const char *type, const QByteArray &data);
/// The animation of @p frame, a WebP file of the size @p size, shown twice on @p canvas.
QByteArray animatedWebp(QSize canvas, const QByteArray &frame, QSize size);
/// A WebP file without losses in which each block of 4 x 4 pixels may have one of 65536 groups of prefix codes.
QByteArray webpOfManyCodes(int side, int groups);

/// A plain WebP file without losses, of a few bytes, whose transforms and entropy image have as many pixels as may be.
QByteArray webpOfOneCode(int side);

/// @p archive with its last member under further names, each as long as the member's own.
QByteArray withNames(const QByteArray &archive, const QStringList &names);

} // namespace fixture

#endif
