// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILENAME_H
#define FILENAME_H

#include "Arguments.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/**
 * The name of a file, as it came on the command line or out of a directory: a path, or where a program takes one a
 * `file://` URI.
 *
 * On Linux a name is any bytes but NUL and '/', in no encoding. It is kept as these bytes up to where the file is opened;
 * only for people it is read as UTF-8.
 */
class FileName
{
public:
    FileName() = default;
    /// The path, as the system has it.
    explicit FileName(const QByteArray &path) : m_path(path) {}
    /// An argument, as argumentTexts() has it.
    explicit FileName(const QString &argument) : FileName(argumentBytes(argument)) {}

    /// The path, as the system takes it.
    const QByteArray &path() const { return m_path; }
    /// As path(), for a name that may be a URI of a file on this machine; empty for any other URI.
    QByteArray pathOfUri() const;
    /// The name as Qt takes it, and never as one of Qt's own resources; null when Qt has none, since the name is no text in
    /// the encoding that Qt reads names in.
    QString forQt() const;
    /// Why a file without a name for Qt is not written.
    static QString notForQtText() { return QStringLiteral("the name is not UTF-8, and no file is written to it"); }

    /// The name for messages and reports; U+FFFD stands for each byte that is no UTF-8.
    QString text() const;
    /// The path as an absolute `file://` URI, which keeps every byte: all but letters, digits and "-._~/" as %XX.
    QByteArray uri() const;
    /// What reports say about the file: "file", its text(), and, when that is not all of the name, "uri".
    QJsonObject toJson() const;

    /// Whether it is "-", which stands for standard output or input.
    bool isDash() const { return m_path == "-"; }
    /// Whether both lead to one file that exists, by whatever links.
    bool isSameFile(const FileName &other) const;

private:
    QByteArray m_path;
};

#endif
