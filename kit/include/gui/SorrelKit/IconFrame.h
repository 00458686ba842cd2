// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONFRAME_H
#define SORRELKIT_ICONFRAME_H

#include <SorrelKit/KitGuiExport.h>

#include <QImage>
#include <QMetaType>
#include <QSharedDataPointer>

namespace SorrelKit {

class IconFrameData;

/**
 * A picture of an animated icon, and how long it is shown. DrawableRenderer::frames() returns these.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITGUI_EXPORT IconFrame
{
    Q_GADGET
    Q_PROPERTY(QImage image READ image CONSTANT)
    Q_PROPERTY(int duration READ duration CONSTANT)

public:
    /// A frame without a picture. @since 0.5.1
    IconFrame();
    /// @p image for @p duration. @since 0.5.1
    IconFrame(const QImage &image, int duration);
    /// A copy of @p other. @since 0.5.1
    IconFrame(const IconFrame &other);
    /// Takes the value of @p other. @since 0.5.1
    IconFrame(IconFrame &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    IconFrame &operator=(const IconFrame &other);
    /// Takes the value of @p other. @since 0.5.1
    IconFrame &operator=(IconFrame &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~IconFrame();
    /// Exchanges the values of two frames. @since 0.5.1
    void swap(IconFrame &other) noexcept { d.swap(other.d); }

    /// The picture. @since 0.5.1
    QImage image() const;
    /// Milliseconds for which the picture is shown. 0 for a picture that stays: it is the last one. When the last one
    /// has a duration, the first one follows it. @since 0.5.1
    int duration() const;

private:
    QSharedDataPointer<IconFrameData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::IconFrame)
Q_DECLARE_METATYPE(SorrelKit::IconFrame)

#endif
