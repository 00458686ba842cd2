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
    bool (*strip)(PictureStripper *);
};

const QByteArray windowsIcon("\0\0\1\0", 4);
const QByteArray windowsCursor("\0\0\2\0", 4); // an icon with a hot spot

} // namespace

PictureFile::PictureFile(QByteArray bytes) : m_bytes(std::move(bytes))
{
    const Format formats[] = {
        {"\x89PNG\r\n\x1a\n", "png", PngPicture::strip},
        {"\xff\xd8\xff", "jpeg", JpegPicture::strip},
        {"GIF87a", "gif", GifPicture::strip},
        {"GIF89a", "gif", GifPicture::strip},
        {"RIFF", "webp", WebpPicture::strip},
        {"BM", "bmp", BmpPicture::strip},
        {windowsIcon, "ico", IcoPicture::strip},
        {windowsCursor, "ico", IcoPicture::strip},
    };
    if (m_bytes.startsWith(windowsIcon) || m_bytes.startsWith(windowsCursor))
        IcoPicture::unwrapPng(&m_bytes);
    for (const Format &format : formats) {
        if (!m_bytes.startsWith(format.start))
            continue;
        PictureStripper stripper(&m_bytes);
        if (format.strip(&stripper)) {
            m_format = format.name;
            m_size = stripper.size();
            m_canvas = stripper.canvas;
            m_place = stripper.place;
            m_decodingBytes = stripper.decodingBytes;
        }
        m_steps = stripper.steps;
        break;
    }
    if (!isAccepted())
        m_bytes.clear();
}

PictureFile PictureFile::opened(QByteArray bytes, Budget *budget)
{
    if (budget->workLeft() == 0)
        return {};
    PictureFile file(std::move(bytes));
    budget->chargeWork(Budget::ByteWork * file.steps());
    return file;
}
