// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TINT_H
#define SORRELKIT_TINT_H

#include <QColor>
#include <QImage>

#include <optional>

namespace SorrelKit {

class DrawableAttributes;
class DrawableLoader;

/// A colour that is blended with a finished drawable: `android:tint` and `android:tintMode`.
class Tint
{
public:
    /// Values of `android:tintMode`: the way of blending.
    enum class Mode : int {
        SourceOver = 3,
        SourceIn = 5,
        SourceAtop = 9,
        Multiply = 14, ///< all channels, alpha included, so that nothing becomes more opaque
        Screen = 15,
        Add = 16,
    };

    Tint(const QColor &color, Mode mode) : m_color(color), m_mode(mode) {}
    /// The tint of an element; nothing when it has no colour. An unknown mode counts as SourceIn.
    static std::optional<Tint> fromAttributes(const DrawableAttributes &attributes, DrawableLoader &loader);

    /// Multiplies the opacity of @p layer, of the format ARGB32_Premultiplied, by @p opacity, and blends the tint with
    /// it.
    void apply(QImage *layer, qreal opacity = 1) const;
    /// Whether transparent pixels get a colour, too. The caller must then cut the layer to the drawable.
    bool isUnbounded() const;

private:
    void multiply(QImage *layer) const;

    QColor m_color;
    Mode m_mode;
};

} // namespace SorrelKit

#endif
