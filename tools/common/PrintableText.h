// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PRINTABLETEXT_H
#define PRINTABLETEXT_H

#include <QString>

/**
 * Whether @p character controls a terminal, or changes the text around it: control characters (C0, DEL and C1),
 * separators of lines and paragraphs, characters that set, override or isolate directions, the byte order mark, and the
 * invisible tag characters.
 */
bool steersText(char32_t character);

/**
 * @p text in a form that is safe for a terminal, on one line. Each character for which steersText() is true, and each
 * lone half of a surrogate pair, becomes U+FFFD.
 */
QString printableText(const QString &text);

/// printableText(@p text) within an isolate of direction when it has characters that are written from right to left. The
/// texts around it then stay in their places, also on a terminal that takes the direction of a line from its content.
/// Marks of direction, which translators write into such texts, are left out.
QString isolatedText(const QString &text);

/// Calls @p take(first, size, character) for each character of @p text: the index of its first UTF-16 unit, its number
/// of units, and its code point. A lone half of a surrogate pair is passed as U+FFFD.
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
