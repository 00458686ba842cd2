// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/ShownText.h"

#include "PrintableText.h"

#include <QStringList>
#include <QTextDocument>

#include <limits>

namespace Viewer {

QString shownText(const QString &original)
{
    if (original.size() <= MaxShownCharacters)
        return isolatedText(original);
    constexpr int Half = MaxShownCharacters / 2;
    return isolatedText(original.left(Half) + QChar(0x2026) + original.right(Half - 1));
}

QString plainToolTip(const QStringList &lines)
{
    QStringList shown;
    for (const QString &line : lines) {
        if (!line.isEmpty())
            shown.append(line);
    }
    return shown.isEmpty() ? QString() : Qt::convertFromPlainText(shown.join(QLatin1Char('\n')));
}

int leftOut(const QJsonObject &content, int cut)
{
    constexpr double Most = std::numeric_limits<int>::max();
    const double more = content.value(QLatin1String("more")).toDouble();
    return int(qBound(0.0, more, Most - qMax(0, cut))) + qMax(0, cut);
}

} // namespace Viewer
