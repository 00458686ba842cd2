// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PLAINTOOLTIP_H
#define VIEWER_PLAINTOOLTIP_H

#include <QString>

namespace Viewer {

/// The tooltip for @p lines, each a result of safeText() or a text of our own; empty ones are left out. Tooltips are
/// rich text for Qt, so this is markup that shows exactly these lines.
QString plainToolTip(const QStringList &lines);

} // namespace Viewer

#endif
