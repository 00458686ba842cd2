// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DesktopCommand.h"

#include "Console.h"
#include "ExecTemplate.h"
#include "FileName.h"
#include "LauncherInstaller.h"
#include "UsedPlatform.h"

#include <SorrelKit/Package.h>

#include <QJsonArray>

#include <utility>

using SorrelKit::Entry;
using SorrelKit::Package;

namespace {

QString toLines(const LauncherFiles &files)
{
    return (QStringList(files.entry) + files.icons).join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QJsonObject toJson(const Entry &launcher, const LauncherFiles &files)
{
    return {
        {QStringLiteral("name"), launcher.name()},
        {QStringLiteral("desktop"), files.entry},
        {QStringLiteral("icons"), QJsonArray::fromStringList(files.icons)},
    };
}

} // namespace

QString DesktopCommand::details() const
{
    return QStringLiteral("Each launcher gets one entry. The command prints the paths of the files that it wrote.\n\n"
                          "In COMMAND, spaces separate arguments. Write an argument in double quotes when it has "
                          "spaces or characters that "
                          "are special to a shell, with a \\ before each \", `, $ and \\. No shell runs. %% is a "
                          "percent sign. A name from "
                          "a package stays within its argument, whatever characters it has.\n\n"
                          "The command replaces only files that it wrote for the same launcher before. A line on "
                          "standard error names each "
                          "missing icon and each missing language of labels.");
}

void DesktopCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_output, m_exec});
    m_icon.addShapeTo(parser);
    parser.addOptions({m_all, m_json});
}

int DesktopCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QString program = QStringLiteral("sorrel desktop");
    if (parser.value(m_output).isEmpty())
        return Console::wrongUsage(QStringLiteral("'-o' has to name a directory."), program);
    if (!parser.isSet(m_exec))
        return Console::wrongUsage(QStringLiteral("'--exec' has to tell what starts a launcher."), program);
    const ExecTemplate command(parser.value(m_exec));
    if (!command.errorText().isEmpty())
        return Console::wrongUsage(command.errorText(), program);
    IconOptions options(m_icon);
    if (!options.readShape(parser))
        return Console::wrongUsage(options.errorText(), program);

    const FileName output(parser.value(m_output));
    if (output.forQt().isNull()) {
        Console::complain(output.text(), FileName::notForQtText());
        return CannotRead;
    }
    const FileName file(parser.positionalArguments().constFirst());
    const Package package = UsedPlatform::package(file);
    QList<Entry> launchers;
    int status = Success;
    // With a damaged table, entries without labels and icons would replace good ones.
    if (!package.error()) {
        launchers = package.launchers();
    } else {
        Console::complain(file.text(), package.error().message());
        status = CannotRead;
    }
    LauncherInstaller installer(package, file.text(), parser.value(m_output), command);
    installer.setMask(options.mask());
    installer.setVersionCode(package.versionCode());
    QJsonArray entries;
    for (const Entry &launcher : std::as_const(launchers)) {
        if (!parser.isSet(m_all) && !launcher.isShown())
            continue;
        const LauncherFiles files = installer.install(launcher);
        if (files.entry.isEmpty()) {
            status = CannotRead;
        } else if (parser.isSet(m_json)) {
            entries.append(toJson(launcher, files));
        } else {
            console.write(toLines(files));
        }
    }
    if (parser.isSet(m_json)) {
        QJsonObject json = file.toJson();
        json.insert(QStringLiteral("entries"), entries);
        console.writeLine(json);
    }
    return status;
}
