// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PICTURECACHE_H
#define SORRELKIT_PICTURECACHE_H

#include "drawable/source/NinePatch.h"
#include "limits/Budget.h"
#include "picture/PictureDecoder.h"
#include "resources/OwnedPath.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QSize>

#include <optional>

namespace SorrelKit {

/**
 * The picture files of one icon, by their paths. Each file is opened once, and decoded once when its picture is asked
 * for; a file that is no picture is remembered, too. Open files and pictures hold bytes of the budget of the call, and
 * decoding also costs work.
 */
class PictureCache
{
public:
    /// An open file takes 1/OpenShare of the remaining bytes at most. The files for all densities are open at once, and
    /// must leave room to decode one of them.
    static constexpr int OpenShare = 4;

    /// @p budget outlives this object.
    explicit PictureCache(Budget &budget) : m_budget(budget) {}

    bool contains(const OwnedPath &path) const { return m_pictures.contains(path); }
    /// Opens the file @p path. A file that is no picture, or does not fit in the budget, is remembered without a
    /// picture.
    void add(const OwnedPath &path, QByteArray bytes);

    /// The size in pixels, found without decoding; empty when there is no picture.
    QSize size(const OwnedPath &path) const { return m_pictures.value(path).size; }
    /// The picture, the first one of an animation. A null image when there is none or it cannot be decoded.
    QImage image(const OwnedPath &path);
    /// The parts that may be stretched; nothing when the file does not say.
    std::optional<NinePatch> ninePatch(const OwnedPath &path) const { return m_pictures.value(path).patch; }

private:
    struct Picture {
        PictureFile file; ///< until it is decoded
        QSize size;
        QImage image;
        std::optional<NinePatch> patch;
    };

    Budget &m_budget;
    QHash<OwnedPath, Picture> m_pictures;
    PictureDecoder m_decoder{m_budget};
};

} // namespace SorrelKit

#endif
