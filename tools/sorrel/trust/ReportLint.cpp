// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ReportLint.h"

#include "PackageLint.h"
#include "SignatureLint.h"

void addLint(const PackageReport &report, const ReportContent &content, QJsonObject *json)
{
    if (content.includesLint)
        json->insert(QStringLiteral("lint"), PackageLint(report.file(), {}, SignatureLint::check).toJson());
}
