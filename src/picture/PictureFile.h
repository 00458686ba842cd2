// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTUREFILE_H
#define PICTUREFILE_H

#include "limits/Budget.h"

#include <QByteArray>
#include <QPoint>
#include <QSize>

/**
 * A picture file in memory that holds only the parts that make its picture, and the memory that decoding them takes.
 * Meets raw input: the bytes may be anything.
 *
 * A file may hold more: texts, colour profiles, comments, thumbnails, further frames, pixels beyond the last row.
 * Decoders unpack, copy or list these, each in its own way. None of them changes an icon, and a few kilobytes of them
 * take minutes or gigabytes, so this class drops them before a decoder sees the file.
 *
 * It accepts the formats that Android itself decodes as icons, by their first bytes: PNG, JPEG, GIF, WebP, BMP, and
 * Windows icons of PNG and BMP. It refuses a picture with a side beyond PictureStripper::MaxSide, a JPEG of too many
 * scans, and the other formats that Qt's plugins may read, whose cost it does not know: an SVG may hold a program. An
 * accepted file may still be damaged; decoding it shows that.
 */
class PictureFile
{
public:
    /// Bytes of one picture file at most, after inflating. The size that the archive claims for it does not count.
    static constexpr qint64 MaxBytes = 16 << 20;

    /// A file that is refused.
    PictureFile() = default;
    /// Takes @p bytes in place when nobody shares them.
    explicit PictureFile(QByteArray bytes);
    /// The same, and takes steps() off @p budget. Every file is refused when no work is left.
    static PictureFile opened(QByteArray bytes, Budget *budget);

    bool isAccepted() const { return *m_format != '\0'; }
    /// The name of Qt's decoder for the picture, such as "png"; empty when the file is refused.
    const char *format() const { return m_format; }
    /// The parts of the file that make the picture; empty when the file is refused.
    const QByteArray &bytes() const { return m_bytes; }
    /// The size that decoding gives at most: an animation's first picture may be smaller than its canvas.
    QSize size() const { return m_size; }
    /// The canvas of an animation, whose first frame lies at place(); empty for every other picture.
    QSize canvas() const { return m_canvas; }
    QPoint place() const { return m_place; }
    /// Bytes that decoding takes at its peak, the decoded picture included and bytes() not.
    qint64 decodingBytes() const { return m_decodingBytes; }
    /// Bits of WebP's prefix codes that were read to compute decodingBytes(), also for a refused file. Reading a bit
    /// takes about as long as decoding a byte of a picture.
    qint64 steps() const { return m_steps; }

private:
    QByteArray m_bytes;
    const char *m_format = "";
    QSize m_size;
    QSize m_canvas;
    QPoint m_place;
    qint64 m_decodingBytes = 0;
    qint64 m_steps = 0;
};

#endif
