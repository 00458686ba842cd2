// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportDrawnLint.h"

#include "DrawnIconCheck.h"
#include "PackageLint.h"
#include "SignatureLint.h"

void addDrawnLint(const PackageReport &report, const ReportContent &content, QJsonObject *json)
{
    if (!content.includesLint)
        return;
    const IconCheckFactory icons = content.lintDrawsIcons ? DrawnIconCheck::make : IconCheckFactory();
    json->insert(QStringLiteral("lint"), PackageLint(report.file(), icons, SignatureLint::check).toJson());
}
