// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/text/ShownXml.h"

#include "reading/SafeText.h"

namespace Viewer {

ShownXml::ShownXml(const QString &original)
{
    QString cut;
    int start = 0;
    for (int line = 0; line < MaxLines && start < original.size() && cut.size() < MaxCharacters; ++line) {
        int end = int(original.indexOf(QLatin1Char('\n'), start));
        if (end < 0)
            end = int(original.size());
        const int length = end - start;
        if (line > 0)
            cut += QLatin1Char('\n');
        if (length > MaxLineLength) {
            cut += original.mid(start, MaxLineLength / 2) + QChar(0x2026)
                   + original.mid(end - MaxLineLength / 2, MaxLineLength / 2);
            m_leftOut += length - MaxLineLength;
        } else {
            cut += original.mid(start, length);
        }
        start = end + 1;
    }
    m_leftOut += qMax(0, int(original.size()) - start);
    m_text = safeLines(cut);
}

} // namespace Viewer
