// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_NINEPATCH_H
#define SORRELKIT_NINEPATCH_H

#include "drawable/paint/PictureSampler.h"

#include <QByteArray>
#include <QMarginsF>
#include <QVector>

#include <optional>

namespace SorrelKit {

/**
 * Which parts of a picture may be stretched. Build tools take that from the outermost pixels of a `.9.png`, cut those off,
 * and keep it in a chunk "npTc" of the PNG, all numbers big-endian:
 *
 *     0   a flag u8, number of columns' borders u8, of rows' u8, of colours u8
 *     4   two offsets u32, which are not set
 *     12  padding: left, right, top, bottom, each i32
 *     28  an offset u32, not set
 *     32  the borders i32, first those of columns: start and end of each part that may be stretched, in turn
 *
 * Behind them, each cell has a colour, as a hint for faster drawing that is not needed. Meets raw input.
 */
class NinePatch
{
public:
    /// A part of a side that may be stretched.
    struct Range {
        int start = 0;
        int end = 0;
    };
    using Ranges = QVector<Range>;

    /// What the PNG @p bytes says; nothing when it says nothing, is damaged, or no PNG.
    static std::optional<NinePatch> read(const QByteArray &bytes);

    const Ranges &columns() const { return m_columns; }
    const Ranges &rows() const { return m_rows; }
    /// In pixels of the picture.
    const QMarginsF &padding() const { return m_padding; }

    /// One side of a picture, and of what it is stretched to.
    struct Side {
        int pixels = 0;       ///< of the picture that is sampled
        qreal scale = 1;      ///< pixels of that for one of the picture that the ranges are for
        qreal length = 0;     ///< to stretch to, in pixels of the device
        qreal fixedScale = 1; ///< pixels of the device for one of the ranges' picture, in what is not stretched
    };
    /**
     * Samples of @p side for @p count pixels from @p start on, in pixels of the device. What is not in @p stretched keeps its
     * size; when that alone is too long, it is shrunk, and the rest vanishes. When nothing may be stretched, all is.
     */
    static PictureSamples samples(const Ranges &stretched, const Side &side, qreal start, int count);

private:
    Ranges m_columns;
    Ranges m_rows;
    QMarginsF m_padding;
};

} // namespace SorrelKit

#endif
