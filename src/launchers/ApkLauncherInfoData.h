// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef APKLAUNCHERINFODATA_H
#define APKLAUNCHERINFODATA_H

#include <QImage>
#include <QList>
#include <QMap>
#include <QSharedData>
#include <QString>

/// What the copies of an ApkLauncherInfo share; ApkFile fills it.
class ApkLauncherInfoData : public QSharedData
{
public:
    QString package;
    QString className; ///< complete with its package; for an alias, of its target
    QList<QImage> icons;
    QMap<QString, QString> labels; ///< by locale
};

#endif
