// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/paint/StretchedSide.h"

#include <cmath>

namespace SorrelKit {

namespace {

struct Segment {
    qreal from; ///< in the whole picture
    qreal length;
    bool isStretched;
};

// All parts of a side of @p length pixels, in order.
QVector<Segment> segments(const StretchedSide::Ranges &stretched, qreal length)
{
    QVector<Segment> segments;
    qreal at = 0;
    for (const StretchedSide::Range &range : stretched) {
        const qreal start = qMin(qreal(range.start), length);
        const qreal end = qMin(qreal(range.end), length);
        segments.append({at, start - at, false});
        segments.append({start, end - start, true});
        at = end;
    }
    segments.append({at, length - at, stretched.isEmpty()});
    return segments;
}

} // namespace

PictureSamples StretchedSide::samples(const Ranges &stretched, qreal start, int count) const
{
    const QVector<Segment> parts = segments(stretched, pixels / scale);
    qreal fixed = 0;
    qreal elastic = 0;
    for (const Segment &part : parts)
        (part.isStretched ? elastic : fixed) += part.length;

    const bool isElastic = elastic > 0 && fixed * fixedScale < length;
    const qreal scaleOfFixed = isElastic || fixed * fixedScale <= 0 ? fixedScale : length / fixed;
    const qreal scaleOfElastic = isElastic ? (length - fixed * scaleOfFixed) / elastic : 0;

    PictureSamples samples;
    samples.reserve(count);
    qreal end = 0;
    for (const Segment &part : parts) {
        const qreal begin = std::round(end);
        end += part.length * (part.isStretched ? scaleOfElastic : scaleOfFixed);
        // Pixels beside the segment are not mixed into it.
        const int first = qBound(0, int(std::floor(part.from * scale + 1e-6)), pixels - 1);
        const int last = qBound(first + 1, int(std::ceil((part.from + part.length) * scale - 1e-6)), pixels);
        const qreal room = qMax(std::round(end) - begin, qreal(1));
        while (samples.size() < count && start + int(samples.size()) + 0.5 < std::round(end)) {
            const qreal share = (start + int(samples.size()) + 0.5 - begin) / room;
            samples.append(PictureSample::within((part.from + part.length * share) * scale, first, last));
        }
    }
    while (samples.size() < count)
        samples.append(PictureSample::within(pixels, 0, pixels));
    return samples;
}

} // namespace SorrelKit
