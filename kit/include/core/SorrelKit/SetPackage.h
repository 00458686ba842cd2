// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SETPACKAGE_H
#define SORRELKIT_SETPACKAGE_H

#include <SorrelKit/KitCoreExport.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

namespace SorrelKit {

class SetPackageData;

/**
 * A package in a set: the base, a split, or a whole application for old devices. PackageSet::packages() and
 * SplitChoice::packages() return these.
 *
 * The values stay valid when the set is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT SetPackage
{
    Q_GADGET
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(QString splitName READ splitName CONSTANT)
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString module READ module CONSTANT)
    Q_PROPERTY(QStringList abis READ abis CONSTANT)
    Q_PROPERTY(QStringList languages READ languages CONSTANT)
    Q_PROPERTY(QList<int> screenDensities READ screenDensities CONSTANT)
    Q_PROPERTY(int minSdkVersion READ minSdkVersion CONSTANT)
    Q_PROPERTY(qint64 packedBytes READ packedBytes CONSTANT)
    Q_PROPERTY(qint64 bytes READ bytes CONSTANT)
    Q_PROPERTY(Reason reason READ reason CONSTANT)
    Q_PROPERTY(QString reasonText READ reasonText CONSTANT)

public:
    /// Kinds of packages. New ones may be added. @since 0.5.1
    enum class Kind {
        Unknown,       ///< its manifest cannot be read, and its name says nothing
        Base,          ///< the base of the application, or the only package
        Feature,       ///< a module of the application: code and resources of its own
        Configuration, ///< a split for languages, screens or processors
        Standalone,    ///< the whole application, for devices without splits
    };
    Q_ENUM(Kind)

    /// Why a package is chosen for a device. New ones may be added. @since 0.5.1
    enum class Reason {
        None,          ///< it was not chosen: it is from PackageSet::packages()
        Always,        ///< every device gets it: the base, a module for every installation
        Condition,     ///< a module whose conditions the device fulfils
        Dependency,    ///< a module that another one uses
        Abi,           ///< native code for the device's processor
        Language,      ///< texts in a language of the user
        ScreenDensity, ///< pictures for the device's screen
        Standalone,    ///< the whole application, made for the device's processor or screen
        Texture,       ///< textures in a format that the device's graphics read
        Fallback,      ///< nothing else in the set is closer to the device
    };
    Q_ENUM(Reason)

    /// A package without a path. @since 0.5.1
    SetPackage();
    /// A copy of @p other. @since 0.5.1
    SetPackage(const SetPackage &other);
    /// Takes the value of @p other. @since 0.5.1
    SetPackage(SetPackage &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    SetPackage &operator=(const SetPackage &other);
    /// Takes the value of @p other. @since 0.5.1
    SetPackage &operator=(SetPackage &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~SetPackage();
    /// Exchanges the values of two packages. @since 0.5.1
    void swap(SetPackage &other) noexcept { d.swap(other.d); }

    /// The path in the set ("splits/base-de.apk"); empty when the package is no part of a set. @since 0.5.1
    QString path() const;
    /// The name of the split ("config.de"); empty for a base, and when the manifest cannot be read. @since 0.5.1
    QString splitName() const;
    /// What the package is. @since 0.5.1
    Kind kind() const;
    /// The module that the package is, or is a split of ("base", "camera"). @since 0.5.1
    QString module() const;
    /// The processors that the package has native code for ("arm64-v8a"), in ascending order; empty without native
    /// code. @since 0.5.1
    QStringList abis() const;
    /// The languages that the split is for ("de"); empty for other packages. @since 0.5.1
    QStringList languages() const;
    /// The densities that the package is for, in dots per inch; empty when it is for every screen. 65534 stands for
    /// drawables of any density, 65535 for pictures that are never scaled. @since 0.5.1
    QList<int> screenDensities() const;
    /// The lowest API level that the package runs on; 1 when its manifest has none. @since 0.5.1
    int minSdkVersion() const;
    /// The bytes that the package takes in the set, which is what has to be loaded. @since 0.5.1
    qint64 packedBytes() const;
    /// The bytes of the package itself. @since 0.5.1
    qint64 bytes() const;
    /// Why the package is chosen. @since 0.5.1
    Reason reason() const;
    /// The reason in English ("language de"); empty for Reason::None. Programs decide by reason(). It may have text of
    /// the package, which the caller makes harmless. @since 0.5.1
    QString reasonText() const;

private:
    friend class SetAccess;

    QSharedDataPointer<SetPackageData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::SetPackage)
Q_DECLARE_METATYPE(SorrelKit::SetPackage)

#endif
