// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFERROR_H
#define SORRELKIT_SHELFERROR_H

#include <SorrelKit/ShelfExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class ShelfErrorData;

/**
 * The reason why an index was not opened, read or written: a code for programs, and a text for people. Shelf::error()
 * returns this.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELSHELF_EXPORT ShelfError
{
    Q_GADGET
    Q_PROPERTY(Code code READ code CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    /// Kinds of reasons. New ones may be added. @since 0.5.1
    enum class Code {
        None,         ///< everything is well
        NoDriver,     ///< this Qt has no driver for SQLite, or the SQLite of the driver has no full-text search
        CannotOpen,   ///< the file cannot be opened or made
        LaterVersion, ///< the file is the index of a later version, or of another program; another file is used instead
        Damaged,      ///< the file is damaged, or is no index; another file is used instead
        ReadOnly,     ///< the index cannot be written: it stays as it is
        Full,         ///< the disk is full: what did not fit is not in the index
        Busy,         ///< other processes wrote for too long
        NoWorker,     ///< the program that reads packages cannot be started
        NoFolder,     ///< a folder cannot be read: its packages stay in the index as they are
        Failed,       ///< another fault of the file or of the disk
    };
    Q_ENUM(Code)

    /// No error. @since 0.5.1
    ShelfError();
    /// An error of the kind @p code, which @p text describes in English. @since 0.5.1
    ShelfError(Code code, const QString &text);
    /// A copy of @p other. @since 0.5.1
    ShelfError(const ShelfError &other);
    /// Takes the value of @p other. @since 0.5.1
    ShelfError(ShelfError &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    ShelfError &operator=(const ShelfError &other);
    /// Takes the value of @p other. @since 0.5.1
    ShelfError &operator=(ShelfError &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~ShelfError();
    /// Exchanges the values of two errors. @since 0.5.1
    void swap(ShelfError &other) noexcept { d.swap(other.d); }

    /// The kind of the error; Code::None without an error. @since 0.5.1
    Code code() const;
    /// The reason in English with the name of the file, for people; empty without an error. Programs decide by code().
    /// @since 0.5.1
    QString text() const;
    /// Whether there is an error. @since 0.5.1
    explicit operator bool() const;

    /// Whether two values are equal. @since 0.5.1
    friend SORRELSHELF_EXPORT bool operator==(const ShelfError &a, const ShelfError &b);
    /// Whether two values are different. @since 0.5.1
    friend SORRELSHELF_EXPORT bool operator!=(const ShelfError &a, const ShelfError &b);

private:
    QSharedDataPointer<ShelfErrorData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::ShelfError)
Q_DECLARE_METATYPE(SorrelKit::ShelfError)

#endif
