// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ENTRY_H
#define SORRELKIT_ENTRY_H

#include <SorrelKit/IconFile.h>
#include <SorrelKit/KitCoreExport.h>

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QLocale>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QStringList>

namespace SorrelKit {

class EntryData;

/**
 * An entry of a package that a home screen, or another part of the system, shows: the component to start, its label and
 * its icon.
 *
 * Package::launchers() and Package::entries() return these. Copies share their data and are cheap. The names, the id
 * and isAlias() are known from the start. Labels and files are looked up in the package, which stays open while one of
 * its entries lives, on each call; only the list of icon files is kept. The first lookup of a reference reads the
 * package's resource table, and iconFiles(), bannerFiles() and settingsActivity() alone read other files. Use an entry
 * from the thread of its package, from one at a time. Returned values belong to the caller.
 *
 * No operation throws or sets an error code. A value that is missing or cannot be read is an empty text, an empty map
 * or list, or 0; Package::error() returns the reason when the package is damaged. DrawableRenderer draws the icon.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Entry
{
    Q_GADGET
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString id READ id CONSTANT)
    Q_PROPERTY(QString packageName READ packageName CONSTANT)
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString className READ className CONSTANT)
    Q_PROPERTY(bool alias READ isAlias CONSTANT)
    Q_PROPERTY(bool enabled READ isEnabled CONSTANT)
    Q_PROPERTY(bool exported READ isExported CONSTANT)
    Q_PROPERTY(bool shown READ isShown CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(quint32 iconResource READ iconResource CONSTANT)
    Q_PROPERTY(QList<SorrelKit::IconFile> iconFiles READ iconFiles CONSTANT)
    Q_PROPERTY(QString longLabel READ longLabel CONSTANT)
    Q_PROPERTY(QString permission READ permission CONSTANT)
    Q_PROPERTY(QStringList mimeTypes READ mimeTypes CONSTANT)
    Q_PROPERTY(QString defaultUrl READ defaultUrl CONSTANT)
    Q_PROPERTY(quint32 detailsResource READ detailsResource CONSTANT)
    Q_PROPERTY(QString settingsActivity READ settingsActivity CONSTANT)
    Q_PROPERTY(quint32 roundIconResource READ roundIconResource CONSTANT)
    Q_PROPERTY(quint32 bannerResource READ bannerResource CONSTANT)
    Q_PROPERTY(quint32 logoResource READ logoResource CONSTANT)
    Q_PROPERTY(QList<SorrelKit::IconFile> bannerFiles READ bannerFiles CONSTANT)

public:
    /**
     * The kinds of entries, by the element of the manifest and the action or category of its intent filter. An activity
     * is an `activity` or an `activity-alias`. New kinds may be added.
     * @since 0.5.1
     */
    enum class Kind {
        Launcher,   ///< an activity for MAIN and LAUNCHER: in the home screen
        Television, ///< an activity for MAIN and LEANBACK_LAUNCHER: in the home screen of a television, with a banner
        Car,        ///< an activity for MAIN and CAR_LAUNCHER: in the home screen of a car
        CarService, ///< a service that a car's system shows: CarAppService of androidx.car.app, or
                    ///< MediaBrowserService, which phones use as well
        WatchFace,  ///< a WallpaperService of the category WATCH_FACE; a LiveWallpaper, too
        HomeScreen, ///< an activity for MAIN and HOME: a home screen itself
        QuickSettingsTile, ///< a service for QS_TILE
        LiveWallpaper,     ///< a service for WallpaperService
        InputMethod,       ///< a service for InputMethod: a keyboard
        ScreenSaver,       ///< a service for DreamService
        Widget,            ///< a receiver for APPWIDGET_UPDATE
        ShareTarget,       ///< an activity for SEND or SEND_MULTIPLE, and DEFAULT
        DirectShare,       ///< a `share-target` in the file of shortcuts of a launcher
        Instant,           ///< an activity with the `meta-data` default-url, at which an instant app starts
        Shortcut,          ///< a `shortcut` in the file of shortcuts of a launcher, `android.app.shortcuts`
    };
    Q_ENUM(Kind)

    /// An entry of nothing: empty texts and lists, and neither enabled nor exported. @since 0.5.1
    Entry();
    /// A copy of @p other. @since 0.5.1
    Entry(const Entry &other);
    /// Takes the value of @p other. @since 0.5.1
    Entry(Entry &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Entry &operator=(const Entry &other);
    /// Takes the value of @p other. @since 0.5.1
    Entry &operator=(Entry &&other) noexcept;
    /// Closes the package when no other object uses it. @since 0.5.1
    ~Entry();
    /// Exchanges two entries. @since 0.5.1
    void swap(Entry &other) noexcept { d.swap(other.d); }

    /// The kind; Kind::Launcher for an entry of nothing. @since 0.5.1
    Kind kind() const;
    /// The id of a shortcut, which is unique in its package; the first category of a DirectShare. Else empty.
    /// @since 0.5.1
    QString id() const;
    /// Name of the package ("org.example.notes"). @since 0.5.1
    QString packageName() const;
    /// Name of the activity, alias, service or receiver, with its package: the component that Android starts. Of a
    /// shortcut or a DirectShare, the launcher whose file has it. @since 0.5.1
    QString name() const;
    /// Name of the class that runs, with its package: that of the component, or of an alias's target. Of a shortcut,
    /// the class that its last intent names, and of a DirectShare the class that it names; both as they are written,
    /// which may be empty. @since 0.5.1
    QString className() const;
    /// Whether the component is an activity alias. @since 0.5.1
    bool isAlias() const;
    /// Whether neither the application, nor the component, nor the shortcut has an `android:enabled` that is false.
    /// Reads the table for a reference. @since 0.5.1
    bool isEnabled() const;
    /// Whether other applications, home screens among them, may start the component: it has no `android:exported` that
    /// is false. A component without an intent filter has to have one that is true. Reads the table for a reference.
    /// @since 0.5.1
    bool isExported() const;
    /**
     * Whether Android shows it: isEnabled() and isExported(). Also,
     * - a QuickSettingsTile, a LiveWallpaper, a WatchFace and an InputMethod require the permission with which only the
     *   system may bind them (`android.permission.BIND_QUICK_SETTINGS_TILE`, `BIND_WALLPAPER`, `BIND_INPUT_METHOD`);
     * - a Shortcut has a label that is a resource, and, when it is enabled, intents with actions; it is among the first
     *   15 such shortcuts of its launcher;
     * - a DirectShare has a class, a type of data and a category.
     * @since 0.5.1
     */
    bool isShown() const;
    /// The permission that others need to start the component; empty when none is needed. @since 0.5.1
    QString permission() const;

    /**
     * The label by language tag after BCP 47 ("de", "pt-BR", "sr-Latn", "es-419", "fil"), with today's codes ("he", not
     * "iw"). The empty key holds the label for all other languages. Empty when there is no label, or it cannot be read.
     *
     * The label is that of the intent filter, else of the component, else of an alias's target, else of the
     * application. That of a shortcut is its short label; a DirectShare has none. Each call looks the label up in every
     * language, and reads the table for a reference. The cost is limited for all entries of the kind together: with
     * more than about a hundred, each in a hundred languages, some labels are missing.
     * @since 0.5.1
     */
    QMap<QString, QString> labels() const;
    /**
     * The label that a device in @p locale shows, chosen as Android 7 and later do: the locale's own, else that of its
     * closest parent ("es-419" for Mexico, then "es"), else that of a relative in the same language and script ("fr-FR"
     * for Switzerland), else the default one. name() when there is no label. Costs one lookup for each reference on the
     * way.
     * @since 0.5.1
     */
    QString label(const QLocale &locale = QLocale()) const;
    /// The long label of a shortcut, chosen as label() is; empty for other kinds, and when there is none. @since 0.5.1
    QString longLabel(const QLocale &locale = QLocale()) const;

    /// The types of data that a ShareTarget or a DirectShare takes ("text/plain", "image/*"), each once, in the order
    /// of the document. Empty for other kinds. @since 0.5.1
    QStringList mimeTypes() const;
    /// The address at which an Instant entry starts; empty for other kinds. @since 0.5.1
    QString defaultUrl() const;
    /// Resource id of the XML file that describes a wallpaper, a watch face, an input method, a screen saver or a
    /// widget: the `meta-data` that Android reads for the kind. Else 0. @since 0.5.1
    quint32 detailsResource() const;
    /// Name of the activity with the settings of a wallpaper, a watch face, an input method or a screen saver: the
    /// attribute `android:settingsActivity` of the file detailsResource(), as it is written. Reads the table and that
    /// file, once for all entries. @since 0.5.1
    QString settingsActivity() const;

    /// Resource id of the icon (for example 0x7f080000); 0 when there is none, or the manifest names a path. The icon
    /// is looked up in the same order as the label; shortcuts have icons of their own alone. Reads no table.
    /// @since 0.5.1
    quint32 iconResource() const;
    /// Resource id of the icon that devices with round icons take: in the order of the label, the first
    /// `android:roundIcon` or `android:icon`; the round one of the same element counts first. @since 0.5.1
    quint32 roundIconResource() const;
    /// Resource id of the banner (`android:banner`), which televisions show; looked up as the icon is. 0 when there is
    /// none. @since 0.5.1
    quint32 bannerResource() const;
    /// Resource id of the logo (`android:logo`), a wide picture; looked up as the icon is. 0 when there is none.
    /// @since 0.5.1
    quint32 logoResource() const;
    /**
     * The files that the package has for the icon: each once, in the order in which the newest platform prefers them on
     * a screen of 160 dots per inch. Files that cannot be read or decoded are left out.
     *
     * The first call reads the table for a reference, and the files. Each file is read once for all entries of the
     * package together; when that reaches its limit, the other files are left out.
     * @since 0.5.1
     */
    QList<IconFile> iconFiles() const;
    /// The files that the package has for the banner, listed as iconFiles() lists those of the icon. @since 0.5.1
    QList<IconFile> bannerFiles() const;

private:
    friend class Package;
    friend class PackageAccess;
    explicit Entry(EntryData *data);

    QList<IconFile> filesOf(quint32 attribute) const;

    QExplicitlySharedDataPointer<EntryData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Entry)
Q_DECLARE_METATYPE(SorrelKit::Entry)

#endif
