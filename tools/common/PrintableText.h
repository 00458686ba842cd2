// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PRINTABLETEXT_H
#define PRINTABLETEXT_H

#include <QString>

/**
 * Whether @p character steers a terminal, or changes how the text around it is shown: control characters (C0, DEL and C1),
 * separators of lines and paragraphs, everything that sets, overrides or isolates directions, the byte order mark, and
 * tag characters, which are invisible.
 */
bool steersText(char32_t character);

/**
 * @p text as a terminal may show it: on one line, and steering nothing. Each character that steersText(), and each half of
 * a surrogate pair that is alone, becomes U+FFFD.
 */
QString printableText(const QString &text);

/// Calls @p take(first, size, character) for each character of @p text: its first UTF-16 unit, how many units it has, and
/// its code point. A half of a surrogate pair that is alone is passed as U+FFFD.
template <typename Take>
void forEachCharacter(const QString &text, const Take &take)
{
    for (int at = 0; at < text.size();) {
        const QChar unit = text.at(at);
        const bool isPair = unit.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
        char32_t character = unit.isSurrogate() ? char32_t(QChar::ReplacementCharacter) : char32_t(unit.unicode());
        if (isPair)
            character = QChar::surrogateToUcs4(unit, text.at(at + 1));
        const int size = isPair ? 2 : 1;
        take(at, size, character);
        at += size;
    }
}

#endif
