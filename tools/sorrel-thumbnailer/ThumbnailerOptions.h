// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THUMBNAILEROPTIONS_H
#define THUMBNAILEROPTIONS_H

#include "FileName.h"
#include "IconOptions.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>

/// What the command line asks for.
class ThumbnailerOptions
{
public:
    /// Pixels a side: those of a thumbnail when no number is given, and at most.
    static constexpr int DefaultSize = 256;
    static constexpr int MaxSize = IconOptions::MaxSize;

    ThumbnailerOptions();

    /// Takes @p arguments, the program's name first. False for wrong usage, which errorString() tells about.
    bool parse(const QStringList &arguments);
    QString errorString() const { return m_error; }

    /// Whether help or the version is asked for, and nothing else counts. Printing it, which takes a QCoreApplication,
    /// ends the program.
    bool isHelp() const { return m_parser.isSet(m_helpOption); }
    bool isVersion() const { return m_parser.isSet(m_versionOption); }
    [[noreturn]] void showHelp() { m_parser.showHelp(); }
    [[noreturn]] void showVersion() { m_parser.showVersion(); }

    /// At most that many pixels a side, 1 to MaxSize.
    int size() const { return m_size; }
    SorrelKit::IconMask mask() const { return m_iconOptions.mask(); }
    FileName input() const { return m_input; }
    FileName output() const { return m_output; }

private:
    bool setSize(const QString &text);
    bool fail(const QString &text);

    QCommandLineParser m_parser;
    /// For the shape alone: a size that is too large is none of its errors.
    IconOptions m_iconOptions{DefaultSize};
    QCommandLineOption m_sizeOption;
    QCommandLineOption m_helpOption;
    QCommandLineOption m_versionOption;
    QString m_error;
    int m_size = DefaultSize;
    FileName m_input;
    FileName m_output;
};

#endif
