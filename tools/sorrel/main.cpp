// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Arguments.h"
#include "CatalogCommand.h"
#include "Console.h"
#include "DesktopCommand.h"
#include "DrawnIconCheck.h"
#include "FilesCommand.h"
#include "IconCommand.h"
#include "InfoCommand.h"
#include "LintCommand.h"
#include "ManifestCommand.h"
#include "PrintableText.h"
#include "ResourcesCommand.h"
#include "ScanCommand.h"
#include "WorkerCommand.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include <clocale>
#include <memory>
#include <vector>

namespace {

using Commands = std::vector<std::unique_ptr<Command>>;

Commands makeCommands()
{
    Commands commands;
    commands.push_back(std::make_unique<InfoCommand>());
    commands.push_back(std::make_unique<ManifestCommand>());
    commands.push_back(std::make_unique<IconCommand>());
    commands.push_back(std::make_unique<ResourcesCommand>());
    commands.push_back(std::make_unique<FilesCommand>());
    commands.push_back(std::make_unique<LintCommand>(DrawnIconCheck::make));
    commands.push_back(std::make_unique<DesktopCommand>());
    commands.push_back(std::make_unique<ScanCommand>());
    commands.push_back(std::make_unique<CatalogCommand>());
    commands.push_back(std::make_unique<WorkerCommand>());
    return commands;
}

const Command *findCommand(const Commands &commands, const QString &name)
{
    for (const std::unique_ptr<Command> &command : commands) {
        if (command->name() == name)
            return command.get();
    }
    return nullptr;
}

QString overview(const Commands &commands)
{
    constexpr int nameWidth = 10;
    QString text =
        QStringLiteral("Show the contents of Android packages (APK) and of sets of packages.\n\nCommands:\n");
    for (const std::unique_ptr<Command> &command : commands) {
        if (!command->isInternal())
            text += QStringLiteral("  %1 %2\n").arg(command->name().leftJustified(nameWidth), command->summary());
    }
    return text
           + QStringLiteral("\n'sorrel COMMAND --help' shows the help of one command.\n\n"
                            "Exit status: 0 when every file was read, 1 when a file could not be read or written, "
                            "2 for wrong usage.");
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

int runWithoutCommand(const QStringList &arguments, const Commands &commands)
{
    const QCommandLineOption help = helpOption();
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version and exit."));
    QCommandLineParser parser;
    parser.setApplicationDescription(overview(commands));
    parser.addOptions({help, version});
    parser.addPositionalArgument(QStringLiteral("COMMAND"), QStringLiteral("One of the commands above."),
                                 QStringLiteral("COMMAND ..."));
    if (!parser.parse(arguments))
        return Console::wrongUsage(parser.errorText());
    if (parser.isSet(help))
        showHelp(parser, QStringLiteral("sorrel"));
    if (!parser.isSet(version))
        return Console::wrongUsage(QStringLiteral("A command is missing."));
    Console console;
    console.write(QStringLiteral("sorrel %1\n").arg(QCoreApplication::applicationVersion()));
    return console.finish() ? Success : CannotRead;
}

int runCommand(const Command &command, const QStringList &arguments)
{
    const QString program = QStringLiteral("sorrel ") + command.name();
    const QString details = command.details();
    const QCommandLineOption help = helpOption();
    QCommandLineParser parser;
    parser.setApplicationDescription(command.summary()
                                     + (details.isEmpty() ? QString() : QStringLiteral("\n\n") + details));
    command.addArguments(parser);
    command.addOptions(parser);
    parser.addOption(help);
    if (!parser.parse(arguments))
        return Console::wrongUsage(parser.errorText(), program);
    if (parser.isSet(help))
        showHelp(parser, program);
    const auto count = parser.positionalArguments().size();
    if (count < command.minArguments())
        return Console::wrongUsage(QStringLiteral("A file is missing."), program);
    if (count > command.maxArguments())
        return Console::wrongUsage(QStringLiteral("There are too many arguments."), program);
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

int main(int argc, char *argv[])
{
    // QCoreApplication would do this, but most commands have none: starting it takes longer than reading a small
    // package.
    std::setlocale(LC_ALL, "");
    QCoreApplication::setApplicationName(QStringLiteral("sorrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SORREL_VERSION));
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qInstallMessageHandler(handleMessage);

    const Commands commands = makeCommands();
    QStringList arguments = argumentTexts(argc, argv);
    if (arguments.size() < 2 || arguments.at(1).startsWith(QLatin1Char('-')))
        return runWithoutCommand(arguments, commands);
    const Command *command = findCommand(commands, arguments.at(1));
    if (command == nullptr)
        return Console::wrongUsage(QStringLiteral("Unknown command '%1'.").arg(arguments.at(1)));
    arguments.removeAt(1);
    std::unique_ptr<QCoreApplication> application;
    if (command->waitsForEvents())
        application = std::make_unique<QCoreApplication>(argc, argv);
    return runCommand(*command, arguments);
}
