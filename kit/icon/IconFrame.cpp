// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/IconFrame.h>

#include <QSharedData>

namespace SorrelKit {

class IconFrameData : public QSharedData
{
public:
    QImage image;
    int duration = 0;
};

IconFrame::IconFrame() : d(new IconFrameData) {}
IconFrame::IconFrame(const QImage &image, int duration) : IconFrame()
{
    d->image = image;
    d->duration = duration;
}

IconFrame::IconFrame(const IconFrame &other) = default;
IconFrame::IconFrame(IconFrame &&other) noexcept = default;
IconFrame &IconFrame::operator=(const IconFrame &other) = default;
IconFrame &IconFrame::operator=(IconFrame &&other) noexcept = default;
IconFrame::~IconFrame() = default;

QImage IconFrame::image() const
{
    return d->image;
}

int IconFrame::duration() const
{
    return d->duration;
}

} // namespace SorrelKit
