// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/color/Tint.h"

#include "drawable/source/DrawableAttributes.h"

#include <QPainter>
#include <QRgba64>

namespace SorrelKit {

namespace {

QPainter::CompositionMode compositionMode(Tint::Mode mode)
{
    switch (mode) {
    case Tint::Mode::SourceOver:
        return QPainter::CompositionMode_SourceOver;
    case Tint::Mode::SourceAtop:
        return QPainter::CompositionMode_SourceAtop;
    case Tint::Mode::Screen:
        return QPainter::CompositionMode_Screen;
    case Tint::Mode::Add:
        return QPainter::CompositionMode_Plus;
    case Tint::Mode::SourceIn:
    case Tint::Mode::Multiply:
        break;
    }
    return QPainter::CompositionMode_SourceIn;
}

Tint::Mode modeOf(int value)
{
    switch (value) {
    case int(Tint::Mode::SourceOver):
    case int(Tint::Mode::SourceAtop):
    case int(Tint::Mode::Multiply):
    case int(Tint::Mode::Screen):
    case int(Tint::Mode::Add):
        return Tint::Mode(value);
    default:
        return Tint::Mode::SourceIn;
    }
}

// The product of two channels, where 255 means 1.
int product(int a, int b)
{
    return (a * b + 127) / 255;
}

} // namespace

std::optional<Tint> Tint::fromAttributes(const DrawableAttributes &attributes, DrawableLoader &loader)
{
    if (!attributes.has(Attr::Tint))
        return std::nullopt;
    const QColor color = attributes.color(Attr::Tint, QColor());
    if (color.isValid())
        return Tint(color, modeOf(attributes.integer(Attr::TintMode, int(Mode::SourceIn))));
    loader.setError(DrawableFault::TintWithoutColor);
    return std::nullopt;
}

void Tint::apply(QImage *layer, qreal opacity) const
{
    QPainter painter(layer);
    if (opacity < 1) {
        // With integers: QColor::setAlphaF() rounds differently in Qt 6, where it takes a float.
        constexpr quint16 FullAlpha = 0xffff;
        const auto alpha = quint16(qRound(qMax(qreal(0), opacity) * FullAlpha));
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(layer->rect(), QColor(QRgba64::fromRgba64(0, 0, 0, alpha)));
    }
    painter.setCompositionMode(compositionMode(m_mode));
    if (m_mode != Mode::Multiply)
        painter.fillRect(layer->rect(), m_color);
    painter.end();
    if (m_mode == Mode::Multiply)
        multiply(layer);
}

bool Tint::isUnbounded() const
{
    return m_mode == Mode::SourceOver || m_mode == Mode::Screen || m_mode == Mode::Add;
}

// QPainter's Multiply shows each of the two where the other is transparent.
void Tint::multiply(QImage *layer) const
{
    const QRgb tint = qPremultiply(m_color.rgba());
    for (int y = 0; y < layer->height(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(layer->scanLine(y));
        for (int x = 0; x < layer->width(); ++x) {
            const QRgb pixel = line[x];
            line[x] = qRgba(product(qRed(pixel), qRed(tint)), product(qGreen(pixel), qGreen(tint)),
                            product(qBlue(pixel), qBlue(tint)), product(qAlpha(pixel), qAlpha(tint)));
        }
    }
}

} // namespace SorrelKit
