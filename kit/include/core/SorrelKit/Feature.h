// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_FEATURE_H
#define SORRELKIT_FEATURE_H

#include <SorrelKit/KitCoreExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class FeatureData;

/**
 * A feature of the device that a package uses (`uses-feature`), or that follows from its permissions and activities.
 * Package::features() and Package::impliedFeatures()
 * return these.
 *
 * The values stay valid when the package is gone. Copies share their data and are cheap. Every operation takes constant
 * time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Feature
{
    Q_GADGET
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(bool required READ isRequired CONSTANT)
    Q_PROPERTY(int version READ version CONSTANT)
    Q_PROPERTY(bool implied READ isImplied CONSTANT)
    Q_PROPERTY(QString impliedReason READ impliedReason CONSTANT)

public:
    /// A feature without a name, which is required. @since 0.5.1
    Feature();
    /// A copy of @p other. @since 0.5.1
    Feature(const Feature &other);
    /// Takes the value of @p other. @since 0.5.1
    Feature(Feature &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Feature &operator=(const Feature &other);
    /// Takes the value of @p other. @since 0.5.1
    Feature &operator=(Feature &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Feature();
    /// Exchanges the values of two features. @since 0.5.1
    void swap(Feature &other) noexcept { d.swap(other.d); }

    /// The platform's name of the feature ("android.hardware.camera"). @since 0.5.1
    QString name() const;
    /// Whether the package is only for devices that have the feature. @since 0.5.1
    bool isRequired() const;
    /// A few plain English words for the feature ("Bluetooth Low Energy"). A feature of the platform that has none has the
    /// words of its name ("sensor hinge angle"), another feature its name(). @since 0.5.1
    QString label() const;
    /// The lowest version of the feature that the package works with (0x400003, Vulkan 1.0.3); 0 for any. @since 0.5.1
    int version() const;
    /// Whether the manifest does not name the feature, and it follows from something else. Stores do not offer the package
    /// to devices without such a feature; Android installs it all the same. @since 0.5.1
    bool isImplied() const;
    /// The reason when isImplied() is true ("requested android.permission.CAMERA"), else empty. @since 0.5.1
    QString impliedReason() const;

private:
    friend class Package;

    QSharedDataPointer<FeatureData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Feature)
Q_DECLARE_METATYPE(SorrelKit::Feature)

#endif
