// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIZECHANGE_H
#define SORRELKIT_SIZECHANGE_H

#include <SorrelKit/TrustExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QtGlobal>

namespace SorrelKit {

class SizeChangeData;

/**
 * The sizes of a part of two packages: of all members of a category, or of one member. PackageDiff::sizes() returns
 * these. A sum that does not fit in 63 bits is cut; sizes that an archive claims may be wrong.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT SizeChange
{
    Q_GADGET
    Q_PROPERTY(Category category READ category CONSTANT)
    Q_PROPERTY(qint64 packedBefore READ packedBefore CONSTANT)
    Q_PROPERTY(qint64 packedAfter READ packedAfter CONSTANT)
    Q_PROPERTY(qint64 sizeBefore READ sizeBefore CONSTANT)
    Q_PROPERTY(qint64 sizeAfter READ sizeAfter CONSTANT)

public:
    /// Parts of a package. @since 0.5.1
    enum class Category {
        Code,       ///< `classes.dex`, `classes2.dex` and so on
        Resources,  ///< `resources.arsc`, and the files below `res/`
        Libraries,  ///< native code: the files below `lib/`
        Assets,     ///< the files below `assets/`
        Signatures, ///< `META-INF/MANIFEST.MF`, and signature files and blocks in `META-INF/`
        Other,      ///< the rest
    };
    Q_ENUM(Category)

    /// No sizes, of Category::Other. @since 0.5.1
    SizeChange();
    /// No sizes, of @p category. @since 0.5.1
    explicit SizeChange(Category category);
    /// A copy of @p other. @since 0.5.1
    SizeChange(const SizeChange &other);
    /// Takes the value of @p other. @since 0.5.1
    SizeChange(SizeChange &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    SizeChange &operator=(const SizeChange &other);
    /// Takes the value of @p other. @since 0.5.1
    SizeChange &operator=(SizeChange &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~SizeChange();
    /// Exchanges two values. @since 0.5.1
    void swap(SizeChange &other) noexcept { d.swap(other.d); }

    /// The part. @since 0.5.1
    Category category() const;
    /// Bytes in the archive before the change; 0 when it was added. @since 0.5.1
    qint64 packedBefore() const;
    /// Bytes in the archive after the change; 0 when it was removed. @since 0.5.1
    qint64 packedAfter() const;
    /// Bytes after unpacking, before the change, as the archive's directory claims; 0 when it was added. @since 0.5.1
    qint64 sizeBefore() const;
    /// Bytes after unpacking, after the change, as the archive's directory claims; 0 when it was removed. @since 0.5.1
    qint64 sizeAfter() const;
    /// packedAfter() - packedBefore(). @since 0.5.1
    qint64 packedGrowth() const { return packedAfter() - packedBefore(); }
    /// sizeAfter() - sizeBefore(). @since 0.5.1
    qint64 sizeGrowth() const { return sizeAfter() - sizeBefore(); }

    /// Adds bytes before the change; negative counts are none. @since 0.5.1
    void addBefore(qint64 packed, qint64 size);
    /// Adds bytes after the change; negative counts are none. @since 0.5.1
    void addAfter(qint64 packed, qint64 size);

private:
    QSharedDataPointer<SizeChangeData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::SizeChange)
Q_DECLARE_METATYPE(SorrelKit::SizeChange)

#endif
