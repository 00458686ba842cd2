// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_VIEWEROPTIONS_H
#define VIEWER_VIEWEROPTIONS_H

#include <QCommandLineParser>
#include <QString>

namespace Viewer {

/// The command line of the viewer.
class ViewerOptions
{
public:
    ViewerOptions();

    /// Reads @p arguments, which argumentTexts() returned and from which Qt's own options are gone. Returns whether
    /// they are right.
    bool parse(const QStringList &arguments);
    QString errorString() const { return m_error; }

    bool isHelp() const { return m_parser.isSet(m_help); }
    bool isVersion() const { return m_parser.isSet(m_version); }
    /// Print the text, and end the process.
    [[noreturn]] void showHelp() { m_parser.showHelp(); }
    [[noreturn]] void showVersion() { m_parser.showVersion(); }

    /// The package to open; empty when there is none.
    QString file() const { return m_file; }
    /// The package to compare it with; empty when there is none.
    QString compareWith() const { return m_compareWith; }
    bool hasInstallCommand() const { return m_parser.isSet(m_installCommand); }
    QString installCommand() const { return m_parser.value(m_installCommand); }

private:
    bool readFile(const QString &argument, QString *file);

    QCommandLineParser m_parser;
    QCommandLineOption m_compare;
    QCommandLineOption m_installCommand;
    QCommandLineOption m_help;
    QCommandLineOption m_version;
    QString m_file;
    QString m_compareWith;
    QString m_error;
};

} // namespace Viewer

#endif
