// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIFFPAGE_H
#define DIFFPAGE_H

#include "DiffReport.h"

#include <QByteArray>

/**
 * A report about differences as an HTML page. The page has its style in it and no script, and its policy forbids a browser
 * to load or run anything. It is also well-formed XML. It has every line of the report.
 */
class DiffPage
{
public:
    static QByteArray toHtml(const DiffReport &report);
};

#endif
