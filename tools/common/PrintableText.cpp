// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PrintableText.h"

#include <algorithm>
#include <iterator>

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr Range steeringCharacters[] = {
    {0x00, 0x1f},       // C0 controls
    {0x7f, 0x9f},       // DEL and C1 controls
    {0x061c, 0x061c},   // Arabic letter mark
    {0x200e, 0x200f},   // left-to-right and right-to-left mark
    {0x2028, 0x2029},   // separators of lines and paragraphs
    {0x202a, 0x202e},   // embeddings and overrides of direction
    {0x2066, 0x2069},   // isolates of direction
    {0xfeff, 0xfeff},   // byte order mark
    {0xe0000, 0xe007f}, // tags
};

bool isDirectionMark(char32_t character)
{
    return character == 0x061c || character == 0x200e || character == 0x200f;
}

} // namespace

bool steersText(char32_t character)
{
    if (character >= ' ' && character <= '~')
        return false;
    return std::any_of(std::begin(steeringCharacters), std::end(steeringCharacters),
                       [=](const Range &range) { return character >= range.first && character <= range.last; });
}

QString printableText(const QString &text)
{
    QString printable;
    int written = 0;
    forEachCharacter(text, [&](int first, int size, char32_t character) {
        if (!steersText(character) && character != QChar::ReplacementCharacter)
            return;
        printable += text.mid(written, first - written) + QChar(QChar::ReplacementCharacter);
        written = first + size;
    });
    return written == 0 ? text : printable + text.mid(written);
}

QString isolatedText(const QString &text)
{
    constexpr char16_t FirstStrongIsolate = 0x2068;
    constexpr char16_t PopDirectionalIsolate = 0x2069;
    bool isRightToLeft = false;
    QString unmarked;
    forEachCharacter(text, [&](int first, int size, char32_t character) {
        if (isDirectionMark(character))
            return;
        const QChar::Direction direction = QChar::direction(character);
        isRightToLeft = isRightToLeft || direction == QChar::DirR || direction == QChar::DirAL;
        unmarked += text.mid(first, size);
    });
    return isRightToLeft ? QChar(FirstStrongIsolate) + printableText(unmarked) + QChar(PopDirectionalIsolate)
                         : printableText(text);
}
