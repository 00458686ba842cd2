// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DIAGNOSTICDATA_H
#define SORRELKIT_DIAGNOSTICDATA_H

#include "diagnostic/DiagnosticTable.h"

#include <QSharedData>
#include <QString>

namespace SorrelKit {

class DiagnosticData : public QSharedData
{
public:
    const DiagnosticTable::Row *row = nullptr; ///< null when nothing is odd
    QString detail;
    int count = 0;
    QString package;
    QString path;
};

} // namespace SorrelKit

#endif
