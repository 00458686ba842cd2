// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SafeText.h"

#include "PrintableText.h"

namespace {

constexpr char16_t FirstStrongIsolate = 0x2068;
constexpr char16_t PopDirectionalIsolate = 0x2069;

QString cutLine(const QString &text)
{
    constexpr char16_t Ellipsis = 0x2026;
    // Only a part of a huge text is looked at. White space may be most of it.
    QString line = text.left(2 * Viewer::MaxSafeText).simplified();
    if (text.size() <= 2 * Viewer::MaxSafeText && line.size() <= Viewer::MaxSafeText)
        return line;
    return line.left(Viewer::MaxSafeText) + QChar(Ellipsis);
}

} // namespace

QString Viewer::safeText(const QString &text)
{
    return isolatedText(cutLine(text));
}

QString Viewer::safePart(const QString &text)
{
    QString safe = safeText(text);
    if (safe.isEmpty() || safe.startsWith(QChar(FirstStrongIsolate)))
        return safe;
    return QChar(FirstStrongIsolate) + safe + QChar(PopDirectionalIsolate);
}

QString Viewer::safeLines(const QString &text)
{
    QString safe;
    safe.reserve(text.size());
    int start = 0;
    while (start <= text.size()) {
        int end = int(text.indexOf(QLatin1Char('\n'), start));
        if (end < 0)
            end = int(text.size());
        // A tab moves nothing but what follows it on the line.
        safe += isolatedText(text.mid(start, end - start).replace(QLatin1Char('\t'), QLatin1String("    ")));
        if (end < text.size())
            safe += QLatin1Char('\n');
        start = end + 1;
    }
    return safe;
}
