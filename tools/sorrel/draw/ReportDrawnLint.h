// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTDRAWNLINT_H
#define REPORTDRAWNLINT_H

#include "ReportPart.h"

/// A ReportPart: the findings of PackageLint and SignatureLint, with those of DrawnIconCheck when the content asks for them.
void addDrawnLint(const PackageReport &report, const ReportContent &content, QJsonObject *json);

#endif
