// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONRENDERER_H
#define SORRELKIT_ICONRENDERER_H

#include "archive/FileSource.h"
#include "drawable/source/Drawable.h"
#include "drawable/source/DrawableError.h"
#include "limits/Budget.h"
#include "resources/ResourceResolver.h"

#include <SorrelKit/IconError.h>
#include <SorrelKit/IconFrame.h>
#include <SorrelKit/IconRequest.h>

#include <QImage>
#include <QVector>

namespace SorrelKit {

class AnimationClock;
class DrawableLoader;

/**
 * Draws icons. The resource that the device of the request prefers is drawn when it is XML or a colour. Otherwise, or
 * when that fails, the picture file whose size fits best is used.
 */
class IconRenderer
{
public:
    /// Pixels of a side of a picture.
    static constexpr int MinSize = 1;
    static constexpr int MaxSize = 1024;
    /// The side of an icon in dp. The requested pixels divided by this side give the density of the device.
    static constexpr int IconDp = 48;
    /// The height of a banner in dp, and its width for each unit of its height: 160 x 90 dp.
    static constexpr int BannerDp = 90;
    static constexpr qreal BannerAspect = 16.0 / 9;

    /// The budget of one icon. The work takes about 0.7 s. The bytes are enough for a picture of 2508 x 2508 pixels in
    /// a masked icon of MaxSize.
    static constexpr qint64 MaxWork = 128 << 20;
    static constexpr qint64 MaxBytes = 56 << 20;

    /// Frames of an animated icon, pictures that are drawn for them, the frames' bytes, and the work of drawing them all.
    /// A picture that equals the one before makes no frame of its own.
    static constexpr int MaxFrames = 256;
    static constexpr int MaxDrawnFrames = 1024;
    static constexpr qint64 MaxFrameBytes = 64 << 20;
    static constexpr qint64 MaxFramesWork = 4 * MaxWork;

    /// Both outlive this object.
    IconRenderer(const ResourceResolver &resolver, FileSource &files) : m_resolver(resolver), m_files(files) {}

    /// Sets the style that IconRequest::Theme::Package stands for; 0, none, by default.
    void setPackageTheme(quint32 style) { m_packageTheme = style; }

    /// Draws the icon that the reference or path @p icon names. A null image, with an error, when it cannot be drawn.
    QImage icon(const ResolvedValue &icon, const IconRequest &request);
    /// Draws the banner that the reference or path @p banner names, as icon() does. The size of the request is its height.
    QImage banner(const ResolvedValue &banner, const IconRequest &request);
    /// The pictures of the icon, as icon() draws them, at the times at which it changes; empty, with an error, when it
    /// cannot be drawn. Frames that do not fit in MaxFrames, MaxDrawnFrames, MaxFrameBytes and MaxFramesWork are left out, with an error.
    QVector<IconFrame> frames(const ResolvedValue &icon, const IconRequest &request);
    /// Why the last icon is not, or not wholly, drawn as the package describes it; no error when it is.
    IconError error() const;

private:
    /// The size of a picture in pixels, and its height on the device in dp.
    struct Format {
        QSize size;
        int dp = 0;
    };
    /// Whether the size can be drawn; sets an error when it cannot.
    bool isDrawable(const Format &format);
    QImage picture(const ResolvedValue &icon, const IconRequest &request, const Format &format);
    QImage drawn(const ResolvedValue &icon, const IconRequest &request, const Format &format, Budget &budget,
                 AnimationClock *clock = nullptr);
    QImage drawn(const ResolvedValue &value, DrawableLoader &loader, QSize size);
    QImage bestPicture(const QVector<ResolvedValue> &candidates, DrawableLoader &loader, QSize size);
    void setError(const DrawableError &error);

    const ResourceResolver &m_resolver;
    FileSource &m_files;
    quint32 m_packageTheme = 0;
    DrawableError m_error;
};

} // namespace SorrelKit

#endif
