// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFITEM_H
#define SORRELKIT_SHELFITEM_H

#include <SorrelKit/ShelfExport.h>

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QMap>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

namespace SorrelKit {

class ShelfItemData;

/**
 * A row of a Shelf: a launcher of a package, as a home screen shows it. A package with several launchers that are shown
 * has an item for each, in the order of the manifest. A package without any, one that was not read yet, and one that
 * cannot be read has a single item, whose entryName() is empty. The facts of the package are the same in all of its
 * items.
 *
 * Shelf returns these. Values stay valid when the shelf changes or is gone; Shelf::item() returns the newer one. Copies
 * share their data and are cheap. labels(), label() and permissions() decode what the index has on each call; every
 * other operation takes constant time. No operation fails. Different objects may be used in different threads.
 *
 * All texts are those of strangers: a program shows them as plain text.
 *
 * @since 0.5.1
 */
class SORRELSHELF_EXPORT ShelfItem
{
    Q_GADGET
    Q_PROPERTY(qint64 id READ id CONSTANT)
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(State state READ state CONSTANT)
    Q_PROPERTY(int errorCode READ errorCode CONSTANT)
    Q_PROPERTY(QString errorText READ errorText CONSTANT)
    Q_PROPERTY(QString packageName READ packageName CONSTANT)
    Q_PROPERTY(QString entryName READ entryName CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString versionName READ versionName CONSTANT)
    Q_PROPERTY(qint64 versionCode READ versionCode CONSTANT)
    Q_PROPERTY(int minSdkVersion READ minSdkVersion CONSTANT)
    Q_PROPERTY(int targetSdkVersion READ targetSdkVersion CONSTANT)
    Q_PROPERTY(QStringList permissions READ permissions CONSTANT)
    Q_PROPERTY(qint64 fileSize READ fileSize CONSTANT)
    Q_PROPERTY(QDateTime modified READ modified CONSTANT)
    Q_PROPERTY(QString signer READ signer CONSTANT)

public:
    /// The state of the package in the index. @since 0.5.1
    enum class State {
        Waiting, ///< the file was found, and not read yet: there is only its path
        Ready,   ///< the package was read
        Broken,  ///< the package, or a part of it, cannot be read: errorText() describes the fault
    };
    Q_ENUM(State)

    /// An item of nothing: id() is 0, and texts are empty. @since 0.5.1
    ShelfItem();
    /// A copy of @p other. @since 0.5.1
    ShelfItem(const ShelfItem &other);
    /// Takes the value of @p other. @since 0.5.1
    ShelfItem(ShelfItem &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    ShelfItem &operator=(const ShelfItem &other);
    /// Takes the value of @p other. @since 0.5.1
    ShelfItem &operator=(ShelfItem &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~ShelfItem();
    /// Exchanges two items. @since 0.5.1
    void swap(ShelfItem &other) noexcept { d.swap(other.d); }

    /// The number of the item in its index, 1 or greater. It stays the same while the package has the launcher, also
    /// when the file was changed or moved, and no later item gets it again. 0 for an item of nothing. @since 0.5.1
    qint64 id() const;
    /// The path of the file for people, with U+FFFD for what is no UTF-8. @since 0.5.1
    QString path() const;
    /// The path in the bytes of the system, for Package::fromNativePath(). @since 0.5.1
    QByteArray nativePath() const;
    /// The state of the package in the index. @since 0.5.1
    State state() const;
    /// Error::Code of the package; 101 when reading it took too long, 102 when it took too much memory, 103 when the
    /// process that read it died; 0 without an error. @since 0.5.1
    int errorCode() const;
    /// The fault in English; empty without an error. @since 0.5.1
    QString errorText() const;

    /// Name of the package ("org.example.notes"); empty when it is not known. @since 0.5.1
    QString packageName() const;
    /// Name of the activity or alias that starts, with its package; empty for an item without a launcher. @since 0.5.1
    QString entryName() const;
    /// The labels by language tag, as Entry::labels() returns them; those of the application for an item without a
    /// launcher. @since 0.5.1
    QMap<QString, QString> labels() const;
    /// The label for @p locale, chosen as Entry::label() does; without labels entryName(), else packageName(), else the
    /// name of the file. @since 0.5.1
    QString label(const QLocale &locale = QLocale()) const;
    /// label() of each of @p items, in their order. For many items this takes a part of the time, because @p locale is
    /// decoded once. @since 0.5.1
    static QStringList labelsOf(const QList<ShelfItem> &items, const QLocale &locale = QLocale());
    /// The version for people ("2.1"). @since 0.5.1
    QString versionName() const;
    /// The version that Android compares; 0 when there is none. @since 0.5.1
    qint64 versionCode() const;
    /// The lowest API level that the package runs on; 0 when it is not known. @since 0.5.1
    int minSdkVersion() const;
    /// The API level that the package was made for; 0 when it is not known. @since 0.5.1
    int targetSdkVersion() const;
    /// Names of the permissions that the manifest requests, in its order. @since 0.5.1
    QStringList permissions() const;
    /// The SHA-256 of the first signer's certificate in hexadecimal, when the package is verified; else empty. Known
    /// only for a Shelf that verifies (Shelf::setVerifying()). @since 0.5.1
    QString signer() const;

    /// The size of the file in bytes. @since 0.5.1
    qint64 fileSize() const;
    /// When the file was last modified. @since 0.5.1
    QDateTime modified() const;

    /// The icon as a PNG file, when the item comes from Shelf::itemsWithIcons(); else empty. Shelf::icon() reads it for
    /// other items. @since 0.5.1
    QByteArray icon() const;

private:
    friend class ShelfItemAccess;
    explicit ShelfItem(ShelfItemData *data);

    QSharedDataPointer<ShelfItemData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::ShelfItem)
Q_DECLARE_METATYPE(SorrelKit::ShelfItem)

#endif
