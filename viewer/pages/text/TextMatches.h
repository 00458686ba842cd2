// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_TEXTMATCHES_H
#define VIEWER_TEXTMATCHES_H

#include <QString>
#include <QVector>

namespace Viewer {

/// The places of a text in a longer one, in their order, capital and small letters alike. They do not overlap.
class TextMatches
{
public:
    static constexpr int MaxMatches = 10000;
    static constexpr int MaxWanted = 256; ///< UTF-16 units of the text that is looked for

    TextMatches() = default;
    /// The first MaxMatches places of @p wanted, cut to MaxWanted, in @p text; none for an empty text.
    TextMatches(const QString &text, const QString &wanted);

    int count() const { return int(m_places.size()); }
    /// Whether there are more than count() matches.
    bool isCut() const { return m_isCut; }
    int place(int match) const { return m_places.at(match); }
    int length() const { return m_length; }
    /// The first match at @p position or behind it, or else the first one of all; -1 when there is none.
    int nextFrom(int position) const;
    /// The last match that begins before @p position, or else the last one of all; -1 when there is none.
    int lastBefore(int position) const;

private:
    QVector<int> m_places;
    int m_length = 0;
    bool m_isCut = false;
};

} // namespace Viewer

#endif
