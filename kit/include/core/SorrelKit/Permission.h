// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PERMISSION_H
#define SORRELKIT_PERMISSION_H

#include <SorrelKit/KitCoreExport.h>

#include <QExplicitlySharedDataPointer>
#include <QFlags>
#include <QLocale>
#include <QMetaType>
#include <QString>

namespace SorrelKit {

class PermissionData;

/**
 * A permission that a package requests, with the words that an installer shows. Package::permissions() returns these.
 *
 * The facts of the request are known from the manifest: name(), isImplied(), isRequired() and the SDK levels. The facts
 * of the permission and its words come from the first of these that knows the permission:
 *
 * 1. the package's platform, when it has one: Package::setPlatform()
 * 2. a built-in table of the platform's permissions, which has level, flags and group, and no sentences
 * 3. the package itself, by its elements `permission` and `permission-group`; as on a device, a package cannot declare a
 *    permission of the platform
 *
 * They are looked up on each call in the package and its platform, which stay open while one of the permissions lives. The
 * first lookup reads the platform's manifest, and its resource table for a reference; for a reference of the package, the
 * package's table. Copies share their data and are cheap. Use a permission from the
 * thread of its package, from one at a time. Returned values belong to the caller.
 *
 * No operation throws or sets an error code. A value that is missing or cannot be read is an empty text, 0 or
 * Level::Unknown.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Permission
{
    Q_GADGET
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString description READ description CONSTANT)
    Q_PROPERTY(Level level READ level CONSTANT)
    Q_PROPERTY(Flags flags READ flags CONSTANT)
    Q_PROPERTY(QString group READ group CONSTANT)
    Q_PROPERTY(QString groupLabel READ groupLabel CONSTANT)
    Q_PROPERTY(int minSdkVersion READ minSdkVersion CONSTANT)
    Q_PROPERTY(int maxSdkVersion READ maxSdkVersion CONSTANT)
    Q_PROPERTY(bool implied READ isImplied CONSTANT)
    Q_PROPERTY(QString impliedReason READ impliedReason CONSTANT)
    Q_PROPERTY(bool required READ isRequired CONSTANT)
    Q_PROPERTY(bool declared READ isDeclared CONSTANT)

public:
    /// Who gets a permission: the base of Android's protection levels. @since 0.5.1
    enum class Level {
        Unknown,   ///< nothing is known of the permission
        Normal,    ///< every package that requests it
        Dangerous, ///< a package whose user agrees
        Signature, ///< a package that the signer of the declaring package has signed, and those that flags() admit
        Internal,  ///< only packages that flags() admit
    };
    Q_ENUM(Level)

    /// Who else gets a permission, and when: the flags of Android's protection levels, with their values. @since 0.5.1
    enum class Flag {
        Privileged = 0x10,                 ///< packages on the system's partitions that a list allows
        Development = 0x20,                ///< packages that a developer grants it
        AppOp = 0x40,                      ///< packages that the user allows in the settings
        Pre23 = 0x80,                      ///< packages for API levels below 23
        Installer = 0x100,                 ///< the system's installer
        Verifier = 0x200,                  ///< the system's verifier of packages
        Preinstalled = 0x400,              ///< packages on the system's image
        Setup = 0x800,                     ///< the assistant that sets a device up
        Instant = 0x1000,                  ///< instant applications may have it
        RuntimeOnly = 0x2000,              ///< only packages for API level 23 and later
        Oem = 0x4000,                      ///< packages of the device's maker that a list allows
        VendorPrivileged = 0x8000,         ///< packages on the vendor's partition that a list allows
        TextClassifier = 0x10000,          ///< the system's text classifier
        Wellbeing = 0x20000,               ///< the application for digital well-being; Android 10 to 11
        Documenter = 0x40000,              ///< the system's manager of documents
        Configurator = 0x80000,            ///< the device's configurator
        IncidentReportApprover = 0x100000, ///< the application that approves incident reports
        AppPredictor = 0x200000,           ///< the system's predictor of applications
        Module = 0x400000,                 ///< packages of the system's modules
        Companion = 0x800000,              ///< the manager of companion devices
        RetailDemo = 0x1000000,            ///< the application for demonstrations in shops
        Recents = 0x2000000,               ///< the application that shows recent ones
        Role = 0x4000000,                  ///< packages with a role that the platform names
        KnownSigner = 0x8000000,           ///< packages of signers that the declaration lists
    };
    Q_ENUM(Flag)
    Q_DECLARE_FLAGS(Flags, Flag)
    Q_FLAG(Flags)

    /// A permission without a name. @since 0.5.1
    Permission();
    /// A copy of @p other. @since 0.5.1
    Permission(const Permission &other);
    /// Takes the value of @p other. @since 0.5.1
    Permission(Permission &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Permission &operator=(const Permission &other);
    /// Takes the value of @p other. @since 0.5.1
    Permission &operator=(Permission &&other) noexcept;
    /// Closes the package when no other object uses it. @since 0.5.1
    ~Permission();
    /// Exchanges two permissions. @since 0.5.1
    void swap(Permission &other) noexcept { d.swap(other.d); }

    /// The name by which packages request it ("android.permission.CAMERA"). @since 0.5.1
    QString name() const;

    /**
     * What the permission allows, in a few words, as a device in @p locale shows it; chosen as Entry::label() does.
     * Without a text, the words of the constant for a permission of the platform ("access fine location"), else name().
     * The labels of all permissions of one list share a limit, as those of launchers do.
     * @since 0.5.1
     */
    QString label(const QLocale &locale = QLocale()) const;
    /// What the permission allows, in a sentence or two for @p locale; empty when there is no text. Limited as label()
    /// is. @since 0.5.1
    QString description(const QLocale &locale = QLocale()) const;

    /// Who gets the permission. @since 0.5.1
    Level level() const;
    /// The flags of the protection level. Flags that this version does not know are in the value, too. @since 0.5.1
    Flags flags() const;
    /// The group, by which users agree ("android.permission-group.LOCATION"); empty when there is none. Since Android
    /// 10, the platform's manifest names no groups, so the built-in table does. @since 0.5.1
    QString group() const;
    /// A few words for the group, for @p locale; plain English words without a text, group() for an unknown group, and
    /// empty without a group. Limited as label() is. @since 0.5.1
    QString groupLabel(const QLocale &locale = QLocale()) const;

    /// The first API level at which the package requests it: 23 for `uses-permission-sdk-23`, else 0. @since 0.5.1
    int minSdkVersion() const;
    /// The last API level at which the package requests it; 0 when there is none. @since 0.5.1
    int maxSdkVersion() const;
    /// Whether the manifest does not request it, and Android grants it together with another, or to packages for old API
    /// levels. @since 0.5.1
    bool isImplied() const;
    /// The reason when isImplied() is true ("requested WRITE_EXTERNAL_STORAGE"), else empty. @since 0.5.1
    QString impliedReason() const;
    /// Whether the package does not work without it: no `android:required` is false. @since 0.5.1
    bool isRequired() const;
    /// Whether an element `permission` of the package's own manifest declares it. @since 0.5.1
    bool isDeclared() const;

private:
    friend class Package;
    explicit Permission(PermissionData *data);

    QExplicitlySharedDataPointer<PermissionData> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(Permission::Flags)

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Permission)
Q_DECLARE_METATYPE(SorrelKit::Permission)

#endif
