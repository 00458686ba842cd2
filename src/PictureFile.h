// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTUREFILE_H
#define PICTUREFILE_H

#include <QByteArray>
#include <QPoint>
#include <QSize>

/**
 * A picture file in memory with nothing left in it but what makes its picture, and what it takes to decode that. Meets raw
 * input: the bytes may be anything.
 *
 * What else may be in a file, decoders unpack, copy, list and walk through, each in its own way: texts, colour profiles,
 * comments, thumbnails, further frames, pixels beyond the last row. None of it changes an icon, and a few kilobytes of it
 * take minutes or gigabytes, so that no decoder is handed any.
 *
 * Accepted are the formats that Android itself decodes as icons, by their first bytes: PNG, JPEG, GIF, WebP, BMP and the
 * Windows icons of PNG and BMP. Refused are pictures with a side beyond PictureSieve::MaxSide, scan upon scan over one
 * JPEG, and the other formats that Qt's plugins may read, as nothing here knows what they take: an SVG may hold a program.
 * What is accepted may still be damaged, which decoding shows.
 */
class PictureFile
{
public:
    /// A file that is refused.
    PictureFile() = default;
    /// Takes @p bytes in place when nobody shares them.
    explicit PictureFile(QByteArray bytes);

    bool isAccepted() const { return *m_format != '\0'; }
    /// The name of Qt's decoder for the picture, such as "png"; empty when the file is refused.
    const char *format() const { return m_format; }
    /// What is left of the file; empty when it is refused.
    const QByteArray &bytes() const { return m_bytes; }
    /// The size that decoding gives at most: an animation's first picture may be smaller than its canvas.
    QSize size() const { return m_size; }
    /// Of the frame of an animation, its canvas, on which what is decoded has the place place(); else empty.
    QSize canvas() const { return m_canvas; }
    QPoint place() const { return m_place; }
    /// Bytes that decoding takes at its peak, the decoded picture included and bytes() not.
    qint64 decodingBytes() const { return m_decodingBytes; }
    /// What it took to find out, beside going over the bytes, in the time that it takes to decode a byte of a picture:
    /// bits of WebP's prefix codes. Of refused files too.
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
