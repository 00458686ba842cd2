// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PICTURECHECK_H
#define PICTURECHECK_H

#include <QByteArray>
#include <QSize>

/**
 * What decoding a picture file takes, read off the file's bytes before a decoder sees them. Meets raw input: the bytes
 * may be anything.
 *
 * Accepted are the formats that Android itself decodes as icons and whose cost is known: PNG, JPEG, GIF, WebP and BMP,
 * by their first bytes. The other formats that Qt's plugins may read are left out, because nothing here can say what
 * they take: a Windows icon may hold a PNG of any size behind a small directory entry, and an SVG may hold a program.
 *
 * Refused is what these formats allow and no icon has: sides beyond MaxSide, texts and profiles that unpack to far
 * more than their bytes, scan upon scan over one JPEG. What is accepted may still be damaged, which decoding shows.
 */
class PictureCheck
{
public:
    /// Pixels of a picture's side at most. Launcher icons have up to 512.
    static constexpr int MaxSide = 4096;
    /// Compressed bytes of a PNG's texts and colour profile at most, all together. The profile for sRGB that most
    /// editors write has 2.6 KB; deflated data unpacks to up to 1032 times its size.
    static constexpr int MaxPackedBytes = 16 << 10;
    /// Scans of a JPEG at most. Encoders write up to a dozen; each one goes over the whole picture.
    static constexpr int MaxScans = 64;

    /// Refuses a PNG, too, whose texts could take more than @p mayUnpack bytes to unpack, which is done to count them.
    explicit PictureCheck(const QByteArray &bytes, qint64 mayUnpack = 64 << 20);

    /// The name of Qt's decoder for the picture, such as "png"; empty when the picture is refused.
    const char *format() const { return m_format; }
    bool isAccepted() const { return *m_format != '\0'; }
    /// The size that decoding gives at most: an animation's first picture may be smaller than its canvas.
    QSize size() const { return m_size; }
    /// Bytes that decoding takes at its peak, the decoded picture included and the file's own bytes not.
    qint64 decodingBytes() const { return m_decodingBytes; }
    /// What it took to find out, of refused pictures too, in the time that it takes to read a byte of an archive:
    /// the bytes of texts that were unpacked, and the bits of a WebP's codes that were read.
    qint64 steps() const { return m_steps; }

private:
    bool checkPng(const QByteArray &bytes);
    bool checkJpeg(const QByteArray &bytes);
    bool checkGif(const QByteArray &bytes);
    bool checkBmp(const QByteArray &bytes);
    bool checkWebp(const QByteArray &bytes);
    /// Adds what the chunks of a WebP file take, or those of its frame, which has the size @p frame.
    bool addWebpChunks(const QByteArray &bytes, QSize frame = QSize());

    bool setSize(qint64 width, qint64 height);
    qint64 pixels() const { return qint64(m_size.width()) * m_size.height(); }
    /// What @p packed, deflated data, has unpacked; -1 when it is damaged.
    qint64 unpackedSize(const QByteArray &packed);

    qint64 m_mayUnpack;
    const char *m_format = "";
    QSize m_size;
    qint64 m_decodingBytes = 0;
    qint64 m_steps = 0;
};

#endif
