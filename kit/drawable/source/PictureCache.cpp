// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/source/PictureCache.h"

#include <utility>

namespace SorrelKit {

namespace {

// Pictures are painted in this format. A conversion in place needs no second picture; other formats are converted when
// they are painted, because the result may be four times as large.
QImage premultiplied(QImage image)
{
    constexpr int PixelBits = 32;
    return image.depth() == PixelBits ? std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied) : image;
}

} // namespace

void PictureCache::add(const OwnedPath &path, QByteArray bytes)
{
    Picture picture;
    // PictureFile drops the chunk with the parts that may be stretched.
    picture.patch = NinePatch::read(bytes);
    picture.file = PictureFile::opened(std::move(bytes), &m_budget);
    picture.size = picture.file.size();
    const qint64 size = picture.file.bytes().size();
    if (size > m_budget.bytesLeft() / OpenShare || !m_budget.holdBytes(size))
        picture = {};
    m_pictures.insert(path, picture);
}

QImage PictureCache::image(const OwnedPath &path)
{
    const auto picture = m_pictures.find(path);
    if (picture == m_pictures.end())
        return {};
    if (picture->file.isAccepted()) {
        picture->image = premultiplied(m_decoder.decoded(picture->file));
        m_budget.releaseBytes(picture->file.bytes().size());
        picture->file = {};
    }
    return picture->image;
}

} // namespace SorrelKit
