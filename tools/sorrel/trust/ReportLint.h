// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTLINT_H
#define REPORTLINT_H

#include "ReportPart.h"

/// A ReportPart: the findings of PackageLint and SignatureLint.
void addLint(const PackageReport &report, const ReportContent &content, QJsonObject *json);

#endif
