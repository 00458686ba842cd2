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

namespace SorrelKit {

class EntryData;

/**
 * An entry of a package that a home screen may show: the component to start, its label and its icon.
 *
 * Package::launchers() returns these. Copies share their data and are cheap. The names and isAlias() are known from the
 * manifest. Labels and files are looked up in the package, which stays open while one of its launchers lives, on each
 * call; only the list of icon files is kept. The first lookup of a reference reads the package's resource table, and
 * iconFiles() alone reads files of icons. Use a launcher from the thread of its package, from one at a time. Returned
 * values belong to the caller.
 *
 * No operation throws or sets an error code. A value that is missing or cannot be read is an empty text, an empty map
 * or list, or 0; Package::error() returns the reason when the package is damaged. DrawableRenderer draws the icon.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Entry
{
    Q_GADGET
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

public:
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
    /// Exchanges two launchers. @since 0.5.1
    void swap(Entry &other) noexcept { d.swap(other.d); }

    /// Name of the package ("org.example.notes"). @since 0.5.1
    QString packageName() const;
    /// Name of the activity or alias, with its package: the component that Android starts. @since 0.5.1
    QString name() const;
    /// Name of the class that runs, with its package: that of the activity, or of an alias's target. @since 0.5.1
    QString className() const;
    /// Whether this is an activity alias. @since 0.5.1
    bool isAlias() const;
    /// Whether neither the application nor the activity or alias has an `android:enabled` that is false. Reads the
    /// table for a reference. @since 0.5.1
    bool isEnabled() const;
    /// Whether other applications, home screens among them, may start it: it has no `android:exported` that is false.
    /// Reads the table for a reference. @since 0.5.1
    bool isExported() const;
    /// isEnabled() and isExported(): whether home screens show it. @since 0.5.1
    bool isShown() const;

    /**
     * The label by language tag after BCP 47 ("de", "pt-BR", "sr-Latn", "es-419", "fil"), with today's codes ("he", not
     * "iw"). The empty key holds the label for all other languages. Empty when there is no label, or it cannot be read.
     *
     * The label is that of the intent filter, else of the activity or alias, else of an alias's target, else of the
     * application. Each call looks it up in every language, and reads the table for a reference. The cost is limited
     * for all launchers of a package together: with more than about a hundred launchers, each in a hundred languages,
     * some labels are missing.
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

    /// Resource id of the icon (for example 0x7f080000); 0 when there is none, or the manifest names a path. The icon
    /// is looked up in the same order as the label. Reads no table. @since 0.5.1
    quint32 iconResource() const;
    /**
     * The files that the package has for the icon: each once, in the order in which the newest platform prefers them on
     * a screen of 160 dots per inch. Files that cannot be read or decoded are left out.
     *
     * The first call reads the table for a reference, and the files. Each file is read once for all launchers of the
     * package together; when that reaches its limit, the other files are left out.
     * @since 0.5.1
     */
    QList<IconFile> iconFiles() const;

private:
    friend class Package;
    friend class PackageAccess;
    explicit Entry(EntryData *data);

    QExplicitlySharedDataPointer<EntryData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Entry)
Q_DECLARE_METATYPE(SorrelKit::Entry)

#endif
