// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/text/TextMatches.h"

#include <QStringMatcher>

#include <algorithm>

namespace Viewer {

TextMatches::TextMatches(const QString &text, const QString &wanted)
{
    const QString pattern = wanted.left(MaxWanted);
    m_length = int(pattern.size());
    if (pattern.isEmpty())
        return;
    const QStringMatcher matcher(pattern, Qt::CaseInsensitive);
    for (int at = int(matcher.indexIn(text)); at >= 0; at = int(matcher.indexIn(text, at + m_length))) {
        m_isCut = m_places.size() == MaxMatches;
        if (m_isCut)
            return;
        m_places.append(at);
    }
}

int TextMatches::nextFrom(int position) const
{
    if (m_places.isEmpty())
        return -1;
    const auto found = std::lower_bound(m_places.begin(), m_places.end(), position);
    return found == m_places.end() ? 0 : int(found - m_places.begin());
}

int TextMatches::lastBefore(int position) const
{
    if (m_places.isEmpty())
        return -1;
    const auto found = std::lower_bound(m_places.begin(), m_places.end(), position);
    return found == m_places.begin() ? count() - 1 : int(found - m_places.begin()) - 1;
}

} // namespace Viewer
