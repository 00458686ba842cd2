// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTPART_H
#define REPORTPART_H

#include "PackageReport.h"
#include "ReportContent.h"

#include <QJsonObject>

/// Adds a part to @p json, the report @p report, when @p content asks for it. Only some programs have a part.
using ReportPart = void (*)(const PackageReport &report, const ReportContent &content, QJsonObject *json);

#endif
