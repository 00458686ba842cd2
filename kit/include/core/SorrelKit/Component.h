// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_COMPONENT_H
#define SORRELKIT_COMPONENT_H

#include <SorrelKit/KitCoreExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class ComponentData;

/**
 * A component of an application: an activity, an alias of one, a service, a receiver or a provider.
 * Package::components() returns these.
 *
 * The values stay valid when the package is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Component
{
    Q_GADGET
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(bool exported READ isExported CONSTANT)
    Q_PROPERTY(bool enabled READ isEnabled CONSTANT)
    Q_PROPERTY(QString permission READ permission CONSTANT)
    Q_PROPERTY(QString writePermission READ writePermission CONSTANT)

public:
    /// The kinds of components, by the elements of the manifest. @since 0.5.1
    enum class Kind {
        Activity, ///< `activity`: a screen
        Alias,    ///< `activity-alias`: another name of an activity
        Service,  ///< `service`: work without a screen
        Receiver, ///< `receiver`: gets messages of the system and of other applications
        Provider, ///< `provider`: data for other applications
    };
    Q_ENUM(Kind)

    /// An activity without a name. @since 0.5.1
    Component();
    /// A copy of @p other. @since 0.5.1
    Component(const Component &other);
    /// Takes the value of @p other. @since 0.5.1
    Component(Component &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Component &operator=(const Component &other);
    /// Takes the value of @p other. @since 0.5.1
    Component &operator=(Component &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Component();
    /// Exchanges the values of two components. @since 0.5.1
    void swap(Component &other) noexcept { d.swap(other.d); }

    /// The kind of the component. @since 0.5.1
    Kind kind() const;
    /// Full name of the class, or of the alias ("org.example.notes.MainActivity"). @since 0.5.1
    QString name() const;
    /// Whether other applications may use the component. Without the attribute `exported`, a component with an intent
    /// filter is exported, and so is a provider of a package for API levels below 17. @since 0.5.1
    bool isExported() const;
    /// Whether the component and its application are enabled after installation. @since 0.5.1
    bool isEnabled() const;
    /// The permission that other applications need to use the component; for a provider, to read. The application's
    /// permission counts for components without one, except for aliases. Empty when no permission is needed. @since 0.5.1
    QString permission() const;
    /// The same for writing to a provider. Equal to permission() for other components. @since 0.5.1
    QString writePermission() const;

private:
    friend class Package;

    Component(Kind kind, const QString &name, bool isExported, bool isEnabled, const QString &permission,
              const QString &writePermission);

    QSharedDataPointer<ComponentData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Component)
Q_DECLARE_METATYPE(SorrelKit::Component)

#endif
