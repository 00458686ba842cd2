// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SHOWNTEXT_H
#define VIEWER_SHOWNTEXT_H

#include <QJsonObject>
#include <QString>

namespace Viewer {

/// The most UTF-16 units of a stranger's text that a view shows.
constexpr int MaxShownCharacters = 1024;

/**
 * The text @p original of a stranger as a view shows it: one line, without characters that steer the text around it, and
 * isolated when it is written from right to left. The middle of a text above MaxShownCharacters is left out. Apply it once
 * to each text, because it also removes the isolates of an earlier result.
 */
QString shownText(const QString &original);

/// The tooltip for @p lines, each a result of shownText() or a text of our own; empty ones are left out. Tooltips are rich
/// text for Qt, so this is markup that shows exactly these lines.
QString plainToolTip(const QStringList &lines);

/// The number of items that are left out of a list: @p cut by the caller, and "more" of @p content by the reader.
int leftOut(const QJsonObject &content, int cut);

} // namespace Viewer

#endif
