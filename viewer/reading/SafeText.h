// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SAFETEXT_H
#define VIEWER_SAFETEXT_H

#include <QString>

/// Texts of strangers in widgets. A widget must be told that they are plain text: these functions do not escape markup.
namespace Viewer {

/// Characters that safeText() returns. Laying out longer texts takes a widget noticeable time.
constexpr int MaxSafeText = 1024;

/// @p text for a field of its own: one line of at most MaxSafeText characters and an ellipsis, without characters that
/// change the text around it (isolatedText()). White space of any kind becomes single spaces.
QString safeText(const QString &text);
/// The same for a part of a sentence, isolated in any case: the sentence may be written from right to left.
QString safePart(const QString &text);
/// @p text of several lines, of any length, with the same replacements in each line.
QString safeLines(const QString &text);

} // namespace Viewer

#endif
