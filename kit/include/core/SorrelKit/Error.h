// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ERROR_H
#define SORRELKIT_ERROR_H

#include <SorrelKit/KitCoreExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class ErrorData;

/**
 * The reason why a package was not read, or not read completely: a code for programs, and a text for people.
 *
 * Package::error() and PackageNormalizer::error() return this. Copies share their data and are cheap. Every operation
 * takes constant time and cannot fail. Different objects may be used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITCORE_EXPORT Error
{
    Q_GADGET
    Q_PROPERTY(Code code READ code CONSTANT)
    Q_PROPERTY(QString detail READ detail CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)

public:
    /// Kinds of errors. The numbers are those of ApkFile::getError(), which has no RefusedByAndroid. New ones may be
    /// added. @since 0.5.1
    enum class Code {
        None = 0,        ///< "no error"
        CannotOpen = 1,  ///< "could not open APK file": the file is missing, or is no regular file or no archive
        BadTable = 3,    ///< "could not parse resources.arsc": labels and icons are missing
        NoManifest = 4,  ///< "could not find AndroidManifest.xml"
        BadManifest = 5, ///< "could not parse AndroidManifest.xml"
        /// "Android refuses the package": the manifest was read, and Android would read nothing. The detail is the text
        /// of the first Diagnostic that isRefused().
        RefusedByAndroid = 6,
    };
    Q_ENUM(Code)

    /// No error. @since 0.5.1
    Error();
    /// An error of the kind @p code, with the fault @p detail in English, which may be empty. @since 0.5.1
    explicit Error(Code code, const QString &detail = QString());
    /// A copy of @p other. @since 0.5.1
    Error(const Error &other);
    /// Takes the value of @p other. @since 0.5.1
    Error(Error &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    Error &operator=(const Error &other);
    /// Takes the value of @p other. @since 0.5.1
    Error &operator=(Error &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~Error();
    /// Exchanges the values of two errors. @since 0.5.1
    void swap(Error &other) noexcept { d.swap(other.d); }

    /// The kind of the error; Code::None without an error. @since 0.5.1
    Code code() const;
    /// The fault behind the error, in English ("damaged chunk in resource table"); empty when no fault is known.
    /// @since 0.5.1
    QString detail() const;
    /// The text of code() in English, with detail() behind it when there is one ("could not parse resources.arsc:
    /// damaged chunk in resource table"). Programs decide by code(). @since 0.5.1
    QString message() const;
    /// Whether there is an error. @since 0.5.1
    explicit operator bool() const;

    /// Whether two values are equal. @since 0.5.1
    friend SORRELKITCORE_EXPORT bool operator==(const Error &a, const Error &b);
    /// Whether two values are different. @since 0.5.1
    friend SORRELKITCORE_EXPORT bool operator!=(const Error &a, const Error &b);

private:
    QSharedDataPointer<ErrorData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::Error)
Q_DECLARE_METATYPE(SorrelKit::Error)

#endif
