// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/SchemeV3.h"

#include "trust/block/Lineage.h"
#include "trust/block/SignatureAlgorithms.h"

#include <algorithm>

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

constexpr quint32 LineageAttribute = 0x3ba06f8c;
constexpr quint32 RotationMinSdk = 0x559f8b02;
constexpr quint32 RotationOnDevelopment = 0xc2a6b3ba;

QString rangeText(int min, int max)
{
    return QStringLiteral("%1 to %2").arg(min).arg(max);
}

} // namespace

QVector<CheckedSigner> SchemeV3::verify(const ByteView &value, const SdkRange &sdk)
{
    QVector<Attributed> signers;
    int number = 0;
    for (const ByteView &bytes : SignerBlock::signersIn(value, MaxSigners, m_issues)) {
        SignerBlock block(SignerBlock::Form::V3, SignerBlock::subjectOf(++number), m_issues, m_budget);
        if (!block.verify(bytes, sdk))
            continue;
        Attributed signer;
        signer.signer = block.result(m_scheme);
        for (const SignerBlock::Attribute &attribute : block.attributes()) {
            if (!checkAttribute(attribute, sdk, &signer))
                break;
        }
        signers.append(signer);
    }
    if (m_issues->hasErrors())
        return {};

    std::stable_sort(signers.begin(), signers.end(), [](const Attributed &a, const Attributed &b) {
        return a.signer.verified.signer.maxSdkVersion < b.signer.verified.signer.maxSdkVersion;
    });
    checkRanges(signers, sdk);
    checkLineages(signers);
    QVector<CheckedSigner> result;
    for (const Attributed &each : qAsConst(signers))
        result.append(each.signer);
    return result;
}

bool SchemeV3::checkAttribute(const SignerBlock::Attribute &attribute, const SdkRange &sdk, Attributed *signer)
{
    const QString &subject = signer->signer.subject;
    if (attribute.id == LineageAttribute)
        return readLineage(attribute.value, signer);
    if (attribute.id == RotationMinSdk && m_scheme == Signer::Scheme::V3)
        return checkRotation(attribute, sdk, subject);
    if (attribute.id == RotationOnDevelopment && m_scheme == Signer::Scheme::V31)
        signer->isForDevelopment = true;
    else
        m_issues->addWarning(Code::UnknownAttribute, subject, SignatureAlgorithms::idText(attribute.id));
    return true;
}

bool SchemeV3::checkRotation(const SignerBlock::Attribute &attribute, const SdkRange &sdk, const QString &subject)
{
    PrefixedFields fields(attribute.value);
    const quint32 minSdk = fields.u32();
    if (fields.hasFailed()) {
        m_issues->addError(Code::BadAttribute, subject, SignatureAlgorithms::idText(attribute.id));
        return false;
    }
    if (m_rotationMinSdk.has_value() && quint32(*m_rotationMinSdk) != minSdk) {
        m_issues->addError(Code::SdkVersionsDiffer, subject, QStringLiteral("v3 and v3.1"));
        return false;
    }
    if (!m_hasV31 && sdk.max >= SdkRange::Tiramisu && quint32(sdk.max) >= minSdk) {
        m_issues->addError(Code::SchemeStripped, subject, QStringLiteral("v3.1"));
        return false;
    }
    return true;
}

bool SchemeV3::readLineage(const ByteView &value, Attributed *signer)
{
    SignerFields &fields = signer->signer.verified.signer;
    const QString &subject = signer->signer.subject;
    if (!fields.lineage.isEmpty()) {
        m_issues->addError(Code::BadAttribute, subject, SignatureAlgorithms::idText(LineageAttribute));
        return false;
    }
    Lineage lineage;
    if (!lineage.read(value, m_budget)) {
        m_issues->addError(lineage.fault(), subject, lineage.faultDetail());
        return false;
    }
    if (lineage.levels().last().certificate() != fields.certificate) {
        m_issues->addError(Code::LineageDiffers, subject);
        return false;
    }
    fields.lineage = lineage.levels();
    return true;
}

void SchemeV3::checkRanges(const QVector<Attributed> &signers, const SdkRange &sdk)
{
    for (int i = 1; i < signers.size(); ++i) {
        const int last = signers.at(i - 1).signer.verified.signer.maxSdkVersion;
        const SignerFields &fields = signers.at(i).signer.verified.signer;
        const bool isBehind = fields.minSdkVersion > last;
        if (!isBehind && !(fields.minSdkVersion == last && signers.at(i).isForDevelopment)) {
            m_issues->addError(Code::SdkVersionsOverlap, signers.at(i).signer.subject,
                               rangeText(fields.minSdkVersion, fields.maxSdkVersion));
        } else if (isBehind && fields.minSdkVersion - 1 != last) {
            m_issues->addError(Code::SdkVersionsUncovered, QString(), rangeText(last + 1, fields.minSdkVersion - 1));
        }
    }
    const int first = signers.first().signer.verified.signer.minSdkVersion;
    const int last = signers.last().signer.verified.signer.maxSdkVersion;
    SdkRange wanted = sdk;
    if (m_scheme == Signer::Scheme::V31)
        wanted = sdk.from(first); // v3 covers the versions before
    else if (m_rotationMinSdk.has_value())
        wanted.max = std::min(sdk.max, std::max(*m_rotationMinSdk, int(SdkRange::Tiramisu)) - 1);
    if (!wanted.isEmpty() && (first > wanted.min || last < wanted.max))
        m_issues->addError(Code::SdkVersionsUncovered, QString(), rangeText(wanted.min, wanted.max));
}

// The lineage of a signer for newer versions continues that of the signer before.
void SchemeV3::checkLineages(const QVector<Attributed> &signers)
{
    QList<PastSigner> lineage;
    for (const Attributed &each : signers) {
        const SignerFields &fields = each.signer.verified.signer;
        if (fields.lineage.isEmpty())
            continue;
        if (!Lineage::begins(lineage, fields.lineage)) {
            m_issues->addError(Code::LineageDiffers, each.signer.subject);
            return;
        }
        lineage = fields.lineage;
    }
}

} // namespace SorrelKit
