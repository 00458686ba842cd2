// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLERENDERER_H
#define SORRELKIT_DRAWABLERENDERER_H

#include <SorrelKit/Export.h>
#include <SorrelKit/IconMask.h>
#include <SorrelKit/Package.h>

#include <QImage>
#include <QString>

namespace SorrelKit {

/**
 * Draws drawable resources of a package: pictures, colours, and what XML files describe (adaptive icons, vectors, shapes,
 * layers and so on), in their default state, with the values that the newest platform takes. It keeps the package open,
 * and is used from its thread.
 *
 * Drawing is bounded in time and memory, whatever the package holds; what does not fit is left out, and error() says so.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT DrawableRenderer
{
public:
    explicit DrawableRenderer(const Package &package) : m_package(package) {}

    /// The outline for adaptive icons; IconMask::None by default.
    void setMask(IconMask mask) { m_mask = mask; }
    IconMask mask() const { return m_mask; }

    /**
     * The resource @p id (0xPPTTEEEE) as a picture of @p size by @p size pixels, 1 to 1024, in the format
     * ARGB32_Premultiplied; what is not square is centred. Chooses and falls back as Launcher::icon() does. A null image
     * when there is no such resource or it cannot be drawn.
     */
    QImage render(quint32 id, int size);
    /// Why the last render() was not, or not wholly, drawn as the package describes it, in English ("unsupported drawable
    /// <x>"); empty when it was.
    QString errorString() const { return m_error; }

private:
    Package m_package;
    IconMask m_mask = IconMask::None;
    QString m_error;
};

} // namespace SorrelKit

#endif
