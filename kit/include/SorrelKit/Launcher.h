// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_LAUNCHER_H
#define SORRELKIT_LAUNCHER_H

#include <SorrelKit/Export.h>
#include <SorrelKit/IconFile.h>
#include <SorrelKit/IconMask.h>

#include <QImage>
#include <QLocale>
#include <QMap>
#include <QSharedDataPointer>
#include <QSize>
#include <QString>
#include <QVector>

namespace SorrelKit {

class LauncherData;

/**
 * An entry of a package that a home screen may show: what to start, under which name and with which picture.
 *
 * Package::launchers() makes these. Copies share their data, and are cheap. Labels, files and pictures are looked up when
 * they are asked for, in the package, which stays open as long as a launcher of it lives; for that reason a launcher is
 * used from the same thread as its package.
 *
 * No operation throws or sets an error code: what cannot be had is an empty text, an empty map, 0 or a null image, and
 * Package::error() tells of a package that is damaged. Nothing is kept between calls: what is asked twice is looked up
 * twice.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT Launcher
{
public:
    /// An entry of nothing: empty texts, null pictures, and neither enabled nor exported.
    Launcher();
    /// A copy of @p other, with which it shares its data and the package.
    Launcher(const Launcher &other);
    /// Becomes a copy of @p other, with which it shares its data and the package.
    Launcher &operator=(const Launcher &other);
    /// Closes the package when nothing else keeps it.
    ~Launcher();

    /// Name of the package ("org.example.notes").
    QString packageName() const;
    /// Name of the activity or alias, with its package: what Android calls the component, and starts.
    QString name() const;
    /// Name of the class that runs, with its package: the activity's, of an alias that of its target.
    QString className() const;
    /// Whether this is an activity alias.
    bool isAlias() const;
    /// Whether both the application and the activity or alias are enabled, as far as the package itself says: neither
    /// has `android:enabled` false, references followed.
    bool isEnabled() const;
    /// Whether other applications, home screens among them, may start it: it has no `android:exported` that is false.
    bool isExported() const;
    /// isEnabled() and isExported(): whether home screens show it.
    bool isShown() const;

    /**
     * The label by language tag after BCP 47 ("de", "pt-BR", "sr-Latn", "es-419", "fil"), with today's codes ("he", not
     * "iw"). The empty key holds the label for all other languages. Empty when there is no label that can be had.
     *
     * The label is the filter's, else the activity's or alias's, else, for an alias, its target's, else the application's.
     * Looked up in every language on each call, which is as many lookups as there are languages. What that may take is
     * limited for all launchers of a package together: with more than about a hundred launchers, each in a hundred languages,
     * some are missing.
     */
    QMap<QString, QString> labels() const;
    /**
     * The label that a device in @p locale shows, chosen as Android 7 and later do: the locale's own, else its closest
     * parent's ("es-419" for Mexico, then "es"), else a relative's in the same language and script ("fr-FR" for
     * Switzerland), else the default one. When there is no label, name(). Costs one lookup for each reference on the way.
     */
    QString label(const QLocale &locale = QLocale()) const;

    /// Resource id of the icon (0x7f080000, say); 0 when there is none, or it is named by its path. Labels' order holds.
    quint32 iconResource() const;
    /// What the package has for the icon: each file once, best first as the newest platform has it on a screen of 160 dots
    /// per inch. Files that cannot be read or decoded are left out. Reads each file once for all launchers of the package
    /// together, and when that has taken as much as it may, leaves out the others.
    QVector<IconFile> iconFiles() const;
    /**
     * The icon as the newest platform draws it: a picture of @p size by @p size pixels, in the format
     * ARGB32_Premultiplied, transparent where the icon is smaller or not square. An XML icon is drawn where the newest
     * platform takes it; else the smallest picture file that is as large is taken, else the largest, and scaled. When an
     * XML icon cannot be drawn, a picture file of the same icon takes its place.
     *
     * A null image when there is no icon, or none that can be had; @p size is 1 to 1024. When @p error is not null, it is
     * set to why the icon was not, or not wholly, drawn as the package describes it, in English
     * (`unsupported drawable <x>`), and to an empty text when it was. Reads the files and draws anew on each call.
     */
    QImage icon(int size, IconMask mask = IconMask::None, QString *error = nullptr) const;

private:
    friend class Package;
    explicit Launcher(LauncherData *data);

    QSharedDataPointer<LauncherData> d;
};

} // namespace SorrelKit

#endif
