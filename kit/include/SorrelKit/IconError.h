// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONERROR_H
#define SORRELKIT_ICONERROR_H

#include <SorrelKit/Export.h>

#include <QString>

namespace SorrelKit {

/**
 * Why an icon was not drawn, or not wholly as the package describes it: a code that programs decide by, and a text that
 * people read. A plain value; copies are cheap, and may be used in any thread.
 *
 * @since 0.5.1
 */
class SORRELKIT_EXPORT IconError
{
public:
    /// Kinds of reasons. New ones may be added.
    enum class Code {
        None,        ///< the icon was drawn as the package describes it
        InvalidSize, ///< the request is for no side of 1 to 1024 pixels
        Missing,     ///< the package, or the launcher, names no icon
        NotDrawable, ///< the resource is missing, or is no drawable
        Unsupported, ///< an element or a kind that is not drawn here
        Damaged,     ///< a drawable contradicts itself, or lacks a part that it needs
        Unreadable,  ///< a file is missing, or cannot be read or decoded
        TooMuch,     ///< drawing takes more than a limit (docs/limits.md) allows
    };

    /// No error.
    IconError() = default;
    /// An error of the kind @p code, which @p text describes in English.
    IconError(Code code, const QString &text) : m_code(code), m_text(text) {}

    /// The kind of the error.
    Code code() const { return m_code; }
    /// Whether there is an error.
    explicit operator bool() const { return m_code != Code::None; }
    /// The reason in English (`unsupported drawable <x>`), for people; empty without an error. Programs decide by code().
    QString text() const { return m_text; }

private:
    Code m_code = Code::None;
    QString m_text;
};

} // namespace SorrelKit

#endif
