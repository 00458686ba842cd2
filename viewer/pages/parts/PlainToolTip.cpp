// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/parts/PlainToolTip.h"

#include <QStringList>
#include <QTextDocument>

namespace Viewer {

QString plainToolTip(const QStringList &lines)
{
    QStringList shown;
    for (const QString &line : lines) {
        if (!line.isEmpty())
            shown.append(line);
    }
    return shown.isEmpty() ? QString() : Qt::convertFromPlainText(shown.join(QLatin1Char('\n')), Qt::WhiteSpaceNormal);
}

} // namespace Viewer
