// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMAND_H
#define COMMAND_H

#include <QCommandLineParser>
#include <QString>

class Console;

/// The exit status of the program.
enum ExitStatus : int {
    Success = 0,     ///< every file was read
    CannotRead = 1,  ///< a file was not read, or the output could not be written
    NotVerified = 1, ///< of `verify`: a package is not verified, or was not read
    DoesNotFit = 1,  ///< of `info --device`: a package does not fit the device, or was not read
    WrongUsage = 2,
    Different = 1, ///< of `diff`: the packages differ
    Trouble = 2,   ///< of `diff`: a file was not read, or the output could not be written
};

/// A subcommand: its arguments and its work. CommandLine makes the requested one, parses the arguments for it, and runs it.
class Command
{
public:
    Command() = default;
    virtual ~Command() = default;

    /// Paragraphs for its own help, below the sentence in CommandList.h; may be empty.
    virtual QString details() const { return QString(); }
    /// The allowed number of arguments.
    virtual int minArguments() const { return 1; }
    virtual int maxArguments() const { return 1; }
    /// Adds the arguments for the help; one package by default.
    virtual void addArguments(QCommandLineParser &parser) const
    {
        parser.addPositionalArgument(QStringLiteral("FILE"), fileText());
    }
    virtual void addOptions(QCommandLineParser &parser) const { Q_UNUSED(parser) }
    /// Whether it shows what resources of packages have, and so has the option `--platform`.
    virtual bool usesPlatform() const { return false; }

    /// Runs the command and returns an ExitStatus. The number of arguments was checked before.
    virtual int run(const QCommandLineParser &parser, Console &console) const = 0;

protected:
    static QString fileText()
    {
        return QStringLiteral("An Android package, or a set of packages (.apks, .xapk, .apkm).");
    }

private:
    Q_DISABLE_COPY(Command)
};

#endif
