// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTURESTRIPPER_H
#define PICTURESTRIPPER_H

#include "format/ByteView.h"

#include <QByteArray>
#include <QPoint>
#include <QSize>

/**
 * Reduces a picture file in memory to the parts that make its picture. The class of the format goes over the file once
 * and calls keep() for each of these parts, in the order of the file. keep() moves the part to the end of the parts
 * kept before, so that no second copy is needed. The class of the format also stores here the cost of decoding the
 * picture.
 *
 * Precondition of keep(): the part begins after all kept parts. Its bytes overwrite others, so a class reads all that
 * it needs of a part first.
 */
class PictureStripper
{
public:
    /// Pixels of a picture's side at most. Launcher icons have up to 512.
    static constexpr int MaxSide = 4096;

    /// Starts with nothing kept; @p file outlives this object.
    explicit PictureStripper(QByteArray *file);

    /// The file. Bytes before the end of the kept parts may be overwritten; sizes and offsets stay those of the whole
    /// file.
    const ByteView &file() const { return m_view; }

    /// Keeps the @p size bytes at @p at, or as many as exist. Returns their new address.
    char *keep(qint64 at, qint64 size);
    /// The number of bytes kept so far.
    char *kept() { return m_file->data(); }
    qint64 keptSize() const { return m_keptSize; }
    /// Replaces the file by the kept parts and @p end.
    void finish(const QByteArray &end = QByteArray());

    /// The largest size that the file states for its picture; an empty one before the first is known.
    QSize size() const { return m_size; }
    qint64 pixels() const { return qint64(m_size.width()) * m_size.height(); }
    /// Makes room for a picture of this size; false when a side is less than 1 or more than MaxSide.
    bool grow(qint64 width, qint64 height);

    /// The canvas of an animation and the place of the picture on it; an empty size for any other picture.
    QSize canvas;
    QPoint place;
    /// Bytes that decoding takes at its peak, the decoded picture included.
    qint64 decodingBytes = 0;
    /// Bits of prefix codes that were read. Each takes about as long as decoding a byte of a picture.
    qint64 steps = 0;

private:
    QByteArray *m_file;
    ByteView m_view;
    qint64 m_keptSize = 0;
    QSize m_size;
};

#endif
