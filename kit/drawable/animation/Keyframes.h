// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_KEYFRAMES_H
#define SORRELKIT_KEYFRAMES_H

#include "drawable/animation/AnimatedProperty.h"

#include <QVector>

#include <optional>

namespace SorrelKit {

/**
 * The way of one property: values at fractions of the time of an animator. An `objectAnimator` or a
 * `propertyValuesHolder` has the elements `keyframe`, each with `android:fraction`, `android:value` and an interpolator
 * for the way to it, or else the attributes `android:valueFrom` and `android:valueTo`. A value that is missing is the one
 * that the part of the vector has.
 *
 * Keyframes without a fraction divide the time between their neighbours. The first and the last one without a fraction
 * are at 0 and 1.
 */
class Keyframes
{
public:
    /// The keyframes of @p holder, which outlives this object.
    Keyframes(const XmlElement &holder, DrawableLoader &loader);

    /// Sets the property of @p part to its value at @p fraction, which may be outside of 0 to 1. An unknown property, and
    /// a holder without values, change nothing.
    void apply(qreal fraction, XmlElement *part, DrawableLoader &loader) const;

private:
    struct Keyframe {
        qreal fraction = 0;
        const XmlAttribute *value = nullptr; ///< null for the value of the part
        const XmlElement *element = nullptr; ///< that may have an interpolator
    };

    void readKeyframes(const XmlElement &holder, DrawableLoader &loader);
    void distribute();

    std::optional<AnimatedProperty> m_property;
    QVector<Keyframe> m_keyframes;
};

} // namespace SorrelKit

#endif
