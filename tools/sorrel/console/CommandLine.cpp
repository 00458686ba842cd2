// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CommandLine.h"

#include "Arguments.h"
#include "CommandList.h"
#include "Console.h"
#include "PrintableText.h"
#include "UsedPlatform.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <algorithm>
#include <clocale>

namespace {

QString overview()
{
    constexpr int nameWidth = 10;
    QString text =
        QStringLiteral("Show the contents of Android packages (APK) and of sets of packages.\n\nCommands:\n");
    for (const ListedCommand &command : CommandList)
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(command.name), -nameWidth)
                    .arg(QLatin1String(command.summary));
    return text
           + QStringLiteral("\n'sorrel COMMAND --help' shows the help of one command.\n\n"
                            "Exit status: 0 when every file was read, 1 when a file could not be read or written, "
                            "2 for wrong usage.");
}

QString description(const QString &name, const Command &command)
{
    QStringList paragraphs;
    for (const ListedCommand &listed : CommandList) {
        if (name == QLatin1String(listed.name))
            paragraphs.append(QLatin1String(listed.summary));
    }
    if (!command.details().isEmpty())
        paragraphs.append(command.details());
    return paragraphs.join(QLatin1String("\n\n"));
}

// The help shows the name @p program, not the path of the program.
[[noreturn]] void showHelp(QCommandLineParser &parser, const QString &program)
{
    QByteArray name = program.toUtf8();
    char *arguments[] = {name.data(), nullptr};
    int count = 1;
    const QCoreApplication application(count, arguments);
    parser.showHelp(Success);
}

QCommandLineOption helpOption()
{
    return {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and exit.")};
}

QCommandLineOption platformOption()
{
    return {QStringLiteral("platform"),
            QStringLiteral("Framework package with the resources of Android itself, or 'none'. By default the "
                           "installed one."),
            QStringLiteral("FILE")};
}

int runWithoutCommand(const QStringList &arguments)
{
    const QCommandLineOption help = helpOption();
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version and exit."));
    QCommandLineParser parser;
    parser.addOptions({help, version});
    parser.addPositionalArgument(QStringLiteral("COMMAND"), QStringLiteral("One of the commands above."),
                                 QStringLiteral("COMMAND ..."));
    if (!parser.parse(arguments))
        return Console::wrongUsage(parser.errorText());
    if (parser.isSet(help)) {
        parser.setApplicationDescription(overview());
        showHelp(parser, QStringLiteral("sorrel"));
    }
    if (!parser.isSet(version))
        return Console::wrongUsage(QStringLiteral("A command is missing."));
    Console console;
    console.write(QStringLiteral("sorrel %1\n").arg(QCoreApplication::applicationVersion()));
    return console.finish() ? Success : CannotRead;
}

int runCommand(const QString &name, const Command &command, const QStringList &arguments)
{
    const QString program = QStringLiteral("sorrel ") + name;
    const QCommandLineOption help = helpOption();
    QCommandLineParser parser;
    command.addArguments(parser);
    command.addOptions(parser);
    const QCommandLineOption platform = platformOption();
    if (command.usesPlatform())
        parser.addOption(platform);
    parser.addOption(help);
    if (!parser.parse(arguments))
        return Console::wrongUsage(parser.errorText(), program);
    if (parser.isSet(help)) {
        parser.setApplicationDescription(description(name, command));
        showHelp(parser, program);
    }
    const auto count = parser.positionalArguments().size();
    if (count < command.minArguments())
        return Console::wrongUsage(QStringLiteral("A file is missing."), program);
    if (count > command.maxArguments())
        return Console::wrongUsage(QStringLiteral("There are too many arguments."), program);
    if (command.usesPlatform() && parser.isSet(platform)) {
        const FileName file(parser.value(platform));
        const QString error = UsedPlatform::use(file);
        if (!error.isEmpty()) {
            Console::complain(file.text(), error);
            return CannotRead;
        }
    }
    Console console;
    const int status = command.run(parser, console);
    return console.finish() || status != Success ? status : CannotRead;
}

// Standard error gets one line for a package. QT_LOGGING_RULES="*=true" also shows the messages of the libraries.
void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        QTextStream(stderr) << printableText(qFormatLogMessage(type, context, text)) << '\n';
}

} // namespace

int CommandLine::run(int argc, char *argv[], const std::vector<Entry> &entries)
{
    // QCoreApplication would do this, but no command has one: starting it takes longer than reading a small
    // package. Each category is a file; no output depends on the others.
    std::setlocale(LC_CTYPE, "");
    std::setlocale(LC_MESSAGES, "");
    QCoreApplication::setApplicationName(QStringLiteral("sorrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SORREL_VERSION));
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qInstallMessageHandler(handleMessage);

    QStringList arguments = argumentTexts(argc, argv);
    if (arguments.size() < 2 || arguments.at(1).startsWith(QLatin1Char('-')))
        return runWithoutCommand(arguments);
    const QString name = arguments.takeAt(1);
    const auto entry = std::find_if(entries.cbegin(), entries.cend(),
                                    [&](const Entry &candidate) { return name == QLatin1String(candidate.name); });
    if (entry == entries.cend())
        return Console::wrongUsage(QStringLiteral("Unknown command '%1'.").arg(name));
    const std::unique_ptr<Command> command = entry->make();
    return runCommand(name, *command, arguments);
}
