// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_INTERPOLATOR_H
#define SORRELKIT_INTERPOLATOR_H

#include <QPainterPath>

#include <optional>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * The pace of an animation: a function from the part of its time that has passed to the part of the way. An animation
 * without one accelerates and decelerates.
 *
 * | element                                            | function of x, with the attributes and their defaults        |
 * |----------------------------------------------------|--------------------------------------------------------------|
 * | `linearInterpolator`                               | x                                                            |
 * | `accelerateInterpolator`                           | x to the power of 2 factor (1)                               |
 * | `decelerateInterpolator`                           | the same backwards                                           |
 * | `accelerateDecelerateInterpolator`                 | half a wave of the cosine                                    |
 * | `anticipateInterpolator`, `overshootInterpolator`  | a cube that swings beyond one end by the tension (2)         |
 * | `anticipateOvershootInterpolator`                  | beyond both, by the tension (2) times extraTension (1.5)     |
 * | `bounceInterpolator`                               | four parabolas                                               |
 * | `cycleInterpolator`                                | cycles (1) of the sine                                       |
 * | `pathInterpolator`                                 | y where the path, or the curve of its control points, has x  |
 *
 * The ids of the platform's interpolators are public, so these are known without a platform. Meets raw input.
 */
class Interpolator
{
public:
    /// The result is at most this far from 0.
    static constexpr qreal MaxResult = 1 << 10;
    /// Halvings that find a point of a curve. They are exact to a pixel of the largest picture.
    static constexpr int Halvings = 24;

    /// Accelerates and decelerates.
    Interpolator() = default;
    /// That of the attribute `android:interpolator` of @p element. The default without one, and for one that cannot be
    /// read, with an error.
    static Interpolator ofElement(const XmlElement &element, DrawableLoader &loader);

    /// The part of the way at @p fraction of the time, 0 to 1.
    qreal at(qreal fraction) const;

private:
    enum class Kind {
        AccelerateDecelerate,
        Linear,
        Accelerate,
        Decelerate,
        Anticipate,
        Overshoot,
        AnticipateOvershoot,
        Bounce,
        Cycle,
        Path,
    };

    explicit Interpolator(Kind kind, qreal factor = 1) : m_kind(kind), m_factor(factor) {}
    static std::optional<Interpolator> ofPlatform(quint32 id);
    static Interpolator fromXml(const XmlElement &element, DrawableLoader &loader);
    static Interpolator fromPath(const XmlElement &element, DrawableLoader &loader);
    static Interpolator ofCurve(QPointF control1, QPointF control2);
    qreal unbounded(qreal fraction) const;
    qreal onPath(qreal x) const;

    Kind m_kind = Kind::AccelerateDecelerate;
    qreal m_factor = 1; ///< the factor, the tension, or the number of cycles
    QPainterPath m_path;
};

} // namespace SorrelKit

#endif
