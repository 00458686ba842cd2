// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEVERIFIER_H
#define SORRELKIT_PACKAGEVERIFIER_H

#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "trust/SignaturesData.h"
#include "trust/result/SchemeResult.h"
#include "trust/result/SdkRange.h"

#include <QString>

#include <memory>
#include <vector>

namespace SorrelKit {

class BlockVerifier;

/**
 * Verifies one package by the schemes that Android looks at, and compares their results.
 *
 * | scheme | looked at by API levels | unless                                                        |
 * |--------|-------------------------|---------------------------------------------------------------|
 * | v3.1   | 33 and later            | the signer is for later levels                                |
 * | v3     | 28 and later            | v3.1 counts                                                   |
 * | v2     | 24 and later            | v3 or v3.1 counts                                             |
 * | v1     | all                     | a newer scheme counts                                         |
 * | v4     | 30 and later            | there is no file for it; it counts besides v3.1, v3 or v2     |
 *
 * A newer scheme that is in the package counts, right or wrong: nobody can make Android fall back to an older one by
 * damaging it. The schemes that are verified for different levels must agree on the signer, lineages considered.
 */
class PackageVerifier
{
public:
    /// The demands of the manifest, and the range that was asked for.
    struct Task {
        SdkRange sdk;
        int targetSdkVersion = 0;
        int targetSandboxVersion = 0;
        bool needsV4 = false; ///< a wrong v4 signature is an error, not a warning
    };

    /// Verifies @p package, which is open. @p v4Signature is the file with the v4 signature; null when there is none.
    PackageVerifier(ZipArchive &package, const Task &task, ByteSource *v4Signature, Budget *budget);

    /// The values of Signatures for the package, except its name.
    void moveTo(SignaturesData *data);

private:
    void verifyBlockSchemes(BlockVerifier &block);
    void verifyJar(ZipArchive &package, Budget *budget);
    void verifyV4(ZipArchive &package, ByteSource &v4Signature, Budget *budget);
    void verifyStamp(ZipArchive &package, BlockVerifier &block, Budget *budget);
    void checkTarget();
    void checkAgreement();
    void checkPast(const SchemeResult &newer, const SchemeResult &older);
    void findUncoveredLevels();
    void findWeaknesses();
    bool isDemanded(const SchemeResult &result) const;
    bool hasErrors() const;
    bool hasBlockScheme() const { return m_v2.isFound || m_v3.isFound || m_v31.isFound; }

    const Task m_task;
    SdkRange m_verified; ///< the levels that the schemes in the package are for
    IssueList m_issues;
    SchemeResult m_v1{Signer::Scheme::V1};
    SchemeResult m_v2{Signer::Scheme::V2};
    SchemeResult m_v3{Signer::Scheme::V3};
    SchemeResult m_v31{Signer::Scheme::V31};
    SchemeResult m_v4{Signer::Scheme::V4};
    SchemeResult m_stamp{Signer::Scheme::Stamp};
};

} // namespace SorrelKit

#endif
