// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMAND_H
#define COMMAND_H

#include <QCommandLineParser>
#include <QString>

class Console;

/// Status that the program ends with.
enum ExitStatus : int {
    Success = 0,    ///< every file was read
    CannotRead = 1, ///< some file was not, or the output could not be written
    WrongUsage = 2,
};

/**
 * A subcommand: what it is called, what it takes, and what it does. main() makes all of them, parses the arguments for
 * the one that is asked for, and runs it.
 */
class Command
{
public:
    Command() = default;
    virtual ~Command() = default;

    virtual QString name() const = 0;
    /// What it does, in one line.
    virtual QString summary() const = 0;
    /// More about it, for its own help; may be empty.
    virtual QString details() const { return QString(); }
    /// How many arguments it takes.
    virtual int minArguments() const { return 1; }
    virtual int maxArguments() const { return 1; }
    /// Whether it is for the program itself, and in no help.
    virtual bool isInternal() const { return false; }
    /// Whether it waits for events, for which there has to be a QCoreApplication. To start one takes longer than a small
    /// package.
    virtual bool waitsForEvents() const { return false; }
    /// Names the arguments for the help; one package, unless a command says otherwise.
    virtual void addArguments(QCommandLineParser &parser) const
    {
        parser.addPositionalArgument(QStringLiteral("FILE"), fileText());
    }
    virtual void addOptions(QCommandLineParser &parser) const { Q_UNUSED(parser) }

    /// Does it; answers an ExitStatus. The number of arguments was checked.
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
