// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TINT_H
#define SORRELKIT_TINT_H

#include <QColor>
#include <QImage>

#include <optional>

namespace SorrelKit {

class DrawableAttributes;
class DrawableLoader;

/// A colour that a drawable is coloured with after it is drawn: `android:tint` and `android:tintMode`.
class Tint
{
public:
    /// Values of `android:tintMode`: how the tint is put on what is drawn.
    enum class Mode : int {
        SourceOver = 3,
        SourceIn = 5,
        SourceAtop = 9,
        Multiply = 14, ///< of all channels, the alpha as well, so that nothing gets more opaque
        Screen = 15,
        Add = 16,
    };

    Tint(const QColor &color, Mode mode) : m_color(color), m_mode(mode) {}
    /// The tint of an element; none when it has no colour. A mode that is none is SourceIn.
    static std::optional<Tint> fromAttributes(const DrawableAttributes &attributes, DrawableLoader &loader);

    /// Colours @p layer, of the format ARGB32_Premultiplied, after making it as opaque as @p opacity says.
    void apply(QImage *layer, qreal opacity = 1) const;
    /// Whether what is transparent gets a colour, too. Then it is the caller's to cut the layer to the drawable.
    bool isUnbounded() const;

private:
    void multiply(QImage *layer) const;

    QColor m_color;
    Mode m_mode;
};

} // namespace SorrelKit

#endif
