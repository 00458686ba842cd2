// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DRAWABLERENDERER_H
#define SORRELKIT_DRAWABLERENDERER_H

#include <SorrelKit/IconError.h>
#include <SorrelKit/IconFrame.h>
#include <SorrelKit/IconRequest.h>
#include <SorrelKit/KitGuiExport.h>
#include <SorrelKit/Package.h>

#include <QImage>
#include <QVector>

#include <memory>

namespace SorrelKit {

class DrawableRendererPrivate;

/**
 * Draws the icons and the drawable resources of a package: pictures, colours, and XML files (adaptive icons, vectors,
 * shapes, layers and so on), in their default state.
 *
 *     DrawableRenderer renderer{Package(fileName)};
 *     IconRequest request(96);
 *     request.setMask(IconMask::Circle);
 *     const QImage icon = renderer.icon(request);
 *
 * Each operation for icons and drawables returns a square picture of IconRequest::pixelSize() pixels a side, in the format
 * ARGB32_Premultiplied, transparent where nothing is drawn; a drawable that is not square is centred. The picture
 * belongs to the caller.
 *
 * Attributes of the theme (`?attr/x`) have values when the request names a theme (IconRequest::theme()).
 *
 * An XML icon is drawn where the requested platform takes it. Else the smallest picture file that is large enough is
 * taken, else the largest, and scaled. When an XML icon cannot be drawn, a picture file of the same icon takes its
 * place.
 *
 * **Errors.** No operation throws. An icon that cannot be drawn is a null image, and error() returns the reason. A package
 * that cannot be read has no icon and no drawable; Package::error() returns the reason.
 *
 * **Cost.** Constructing an object reads nothing. It keeps a copy of the package, and so keeps the archive open. The
 * first call reads the package's manifest and resource table, unless an earlier query did. Each call reads the files
 * and draws anew: nothing else is kept. Drawing is limited in time and memory, for any package; a part that
 * does not fit is left out, and error() reports that. docs/limits.md lists the limits.
 *
 * **Threads.** Use an object from the thread of its package, from one at a time.
 *
 * @since 0.5.1
 */
class SORRELKITGUI_EXPORT DrawableRenderer
{
public:
    /// For the icons and drawables of @p package. This object keeps a copy of it. @since 0.5.1
    explicit DrawableRenderer(const Package &package);
    /// Takes the value of @p other. @since 0.5.1
    DrawableRenderer(DrawableRenderer &&other) noexcept;
    /// Takes the value of @p other. @since 0.5.1
    DrawableRenderer &operator=(DrawableRenderer &&other) noexcept;
    /// Pictures stay valid. @since 0.5.1
    ~DrawableRenderer();
    /// Exchanges two renderers. @since 0.5.1
    void swap(DrawableRenderer &other) noexcept { d.swap(other.d); }

    /**
     * The icon of the application. When it has none, or its icon cannot be drawn, the icon of the first launcher that
     * is shown and has one of its own takes its place; up to four launchers are tried, each at the cost of an icon.
     *
     * error() is about the returned picture. When that replaces an icon of the application which cannot be drawn, or
     * there is no picture, error() is about the application's icon.
     * @since 0.5.1
     */
    QImage icon(const IconRequest &request);
    /// The icon of @p launcher, an entry of any kind and of any package. @since 0.5.1
    QImage icon(const Entry &launcher, const IconRequest &request);
    /**
     * The banner of @p entry (`android:banner`), which televisions show: as icon(), but 16 units wide for 9 units of
     * height. IconRequest::pixelSize() is its height, up to 576 pixels; its width is rounded. A television shows a banner
     * at 160 x 90 device-independent pixels. A null image when there is none. @since 0.5.1
     */
    QImage banner(const Entry &entry, const IconRequest &request);
    /// The same for the banner of the application. @since 0.5.1
    QImage banner(const IconRequest &request);
    /// The drawable or colour resource @p id (0xPPTTEEEE). @since 0.5.1
    QImage drawable(quint32 id, const IconRequest &request);

    /**
     * The pictures of the application's icon while it moves, with their durations; one picture for an icon that does
     * not. `animation-list`, `animated-rotate` and `animated-vector` move, anywhere in a drawable; when several do, the
     * pictures are those until the slowest starts again. Equal pictures in a row are one.
     *
     * An `animated-vector` has a picture every 33 milliseconds, or fewer when it takes longer than eight seconds. It
     * starts at once, and its last picture stays. When one of its animators has no end, the pictures are those of one
     * round, and the first one follows the last.
     *
     * Empty when the icon cannot be drawn. Costs an icon for each picture, up to four of the limits of one; at most 256
     * pictures and 64 MiB of them. The animation ends early, with an error, when that does not suffice. @since 0.5.1
     */
    QVector<IconFrame> frames(const IconRequest &request);
    /// The same for the icon of @p entry. @since 0.5.1
    QVector<IconFrame> frames(const Entry &entry, const IconRequest &request);
    /// The same for the drawable or colour resource @p id. @since 0.5.1
    QVector<IconFrame> frames(quint32 id, const IconRequest &request);

    /// The reason why the last picture is missing, or not complete; no error before the first one. Reads nothing.
    /// @since 0.5.1
    IconError error() const;

private:
    Q_DISABLE_COPY(DrawableRenderer)

    std::unique_ptr<DrawableRendererPrivate> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::DrawableRenderer)

#endif
