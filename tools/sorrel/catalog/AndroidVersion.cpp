// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidVersion.h"

namespace {

constexpr int PreviewLevel = 10000;

// Index 0 is API level 1.
constexpr const char *versions[] = {
    "1.0", "1.1", "1.5",   "1.6", "2.0", "2.0.1", "2.1", "2.2",  "2.3", "2.3.3", "3.0", "3.1",
    "3.2", "4.0", "4.0.3", "4.1", "4.2", "4.3",   "4.4", "4.4W", "5.0", "5.1",   "6.0", "7.0",
    "7.1", "8.0", "8.1",   "9",   "10",  "11",    "12",  "12L",  "13",  "14",    "15",  "16",
};
constexpr int newestLevel = int(sizeof versions / sizeof versions[0]);

} // namespace

QString AndroidVersion::text(int apiLevel)
{
    if (apiLevel < 1)
        return {};
    if (apiLevel == PreviewLevel)
        return QStringLiteral("a preview of Android");
    if (apiLevel > newestLevel)
        return QStringLiteral("SDK %1").arg(apiLevel);
    return QStringLiteral("Android %1 (%2)").arg(QLatin1String(versions[apiLevel - 1])).arg(apiLevel);
}
