// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SampleDrawables.h"

#include "DrawableFixture.h"
#include "icon/IconErrorTable.h"

#include <QFileInfo>

#include <algorithm>

using namespace SorrelKit;

SampleDrawables::SampleDrawables(const QString &app, int pixelsPerDp)
    : m_pixelsPerDp(pixelsPerDp), m_files(QStringLiteral(SORREL_SAMPLES_DIR "/%1.aapt2.apk").arg(app))
{
    constexpr qint64 MaxTableBytes = 16 << 20;
    if (!m_files.open())
        return;
    const auto table = QSharedPointer<const ResourceTable>(
        new ResourceTable(m_files.file(QStringLiteral("resources.arsc"), MaxTableBytes)));
    if (table->fault() == FormatFault::None)
        m_resolver.emplace(QVector<QSharedPointer<const ResourceTable>>{table},
                           Configuration::phone(m_pixelsPerDp * Configuration::MediumDensity));
}

QVector<SampleDrawables::Drawable> SampleDrawables::all() const
{
    constexpr quint32 FirstType = 0x7f010000;
    constexpr quint32 LastType = 0x7fff0000;
    constexpr quint32 TypeStep = 0x10000;
    QVector<Drawable> found;
    for (quint32 type = FirstType; type <= LastType; type += TypeStep) {
        if (m_resolver->typeName(type) != QLatin1String("drawable"))
            continue;
        for (quint32 id = type; id < type + TypeStep; ++id) {
            const ResolvedValue value = m_resolver->resource(id);
            if (value.value.isReference())
                break;
            found.append({QFileInfo(value.text).baseName(), id});
        }
    }
    std::sort(found.begin(), found.end(), [](const Drawable &a, const Drawable &b) { return a.name < b.name; });
    return found;
}

QSizeF SampleDrawables::intrinsicSize(const Drawable &drawable)
{
    Budget budget = fixture::iconBudget();
    const DrawablePointer loaded =
        DrawableInflater(*m_resolver, m_files, budget, m_pixelsPerDp).fromResource(drawable.id);
    return loaded == nullptr ? QSizeF() : loaded->intrinsicSize();
}

SampleDrawables::Drawing SampleDrawables::draw(const Drawable &drawable, int side, IconMask mask)
{
    Budget budget = fixture::iconBudget();
    DrawableInflater loader(*m_resolver, m_files, budget, m_pixelsPerDp);
    loader.setIconMask(mask);
    const DrawablePointer loaded = loader.fromResource(drawable.id);
    if (loaded == nullptr)
        return {QImage(), IconErrorTable::iconError(loader.error()).text()};
    Canvas canvas(QSize(side, side), budget);
    loaded->draw(canvas, QRectF(0, 0, side, side));
    return {canvas.image(), IconErrorTable::iconError(loader.error()).text()};
}

QString maskName(IconMask mask)
{
    switch (mask) {
    case IconMask::Circle:
        return QStringLiteral("circle");
    case IconMask::RoundedSquare:
        return QStringLiteral("rounded_square");
    case IconMask::Squircle:
        return QStringLiteral("squircle");
    case IconMask::None:
        break;
    }
    return QStringLiteral("none");
}
