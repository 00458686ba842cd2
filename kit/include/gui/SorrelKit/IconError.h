// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONERROR_H
#define SORRELKIT_ICONERROR_H

#include <SorrelKit/KitGuiExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class IconErrorData;

/**
 * The reason why an icon was not drawn, or not completely as the package describes it: a code for programs, and a text
 * for people. DrawableRenderer::error() returns this.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELKITGUI_EXPORT IconError
{
    Q_GADGET
    Q_PROPERTY(Code code READ code CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    /// Kinds of reasons. New ones may be added. @since 0.5.1
    enum class Code {
        None,        ///< the icon was drawn as the package describes it
        InvalidSize, ///< the request has a side outside of 1 to 1024 pixels
        Missing,     ///< the package, or the launcher, names no icon
        NotDrawable, ///< the resource is missing, or is no drawable
        Unsupported, ///< an element or a kind that this library does not draw
        Damaged,     ///< a drawable contradicts itself, or lacks a part that it needs
        Unreadable,  ///< a file is missing, or cannot be read or decoded
        TooMuch,     ///< drawing takes more than a limit (docs/limits.md) allows
        /// a resource of the platform is missing: the package has no platform (Package::setPlatform()), or another
        /// version of Android has the resource
        NeedsPlatform,
        NoThemeValue, ///< an attribute (`?attr/x`) has no value in the theme, or the request has no theme
    };
    Q_ENUM(Code)

    /// No error. @since 0.5.1
    IconError();
    /// An error of the kind @p code, which @p text describes in English. @since 0.5.1
    IconError(Code code, const QString &text);
    /// A copy of @p other. @since 0.5.1
    IconError(const IconError &other);
    /// Takes the value of @p other. @since 0.5.1
    IconError(IconError &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    IconError &operator=(const IconError &other);
    /// Takes the value of @p other. @since 0.5.1
    IconError &operator=(IconError &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~IconError();
    /// Exchanges the values of two errors. @since 0.5.1
    void swap(IconError &other) noexcept { d.swap(other.d); }

    /// The kind of the error; Code::None without an error. @since 0.5.1
    Code code() const;
    /// The reason in English (`unsupported drawable <x>`), for people; empty without an error. Programs decide by
    /// code().
    /// @since 0.5.1
    QString text() const;
    /// Whether there is an error. @since 0.5.1
    explicit operator bool() const;

    /// Whether two values are equal. @since 0.5.1
    friend SORRELKITGUI_EXPORT bool operator==(const IconError &a, const IconError &b);
    /// Whether two values are different. @since 0.5.1
    friend SORRELKITGUI_EXPORT bool operator!=(const IconError &a, const IconError &b);

private:
    QSharedDataPointer<IconErrorData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::IconError)
Q_DECLARE_METATYPE(SorrelKit::IconError)

#endif
