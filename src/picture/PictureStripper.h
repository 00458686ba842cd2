// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTURESTRIPPER_H
#define PICTURESTRIPPER_H

#include "format/ByteView.h"

#include <QByteArray>
#include <QPoint>
#include <QSize>

/**
 * A picture file in memory out of which the parts that make the picture are kept, and the others are left. The classes
 * of the formats go over the file once and keep() part after part, in the order of the file; each moves up to the end
 * of those before it, so that all of this takes no second copy. They also note here what decoding the picture takes.
 *
 * Precondition of keep(): the part lies behind what is kept already. Its bytes move, and what is in their place is
 * gone: whatever a class wants to know of a part it reads before that.
 */
class PictureStripper
{
public:
    /// Pixels of a picture's side at most. Launcher icons have up to 512.
    static constexpr int MaxSide = 4096;

    /// Starts with nothing kept; @p file outlives this object.
    explicit PictureStripper(QByteArray *file);

    /// The bytes of the file, from what is kept on; sizes and offsets are those of the whole file.
    const ByteView &file() const { return m_view; }

    /// Keeps the @p size bytes at @p at, or those of them that there are. Returns where they are now.
    char *keep(qint64 at, qint64 size);
    /// The bytes that are kept so far.
    char *kept() { return m_file->data(); }
    qint64 keptSize() const { return m_keptSize; }
    /// Makes what is kept the file, with @p end behind it.
    void finish(const QByteArray &end = QByteArray());

    /// The largest size that the file states for its picture; an empty one before the first is known.
    QSize size() const { return m_size; }
    qint64 pixels() const { return qint64(m_size.width()) * m_size.height(); }
    /// Makes room for a picture of this size; false when a side is less than 1 or more than MaxSide.
    bool grow(qint64 width, qint64 height);

    /// The canvas that the picture has a place on, and that place; an empty size when it is all of the picture.
    QSize canvas;
    QPoint place;
    /// Bytes that decoding takes at its peak, the decoded picture included.
    qint64 decodingBytes = 0;
    /// Bits of prefix codes that going over the file has read; each takes about as long as decoding a byte of a
    /// picture.
    qint64 steps = 0;

private:
    QByteArray *m_file;
    ByteView m_view;
    qint64 m_keptSize = 0;
    QSize m_size;
};

#endif
