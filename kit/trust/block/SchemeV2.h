// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SCHEMEV2_H
#define SORRELKIT_SCHEMEV2_H

#include "trust/block/SignerBlock.h"

namespace SorrelKit {

/// The signers of v2, all of whom must be right. An attribute of each may name a newer scheme, which must then be in the
/// package for versions of Android that know it.
class SchemeV2
{
public:
    /// Signers of a package, Android's limit.
    static constexpr int MaxSigners = 10;

    /// Issues are added to @p issues. Both pointers outlive this object.
    SchemeV2(IssueList *issues, Budget *budget) : m_issues(issues), m_budget(budget) {}

    /// Verifies the signers in @p value for the versions @p sdk. @p hasV3 is whether the block has a value of v3.
    /// Without errors, the result has all signers.
    QVector<CheckedSigner> verify(const ByteView &value, const SdkRange &sdk, bool hasV3);

private:
    void checkAttribute(const SignerBlock::Attribute &attribute, const QString &subject, const SdkRange &sdk,
                        bool hasV3);

    IssueList *m_issues;
    Budget *m_budget;
};

} // namespace SorrelKit

#endif
