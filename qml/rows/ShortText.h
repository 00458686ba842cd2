// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_SHORTTEXT_H
#define SORRELQML_SHORTTEXT_H

#include <QString>

namespace SorrelQml {

/// The longest text of a package that a view gets, in UTF-16 units: laying out a text takes time for all of it.
constexpr int MaxTextLength = 1024;

/// The first MaxTextLength units of @p text, without half of a character at the end.
inline QString shortText(const QString &text)
{
    if (text.size() <= MaxTextLength)
        return text;
    return text.left(text.at(MaxTextLength - 1).isHighSurrogate() ? MaxTextLength - 1 : MaxTextLength);
}

} // namespace SorrelQml

#endif
