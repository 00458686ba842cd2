// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LAYERDRAWABLE_H
#define SORRELKIT_LAYERDRAWABLE_H

#include "drawable/source/Drawable.h"

#include <vector>

struct XmlElement;

namespace SorrelKit {

class DrawableLoader;

/**
 * Drawables on top of each other, the first one at the bottom: `layer-list`, `ripple` and `transition`. A ripple shows
 * its layers without its mask, and a transition its first layer, as before any touch.
 *
 * An item may have a size, a gravity and insets. The insets of start and end override those of left and right. Without
 * a gravity, an item that has a size is at the top left, and any other item fills the bounds. Nested layers
 * (`android:paddingMode`, the default of layer lists) stay inside the padding of the layers below them.
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
        QSizeF size{-1, -1}; ///< overrides the drawable's; -1 for none
        int gravity = 0;
        bool isVisible = true;
    };

    LayerDrawable(std::vector<Layer> layers, PaddingMode paddingMode);
    static DrawablePointer fromXml(const XmlElement &element, DrawableLoader &loader);

    /// The size of the largest layer, with its insets.
    QSizeF intrinsicSize() const override { return m_size; }
    QMarginsF padding() const override { return m_padding; }
    void draw(Canvas &canvas, const QRectF &bounds) const override;

private:
    std::vector<Layer> m_layers;
    PaddingMode m_paddingMode;
    QSizeF m_size{-1, -1}; ///< stored, as the padding is: computing them anew at each level would take exponential time
    QMarginsF m_padding;
};

} // namespace SorrelKit

#endif
