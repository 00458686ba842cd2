// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SCHEMEV3_H
#define SORRELKIT_SCHEMEV3_H

#include "trust/block/SignerBlock.h"

#include <optional>

namespace SorrelKit {

/**
 * The signers of v3 or v3.1, which have the same form. Each is for some API levels, so that a package has an old key for
 * old versions of Android, and a new one for newer versions. Exactly one must be for each version that is asked for.
 *
 * A version before 33 looks at v3 alone. Newer ones look at v3.1 first, and at v3 when no signer of v3.1 is for them. So
 * v3 covers the versions before the first of v3.1. An attribute of v3 has the number of that version, and thereby shows
 * that v3.1 was not removed.
 */
class SchemeV3
{
public:
    /// Signers of a package. There is one for each change of the key.
    static constexpr int MaxSigners = 64;

    /// The scheme is V3 or V31. Issues are added to @p issues. Both pointers outlive this object.
    SchemeV3(Signer::Scheme scheme, IssueList *issues, Budget *budget)
        : m_scheme(scheme), m_issues(issues), m_budget(budget)
    {
    }

    /// The first API level of the signers of v3.1, when these verified. SchemeV3 uses it.
    void setRotation(int minSdk) { m_rotationMinSdk = minSdk; }
    /// Whether the block has a value of v3.1, right or not. SchemeV3 uses it.
    void setHasV31(bool hasV31) { m_hasV31 = hasV31; }
    /// Verifies the signers in @p value for the versions @p sdk. Without errors, the result has all signers.
    QVector<CheckedSigner> verify(const ByteView &value, const SdkRange &sdk);

private:
    struct Attributed {
        CheckedSigner signer;
        bool isForDevelopment =
            false; ///< its first version is one in development, which has the number of the last one
    };

    bool checkAttribute(const SignerBlock::Attribute &attribute, const SdkRange &sdk, Attributed *signer);
    bool checkRotation(const SignerBlock::Attribute &attribute, const SdkRange &sdk, const QString &subject);
    bool readLineage(const ByteView &value, Attributed *signer);
    void checkRanges(const QVector<Attributed> &signers, const SdkRange &sdk);
    void checkLineages(const QVector<Attributed> &signers);

    const Signer::Scheme m_scheme;
    IssueList *m_issues;
    Budget *m_budget;
    std::optional<int> m_rotationMinSdk;
    bool m_hasV31 = false;
};

} // namespace SorrelKit

#endif
