// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportSignatures.h"

#include "SignatureReport.h"

using SorrelKit::Signatures;

void addSignatures(const PackageReport &report, const ReportContent &content, QJsonObject *json)
{
    if (content.includesSignatures)
        json->insert(QStringLiteral("signatures"), SignatureReport::toJson(Signatures(report.package())));
}

ReportRows signerRows(const PackageReport &report)
{
    return SignatureReport::signerRows(Signatures(report.package()));
}

void addSigner(const PackageReport &report, QJsonObject *json)
{
    json->insert(QStringLiteral("signer"), SignatureReport::signerJson(Signatures(report.package())));
}
