// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef APKLAUNCHERINFO_H
#define APKLAUNCHERINFO_H

#include "SorrelExport.h"

#include <QImage>
#include <QList>
#include <QMap>
#include <QSharedDataPointer>
#include <QString>

class ApkLauncherInfoData;

/**
 * One entry of a package that a home screen shows: what to start, under which name and with which picture.
 *
 * ApkFile::getLauncherInfo() makes these. Copies share their data, so that they are cheap; the values stay valid when
 * the ApkFile is gone. No operation fails, sets an error code, or costs more than a reference count. A value is used
 * from one thread at a time; copies may be used in different threads.
 *
 * @since 0.5
 */
class SORREL_EXPORT ApkLauncherInfo
{
public:
    /// An empty entry: empty texts, no labels, no icons. @since 0.5
    ApkLauncherInfo();
    /// A copy of @p other, with which it shares its data. @since 0.5
    ApkLauncherInfo(const ApkLauncherInfo &other);
    /// Becomes a copy of @p other, with which it shares its data. @since 0.5
    ApkLauncherInfo &operator=(const ApkLauncherInfo &other);
    /// Takes nothing from copies, nor from what was answered. @since 0.5
    ~ApkLauncherInfo();

    /// Name of the package that holds the activity ("org.example.notes"). @since 0.5
    QString launcherPackage() const;

    /**
     * Class name of the activity to start, with its package ("org.example.notes.MainActivity"). For an activity alias,
     * that of the activity which it stands for: the alias's own name is not told.
     * @since 0.5
     */
    QString launcherClass() const;

    /**
     * The label for exactly the locale @p locale, in the form that labels() uses ("de", "pt-BR"), or an empty string
     * when there is none. Nothing is fallen back to: not the language without its region, not the default label. An
     * empty @p locale asks for the default label.
     * @since 0.5
     */
    QString label(const QString &locale) const;

    /**
     * Every label, by locale: language in lower case, then "-" and the region in upper case when there is one ("de",
     * "pt-BR"); the label for locales that have none of their own has an empty key. Empty when the entry has no
     * label, or none that the resource table knows.
     * @since 0.5
     */
    QMap<QString, QString> labels() const;

    /**
     * The icon in every size and variant that the package has as a picture file, in no order that a caller can rely
     * on; sizes are in pixels (QImage::size()). Empty when there is none that can be decoded.
     * @since 0.5
     */
    QList<QImage> icons() const;

private:
    friend class LauncherFinder;

    QSharedDataPointer<ApkLauncherInfoData> d;
};

#endif
