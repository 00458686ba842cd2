// SPDX-License-Identifier: LGPL-2.1-or-later
#include "drawable/ScaleDrawable.h"

#include "drawable/source/DrawableAttributes.h"

#include <cmath>
#include <utility>

namespace SorrelKit {

namespace {

constexpr qreal NoShare = -1;

// The share is a text, "30%", or a fraction.
qreal share(const DrawableAttributes &attributes, quint32 id)
{
    qreal share = attributes.ratio(id, NoShare);
    QString text = attributes.text(id);
    if (text.endsWith(QLatin1Char('%'))) {
        text.chop(1);
        bool isNumber = false;
        const qreal percent = text.toDouble(&isNumber);
        share = isNumber && std::isfinite(percent) ? percent / 100 : NoShare;
    }
    return qMin(share, qreal(1));
}

qreal scaledSide(qreal side, qreal minimum, qreal share, qreal missing)
{
    return share > 0 ? side - (side - minimum) * missing * share : side;
}

} // namespace

ScaleDrawable::ScaleDrawable(DrawablePointer drawable, int level) : m_drawable(std::move(drawable)), m_level(level) {}

DrawablePointer ScaleDrawable::fromXml(const XmlElement &element, DrawableLoader &loader)
{
    DrawablePointer drawable = loader.fromRequiredItem(element);
    if (drawable == nullptr)
        return nullptr;
    const DrawableAttributes attributes(element, loader);
    auto scaled =
        std::make_unique<ScaleDrawable>(std::move(drawable), qBound(0, attributes.integer(Attr::Level, 0), MaxLevel));
    scaled->m_shares = {share(attributes, Attr::ScaleWidth), share(attributes, Attr::ScaleHeight)};
    scaled->m_gravity = attributes.gravity(Attr::ScaleGravity, Gravity::Left);
    scaled->m_hasMinimum = attributes.boolean(Attr::UseIntrinsicSizeAsMinimum, false);
    return scaled;
}

void ScaleDrawable::draw(Canvas &canvas, const QRectF &bounds) const
{
    if (m_level == 0)
        return;
    const qreal missing = qreal(MaxLevel - m_level) / MaxLevel;
    const QSizeF minimum = m_hasMinimum ? m_drawable->intrinsicSize().expandedTo(QSizeF(0, 0)) : QSizeF(0, 0);
    const QSizeF size(scaledSide(bounds.width(), minimum.width(), m_shares.width(), missing),
                      scaledSide(bounds.height(), minimum.height(), m_shares.height(), missing));
    m_drawable->draw(canvas, Gravity::apply(m_gravity, size, bounds));
}

} // namespace SorrelKit
