// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PAGES_H
#define VIEWER_PAGES_H

#include <QList>

class QWidget;

namespace Viewer {

class Page;

/// New pages for a package, in the order in which a person asks: first what it may do. They belong to @p parent.
/// ComparisonPage is not among them.
QList<Page *> makePages(QWidget *parent);

} // namespace Viewer

#endif
