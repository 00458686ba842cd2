// SPDX-License-Identifier: LGPL-2.1-or-later
#include "picture/PictureStripper.h"

#include <cstring>

PictureStripper::PictureStripper(QByteArray *file) : m_file(file)
{
    file->detach();
    m_view = ByteView(*file);
}

char *PictureStripper::keep(qint64 at, qint64 size)
{
    const ByteView part = m_view.part(at, size);
    char *const target = kept() + m_keptSize;
    std::memmove(target, part.data(), size_t(part.size()));
    m_keptSize += part.size();
    return target;
}

void PictureStripper::finish(const QByteArray &end)
{
    m_file->truncate(int(m_keptSize));
    m_file->append(end);
    m_view = ByteView(*m_file);
}

bool PictureStripper::grow(qint64 width, qint64 height)
{
    if (width < 1 || height < 1 || qMax(width, height) > MaxSide)
        return false;
    m_size = m_size.expandedTo(QSize(int(width), int(height)));
    return true;
}
