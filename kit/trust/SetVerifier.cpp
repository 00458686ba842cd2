// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/SetVerifier.h"

#include "archive/BytesOfFile.h"
#include "package/SetReader.h"
#include "trust/SignerComparison.h"

#include <QFile>

#include <algorithm>
#include <utility>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

/// The budget of opening the packages of a set, which is that of SorrelKit::Package.
constexpr qint64 MaxOpeningWork = 1 << 28;
constexpr qint64 MaxOpeningBytes = 256 << 20;

QString manifestMember()
{
    return QStringLiteral("AndroidManifest.xml");
}

int orDefault(int version, int fallback)
{
    return version > 0 ? version : fallback;
}

QList<SignatureIssue> withPackage(const QList<SignatureIssue> &issues, const QString &package)
{
    QList<SignatureIssue> result;
    for (const SignatureIssue &each : issues) {
        const QString subject = each.subject().isEmpty() ? package : package + QLatin1String(": ") + each.subject();
        result.append(SignatureIssue(each.code(), each.scheme(), subject, each.detail()));
    }
    return result;
}

bool areSame(const SignaturesData &a, const SignaturesData &b)
{
    return SignerComparison::compare(SignerComparison::currentSigners(a), SignerComparison::currentSigners(b))
           == Signer::Match::Same;
}

} // namespace

SetVerifier::SetVerifier(const Package &package, const SignatureRequest &request)
    : m_v4SignatureFile(request.v4SignatureFile())
{
    if (!package.isValid())
        return;
    m_bytes = SORRELKIT_PRIVATE_NAMESPACE::packageBytes(package);
    m_task.sdk.min = orDefault(request.minSdkVersion(), package.minSdkVersion());
    m_task.sdk.max = orDefault(request.maxSdkVersion(), std::numeric_limits<int>::max());
    m_task.targetSdkVersion = package.targetSdkVersion();
    m_task.targetSandboxVersion = m_bytes.targetSandboxVersion;
    m_task.needsV4 = !m_v4SignatureFile.isEmpty();
    auto archive = std::make_unique<ZipArchive>(m_bytes.source);
    if (archive->open())
        m_archive = std::move(archive);
}

void SetVerifier::verify(SignaturesData *result) const
{
    result->errors.clear();
    result->sdk = m_task.sdk;
    if (m_task.sdk.isEmpty()) {
        result->errors.append(SignatureIssue(Code::NoSdkVersion, Signer::Scheme::None, {},
                                             QStringLiteral("%1 to %2").arg(m_task.sdk.min).arg(m_task.sdk.max)));
        return;
    }
    Budget budget(MaxWork, MaxBytes);
    if (!m_archive->contains(manifestMember()) && SetReader::isSet(*m_archive)) {
        verifySet(result, &budget);
        return;
    }
    const std::shared_ptr<ByteSource> v4Signature = openV4Signature();
    if (v4Signature == nullptr && !m_v4SignatureFile.isEmpty())
        result->errors.append(SignatureIssue(Code::BadV4Signature, Signer::Scheme::V4, m_v4SignatureFile,
                                             QStringLiteral("the file cannot be opened")));
    PackageVerifier(*m_archive, m_task, v4Signature.get(), &budget).moveTo(result);
}

void SetVerifier::verifySet(SignaturesData *result, Budget *budget) const
{
    Budget opening(MaxOpeningWork, MaxOpeningBytes);
    SetReader set(*m_archive, opening);
    if (set.base() != nullptr) {
        result->packages.append(verifiedPart(*set.base(), {}, budget));
        for (const SetReader::Split &split : set.splits())
            result->packages.append(verifiedPart(*split.archive, split.name, budget));
    }
    // A package that did not fit was not verified.
    if (opening.isSpent() || result->packages.isEmpty())
        result->errors.append(SignatureIssue(Code::TooCostly, Signer::Scheme::None));
    if (result->packages.isEmpty())
        return;

    const SignaturesData &base = *result->packages.first();
    result->schemes = base.schemes;
    for (const SignaturesData::Pointer &each : qAsConst(result->packages)) {
        const QString name = each->name.isEmpty() ? QStringLiteral("base") : each->name;
        result->errors += withPackage(each->errors, name);
        result->warnings += withPackage(each->warnings, name);
        result->sdk.min = std::max(result->sdk.min, each->sdk.min);
        const auto isMissing = [&each](Signer::Scheme scheme) { return !each->schemes.contains(scheme); };
        result->schemes.erase(std::remove_if(result->schemes.begin(), result->schemes.end(), isMissing),
                              result->schemes.end());
        if (each->isVerified() && base.isVerified() && !areSame(base, *each))
            result->errors.append(SignatureIssue(Code::SetSignersDiffer, Signer::Scheme::None, name));
    }
    if (result->errors.isEmpty()) {
        for (const Signer::Scheme scheme : qAsConst(result->schemes))
            result->signers.insert(scheme, base.signers.value(scheme));
        result->stamp = base.stamp;
    }
}

SignaturesData::Pointer SetVerifier::verifiedPart(ZipArchive &package, const QString &name, Budget *budget) const
{
    SignaturesData::Pointer data(new SignaturesData);
    data->name = name;
    PackageVerifier(package, m_task, nullptr, budget).moveTo(data.data());
    return data;
}

std::shared_ptr<ByteSource> SetVerifier::openV4Signature() const
{
    if (!m_v4SignatureFile.isEmpty())
        return BytesOfFile::open(m_v4SignatureFile);
    return m_bytes.path.isEmpty() ? nullptr : BytesOfFile::openNativePath(m_bytes.path + ".idsig");
}

} // namespace SorrelKit
