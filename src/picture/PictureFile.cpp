// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/PictureFile.h"

#include "picture/BmpPicture.h"
#include "picture/GifPicture.h"
#include "picture/IcoPicture.h"
#include "picture/JpegPicture.h"
#include "picture/PictureStripper.h"
#include "picture/PngPicture.h"
#include "picture/WebpPicture.h"

#include <utility>

namespace {

struct Format {
    QByteArray start;
    const char *name;
    bool (*sieve)(PictureStripper *);
};

const QByteArray windowsIcon("\0\0\1\0", 4);
const QByteArray windowsCursor("\0\0\2\0", 4); // which is an icon with a place that it points with

} // namespace

PictureFile::PictureFile(QByteArray bytes) : m_bytes(std::move(bytes))
{
    const Format formats[] = {
        {"\x89PNG\r\n\x1a\n", "png", PngPicture::sieve},
        {"\xff\xd8\xff", "jpeg", JpegPicture::sieve},
        {"GIF87a", "gif", GifPicture::sieve},
        {"GIF89a", "gif", GifPicture::sieve},
        {"RIFF", "webp", WebpPicture::sieve},
        {"BM", "bmp", BmpPicture::sieve},
        {windowsIcon, "ico", IcoPicture::sieve},
        {windowsCursor, "ico", IcoPicture::sieve},
    };
    if (m_bytes.startsWith(windowsIcon) || m_bytes.startsWith(windowsCursor))
        IcoPicture::unwrapPng(&m_bytes);
    for (const Format &format : formats) {
        if (!m_bytes.startsWith(format.start))
            continue;
        PictureStripper sieve(&m_bytes);
        if (format.sieve(&sieve)) {
            m_format = format.name;
            m_size = sieve.size();
            m_canvas = sieve.canvas;
            m_place = sieve.place;
            m_decodingBytes = sieve.decodingBytes;
        }
        m_steps = sieve.steps;
        break;
    }
    if (!isAccepted())
        m_bytes.clear();
}
