// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONREQUEST_H
#define SORRELKIT_ICONREQUEST_H

#include <SorrelKit/IconMask.h>
#include <SorrelKit/KitGuiExport.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <Qt>

namespace SorrelKit {

class IconRequestData;

/**
 * The size and the outline of an icon, and the device that it is drawn for. New properties may be added; their defaults
 * keep the pictures of older programs.
 *
 *     IconRequest request(48);
 *     request.setDevicePixelRatio(2); // 96 x 96 pixels
 *     request.setMask(IconMask::Circle);
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail; DrawableRenderer checks
 * the values. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITGUI_EXPORT IconRequest
{
    Q_GADGET
    Q_PROPERTY(int size READ size WRITE setSize)
    Q_PROPERTY(qreal devicePixelRatio READ devicePixelRatio WRITE setDevicePixelRatio)
    Q_PROPERTY(int pixelSize READ pixelSize)
    Q_PROPERTY(SorrelKit::IconMask mask READ mask WRITE setMask)
    Q_PROPERTY(bool night READ isNight WRITE setNight)
    Q_PROPERTY(bool monochrome READ isMonochrome WRITE setMonochrome)
    Q_PROPERTY(bool round READ isRound WRITE setRound)
    Q_PROPERTY(Qt::LayoutDirection layoutDirection READ layoutDirection WRITE setLayoutDirection)
    Q_PROPERTY(int platformVersion READ platformVersion WRITE setPlatformVersion)
    Q_PROPERTY(Theme theme READ theme WRITE setTheme)
    Q_PROPERTY(quint32 themeStyle READ themeStyle WRITE setThemeStyle)
    Q_PROPERTY(QList<quint32> themeOverlays READ themeOverlays WRITE setThemeOverlays)

public:
    /// The theme that gives attributes (`?attr/x`) their values in drawables and colours. @since 0.5.1
    enum class Theme {
        None,    ///< no theme, as launchers draw icons: attributes have no value
        Package, ///< the activity's, else the application's, else the platform's default for the targeted API level
        Style,   ///< themeStyle()
    };
    Q_ENUM(Theme)

    /// A square with sides of @p size device-independent pixels; the other properties have their defaults. @since 0.5.1
    explicit IconRequest(int size = 48);
    /// A copy of @p other. @since 0.5.1
    IconRequest(const IconRequest &other);
    /// Takes the value of @p other. @since 0.5.1
    IconRequest(IconRequest &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    IconRequest &operator=(const IconRequest &other);
    /// Takes the value of @p other. @since 0.5.1
    IconRequest &operator=(IconRequest &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~IconRequest();
    /// Exchanges the values of two requests. @since 0.5.1
    void swap(IconRequest &other) noexcept { d.swap(other.d); }

    /// Side of the picture in device-independent pixels. 48 by default. @since 0.5.1
    int size() const;
    /// Sets size(). @since 0.5.1
    void setSize(int size);
    /// Pixels for each device-independent pixel, which QImage::devicePixelRatio() of the picture returns, too. 1 by
    /// default.
    /// @since 0.5.1
    qreal devicePixelRatio() const;
    /// Sets devicePixelRatio(). @since 0.5.1
    void setDevicePixelRatio(qreal ratio);
    /// Side of the picture in pixels: size() times devicePixelRatio(), rounded. 1 to 1024 can be drawn. @since 0.5.1
    int pixelSize() const;
    /// The outline that adaptive icons are cut to. IconMask::None by default. @since 0.5.1
    IconMask mask() const;
    /// Sets mask(). @since 0.5.1
    void setMask(IconMask mask);
    /// Whether resources for the night mode (`-night`) are preferred. False by default. @since 0.5.1
    bool isNight() const;
    /// Sets isNight(). @since 0.5.1
    void setNight(bool night);
    /// Whether only the monochrome layer of an adaptive icon is drawn, in its own colours on a transparent background,
    /// for hosts that tint icons. Icons without such a layer are drawn as usual. False by default. @since 0.5.1
    bool isMonochrome() const;
    /// Sets isMonochrome(). @since 0.5.1
    void setMonochrome(bool monochrome);
    /// Whether the icon for round screens and masks (`android:roundIcon`) is drawn where the package has one. Adaptive
    /// icons need none, so current launchers do not ask for it. False by default. @since 0.5.1
    bool isRound() const;
    /// Sets isRound(). @since 0.5.1
    void setRound(bool round);
    /// The direction of the layout of the device. With Qt::RightToLeft, resources for it (`-ldrtl`) are preferred, and
    /// drawables with `android:autoMirrored` are mirrored. Qt::LeftToRight by default; Qt::LayoutDirectionAuto counts as
    /// that. @since 0.5.1
    Qt::LayoutDirection layoutDirection() const;
    /// Sets layoutDirection(). @since 0.5.1
    void setLayoutDirection(Qt::LayoutDirection direction);
    /// API level of the platform that resources are chosen for. 0, the default, is the newest. @since 0.5.1
    int platformVersion() const;
    /// Sets platformVersion(). @since 0.5.1
    void setPlatformVersion(int version);

    /**
     * The theme of the drawable. Theme::None by default. As on Android, the theme of an activity replaces that of the
     * application. DrawableRenderer uses the activity's for the icon of a launcher, also where that takes the place of
     * the application's icon, and the application's for any other picture. Pictures of the platform have the theme of the
     * request, too. The styles are chosen for the device of this request, so isNight() and platformVersion() count.
     *
     * An attribute that has no value leaves out what needs it, and DrawableRenderer::error() names it. Themes of
     * applications inherit from the platform's styles, which only the platform's package has. A theme costs nothing
     * while no attribute is looked up.
     * @since 0.5.1
     */
    Theme theme() const;
    /// Sets theme(). @since 0.5.1
    void setTheme(Theme theme);
    /// The id of the style (0xPPTTEEEE) that is the theme for Theme::Style; not used for others. 0 by default.
    /// @since 0.5.1
    quint32 themeStyle() const;
    /// Sets themeStyle(), and theme() to Theme::Style. @since 0.5.1
    void setThemeStyle(quint32 style);
    /// The ids of styles (`ThemeOverlay`) that are applied over the theme, in this order: their values replace the
    /// theme's. On Android, `android:theme` of a view in a layout is such an overlay; drawables have none of their own.
    /// Not used for Theme::None. Empty by default.
    /// @since 0.5.1
    QList<quint32> themeOverlays() const;
    /// Sets themeOverlays(). @since 0.5.1
    void setThemeOverlays(const QList<quint32> &styles);

    /// Whether two values are equal. @since 0.5.1
    friend SORRELKITGUI_EXPORT bool operator==(const IconRequest &a, const IconRequest &b);
    /// Whether two values are different. @since 0.5.1
    friend SORRELKITGUI_EXPORT bool operator!=(const IconRequest &a, const IconRequest &b);

private:
    QSharedDataPointer<IconRequestData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::IconRequest)
Q_DECLARE_METATYPE(SorrelKit::IconRequest)

#endif
