// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef REPORTICON_H
#define REPORTICON_H

#include "ReportPart.h"

/// A ReportPart: the icon as a PNG picture, in Base64.
void addIcon(const PackageReport &report, const ReportContent &content, QJsonObject *json);
/// A ReportPart: the icons of each launcher, of each kind in the content; without a launcher, those of the package as
/// launcher 0. The key "launcherIcons" is for the index alone.
void addLauncherIcons(const PackageReport &report, const ReportContent &content, QJsonObject *json);

#endif
