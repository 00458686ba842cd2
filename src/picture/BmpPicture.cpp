// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/BmpPicture.h"

bool BmpPicture::strip(PictureStripper *stripper)
{
    constexpr int InfoAt = 14;
    constexpr int OldInfoSize = 12;
    constexpr int ColorBytes = 4;
    const ByteView &file = stripper->file();
    const bool isOld = file.u32(InfoAt) == OldInfoSize;
    const qint64 width = isOld ? file.u16(InfoAt + 4) : qint32(file.u32(InfoAt + 4));
    const qint64 height = isOld ? qint16(file.u16(InfoAt + 6)) : qint32(file.u32(InfoAt + 8));
    if (!stripper->grow(width, qAbs(height)))
        return false;
    stripper->decodingBytes = stripper->pixels() * ColorBytes;
    return true;
}
