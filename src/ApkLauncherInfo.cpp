// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkLauncherInfo.h"

#include "launchers/ApkLauncherInfoData.h"

ApkLauncherInfo::ApkLauncherInfo() : d(new ApkLauncherInfoData) {}

ApkLauncherInfo::ApkLauncherInfo(const ApkLauncherInfo &other) = default;

ApkLauncherInfo &ApkLauncherInfo::operator=(const ApkLauncherInfo &other) = default;

ApkLauncherInfo::~ApkLauncherInfo() = default;

QString ApkLauncherInfo::launcherPackage() const
{
    return d->package;
}

QString ApkLauncherInfo::launcherClass() const
{
    return d->className;
}

QString ApkLauncherInfo::label(const QString &locale) const
{
    return d->labels.value(locale, QLatin1String(""));
}

QMap<QString, QString> ApkLauncherInfo::labels() const
{
    return d->labels;
}

QList<QImage> ApkLauncherInfo::icons() const
{
    return d->icons;
}
