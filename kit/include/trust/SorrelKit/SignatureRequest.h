// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNATUREREQUEST_H
#define SORRELKIT_SIGNATUREREQUEST_H

#include <SorrelKit/TrustExport.h>

#include <QByteArray>
#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class SignatureRequestData;

/**
 * The versions of Android that signatures are verified for, and the file of the v4 signature. New properties may be
 * added; their defaults keep the results of older programs.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT SignatureRequest
{
    Q_GADGET
    Q_PROPERTY(int minSdkVersion READ minSdkVersion WRITE setMinSdkVersion)
    Q_PROPERTY(int maxSdkVersion READ maxSdkVersion WRITE setMaxSdkVersion)
    Q_PROPERTY(QString v4SignatureFile READ v4SignatureFile WRITE setV4SignatureFile)

public:
    /// The properties have their defaults. @since 0.5.1
    SignatureRequest();
    /// A copy of @p other. @since 0.5.1
    SignatureRequest(const SignatureRequest &other);
    /// Takes the value of @p other. @since 0.5.1
    SignatureRequest(SignatureRequest &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    SignatureRequest &operator=(const SignatureRequest &other);
    /// Takes the value of @p other. @since 0.5.1
    SignatureRequest &operator=(SignatureRequest &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~SignatureRequest();
    /// Exchanges two values. @since 0.5.1
    void swap(SignatureRequest &other) noexcept { d.swap(other.d); }

    /// The lowest API level. 0, the default, is that of the package. @since 0.5.1
    int minSdkVersion() const;
    /// Sets minSdkVersion(). @since 0.5.1
    void setMinSdkVersion(int version);
    /// The highest API level. 0, the default, is the newest. @since 0.5.1
    int maxSdkVersion() const;
    /// Sets maxSdkVersion(). @since 0.5.1
    void setMaxSdkVersion(int version);
    /// The file with the v4 signature. By default empty: the file beside that of the package, with its name and
    /// ".idsig" behind it, when it exists; a package on a device has none. Faults of that file are warnings. A file that is
    /// named here must exist, and its faults are errors. @since 0.5.1
    QString v4SignatureFile() const;
    /// Sets v4SignatureFile(). @since 0.5.1
    void setV4SignatureFile(const QString &fileName);

private:
    QSharedDataPointer<SignatureRequestData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::SignatureRequest)
Q_DECLARE_METATYPE(SorrelKit::SignatureRequest)

#endif
