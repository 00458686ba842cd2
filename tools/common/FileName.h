// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILENAME_H
#define FILENAME_H

#include "Arguments.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/**
 * The name of a file, from the command line or from a directory: a path, or a `file://` URI for programs that accept
 * one.
 *
 * On Linux a name may have any bytes except NUL and '/', in no encoding. This class keeps the bytes. It reads them as
 * UTF-8 only for people.
 */
class FileName
{
public:
    FileName() = default;
    /// A path in the bytes of the system.
    explicit FileName(const QByteArray &path) : m_path(path) {}
    /// An argument from argumentTexts().
    explicit FileName(const QString &argument) : FileName(argumentBytes(argument)) {}

    /// The path in the bytes of the system.
    const QByteArray &path() const { return m_path; }
    /// The path, or the path of a `file://` URI of this machine; empty for any other URI.
    QByteArray pathOfUri() const;
    /// The name for Qt, which never names one of Qt's own resources. Null when the name is no text in the encoding that
    /// Qt uses for file names.
    QString forQt() const;
    /// The error text for writing to a file without a name for Qt.
    static QString notForQtText() { return QStringLiteral("the name is not UTF-8, and no file is written to it"); }

    /// The name for messages and reports, with U+FFFD for each byte that is not UTF-8.
    QString text() const;
    /// The path as an absolute `file://` URI, which keeps every byte: everything except letters, digits and "-._~/" is
    /// %XX.
    QByteArray uri() const;
    /// The members of a report about the file: "file", its text(), and "uri" when the text does not have every byte.
    QJsonObject toJson() const;

    /// Whether it is "-", which means standard output or input.
    bool isDash() const { return m_path == "-"; }
    /// Whether both are the same existing file, through any links.
    bool isSameFile(const FileName &other) const;

private:
    QByteArray m_path;
};

#endif
