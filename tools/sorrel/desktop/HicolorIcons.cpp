// SPDX-License-Identifier: LGPL-2.1-or-later
#include "HicolorIcons.h"

#include <limits>

using SorrelKit::Entry;
using SorrelKit::IconFile;

namespace {

// The largest size that does not enlarge a picture.
int largestSize(const Entry &launcher)
{
    int largest = 0;
    for (const IconFile &file : launcher.iconFiles()) {
        if (file.size().isEmpty())
            return std::numeric_limits<int>::max();
        largest = qMax(largest, qMax(file.size().width(), file.size().height()));
    }
    return largest;
}

} // namespace

HicolorIcons::HicolorIcons(SorrelKit::DrawableRenderer &renderer, const Entry &launcher, SorrelKit::IconMask mask)
{
    const int largest = largestSize(launcher);
    QStringList missing;
    for (const int size : sizes()) {
        // A picture below the smallest size is enlarged to that size.
        if (size > largest && size != sizes().constFirst())
            break;
        SorrelKit::IconRequest request(size);
        request.setMask(mask);
        const QImage picture = renderer.icon(launcher, request);
        const QString fault = renderer.error().text();
        if (picture.isNull())
            missing.append(QString::number(size));
        else
            m_pictures.append(picture);
        if (!fault.isEmpty() && !m_faults.contains(fault))
            m_faults.append(fault);
    }
    if (m_pictures.isEmpty() && m_faults.isEmpty())
        m_faults.append(QStringLiteral("there is no icon"));
    if (!m_pictures.isEmpty() && !missing.isEmpty())
        m_faults.prepend(QStringLiteral("there is no icon of %1 pixels").arg(missing.join(QLatin1String(", "))));
}

QString HicolorIcons::path(const QString &name, int size)
{
    return QStringLiteral("icons/hicolor/%1x%1/apps/%2.png").arg(QString::number(size), name);
}
