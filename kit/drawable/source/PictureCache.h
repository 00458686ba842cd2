// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PICTURECACHE_H
#define SORRELKIT_PICTURECACHE_H

#include "drawable/source/NinePatch.h"
#include "format/Budget.h"
#include "picture/PictureDecoder.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QString>

#include <optional>

namespace SorrelKit {

/**
 * The picture files that one icon needs, by their paths. Each is looked at once and decoded once, when it is asked for; that
 * one is no picture is kept as well. There are budgets for all of them.
 */
class PictureCache
{
public:
    /// Bytes that decoding takes at most, all pictures together, which bounds the time.
    static constexpr qint64 MaxDecodingBytes = 48 << 20;
    /// Bytes that decoding one takes at most, together with the pictures that there are already: one of 2508 x 2508.
    static constexpr qint64 MaxHeldBytes = 24 << 20;
    /// Bytes at most of files that are open, which are kept until they are decoded.
    static constexpr qint64 MaxOpenBytes = 12 << 20;

    bool contains(const QString &path) const { return m_pictures.contains(path); }
    /// Takes in the file @p path. One that is no picture, or does not fit in what is left, is remembered as nothing.
    void add(const QString &path, QByteArray bytes);

    /// The size in pixels; an empty one for nothing. The picture is not decoded.
    QSize size(const QString &path) const { return m_pictures.value(path).size; }
    /// The picture; of an animated one, the first. A null image for nothing, or when it cannot be decoded.
    QImage image(const QString &path);
    /// Bytes of all decoded pictures.
    qint64 heldBytes() const { return m_heldBytes; }
    /// Which parts of it may be stretched; nothing when it does not tell.
    std::optional<NinePatch> ninePatch(const QString &path) const { return m_pictures.value(path).patch; }

private:
    struct Picture {
        PictureFile file; ///< until it is decoded
        QSize size;
        QImage image;
        std::optional<NinePatch> patch;
    };

    QHash<QString, Picture> m_pictures;
    Budget m_budget{MaxDecodingBytes, MaxDecodingBytes};
    PictureDecoder m_decoder{m_budget};
    qint64 m_openBytes = 0;
    qint64 m_heldBytes = 0;
};

} // namespace SorrelKit

#endif
