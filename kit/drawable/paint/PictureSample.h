// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PICTURESAMPLE_H
#define SORRELKIT_PICTURESAMPLE_H

#include <QImage>
#include <QVector>

namespace SorrelKit {

struct PictureSample;
/// The samples of all columns, or of all rows, of a picture.
using PictureSamples = QVector<PictureSample>;

/// The source of a column or a row of a resampled picture: two columns or rows of the original, and a position between
/// them.
struct PictureSample {
    static constexpr int MaxWeight = 256;
    /// Units of work for each pixel of resampled(). It takes about 10 ns.
    static constexpr int WorkPerPixel = 2;

    /// The sample at @p position, in pixels from the edge of the original: the middle of its first pixel is at 0.5.
    /// Uses the pixels from @p start up to, but not including, @p end; the outermost ones repeat beyond.
    static PictureSample within(qreal position, int start, int end);
    /// @p picture resampled by @p columns and @p rows; @p picture itself when that changes nothing. Both pictures have
    /// the format ARGB32_Premultiplied. The cost depends on the size of the result alone.
    static QImage resampled(const QImage &picture, const PictureSamples &columns, const PictureSamples &rows);

    int first = 0;
    int second = 0;
    int weight = 0; ///< of the second, up to MaxWeight
};

} // namespace SorrelKit

#endif
