// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PICTURESAMPLER_H
#define SORRELKIT_PICTURESAMPLER_H

#include <QImage>
#include <QVector>

namespace SorrelKit {

/// Where a column or row of a picture comes from: from two of another picture, between which it lies.
struct PictureSample {
    static constexpr int MaxWeight = 256;

    /// The sample at @p position, counted from the edge of the first one: the middle of the first is at 0.5. The
    /// neighbours are those from @p start up to and without @p end; what is beyond them repeats the outermost.
    static PictureSample within(qreal position, int start, int end);

    int first = 0;
    int second = 0;
    int weight = 0; ///< of the second, of MaxWeight
};

using PictureSamples = QVector<PictureSample>;

/// The picture whose columns and rows are interpolated from those of @p picture, which has the format
/// ARGB32_Premultiplied, and so has the result. What it costs does not depend on where the samples are.
QImage sampled(const QImage &picture, const PictureSamples &columns, const PictureSamples &rows);

/// Pixels of a side that shrunk() leaves at most: those of the largest adaptive icon's layers.
constexpr int MaxShrunkSide = 1536;

/**
 * @p picture in the format ARGB32_Premultiplied and, when it is larger than @p size, shrunk to that, by averages. Sides are
 * treated each on its own. Takes little memory beside the result, whatever the picture's size.
 */
QImage shrunk(const QImage &picture, const QSizeF &size);

} // namespace SorrelKit

#endif
