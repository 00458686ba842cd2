// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SHOWNXML_H
#define VIEWER_SHOWNXML_H

#include <QString>

namespace Viewer {

/// A document of a stranger as an editor shows it: the lines from its beginning that an editor lays out without delay.
/// The middle of a long line is left out.
class ShownXml
{
public:
    static constexpr int MaxCharacters = 1 << 21;
    static constexpr int MaxLines = 1 << 16;
    static constexpr int MaxLineLength = 4096;

    explicit ShownXml(const QString &original);

    const QString &text() const { return m_text; }
    /// The number of characters that are left out, at the end and in lines.
    int leftOut() const { return m_leftOut; }

private:
    QString m_text;
    int m_leftOut = 0;
};

} // namespace Viewer

#endif
