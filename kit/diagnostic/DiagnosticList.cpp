// SPDX-License-Identifier: LGPL-2.1-or-later
#include "diagnostic/DiagnosticList.h"

#include "diagnostic/DiagnosticData.h"

#include <limits>

namespace SorrelKit {

void DiagnosticList::append(const OddityList &oddities, const QString &package, const QString &path)
{
    for (const OddityList::Item &item : oddities.items()) {
        Diagnostic diagnostic;
        diagnostic.d->row = DiagnosticTable::row(item.oddity);
        diagnostic.d->detail = item.detail;
        diagnostic.d->count = int(qMin(item.count, qint64(std::numeric_limits<int>::max())));
        diagnostic.d->package = package;
        diagnostic.d->path = path;
        m_diagnostics.append(diagnostic);
    }
}

} // namespace SorrelKit
