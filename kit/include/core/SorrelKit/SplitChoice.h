// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SPLITCHOICE_H
#define SORRELKIT_SPLITCHOICE_H

#include <SorrelKit/ExpansionFile.h>
#include <SorrelKit/KitCoreExport.h>
#include <SorrelKit/SetPackage.h>

#include <QList>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class SplitChoiceData;

/**
 * The packages of a set that an installer installs on a device, or the reason why the application does not fit the
 * device. PackageSet::splitsFor() returns this.
 *
 * The values stay valid when the set is gone. Copies share their data and are cheap. downloadBytes() and
 * installedBytes() go over the packages and files, every other operation takes constant time; none can fail. Different objects
 * may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT SplitChoice
{
    Q_GADGET
    Q_PROPERTY(Code code READ code CONSTANT)
    Q_PROPERTY(bool fits READ fits CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)
    Q_PROPERTY(QList<SorrelKit::SetPackage> packages READ packages CONSTANT)
    Q_PROPERTY(QList<SorrelKit::ExpansionFile> expansions READ expansions CONSTANT)
    Q_PROPERTY(qint64 downloadBytes READ downloadBytes CONSTANT)
    Q_PROPERTY(qint64 installedBytes READ installedBytes CONSTANT)
    Q_PROPERTY(qint64 libraryBytes READ libraryBytes CONSTANT)

public:
    /// Why nothing fits. New ones may be added. @since 0.5.1
    enum class Code {
        Fits,          ///< packages() are what an installer installs
        CannotRead,    ///< the set cannot be read
        BadDevice,     ///< the description of the device lacks something
        BadContents,   ///< `toc.pb` of the set is damaged
        SdkTooLow,     ///< the application needs a newer Android
        NoNativeCode,  ///< there is native code, but none for the device
        NoScreen,      ///< nothing in the set is for the device's screen and graphics
        MissingPackage ///< the set lacks a package that the application requires
    };
    Q_ENUM(Code)

    /// A choice of no set: Code::CannotRead. @since 0.5.1
    SplitChoice();
    /// A copy of @p other. @since 0.5.1
    SplitChoice(const SplitChoice &other);
    /// Takes the value of @p other. @since 0.5.1
    SplitChoice(SplitChoice &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    SplitChoice &operator=(const SplitChoice &other);
    /// Takes the value of @p other. @since 0.5.1
    SplitChoice &operator=(SplitChoice &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~SplitChoice();
    /// Exchanges the values of two choices. @since 0.5.1
    void swap(SplitChoice &other) noexcept { d.swap(other.d); }

    /// Code::Fits, or the first reason why the application does not fit the device. @since 0.5.1
    Code code() const;
    /// Whether an installer can install the application. @since 0.5.1
    bool fits() const { return code() == Code::Fits; }
    /// The reason in English ("needs SDK 26, and the device has SDK 21"); empty for Code::Fits. Programs decide by
    /// code(). The text may have text of the package, which the caller makes harmless. @since 0.5.1
    QString message() const;
    /// The packages to install, each with its reason(): the base first, then the others in the order in which they were
    /// chosen. Empty unless fits(). @since 0.5.1
    QList<SetPackage> packages() const;
    /// The expansion files of the set, which are for every device. Empty unless fits(). @since 0.5.1
    QList<ExpansionFile> expansions() const;
    /// The bytes of packages() and expansions() in the set, which have to be loaded. @since 0.5.1
    qint64 downloadBytes() const;
    /// The bytes on the device: packages() and expansions() themselves, and libraryBytes(). Android adds what it makes of
    /// them, such as compiled code. @since 0.5.1
    qint64 installedBytes() const;
    /// The bytes of native code that Android unpacks beside the packages: the libraries of packages() for the device's
    /// first processor that they have any for. 0 when the base has `android:extractNativeLibs="false"`, so that libraries
    /// are used where they are in the packages. @since 0.5.1
    qint64 libraryBytes() const;

private:
    friend class SetAccess;

    QSharedDataPointer<SplitChoiceData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::SplitChoice)
Q_DECLARE_METATYPE(SorrelKit::SplitChoice)

#endif
