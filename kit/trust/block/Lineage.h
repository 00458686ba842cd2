// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LINEAGE_H
#define SORRELKIT_LINEAGE_H

#include "format/ByteView.h"

#include <SorrelKit/PastSigner.h>
#include <SorrelKit/SignatureIssue.h>

#include <QList>
#include <QString>

class Budget;

namespace SorrelKit {

/**
 * The lineage of a signer who changed the key (APK Signature Scheme v3, "Proof-of-rotation"): all certificates, from the
 * first to the current one. The owner of each signed the next:
 *
 *     version, which is 1
 *     (level)...
 *         (signed data)
 *             (certificate)
 *             algorithm of the signature by the level before
 *         flags: PastSigner::Capabilities
 *         algorithm by which this level signs the next
 *         (signature by the level before)
 *
 * The first level is signed by nobody. The signer of the package signs the whole lineage, as an attribute.
 */
class Lineage
{
public:
    /// Levels of a lineage. Each is a key that was replaced.
    static constexpr int MaxLevels = 64;

    /// Reads @p value, and verifies the signature of each level. False when there is a fault().
    bool read(const ByteView &value, Budget *budget);

    /// BadLineage, BadCertificate, or TooCostly.
    SignatureIssue::Code fault() const { return m_fault; }
    QString faultDetail() const { return m_faultDetail; }
    /// The certificates. The last one has all capabilities.
    const QList<PastSigner> &levels() const { return m_levels; }
    /// Whether @p first has the first certificates of @p all, in the same order.
    static bool begins(const QList<PastSigner> &first, const QList<PastSigner> &all);

private:
    bool fail(SignatureIssue::Code code, const QString &detail);
    bool readLevel(const ByteView &bytes, quint32 *algorithm, Budget *budget);
    bool verifyLevel(quint32 algorithm, const ByteView &signature, const ByteView &signedData, Budget *budget);

    QList<PastSigner> m_levels;
    SignatureIssue::Code m_fault = SignatureIssue::Code::None;
    QString m_faultDetail;
};

} // namespace SorrelKit

#endif
