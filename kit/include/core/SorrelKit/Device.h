// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DEVICE_H
#define SORRELKIT_DEVICE_H

#include <SorrelKit/KitCoreExport.h>

#include <QByteArray>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

namespace SorrelKit {

class DeviceData;

/**
 * A device that packages are chosen for: its processors, languages, screen, version of Android and features.
 * PackageSet::splitsFor() takes one.
 *
 * A file can describe a device, in the form of bundletool's device specifications. It is a JSON object, whose unknown
 * names are skipped:
 *
 * | name             | value                                                                             |
 * |------------------|-----------------------------------------------------------------------------------|
 * | supportedAbis    | names of processors (`"arm64-v8a"`), the preferred one first                      |
 * | supportedLocales | language tags (`"de-DE"`), the preferred one first                                |
 * | screenDensity    | dots per inch, from 1 to 65533                                                    |
 * | sdkVersion       | the API level, from 1 to 10000                                                    |
 * | deviceFeatures   | features (`"android.hardware.camera"`); may be missing                             |
 * | glExtensions     | extensions of OpenGL ES, which decide on formats of textures; may be missing      |
 *
 * Copies share their data and are cheap. Except fromFile() and fromJson(), every operation takes constant time and
 * cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Device
{
    Q_GADGET
    Q_PROPERTY(Fault fault READ fault CONSTANT)
    Q_PROPERTY(QString faultText READ faultText CONSTANT)
    Q_PROPERTY(QStringList abis READ abis CONSTANT)
    Q_PROPERTY(QStringList locales READ locales CONSTANT)
    Q_PROPERTY(int screenDensity READ screenDensity CONSTANT)
    Q_PROPERTY(int sdkVersion READ sdkVersion CONSTANT)
    Q_PROPERTY(QStringList features READ features CONSTANT)
    Q_PROPERTY(QStringList glExtensions READ glExtensions CONSTANT)

public:
    /// Why packages cannot be chosen for a device. New ones may be added. @since 0.5.1
    enum class Fault {
        None,         ///< nothing is missing
        CannotRead,   ///< the file is missing, is no regular file, or is larger than docs/limits.md allows
        NotJson,      ///< the file is no JSON object
        BadValue,     ///< a value has another type or is out of range
        MissingValue, ///< processors, languages, density or API level are missing
    };
    Q_ENUM(Fault)

    /// A device about which nothing is known: fault() is Fault::MissingValue until the processors, the languages, the
    /// density and the API level are set. @since 0.5.1
    Device();
    /// A copy of @p other. @since 0.5.1
    Device(const Device &other);
    /// Takes the value of @p other. @since 0.5.1
    Device(Device &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Device &operator=(const Device &other);
    /// Takes the value of @p other. @since 0.5.1
    Device &operator=(Device &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Device();
    /// Exchanges the values of two devices. @since 0.5.1
    void swap(Device &other) noexcept { d.swap(other.d); }

    /// The device that the file @p fileName describes. Reads the file, which is closed again. When it cannot be read,
    /// fault() has the reason. @since 0.5.1
    static Device fromFile(const QString &fileName);
    /// The device that the JSON text @p json describes. When it describes none, fault() has the reason. @since 0.5.1
    static Device fromJson(const QByteArray &json);

    /// The first reason why packages cannot be chosen for the device; Fault::None when there is none. @since 0.5.1
    Fault fault() const;
    /// The reason in English, with the name of the value ("sdkVersion is no number from 1 to 10000"); empty without a
    /// fault. @since 0.5.1
    QString faultText() const;

    /// The processors that the device runs native code for ("arm64-v8a"), the preferred one first. @since 0.5.1
    QStringList abis() const;
    /// Sets abis(). @since 0.5.1
    void setAbis(const QStringList &abis);
    /// The languages of the user as tags ("de-DE"), the preferred one first. @since 0.5.1
    QStringList locales() const;
    /// Sets locales(). @since 0.5.1
    void setLocales(const QStringList &locales);
    /// The density of the screen in dots per inch; 0 when it is not known. @since 0.5.1
    int screenDensity() const;
    /// Sets screenDensity(). @since 0.5.1
    void setScreenDensity(int density);
    /// The API level of the device's Android; 0 when it is not known. @since 0.5.1
    int sdkVersion() const;
    /// Sets sdkVersion(). @since 0.5.1
    void setSdkVersion(int version);
    /// The features of the device ("android.hardware.camera"), in any order. @since 0.5.1
    QStringList features() const;
    /// Sets features(). @since 0.5.1
    void setFeatures(const QStringList &features);
    /// The extensions of OpenGL ES that the device has, in any order. @since 0.5.1
    QStringList glExtensions() const;
    /// Sets glExtensions(). @since 0.5.1
    void setGlExtensions(const QStringList &extensions);

private:
    QSharedDataPointer<DeviceData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Device)
Q_DECLARE_METATYPE(SorrelKit::Device)

#endif
