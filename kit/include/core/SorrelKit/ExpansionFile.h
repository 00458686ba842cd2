// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_EXPANSIONFILE_H
#define SORRELKIT_EXPANSIONFILE_H

#include <SorrelKit/KitCoreExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class ExpansionFileData;

/**
 * A file of data that a set has beside its packages (`.obb`), which an installer copies to the device's storage.
 * PackageSet::expansions() returns these.
 *
 * The values stay valid when the set is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT ExpansionFile
{
    Q_GADGET
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(QString installPath READ installPath CONSTANT)
    Q_PROPERTY(qint64 packedBytes READ packedBytes CONSTANT)
    Q_PROPERTY(qint64 bytes READ bytes CONSTANT)

public:
    /// A file without a path. @since 0.5.1
    ExpansionFile();
    /// A copy of @p other. @since 0.5.1
    ExpansionFile(const ExpansionFile &other);
    /// Takes the value of @p other. @since 0.5.1
    ExpansionFile(ExpansionFile &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    ExpansionFile &operator=(const ExpansionFile &other);
    /// Takes the value of @p other. @since 0.5.1
    ExpansionFile &operator=(ExpansionFile &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~ExpansionFile();
    /// Exchanges the values of two files. @since 0.5.1
    void swap(ExpansionFile &other) noexcept { d.swap(other.d); }

    /// The path in the set. @since 0.5.1
    QString path() const;
    /// The path below the device's storage at which the application looks for it
    /// ("Android/obb/org.example.notes/main.7.org.example.notes.obb"). It has texts of the package: a program that writes the
    /// file checks it. @since 0.5.1
    QString installPath() const;
    /// The bytes that the file takes in the set. @since 0.5.1
    qint64 packedBytes() const;
    /// The bytes of the file itself. @since 0.5.1
    qint64 bytes() const;

private:
    friend class SetAccess;

    QSharedDataPointer<ExpansionFileData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::ExpansionFile)
Q_DECLARE_METATYPE(SorrelKit::ExpansionFile)

#endif
