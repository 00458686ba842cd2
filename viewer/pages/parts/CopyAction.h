// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_COPYACTION_H
#define VIEWER_COPYACTION_H

#include <QString>

#include <functional>

class QWidget;

namespace Viewer {

/// Gives @p widget the action "Copy" in its context menu and with the usual keys. It copies the result of @p text as
/// plain text, unless that is empty.
void addCopyAction(QWidget *widget, const std::function<QString()> &text);

} // namespace Viewer

#endif
