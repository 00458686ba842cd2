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
 * layers and so on), in their default state, with the values that the newest platform takes.
 *
 *     DrawableRenderer renderer{Package(fileName)};
 *     renderer.setMask(IconMask::Circle);
 *     const QImage picture = renderer.render(0x7f020000, 96);
 *
 * Constructing an object reads nothing. It keeps a copy of the package, and so the archive open; copies of it draw by
 * themselves. It is used from the thread of the package, from one at a time.
 *
 * **Errors.** No operation throws, and none sets an error code: render() answers a null image, and errorString() tells
 * why. Of a package that cannot be read, every resource is missing; Package::error() tells what is wrong.
 *
 * **Limits.** Drawing is bounded in time and memory, whatever the package holds; what does not fit is left out, and
 * errorString() says so. docs/limits.md lists the limits.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT DrawableRenderer
{
public:
    /// For the resources of @p package, a copy of which this object keeps.
    explicit DrawableRenderer(const Package &package) : m_package(package) {}

    /// Cuts adaptive icons to the outline @p mask from the next render() on; IconMask::None by default.
    void setMask(IconMask mask) { m_mask = mask; }
    /// The outline that adaptive icons are cut to.
    IconMask mask() const { return m_mask; }

    /**
     * The resource @p id (0xPPTTEEEE) as a picture of @p size by @p size pixels, 1 to 1024, in the format
     * ARGB32_Premultiplied, transparent where nothing is drawn; what is not square is centred. Chooses and falls back as
     * Launcher::icon() does. A null image when there is no such resource, it cannot be drawn, or @p size is out of range;
     * errorString() tells.
     *
     * Reads the package when nothing did yet. Each call reads the files and draws anew: nothing is kept.
     */
    QImage render(quint32 id, int size);
    /// Why the last render() was not, or not wholly, drawn as the package describes it, in English
    /// (`unsupported drawable <x>`); empty when it was, and before the first one.
    QString errorString() const { return m_error; }

private:
    Package m_package;
    IconMask m_mask = IconMask::None;
    QString m_error;
};

} // namespace SorrelKit

#endif
