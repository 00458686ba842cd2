// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONSOLE_H
#define CONSOLE_H

#include "TextStyle.h"

#include <QByteArray>
#include <QFile>
#include <QJsonObject>
#include <QString>

/**
 * Standard output and standard error. Callers pass texts from packages through printableText(). This class does that
 * for errors.
 */
class Console
{
public:
    Console();

    /// Styles for standard output. A terminal gets colours, unless the environment has NO_COLOR or TERM=dumb.
    const TextStyle &style() const { return m_style; }
    /// Whether standard output is a terminal.
    bool isTerminal() const { return m_isTerminal; }
    /// Columns of the terminal; 0 when standard output is no terminal, so lines have no limit.
    int columns() const;

    void write(const QByteArray &bytes) { m_output.write(bytes); }
    void write(const QString &text) { m_output.write(text.toUtf8()); }
    /// Writes @p object on a line of its own.
    void writeLine(const QJsonObject &object);
    /// Flushes the output. Returns false when the reader is gone, so further output is useless.
    bool flush() { return m_output.flush() && m_output.error() == QFileDevice::NoError; }
    /// Flushes the output. Prints an error and returns false when not all of it could be written.
    bool finish();

    /// Prints an error about @p subject, usually a file, on standard error.
    static void complain(const QString &subject, const QString &text);
    /// Prints an error about the arguments and a hint to the help of @p program, which is `sorrel` or a subcommand.
    static int wrongUsage(const QString &text, const QString &program = QStringLiteral("sorrel"));

private:
    QFile m_output;
    bool m_isTerminal;
    TextStyle m_style;
};

#endif
