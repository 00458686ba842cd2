// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_STRETCHEDSIDE_H
#define SORRELKIT_STRETCHEDSIDE_H

#include "drawable/paint/PictureSample.h"

#include <QVector>

namespace SorrelKit {

/// A side of a picture that is stretched in some parts and keeps its size in the others.
struct StretchedSide {
    /// A part that is stretched, in pixels of the whole picture.
    struct Range {
        int start = 0;
        int end = 0;
    };
    using Ranges = QVector<Range>;

    /**
     * Samples for @p count pixels from @p start on, in pixels of the device; @p stretched is in order. The other parts
     * keep their size. When they alone are too long, they shrink, and the stretched parts vanish. Without a stretched
     * part, all of the side is stretched.
     */
    PictureSamples samples(const Ranges &stretched, qreal start, int count) const;

    int pixels = 0;       ///< of the picture that is sampled, which may be scaled down
    qreal scale = 1;      ///< pixels of that picture for each pixel of the whole picture
    qreal length = 0;     ///< to stretch to, in pixels of the device
    qreal fixedScale = 1; ///< pixels of the device for each pixel of the whole picture in a part that is not stretched
};

} // namespace SorrelKit

#endif
