// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/PackageVerifier.h"

#include "trust/SignerWeaknesses.h"
#include "trust/block/BlockVerifier.h"
#include "trust/jar/JarVerifier.h"
#include "trust/stamp/StampVerifier.h"
#include "trust/v4/V4Verifier.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

/// A package in a sandbox of this version needs v2 at least.
constexpr int SandboxWithScheme = 2;

QSet<QByteArray> certificatesOf(const SchemeResult &result)
{
    QSet<QByteArray> certificates;
    for (const VerifiedSigner &each : result.signers)
        certificates.insert(each.signer.certificate.der());
    return certificates;
}

/// The first API level of a signer by v3.1; that of the scheme when the signature is wrong.
int firstLevelOf(const SchemeResult &v31)
{
    int first = std::numeric_limits<int>::max();
    for (const VerifiedSigner &each : v31.signers)
        first = std::min(first, each.signer.minSdkVersion);
    return v31.signers.isEmpty() ? int(SdkRange::Tiramisu) : std::max(first, int(SdkRange::Tiramisu));
}

QString levels(int first, int last)
{
    if (first == last)
        return QStringLiteral("API level %1").arg(first);
    return last == std::numeric_limits<int>::max() ? QStringLiteral("API level %1 and later").arg(first)
                                                   : QStringLiteral("API levels %1 to %2").arg(first).arg(last);
}

} // namespace

PackageVerifier::PackageVerifier(ZipArchive &package, const Task &task, ByteSource *v4Signature, Budget *budget)
    : m_task(task), m_verified(task.sdk)
{
    BlockVerifier block(package.source(), package.directory(), budget);
    verifyBlockSchemes(block);
    if (m_task.sdk.min < SdkRange::Nougat || !hasBlockScheme())
        verifyJar(package, budget);
    checkTarget();
    checkAgreement();
    findUncoveredLevels();
    if (v4Signature != nullptr && m_task.sdk.max >= SdkRange::R)
        verifyV4(package, *v4Signature, budget);
    verifyStamp(package, block, budget);
    findWeaknesses();
}

void PackageVerifier::verifyBlockSchemes(BlockVerifier &block)
{
    m_v31 = block.verifyV31(m_task.sdk.from(SdkRange::Tiramisu));
    SdkRange ofV3 = m_task.sdk.from(SdkRange::Pie);
    if (m_v31.isFound) {
        const int first = firstLevelOf(m_v31);
        ofV3.max = std::min(ofV3.max, first - 1);
        if (first > m_task.sdk.max)
            m_v31 = SchemeResult(Signer::Scheme::V31); // no version in the range looks at it
    }
    m_v3 = block.verifyV3(ofV3);
    SdkRange ofV2 = m_task.sdk.from(SdkRange::Nougat);
    if (m_v3.isFound || m_v31.isFound)
        ofV2.max = std::min(ofV2.max, SdkRange::Pie - 1);
    m_v2 = block.verifyV2(ofV2);
}

void PackageVerifier::verifyJar(ZipArchive &package, Budget *budget)
{
    QVector<int> found;
    if (m_v2.isFound)
        found.append(2);
    if (m_v3.isFound || m_v31.isFound)
        found.append(3);
    m_v1 = JarVerifier(package, budget).verify(m_task.sdk, found);
    if (m_v1.isFound)
        return;
    if (hasBlockScheme())
        m_issues.addError(Code::SchemeRequired, {},
                          QStringLiteral("v1 for ") + levels(m_task.sdk.min, SdkRange::Nougat - 1));
    else
        m_issues.addError(Code::NotSigned);
}

void PackageVerifier::verifyV4(ZipArchive &package, ByteSource &v4Signature, Budget *budget)
{
    const std::array<const SchemeResult *, 3> newestFirst{&m_v31, &m_v3, &m_v2};
    const auto counterpart =
        std::find_if(newestFirst.cbegin(), newestFirst.cend(), [](const SchemeResult *each) { return each->isFound; });
    m_v4 = V4Verifier::verify(package.source(), v4Signature, counterpart == newestFirst.cend() ? m_v2 : **counterpart,
                              budget);
}

void PackageVerifier::checkTarget()
{
    if (hasBlockScheme())
        return;
    if (m_task.sdk.max >= SdkRange::R && m_task.targetSdkVersion >= SdkRange::R)
        m_issues.addError(Code::SchemeRequired, {},
                          QStringLiteral("v2 for target API level %1").arg(m_task.targetSdkVersion));
    if (m_task.sdk.max >= SdkRange::Oreo && m_task.targetSandboxVersion >= SandboxWithScheme)
        m_issues.addError(Code::SchemeRequired, {},
                          QStringLiteral("v2 for target sandbox version %1").arg(m_task.targetSandboxVersion));
}

void PackageVerifier::checkAgreement()
{
    if (m_v1.isVerified() && m_v2.isVerified() && certificatesOf(m_v1) != certificatesOf(m_v2))
        m_issues.addError(Code::SignersDiffer, {}, QStringLiteral("v1 and v2"));
    checkPast(m_v31, m_v3);
    checkPast(m_v31, m_v2);
    checkPast(m_v31, m_v1);
    checkPast(m_v3, m_v2);
    checkPast(m_v3, m_v1);
}

/// The signer of an older scheme must be in the lineage of each of the newer one, which has one for each API level.
void PackageVerifier::checkPast(const SchemeResult &newer, const SchemeResult &older)
{
    if (!newer.isVerified() || !older.isVerified())
        return;
    const bool isOlderOfLevels = older.scheme == Signer::Scheme::V3;
    bool isPast = isOlderOfLevels || older.signers.size() == 1;
    for (const VerifiedSigner &each : newer.signers) {
        QSet<QByteArray> known{each.signer.certificate.der()};
        for (const PastSigner &past : each.signer.lineage)
            known.insert(past.certificate().der());
        isPast = isPast && known.contains(certificatesOf(older));
    }
    if (!isPast)
        m_issues.addError(Code::SignersDiffer, {},
                          Signer::schemeName(older.scheme) + QLatin1String(" and ") + Signer::schemeName(newer.scheme));
}

/// Without v2, versions of Android before v3 look for v1, which is verified only for those before v2.
void PackageVerifier::findUncoveredLevels()
{
    if (!m_v3.isFound && !m_v31.isFound)
        return;
    const int first = m_v3.isFound ? SdkRange::Pie : SdkRange::Tiramisu;
    if (m_task.sdk.min >= first || m_v2.isFound || m_v1.isFound)
        return;
    m_verified.min = first;
    if (m_task.sdk.min >= SdkRange::Nougat)
        m_issues.addWarning(Code::SdkVersionsUncovered, {}, levels(m_task.sdk.min, first - 1));
}

void PackageVerifier::verifyStamp(ZipArchive &package, BlockVerifier &block, Budget *budget)
{
    if (hasErrors())
        return;
    m_stamp = StampVerifier::verify(package, block.block(), {m_v1, m_v2, m_v3, m_v31}, budget);
}

void PackageVerifier::findWeaknesses()
{
    SignerWeaknesses weaknesses(&m_issues);
    for (const SchemeResult *const each : {&m_v1, &m_v2, &m_v3, &m_v31}) {
        for (const VerifiedSigner &signer : each->signers)
            weaknesses.find(signer.signer.certificate);
    }
}

// Android ignores a v4 signature that it does not need, so one that nobody named may be stale.
bool PackageVerifier::isDemanded(const SchemeResult &result) const
{
    return result.scheme != Signer::Scheme::V4 || m_task.needsV4;
}

bool PackageVerifier::hasErrors() const
{
    const std::array<const SchemeResult *, 5> schemes{&m_v1, &m_v2, &m_v3, &m_v31, &m_v4};
    return m_issues.hasErrors() || std::any_of(schemes.cbegin(), schemes.cend(), [this](const SchemeResult *each) {
               return each->isFound && each->issues.hasErrors() && isDemanded(*each);
           });
}

void PackageVerifier::moveTo(SignaturesData *data)
{
    data->sdk = m_verified;
    data->errors += m_issues.errors();
    data->warnings += m_issues.warnings();
    for (const SchemeResult *const each : {&m_v1, &m_v2, &m_v3, &m_v31, &m_v4}) {
        if (each->isFound) {
            QList<SignatureIssue> &severe = isDemanded(*each) ? data->errors : data->warnings;
            severe += each->issues.errors();
            data->warnings += each->issues.warnings();
        }
        if (!each->isVerified())
            continue;
        data->schemes.append(each->scheme);
        QList<Signer> &signers = data->signers[each->scheme];
        for (const VerifiedSigner &signer : each->signers)
            signers.append(signer.signer.toSigner());
    }
    data->warnings += m_stamp.issues.errors();
    data->warnings += m_stamp.issues.warnings();
    if (m_stamp.isVerified())
        data->stamp = m_stamp.signers.first().signer.certificate;
}

} // namespace SorrelKit
