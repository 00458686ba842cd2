// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNERWEAKNESSES_H
#define SORRELKIT_SIGNERWEAKNESSES_H

#include "trust/result/IssueList.h"

#include <SorrelKit/Certificate.h>

#include <QDateTime>
#include <QSet>

namespace SorrelKit {

/// Finds what is weak about the certificates of a package. Android minds none of it.
class SignerWeaknesses
{
public:
    /// Bits of a modulus or a prime p that nobody is expected to break (NIST SP 800-57 Part 1).
    static constexpr int MinModulusBits = 2048;

    /// Adds warnings to @p issues, which outlives this object. The validity is compared with @p now.
    explicit SignerWeaknesses(IssueList *issues, const QDateTime &now = QDateTime::currentDateTimeUtc());

    /// Warns once for each weakness of @p certificate, whichever schemes have it.
    void find(const Certificate &certificate);

private:
    IssueList *m_issues;
    const QDateTime m_now;
    QSet<QByteArray> m_known; ///< certificates, in DER
};

} // namespace SorrelKit

#endif
