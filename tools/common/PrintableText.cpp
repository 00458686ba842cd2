// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PrintableText.h"

namespace {

bool steers(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
           || category == QChar::Separator_Paragraph || (character >= QChar(0x202a) && character <= QChar(0x202e))
           || (character >= QChar(0x2066) && character <= QChar(0x2069));
}

} // namespace

QString printableText(QString text)
{
    for (QChar &character : text) {
        if (steers(character))
            character = QChar::ReplacementCharacter;
    }
    return text;
}
