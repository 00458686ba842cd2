// SPDX-License-Identifier: LGPL-2.1-or-later
#include "facts/StatusMark.h"

#include "pages/parts/Contrast.h"

#include <QPainter>
#include <QPainterPath>

namespace Viewer {

namespace {

QPainterPath outline(SignatureState::Kind kind)
{
    QPainterPath path;
    if (kind == SignatureState::Verified || kind == SignatureState::Unknown) {
        path.addEllipse(QRectF(1, 1, 22, 22));
    } else if (kind == SignatureState::Refused) {
        path.addPolygon(
            QPolygonF({{7.5, 1}, {16.5, 1}, {23, 7.5}, {23, 16.5}, {16.5, 23}, {7.5, 23}, {1, 16.5}, {1, 7.5}}));
        path.closeSubpath();
    } else {
        path.addPolygon(QPolygonF({{12, 1.5}, {23.5, 22.5}, {0.5, 22.5}}));
        path.closeSubpath();
    }
    return path;
}

QPainterPath sign(SignatureState::Kind kind)
{
    QPainterPath path;
    switch (kind) {
    case SignatureState::Verified:
        path.moveTo(6.5, 12.5);
        path.lineTo(10.5, 16.5);
        path.lineTo(17.5, 8);
        break;
    case SignatureState::Refused:
        path.moveTo(8, 8);
        path.lineTo(16, 16);
        path.moveTo(16, 8);
        path.lineTo(8, 16);
        break;
    case SignatureState::Failed:
        path.moveTo(12, 9);
        path.lineTo(12, 15);
        path.moveTo(12, 19);
        path.lineTo(12, 19.1);
        break;
    case SignatureState::Unknown:
        for (const qreal x : {7.0, 12.0, 17.0}) {
            path.moveTo(x, 12);
            path.lineTo(x, 12.1);
        }
        break;
    }
    return path;
}

} // namespace

QColor StatusMark::color(SignatureState::Kind kind, const QPalette &palette)
{
    if (kind == SignatureState::Unknown)
        return palette.color(QPalette::WindowText);
    const QColor wanted = kind == SignatureState::Verified ? QColor(0x1e, 0x8e, 0x3e) : QColor(0xd0, 0x21, 0x1c);
    return readable(wanted, palette.color(QPalette::Window));
}

QPixmap StatusMark::pixmap(SignatureState::Kind kind, int size, qreal devicePixelRatio, const QPalette &palette)
{
    QPixmap picture(QSize(size, size) * devicePixelRatio);
    picture.setDevicePixelRatio(devicePixelRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 24.0, size / 24.0);
    painter.fillPath(outline(kind), color(kind, palette));
    painter.strokePath(sign(kind),
                       QPen(palette.color(QPalette::Window), 2.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    return picture;
}

} // namespace Viewer
