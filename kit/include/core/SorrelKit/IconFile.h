// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONFILE_H
#define SORRELKIT_ICONFILE_H

#include <SorrelKit/KitCoreExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QSize>
#include <QString>

namespace SorrelKit {

class IconFileData;

/**
 * A file that a package, or its platform, has for an icon. Entry::iconFiles() returns these.
 *
 * The values stay valid when the package is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT IconFile
{
    Q_GADGET
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(QString kind READ kind CONSTANT)
    Q_PROPERTY(QSize size READ size CONSTANT)
    Q_PROPERTY(int density READ density CONSTANT)
    Q_PROPERTY(bool ofPlatform READ isOfPlatform CONSTANT)

public:
    /// No file: empty texts and an empty size. @since 0.5.1
    IconFile();
    /// A copy of @p other. @since 0.5.1
    IconFile(const IconFile &other);
    /// Takes the value of @p other. @since 0.5.1
    IconFile(IconFile &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    IconFile &operator=(const IconFile &other);
    /// Takes the value of @p other. @since 0.5.1
    IconFile &operator=(IconFile &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~IconFile();
    /// Exchanges the values of two files. @since 0.5.1
    void swap(IconFile &other) noexcept { d.swap(other.d); }

    /// Path of the member in the package, or in the platform when isOfPlatform() is true ("res/mipmap-hdpi/icon.png"). @since 0.5.1
    QString path() const;
    /// For XML the name of the root element ("adaptive-icon", "vector"), else the format: "png", "jpeg", "gif", "webp",
    /// "bmp" or "ico". A Windows icon whose only content is a PNG is a "png". @since 0.5.1
    QString kind() const;
    /// Size of the picture in pixels. Empty for XML, which can be drawn in any size. @since 0.5.1
    QSize size() const;
    /// Density that the resource table has the file for, in dots per inch: 0 for the default, 65534 for any density,
    /// 65535 for no scaling. @since 0.5.1
    int density() const;
    /// Whether the file is a member of the platform (Package::platform()). False for one of the package itself.
    /// @since 0.5.1
    bool isOfPlatform() const;

private:
    friend class Entry;

    QSharedDataPointer<IconFileData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::IconFile)
Q_DECLARE_METATYPE(SorrelKit::IconFile)

#endif
