// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONSOLE_H
#define CONSOLE_H

#include "TextStyle.h"

#include <QByteArray>
#include <QFile>
#include <QJsonObject>
#include <QString>

/**
 * Standard output and standard error. Texts out of packages go through printableText() before they are written; errors
 * do so here.
 */
class Console
{
public:
    Console();

    /// Styles for standard output: colours when it is a terminal, and the environment does not say NO_COLOR or TERM=dumb.
    const TextStyle &style() const { return m_style; }
    /// Whether standard output is a terminal.
    bool isTerminal() const { return m_isTerminal; }
    /// Columns of the terminal; 0 when standard output is none, and lines may be of any length.
    int columns() const;

    void write(const QByteArray &bytes) { m_output.write(bytes); }
    void write(const QString &text) { m_output.write(text.toUtf8()); }
    /// @p object on a line of its own.
    void writeLine(const QJsonObject &object);
    /// Hands over what was written so far; false when somebody does not take it, and nobody ever will.
    bool flush() { return m_output.flush() && m_output.error() == QFileDevice::NoError; }
    /// Hands over everything, and answers whether all of it was taken. When not, that is told.
    bool finish();

    /// Tells on standard error what is wrong with @p subject, mostly a file.
    static void complain(const QString &subject, const QString &text);
    /// Tells what is wrong with the arguments, and where help is: with `sorrel`, or one of its subcommands as @p program.
    static int wrongUsage(const QString &text, const QString &program = QStringLiteral("sorrel"));

private:
    QFile m_output;
    bool m_isTerminal;
    TextStyle m_style;
};

#endif
