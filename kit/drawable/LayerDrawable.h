// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LAYERDRAWABLE_H
#define SORRELKIT_LAYERDRAWABLE_H

#include "drawable/source/Drawable.h"

#include <vector>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * Drawables on top of each other, the first at the bottom: `layer-list`, and what of `ripple` and `transition` is seen when
 * nobody touches them: the layers of a ripple without the one that limits its waves, and the first of a transition.
 *
 * An item may have a size and a gravity of its own, and insets, of which those of start and end count for more than those of
 * left and right. Without a gravity, an item with a size of its own goes to the top left, and one without fills. Layers that
 * are nested (`android:paddingMode`, the default of layer lists) keep off the padding that those below them ask for.
 */
class LayerDrawable : public Drawable
{
public:
    enum class PaddingMode : int {
        Nest = 0,
        Stack = 1,
    };

    struct Layer {
        DrawablePointer drawable;
        QMarginsF insets;
        QSizeF size{-1, -1}; ///< in place of the drawable's; -1 for none
        int gravity = 0;
        bool isVisible = true;
    };

    LayerDrawable(std::vector<Layer> layers, PaddingMode paddingMode);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    /// That of the largest layer, with its insets.
    QSizeF intrinsicSize() const override { return m_size; }
    QMarginsF padding() const override { return m_padding; }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    std::vector<Layer> m_layers;
    PaddingMode m_paddingMode;
    QSizeF m_size{-1, -1}; ///< kept, as drawables that ask each other would ask far too often; so is the
    QMarginsF m_padding;
};

} // namespace SorrelKit

#endif
