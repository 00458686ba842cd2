// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/SchemeV2.h"

#include "trust/block/SignatureAlgorithms.h"

namespace SorrelKit {

namespace {

using Code = SignatureIssue::Code;

/// A scheme that must not be removed.
constexpr quint32 StrippingProtection = 0xbeeff00d;
constexpr quint32 NumberOfV2 = 2; // protects nothing, and apksigner refuses it
constexpr quint32 NumberOfV3 = 3;

} // namespace

QVector<CheckedSigner> SchemeV2::verify(const ByteView &value, const SdkRange &sdk, bool hasV3)
{
    QVector<CheckedSigner> result;
    int number = 0;
    for (const ByteView &bytes : SignerBlock::signersIn(value, MaxSigners, m_issues)) {
        const QString subject = SignerBlock::subjectOf(++number);
        SignerBlock signer(SignerBlock::Form::V2, subject, m_issues, m_budget);
        if (!signer.verify(bytes, sdk))
            continue;
        for (const SignerBlock::Attribute &attribute : signer.attributes())
            checkAttribute(attribute, subject, sdk, hasV3);
        result.append(signer.result(Signer::Scheme::V2));
    }
    return result;
}

void SchemeV2::checkAttribute(const SignerBlock::Attribute &attribute, const QString &subject, const SdkRange &sdk,
                              bool hasV3)
{
    if (attribute.id != StrippingProtection) {
        m_issues->addWarning(Code::UnknownAttribute, subject, SignatureAlgorithms::idText(attribute.id));
        return;
    }
    PrefixedFields fields(attribute.value);
    const quint32 scheme = fields.u32();
    if (fields.hasFailed() || scheme == NumberOfV2)
        m_issues->addError(Code::BadAttribute, subject, SignatureAlgorithms::idText(attribute.id));
    else if (scheme != NumberOfV3)
        m_issues->addWarning(Code::UnknownScheme, subject, QString::number(scheme));
    else if (!hasV3 && sdk.max >= SdkRange::Pie)
        m_issues->addError(Code::SchemeStripped, subject, QStringLiteral("v3"));
}

} // namespace SorrelKit
