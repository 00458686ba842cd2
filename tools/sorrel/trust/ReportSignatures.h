// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTSIGNATURES_H
#define REPORTSIGNATURES_H

#include "ReportPart.h"
#include "ReportRows.h"

/// A ReportPart: the report of `sorrel verify`.
void addSignatures(const PackageReport &report, const ReportContent &content, QJsonObject *json);

/// The signer, for `sorrel info --signer`: in lines for people, and added to @p json for programs.
ReportRows signerRows(const PackageReport &report);
void addSigner(const PackageReport &report, QJsonObject *json);

#endif
