// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Tool.h"

#include <QProcess>

namespace fixture {

ToolRun runTool(const QString &program, const QStringList &arguments, const ToolSetting &setting)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // A machine may have a platform or not.
    environment.insert(QStringLiteral("SORREL_PLATFORM"), QString(QLatin1String("")));
    for (const char *name : {"QT_LOGGING_RULES", "LANGUAGE", "NO_COLOR"})
        environment.remove(QLatin1String(name));
    for (auto variable = setting.environment.cbegin(); variable != setting.environment.cend(); ++variable) {
        if (variable.value().isNull())
            environment.remove(variable.key());
        else
            environment.insert(variable.key(), variable.value());
    }
    process.setProcessEnvironment(environment);
    if (!setting.outputFile.isNull())
        process.setStandardOutputFile(setting.outputFile);
    if (!setting.directory.isNull())
        process.setWorkingDirectory(setting.directory);
    process.start(program, arguments);
    process.write(setting.input);
    process.closeWriteChannel();
    // CTest ends a test that hangs.
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

ToolRun runSorrel(const QStringList &arguments, const ToolSetting &setting)
{
    return runTool(QStringLiteral("sorrel"), arguments, setting);
}

ToolRun runShell(const QString &script, const ToolSetting &setting)
{
    return runTool(QStringLiteral("bash"), {QStringLiteral("-c"), script}, setting);
}

QString shellWord(const QByteArray &bytes)
{
    QString text;
    for (const char byte : bytes)
        text += QStringLiteral("\\x%1").arg(quint8(byte), 2, 16, QLatin1Char('0'));
    return QStringLiteral("$'%1'").arg(text);
}

ToolRun runSorrelOnTerminal(const QStringList &arguments, const ToolSetting &setting)
{
    QString command = QStringLiteral("stty cols 80; exec sorrel");
    for (QString argument : arguments)
        command += QStringLiteral(" '%1'").arg(argument.replace(QLatin1Char('\''), QLatin1String("'\\''")));
    ToolSetting onTerminal = setting;
    if (!onTerminal.environment.contains(QStringLiteral("TERM")))
        onTerminal.environment.insert(QStringLiteral("TERM"), QStringLiteral("xterm"));
    return runTool(QStringLiteral("script"),
                   {QStringLiteral("--quiet"), QStringLiteral("--return"), QStringLiteral("--command"), command,
                    QStringLiteral("/dev/null")},
                   onTerminal);
}

} // namespace fixture
