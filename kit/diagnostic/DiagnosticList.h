// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DIAGNOSTICLIST_H
#define SORRELKIT_DIAGNOSTICLIST_H

#include "oddity/OddityList.h"

#include <SorrelKit/Diagnostic.h>

#include <QList>
#include <QString>

namespace SorrelKit {

/// Makes the public diagnostics of oddities.
class DiagnosticList
{
public:
    /// Appends a diagnostic for each of @p oddities, which are in the file @p path of the package @p package (see
    /// Diagnostic).
    void append(const OddityList &oddities, const QString &package, const QString &path);

    /// Whether Android 14 refuses a package for @p diagnostic.
    static bool isRefusedToday(const Diagnostic &diagnostic)
    {
        constexpr int Android14 = 34;
        return diagnostic.isRefused() && diagnostic.firstSdkVersion() <= Android14
               && (diagnostic.lastSdkVersion() == 0 || diagnostic.lastSdkVersion() >= Android14);
    }

    const QList<Diagnostic> &all() const { return m_diagnostics; }

private:
    QList<Diagnostic> m_diagnostics;
};

} // namespace SorrelKit

#endif
