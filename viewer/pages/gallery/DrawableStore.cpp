// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/gallery/DrawableStore.h"

#include "pages/parts/PngPicture.h"
#include "reading/SafeText.h"

namespace Viewer {

DrawableStore::DrawableStore(QObject *parent) : QObject(parent), m_drawables(MaxBytes) {}

const DrawableStore::Drawable *DrawableStore::look(const QString &name)
{
    const Drawable *const known = m_drawables.object(name);
    if (known == nullptr && name.size() <= MaxNameLength && m_pending.size() < MaxPending
        && !m_pending.contains(name)) {
        m_pending.insert(name);
        Q_EMIT wants({{QStringLiteral("want"), QStringLiteral("drawable")},
                      {QStringLiteral("name"), name},
                      {QStringLiteral("size"), m_side}});
    }
    return known;
}

void DrawableStore::setSide(int pixels)
{
    m_side = qBound(1, pixels, MaxSide);
}

void DrawableStore::take(const QJsonObject &content)
{
    const QString name = content.value(QLatin1String("name")).toString();
    // An answer that was not asked for replaces nothing.
    if (!m_pending.remove(name))
        return;
    auto *const drawable = new Drawable;
    drawable->picture = pngPicture(content.value(QLatin1String("png")), MaxSide);
    drawable->error = safeText(content.value(QLatin1String("error")).toString());
    if (drawable->picture.isNull() && drawable->error.isEmpty())
        drawable->error = tr("This drawable has no picture.");
    constexpr int BytesBesides = 4096;
    const qint64 bytes =
        qint64(drawable->picture.bytesPerLine()) * drawable->picture.height() + BytesBesides + 2 * qint64(name.size());
    m_drawables.insert(name, drawable, int(qMin(bytes, qint64(MaxBytes))));
    Q_EMIT changed();
}

void DrawableStore::clear()
{
    m_drawables.clear();
    m_pending.clear();
}

} // namespace Viewer
