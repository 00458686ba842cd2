// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/IconRequest.h>

#include <QSharedData>

namespace SorrelKit {

class IconRequestData : public QSharedData
{
public:
    int size = 48;
    qreal devicePixelRatio = 1;
    IconMask mask = IconMask::None;
    bool isNight = false;
    bool isMonochrome = false;
    bool isRound = false;
    Qt::LayoutDirection layoutDirection = Qt::LeftToRight;
    int platformVersion = 0;
    IconRequest::Theme theme = IconRequest::Theme::None;
    quint32 themeStyle = 0;
    QList<quint32> themeOverlays;
};

IconRequest::IconRequest(int size) : d(new IconRequestData)
{
    d->size = size;
}

IconRequest::IconRequest(const IconRequest &other) = default;
IconRequest::IconRequest(IconRequest &&other) noexcept = default;
IconRequest &IconRequest::operator=(const IconRequest &other) = default;
IconRequest &IconRequest::operator=(IconRequest &&other) noexcept = default;
IconRequest::~IconRequest() = default;

int IconRequest::size() const
{
    return d->size;
}

void IconRequest::setSize(int size)
{
    d->size = size;
}

qreal IconRequest::devicePixelRatio() const
{
    return d->devicePixelRatio;
}

void IconRequest::setDevicePixelRatio(qreal ratio)
{
    d->devicePixelRatio = ratio;
}

int IconRequest::pixelSize() const
{
    // Out of range is out of range: no float that is too large for an int is converted.
    constexpr qreal Beyond = 1 << 20;
    const qreal side = d->size * d->devicePixelRatio;
    return side > 0 ? qRound(qMin(side, Beyond)) : 0;
}

IconMask IconRequest::mask() const
{
    return d->mask;
}

void IconRequest::setMask(IconMask mask)
{
    d->mask = mask;
}

bool IconRequest::isNight() const
{
    return d->isNight;
}

void IconRequest::setNight(bool night)
{
    d->isNight = night;
}

bool IconRequest::isMonochrome() const
{
    return d->isMonochrome;
}

void IconRequest::setMonochrome(bool monochrome)
{
    d->isMonochrome = monochrome;
}

bool IconRequest::isRound() const
{
    return d->isRound;
}

void IconRequest::setRound(bool round)
{
    d->isRound = round;
}

Qt::LayoutDirection IconRequest::layoutDirection() const
{
    return d->layoutDirection;
}

void IconRequest::setLayoutDirection(Qt::LayoutDirection direction)
{
    d->layoutDirection = direction;
}

int IconRequest::platformVersion() const
{
    return d->platformVersion;
}

void IconRequest::setPlatformVersion(int version)
{
    d->platformVersion = version;
}

IconRequest::Theme IconRequest::theme() const
{
    return d->theme;
}

void IconRequest::setTheme(Theme theme)
{
    d->theme = theme;
}

quint32 IconRequest::themeStyle() const
{
    return d->themeStyle;
}

void IconRequest::setThemeStyle(quint32 style)
{
    d->themeStyle = style;
    d->theme = Theme::Style;
}

QList<quint32> IconRequest::themeOverlays() const
{
    return d->themeOverlays;
}

void IconRequest::setThemeOverlays(const QList<quint32> &styles)
{
    d->themeOverlays = styles;
}

bool operator==(const IconRequest &a, const IconRequest &b)
{
    return a.d == b.d
           || (a.size() == b.size() && qFuzzyCompare(a.devicePixelRatio(), b.devicePixelRatio()) && a.mask() == b.mask()
               && a.isNight() == b.isNight() && a.isMonochrome() == b.isMonochrome() && a.isRound() == b.isRound()
               && a.layoutDirection() == b.layoutDirection() && a.platformVersion() == b.platformVersion()
               && a.theme() == b.theme() && a.themeStyle() == b.themeStyle() && a.themeOverlays() == b.themeOverlays());
}

bool operator!=(const IconRequest &a, const IconRequest &b)
{
    return !(a == b);
}

} // namespace SorrelKit
