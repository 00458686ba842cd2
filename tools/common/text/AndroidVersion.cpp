// SPDX-License-Identifier: LGPL-2.1-or-later
#include "AndroidVersion.h"

#include "TranslatedText.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int PreviewLevel = 10000;

// Index 0 is API level 1.
constexpr const char *versions[] = {
    "1.0", "1.1", "1.5",   "1.6", "2.0", "2.0.1", "2.1", "2.2",  "2.3", "2.3.3", "3.0", "3.1",
    "3.2", "4.0", "4.0.3", "4.1", "4.2", "4.3",   "4.4", "4.4W", "5.0", "5.1",   "6.0", "7.0",
    "7.1", "8.0", "8.1",   "9",   "10",  "11",    "12",  "12L",  "13",  "14",    "15",  "16",
};
constexpr int newestLevel = int(sizeof versions / sizeof versions[0]);

bool hasName(int apiLevel)
{
    return apiLevel >= 1 && apiLevel <= newestLevel;
}

// For a text that begins with "Android".
QString shortName(int apiLevel)
{
    if (apiLevel == PreviewLevel)
        return TranslatedText::of("AndroidVersion", "a preview of Android");
    return hasName(apiLevel) ? QLatin1String(versions[apiLevel - 1]) : QStringLiteral("SDK %1").arg(apiLevel);
}

QString name(int apiLevel)
{
    return (hasName(apiLevel) ? QStringLiteral("Android ") : QString()) + shortName(apiLevel);
}

} // namespace

QString AndroidVersion::text(int apiLevel)
{
    if (apiLevel < 1)
        return {};
    return hasName(apiLevel) ? QStringLiteral("%1 (%2)").arg(name(apiLevel)).arg(apiLevel) : name(apiLevel);
}

QString AndroidVersion::withLevel(int apiLevel)
{
    const QString level = QStringLiteral("API %1").arg(apiLevel);
    if (apiLevel == PreviewLevel)
        return shortName(apiLevel);
    return hasName(apiLevel) ? QStringLiteral("%1 (%2)").arg(name(apiLevel), level) : level;
}

QString AndroidVersion::range(int first, int last)
{
    const int from = std::max(first, 1);
    const int to = std::max(last, from);
    if (to == std::numeric_limits<int>::max())
        return TranslatedText::of("AndroidVersion", "%1 and later").arg(name(from));
    if (to == from)
        return name(from);
    return TranslatedText::of("AndroidVersion", "%1 to %2").arg(name(from), hasName(from) ? shortName(to) : name(to));
}
