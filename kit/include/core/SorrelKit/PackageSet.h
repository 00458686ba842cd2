// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGESET_H
#define SORRELKIT_PACKAGESET_H

#include <SorrelKit/Device.h>
#include <SorrelKit/ExpansionFile.h>
#include <SorrelKit/KitCoreExport.h>
#include <SorrelKit/Package.h>
#include <SorrelKit/SetPackage.h>
#include <SorrelKit/SplitChoice.h>

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

namespace SorrelKit {

class PackageSetData;

/**
 * A set of packages (`.apks`, `.xapk`, `.apkm`), and the choice among them for a device. A package that is no set is a
 * set of itself alone.
 *
 * A set that bundletool made has a table of contents, `toc.pb`. The choice follows it: the variant with the highest API
 * level that the device reaches, and then of each module the packages whose targets fit the device better than their
 * alternatives. Without the table, the manifests of the packages and the names of the files decide:
 *
 * - the base is the one with the highest API level that the device reaches; a whole application is chosen only when
 *   no base fits;
 * - each module gets the screen density that Android prefers, and every language of the user;
 * - native code is for one processor: the first of the device's that the set has native code for;
 * - a module is chosen unless its manifest leaves it for later.
 *
 * In both cases, the API levels of all chosen packages and the splits that they require are checked as Android does.
 * A set may have a file that describes it (`manifest.json` in `.xapk`, `info.json` in `.apkm`). Its names of splits count
 * for packages whose manifests cannot be read; mismatches() lists what differs.
 *
 * Regions of languages make no difference, because splits have none.
 *
 * Constructing an object opens and reads nothing. The first query opens the set and reads the table, and the directory
 * and the manifest of each package. Later ones use what was read. A package that is compressed in the set is inflated
 * for that. A package whose manifest cannot be read is known by its name alone.
 *
 * No query throws. Copies are cheap and share what was read. Use an object and its copies from one thread at a time.
 * Returned values belong to the caller. docs/limits.md lists the limits.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT PackageSet
{
    Q_GADGET
    Q_PROPERTY(QList<SorrelKit::SetPackage> packages READ packages CONSTANT)
    Q_PROPERTY(QList<SorrelKit::ExpansionFile> expansions READ expansions CONSTANT)
    Q_PROPERTY(QStringList mismatches READ mismatches CONSTANT)

public:
    /// No set: packages() is empty. @since 0.5.1
    PackageSet();
    /// The set in the file @p fileName. The first query opens it. @since 0.5.1
    explicit PackageSet(const QString &fileName);
    /// The set that @p package was opened from. A device of the package must outlive this object, too. @since 0.5.1
    explicit PackageSet(const Package &package);
    /// A copy of @p other. @since 0.5.1
    PackageSet(const PackageSet &other);
    /// Takes the value of @p other. @since 0.5.1
    PackageSet(PackageSet &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    PackageSet &operator=(const PackageSet &other);
    /// Takes the value of @p other. @since 0.5.1
    PackageSet &operator=(PackageSet &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~PackageSet();
    /// Exchanges two sets. @since 0.5.1
    void swap(PackageSet &other) noexcept { d.swap(other.d); }

    /// Every package in the set, those of other applications included, in the order of the archive. Empty when the set
    /// cannot be read. @since 0.5.1
    QList<SetPackage> packages() const;
    /// The expansion files in the set (`.obb`), in the order of the archive, up to 64 of them. @since 0.5.1
    QList<ExpansionFile> expansions() const;
    /// Where the file that describes the set (`manifest.json`, `info.json`) differs from the packages, in English; up to
    /// 64 texts, which may have text of the file, which the caller makes harmless. Empty without such a file. Nothing
    /// else depends on them: the packages count. @since 0.5.1
    QStringList mismatches() const;
    /// The packages that an installer installs on @p device, or the reason why it does not. Goes over all packages on
    /// each call. @since 0.5.1
    SplitChoice splitsFor(const Device &device) const;
    /// The application as @p device has it: the base with the splits of splitsFor() alone, so that its resources are
    /// those on the device. A package with an error when nothing fits. Opens the chosen packages again. @since 0.5.1
    Package packageFor(const Device &device) const;

private:
    QExplicitlySharedDataPointer<PackageSetData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::PackageSet)
Q_DECLARE_METATYPE(SorrelKit::PackageSet)

#endif
