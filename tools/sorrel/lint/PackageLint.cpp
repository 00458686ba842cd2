// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageLint.h"

#include "ArchiveLint.h"
#include "DiagnosticLint.h"
#include "FindingList.h"
#include "LauncherLint.h"
#include "ReaderLint.h"
#include "UsedPlatform.h"

#include <QJsonObject>

PackageLint::PackageLint(const FileName &file, const IconCheckFactory &makeIconCheck,
                         const SignatureCheck &checkSignatures)
{
    FindingList findings;
    ArchiveLint archive(file, &findings);
    archive.run();
    const SorrelKit::Package package = UsedPlatform::package(file);
    m_errorCode = int(package.error().code());
    m_errorText = package.error().message();
    DiagnosticLint::run(package, &findings);
    ReaderLint(file, package, &findings).run();
    if (package.isValid()) {
        archive.checkTable(package.targetSdkVersion());
        const std::unique_ptr<IconCheck> icons = makeIconCheck ? makeIconCheck(package, &findings) : nullptr;
        LauncherLint(package, icons.get(), &findings).run();
        if (checkSignatures)
            checkSignatures(package, &findings);
    }
    m_findings = findings.findings();
}

QJsonArray PackageLint::toJson() const
{
    QJsonArray array;
    for (const Finding &finding : m_findings)
        array.append(QJsonObject{{QStringLiteral("check"), finding.check},
                                 {QStringLiteral("severity"), severityName(finding.severity)},
                                 {QStringLiteral("subject"), finding.subject},
                                 {QStringLiteral("text"), finding.text}});
    return array;
}
