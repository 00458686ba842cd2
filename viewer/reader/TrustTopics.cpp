// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TrustTopics.h"

#include "DiffJson.h"
#include "DrawnIconCheck.h"
#include "PackageLint.h"
#include "Protocol.h"
#include "SignatureLint.h"
#include "SignatureReport.h"

QJsonObject Viewer::TrustTopics::signature()
{
    return SignatureReport::toJson(signatures());
}

QJsonObject Viewer::TrustTopics::lint()
{
    const auto check = [this](const SorrelKit::Package &, FindingList *findings) {
        SignatureLint(signatures(), findings).run();
    };
    const PackageLint lint(m_subject.file, DrawnIconCheck::make, check);
    ItemList items(Protocol::MaxItems);
    for (const Finding &finding : lint.findings())
        items.add({
            {QStringLiteral("check"), finding.check},
            {QStringLiteral("severity"), severityName(finding.severity)},
            {QStringLiteral("message"), cutText(finding.text)},
            {QStringLiteral("subject"), cutText(finding.subject)},
        });
    return items.toJson();
}

QJsonObject Viewer::TrustTopics::diff(const FileName &before, const FileName &after)
{
    const DiffSide first(before);
    const DiffSide second(after);
    for (const DiffSide *side : {&first, &second}) {
        if (!side->package.isValid())
            return {{QStringLiteral("error"), cutText(side->package.error().message())}};
    }
    const SorrelKit::PackageDiff diff(first.package, second.package, first.signatures, second.signatures);
    return DiffJson::toJson(first, second, diff,
                            [](const SorrelKit::Signatures &each) { return SignatureReport::signerJson(each); });
}

const SorrelKit::Signatures &Viewer::TrustTopics::signatures()
{
    if (!m_signatures)
        m_signatures.emplace(m_subject.package);
    return *m_signatures;
}
