// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONREQUEST_H
#define SORRELKIT_ICONREQUEST_H

#include <SorrelKit/Export.h>
#include <SorrelKit/IconMask.h>

#include <QSharedDataPointer>

namespace SorrelKit {

class IconRequestData;

/**
 * How an icon is to be drawn: its size, its outline, and the device that it is drawn for. New properties may be added;
 * their defaults keep the picture that older programs get.
 *
 *     IconRequest request(48);
 *     request.setDevicePixelRatio(2); // 96 x 96 pixels
 *     request.setMask(IconMask::Circle);
 *
 * Copies share their data and are cheap. Every operation takes constant time. Different objects may be used in
 * different threads.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT IconRequest
{
public:
    /// A square of @p size device-independent pixels a side; the other properties have their defaults.
    explicit IconRequest(int size = 48);
    IconRequest(const IconRequest &other);
    IconRequest(IconRequest &&other) noexcept;
    IconRequest &operator=(const IconRequest &other);
    IconRequest &operator=(IconRequest &&other) noexcept;
    ~IconRequest();
    /// Exchanges the values of two requests.
    void swap(IconRequest &other) noexcept { d.swap(other.d); }

    /// Side of the picture in device-independent pixels. 48 by default.
    int size() const;
    void setSize(int size);
    /// Pixels for each device-independent pixel. 1 by default. QImage::devicePixelRatio() of the picture has it, too.
    qreal devicePixelRatio() const;
    void setDevicePixelRatio(qreal ratio);
    /// Side of the picture in pixels: size() times devicePixelRatio(), rounded. 1 to 1024 can be drawn.
    int pixelSize() const;
    /// The outline that adaptive icons are cut to. IconMask::None by default.
    IconMask mask() const;
    void setMask(IconMask mask);
    /// Whether resources for the night mode (`-night`) are preferred. False by default.
    bool isNight() const;
    void setNight(bool night);
    /// Whether an adaptive icon that has a monochrome layer is drawn as that layer alone, in its own colours and on a
    /// transparent ground, as a host needs it that tints icons. Other icons are drawn as usual. False by default.
    bool isMonochrome() const;
    void setMonochrome(bool monochrome);
    /// API level of the platform whose choice of resources is followed. 0, the default, is the newest.
    int platformVersion() const;
    void setPlatformVersion(int version);

    friend SORRELKIT_EXPORT bool operator==(const IconRequest &a, const IconRequest &b);
    friend bool operator!=(const IconRequest &a, const IconRequest &b) { return !(a == b); }

private:
    QSharedDataPointer<IconRequestData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::IconRequest)

#endif
