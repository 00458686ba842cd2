// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/FactList.h"

#include <QJsonArray>

#include <limits>

namespace Viewer {

FactList::FactList(const QJsonObject &content, int maxItems)
{
    const QJsonArray all = content.value(QLatin1String("items")).toArray();
    const int count = qMin(int(all.size()), maxItems);
    for (int i = 0; i < count; ++i) {
        if (all.at(i).isObject())
            m_items.append(all.at(i).toObject());
    }
    const int cut = int(all.size()) - count;
    const double more = content.value(QLatin1String("more")).toDouble();
    m_leftOut = cut + int(qBound(0.0, more, double(std::numeric_limits<int>::max() - cut)));
}

} // namespace Viewer
