// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILENAME_H
#define FILENAME_H

#include <QByteArray>
#include <QString>

/**
 * The name of a file, as it came on the command line: a path, or a `file://` URI.
 *
 * On Linux a name is any bytes but NUL and '/', in no encoding. As an argument each byte is one character of a QString;
 * what a path is handed to takes bytes, and only for people they are read as UTF-8.
 */
class FileName
{
public:
    FileName() = default;
    explicit FileName(const QString &argument) : m_argument(argument) {}

    /// The path, as the system takes it.
    QByteArray path() const { return m_argument.toLatin1(); }
    /// As path(), for a name that may be a URI of a file on this machine; empty for any other URI.
    QByteArray pathOfUri() const;
    /// The argument, for messages.
    QString text() const;
    /// Whether it is "-", which stands for standard output.
    bool isDash() const;

private:
    QString m_argument;
};

#endif
