// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VECTORANIMATION_H
#define SORRELKIT_VECTORANIMATION_H

#include "drawable/source/DrawableLoader.h"

#include <memory>
#include <vector>

namespace SorrelKit {

/**
 * The animations of an animated vector: the elements `target`, each with `android:name`, the name of a part of the
 * vector, and `android:animation`, the file of an animator for it.
 *
 * An animator is an `objectAnimator`, or an `animator`, which only takes time. A `set` has several, which start together
 * or (`android:ordering` 1) one after the other. An animator starts `android:startOffset` milliseconds late, takes
 * `android:duration` (300), and starts again `android:repeatCount` times, without end for a negative count, each other
 * time backwards when `android:repeatMode` is 2. After its end, the last value stays.
 *
 * As on Android since version 7, a property has its first value before its first animator starts, also where the vector
 * has another one: the first value of the animator that ends first. Of several animators that have started, the one
 * that ends last counts.
 *
 * Times are cut at AnimationClock::MaxTime. The work of loading is spent for each target, animator and keyframe.
 */
class VectorAnimation
{
public:
    /// Milliseconds of a picture: 30 pictures in a second.
    static constexpr int FrameTime = 33;
    /// Pictures of an animation at most. One that takes longer than their time has fewer of them in a second.
    static constexpr int MaxSteps = 240;

    /// Reads the animators of @p element, an `animated-vector`. A target whose animator cannot be read is left out, with
    /// an error.
    VectorAnimation(const XmlElement &element, DrawableLoader &loader);

    /// Changes @p vector, the root of the vector, to what it is at @p time. The last part with a name counts.
    void apply(XmlElement *vector, qint64 time);
    /// Notes when the vector changes next, and the time of one round when it never ends.
    void noteOn(AnimationClock *clock) const;

private:
    /// An animator of a part.
    struct Track {
        bool isEndless() const { return repeats < 0; }
        qint64 end() const;
        /// The part of the way at @p time, without an interpolator.
        qreal fraction(qint64 time) const;

        const XmlElement *animator = nullptr;
        QString target;
        qint64 start = 0;
        qint64 duration = 0;
        qint64 repeats = 0; ///< negative without an end
        bool isReversing = false;
    };
    using Parts = QHash<QString, XmlElement *>;

    qint64 add(const XmlElement &animator, const QString &target, qint64 start);
    qint64 addSet(const XmlElement &set, const QString &target, qint64 start);
    void collect(XmlElement *part, Parts *parts);
    /// Applies the animator at @p fraction of its way to @p part, which may be null.
    void apply(const Track &track, qreal fraction, XmlElement *part);

    DrawableLoader &m_loader;
    std::vector<DrawableLoader::Document> m_documents; ///< of the animators
    std::vector<Track> m_tracks;
};

} // namespace SorrelKit

#endif
