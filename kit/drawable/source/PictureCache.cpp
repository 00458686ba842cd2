// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/PictureCache.h"

#include <utility>

namespace SorrelKit {

void PictureCache::add(const QString &path, QByteArray bytes)
{
    Picture picture;
    // The chunk that says what may be stretched is none that a decoder is handed.
    picture.patch = NinePatch::read(bytes);
    picture.file = PictureFile::opened(std::move(bytes), &m_budget);
    picture.size = picture.file.size();
    const qint64 openBytes = m_openBytes + picture.file.bytes().size();
    if (openBytes > MaxOpenBytes)
        picture = {};
    else
        m_openBytes = openBytes;
    m_pictures.insert(path, picture);
}

QImage PictureCache::image(const QString &path)
{
    const auto picture = m_pictures.find(path);
    if (picture == m_pictures.end())
        return {};
    if (picture->file.isAccepted()) {
        if (picture->file.decodingBytes() <= MaxHeldBytes - m_heldBytes)
            picture->image = m_decoder.decoded(picture->file);
        m_heldBytes += picture->image.sizeInBytes();
        m_openBytes -= picture->file.bytes().size();
        picture->file = {};
    }
    return picture->image;
}

} // namespace SorrelKit
