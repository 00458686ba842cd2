// SPDX-License-Identifier: LGPL-2.1-or-later
#include "icon/IconRenderer.h"

#include "drawable/AdaptiveIcon.h"
#include "drawable/BitmapDrawable.h"
#include "drawable/DrawableInflater.h"
#include "drawable/paint/Canvas.h"
#include "drawable/source/AnimationClock.h"
#include "icon/IconErrorTable.h"
#include "limits/Budget.h"
#include "package/IconFileLookup.h"
#include "theme/Theme.h"

#include <algorithm>

namespace SorrelKit {

namespace {

// A picture file of an icon, not decoded.
struct Picture {
    OwnedPath path;
    QSize size;
};

int densityOf(int size, int dp)
{
    return qBound(1, size * Configuration::MediumDensity / dp, 0xffff);
}

// The phone that the icon is drawn for.
Configuration deviceOf(const IconRequest &request, int dp)
{
    Configuration device = Configuration::phone(densityOf(request.pixelSize(), dp));
    if (request.isNight())
        device.uiModeNight = Configuration::Night;
    if (request.layoutDirection() == Qt::RightToLeft)
        device.layoutDirection = Configuration::RightToLeft;
    if (request.platformVersion() > 0)
        device.sdkVersion = request.platformVersion();
    return device;
}

void applyStyles(const IconRequest &request, quint32 packageTheme, Theme *theme)
{
    const bool isPackages = request.theme() == IconRequest::Theme::Package;
    theme->applyStyle(isPackages ? packageTheme : request.themeStyle(), Theme::Apply::Forced);
    for (const quint32 overlay : request.themeOverlays())
        theme->applyStyle(overlay, Theme::Apply::Forced);
}

int side(QSize size)
{
    return qMax(size.width(), size.height());
}

// The size of an adaptive icon is fixed, whatever sizes its layers have.
QSizeF sizeOf(const Drawable &drawable, qreal pixelsPerDp)
{
    constexpr qreal Units = AdaptiveIcon::VisibleUnits;
    const bool isAdaptive = dynamic_cast<const AdaptiveIcon *>(&drawable) != nullptr;
    return isAdaptive ? QSizeF(Units, Units) * pixelsPerDp : drawable.intrinsicSize();
}

// Draws it in the middle of the canvas, as large as it fits.
void drawFitted(const Drawable &drawable, QSizeF own, Canvas &canvas)
{
    const QSizeF room = canvas.size();
    const QSizeF size(own.width() > 0 ? own.width() : room.width(), own.height() > 0 ? own.height() : room.height());
    const qreal scale = qMin(room.width() / size.width(), room.height() / size.height());
    canvas.painter().translate((room.width() - size.width() * scale) / 2, (room.height() - size.height() * scale) / 2);
    canvas.painter().scale(scale, scale);
    drawable.draw(canvas, QRectF(QPointF(), size));
}

} // namespace

QImage IconRenderer::icon(const ResolvedValue &icon, const IconRequest &request)
{
    const int size = request.pixelSize();
    return picture(icon, request, {{size, size}, IconDp});
}

QImage IconRenderer::banner(const ResolvedValue &banner, const IconRequest &request)
{
    const int height = request.pixelSize();
    return picture(banner, request, {{qRound(height * BannerAspect), height}, BannerDp});
}

QVector<IconFrame> IconRenderer::frames(const ResolvedValue &icon, const IconRequest &request)
{
    QVector<IconFrame> frames;
    const int size = request.pixelSize();
    const Format format{{size, size}, IconDp};
    if (!isDrawable(format))
        return frames;
    const qint64 frameCount = qMin(qint64(MaxFrames), MaxFrameBytes / (4 * qint64(size) * size));
    int drawnCount = 0;
    qint64 workLeft = MaxFramesWork;
    qint64 period = 0;
    qint64 time = 0;
    qint64 end = 0;
    do {
        const qint64 work = qMin(workLeft, MaxWork);
        Budget budget(work, MaxBytes);
        AnimationClock clock(time);
        QImage image = drawn(icon, request, format, budget, &clock);
        workLeft -= work - budget.workLeft();
        const bool isCut = ++drawnCount > MaxDrawnFrames || (work < MaxWork && budget.isSpent());
        if (isCut)
            setError({DrawableFault::TooMuchDrawing, QString()});
        if (isCut || image.isNull())
            break;
        image.setDevicePixelRatio(request.devicePixelRatio());
        const bool isSame = !frames.isEmpty() && frames.constLast().image() == image;
        if (!isSame && frames.size() >= frameCount) {
            setError({DrawableFault::TooMuchDrawing, QString()});
            break;
        }
        // An animation may begin within another one, so the end of all may move.
        period = qMax(period, clock.period());
        end = period > 0 ? (time / period + 1) * period : AnimationClock::MaxTime;
        const qint64 delay = qMin(clock.delay(), end - time);
        if (isSame)
            frames.last() = IconFrame(image, delay > 0 ? frames.constLast().duration() + int(delay) : 0);
        else
            frames.append(IconFrame(image, int(delay)));
        time = delay > 0 ? time + delay : end;
    } while (time < end);
    return frames;
}

bool IconRenderer::isDrawable(const Format &format)
{
    m_error = {};
    if (format.size.height() >= MinSize && format.size.width() <= MaxSize)
        return true;
    setError({DrawableFault::InvalidSize, QString()});
    return false;
}

QImage IconRenderer::picture(const ResolvedValue &icon, const IconRequest &request, const Format &format)
{
    if (!isDrawable(format))
        return {};
    Budget budget(MaxWork, MaxBytes);
    QImage image = drawn(icon, request, format, budget);
    image.setDevicePixelRatio(request.devicePixelRatio());
    return image;
}

QImage IconRenderer::drawn(const ResolvedValue &icon, const IconRequest &request, const Format &format, Budget &budget,
                           AnimationClock *clock)
{
    const ResourceResolver resolver = m_resolver.forDevice(deviceOf(request, format.dp), &budget);
    Theme theme(resolver);
    // One inflater for the drawable and the pictures, so that no file is read or decoded twice.
    DrawableInflater loader(resolver, m_files, budget, qreal(format.size.height()) / format.dp);
    const ResolvedValue best = icon.resource != 0 ? resolver.resource(icon.resource) : icon;
    if (best.text.isEmpty() && !best.value.isColor()) {
        if (best.resource == 0)
            setError({format.dp == BannerDp ? DrawableFault::NoBanner : DrawableFault::NoIcon, QString()});
        else
            setError(loader.missing(best));
        return {};
    }
    if (request.theme() != IconRequest::Theme::None) {
        applyStyles(request, m_packageTheme, &theme);
        loader.setTheme(&theme);
    }
    loader.setIconMask(request.mask());
    loader.setMonochrome(request.isMonochrome());
    loader.setClock(clock);
    const bool isPicture = best.value.type == ValueType::String && !loader.isDocument(best.file());
    QImage image = isPicture ? QImage() : drawn(best, loader, format.size);
    if (image.isNull()) {
        if (clock != nullptr)
            *clock = AnimationClock(clock->time());
        image = bestPicture(IconFileLookup::candidates(icon, resolver, &budget), loader, format.size);
    }
    if (image.isNull())
        setError({DrawableFault::UndecodableIcon, best.text});
    return image;
}

QImage IconRenderer::drawn(const ResolvedValue &value, DrawableLoader &loader, QSize size)
{
    // Made first, so that loading leaves room for it.
    Canvas canvas(size, loader.budget());
    const DrawablePointer drawable = loader.fromValue(value);
    if (drawable == nullptr) {
        setError(loader.error());
        return {};
    }
    drawFitted(*drawable, sizeOf(*drawable, loader.pixelsPerDp()), canvas);
    setError(loader.error());
    if (canvas.isSpent())
        setError({DrawableFault::TooMuchDrawing, QString()});
    return canvas.image();
}

QImage IconRenderer::bestPicture(const QVector<ResolvedValue> &candidates, DrawableLoader &loader, QSize size)
{
    QVector<Picture> pictures;
    for (const ResolvedValue &candidate : candidates) {
        const Picture picture{candidate.file(), loader.pictureSize(candidate.file())};
        if (!picture.size.isEmpty())
            pictures.append(picture);
    }
    // The pictures that are large enough first, from small to large; then the others, from large to small.
    std::stable_sort(pictures.begin(), pictures.end(), [wanted = side(size)](const Picture &a, const Picture &b) {
        const bool isEnough = side(a.size) >= wanted;
        if (isEnough != (side(b.size) >= wanted))
            return isEnough;
        return isEnough ? side(a.size) < side(b.size) : side(a.size) > side(b.size);
    });
    for (const Picture &picture : pictures) {
        const QImage image = loader.picture(picture.path);
        if (image.isNull())
            continue;
        Canvas canvas(size, loader.budget());
        drawFitted(BitmapDrawable(image, image.size()), image.size(), canvas);
        if (!canvas.isSpent())
            return canvas.image();
        setError({DrawableFault::TooMuchDrawing, QString()});
    }
    return {};
}

IconError IconRenderer::error() const
{
    return IconErrorTable::iconError(m_error);
}

void IconRenderer::setError(const DrawableError &error)
{
    if (!m_error)
        m_error = error;
}

} // namespace SorrelKit
