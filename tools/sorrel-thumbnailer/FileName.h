// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FILENAME_H
#define FILENAME_H

#include <QString>

/**
 * The name of a file, as it came on the command line: a path, or a `file://` URI.
 *
 * On Linux a name is any bytes but NUL and '/', in no encoding. Here each byte is one character of a QString, which
 * makeNamesBytes() lets Qt hand to the system unchanged; only for people the bytes are read as UTF-8.
 */
class FileName
{
public:
    /// Has Qt take arguments and names as bytes, whatever the locale says. Called once, before anything else.
    static void makeNamesBytes();

    FileName() = default;
    explicit FileName(const QString &argument) : m_argument(argument) {}

    /// The path, as Qt takes it. With a '/' in it, lest Qt looks among its own resources; empty for an empty name.
    QString path() const;
    /// As path(), for a name that may be a URI of a file on this machine; empty for any other URI.
    QString pathOfUri() const;
    /// The argument, for messages.
    QString text() const;
    /// Whether it is "-", which stands for standard output.
    bool isDash() const;

private:
    QString m_argument;
};

#endif
