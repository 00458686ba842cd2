// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef THUMBNAILEROPTIONS_H
#define THUMBNAILEROPTIONS_H

#include "FileName.h"
#include "IconOptions.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>
#include <QStringList>

/// The options on the command line.
class ThumbnailerOptions
{
public:
    /// The default and the largest width and height of a thumbnail, in pixels.
    static constexpr int DefaultSize = 256;
    static constexpr int MaxSize = IconOptions::MaxSize;

    ThumbnailerOptions();

    /// Parses @p arguments, with the program's name first. Returns false and sets errorString() for wrong usage.
    bool parse(const QStringList &arguments);
    QString errorString() const { return m_error; }

    /// Whether the help or the version is requested. Nothing else matters then. Printing it needs a QCoreApplication
    /// and ends the program.
    bool isHelp() const { return m_parser.isSet(m_helpOption); }
    bool isVersion() const { return m_parser.isSet(m_versionOption); }
    [[noreturn]] void showHelp() { m_parser.showHelp(); }
    [[noreturn]] void showVersion() { m_parser.showVersion(); }

    /// The largest width and height in pixels, from 1 to MaxSize.
    int size() const { return m_size; }
    SorrelKit::IconMask mask() const { return m_iconOptions.mask(); }
    FileName input() const { return m_input; }
    FileName output() const { return m_output; }

private:
    bool setSize(const QString &text);
    bool fail(const QString &text);

    QCommandLineParser m_parser;
    /// Only for the shape: this class reads the size itself, because a large one is no error.
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
