// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MEMBERCHANGE_H
#define SORRELKIT_MEMBERCHANGE_H

#include <SorrelKit/SizeChange.h>
#include <SorrelKit/TextChange.h>
#include <SorrelKit/TrustExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class MemberChangeData;

/**
 * A member of the archive that differs between two packages. PackageDiff::members() returns these.
 *
 * The path is that of the archive, with any characters; a program that shows it has to make it harmless.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT MemberChange
{
    Q_GADGET
    Q_PROPERTY(SorrelKit::TextChange::Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString package READ package CONSTANT)
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(SorrelKit::SizeChange sizes READ sizes CONSTANT)

public:
    /// A change of nothing. @since 0.5.1
    MemberChange();
    /// The change of the member @p path in the split @p package. @since 0.5.1
    MemberChange(TextChange::Kind kind, const QString &package, const QString &path, const SizeChange &sizes);
    /// A copy of @p other. @since 0.5.1
    MemberChange(const MemberChange &other);
    /// Takes the value of @p other. @since 0.5.1
    MemberChange(MemberChange &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    MemberChange &operator=(const MemberChange &other);
    /// Takes the value of @p other. @since 0.5.1
    MemberChange &operator=(MemberChange &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~MemberChange();
    /// Exchanges two values. @since 0.5.1
    void swap(MemberChange &other) noexcept { d.swap(other.d); }

    /// Which of the packages has the member. @since 0.5.1
    TextChange::Kind kind() const;
    /// Name of the split in a set ("config.de"); empty for the base and a single package. @since 0.5.1
    QString package() const;
    /// The path in the archive ("res/drawable/icon.png"). A name that is not UTF-8 has a character for each byte.
    /// @since 0.5.1
    QString path() const;
    /// The sizes of the member, and its category. @since 0.5.1
    SizeChange sizes() const;

private:
    QSharedDataPointer<MemberChangeData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::MemberChange)
Q_DECLARE_METATYPE(SorrelKit::MemberChange)

#endif
