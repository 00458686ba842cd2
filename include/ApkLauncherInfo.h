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
 * One entry of a package that a home screen shows: the class to start, its labels and its icons.
 *
 * ApkFile::getLauncherInfo() returns these. Copies share their data and are cheap; the values stay valid when the
 * ApkFile is gone. No operation fails, sets an error code, or costs more than a reference count. Use a value from one
 * thread at a time; copies may be used in different threads.
 *
 * @since 0.5
 */
class SORREL_EXPORT ApkLauncherInfo
{
public:
    /// An empty entry: empty texts, no labels, no icons. @since 0.5
    ApkLauncherInfo();
    /// A copy of @p other, which shares its data. @since 0.5
    ApkLauncherInfo(const ApkLauncherInfo &other);
    /// Becomes a copy of @p other, which shares its data. @since 0.5
    ApkLauncherInfo &operator=(const ApkLauncherInfo &other);
    /// Copies and returned values stay valid. @since 0.5
    ~ApkLauncherInfo();

    /// Name of the package that holds the activity ("org.example.notes"). @since 0.5
    QString launcherPackage() const;

    /**
     * Class name of the activity to start, with its package ("org.example.notes.MainActivity"). For an activity alias,
     * the class of its target; the alias's own name is not available.
     * @since 0.5
     */
    QString launcherClass() const;

    /**
     * The label for exactly the locale @p locale, in the form of the keys of labels() ("de", "pt-BR"), or an empty
     * string when there is none. There is no fallback to the language without its region, or to the default label. The
     * default label has an empty @p locale.
     * @since 0.5
     */
    QString label(const QString &locale) const;

    /**
     * Every label, by locale: language in lower case, then "-" and the region in upper case when there is one ("de",
     * "pt-BR"). The label for all other locales has an empty key. Empty when the entry has no label, or the resource
     * table does not have it.
     * @since 0.5
     */
    QMap<QString, QString> labels() const;

    /**
     * The icon in every size and variant that the package has as a picture file, in no particular order; sizes are in
     * pixels (QImage::size()). Empty when no file can be decoded.
     * @since 0.5
     */
    QList<QImage> icons() const;

private:
    friend class LauncherFinder;

    QSharedDataPointer<ApkLauncherInfoData> d;
};

#endif
