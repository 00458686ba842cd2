// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IconCommand.h"

#include "Console.h"
#include "FileName.h"
#include "OutputFile.h"
#include "PngBytes.h"
#include "UsedPlatform.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

using SorrelKit::Entry;
using SorrelKit::Package;

namespace {

const Entry *findLauncher(const QList<Entry> &launchers, const QString &name)
{
    for (const Entry &launcher : launchers) {
        if (launcher.name() == name)
            return &launcher;
    }
    return nullptr;
}

bool writeFile(const FileName &name, const QByteArray &bytes)
{
    OutputFile file(name);
    if (file.open()) {
        file.device()->write(bytes);
        if (file.commit())
            return true;
    }
    Console::complain(name.text(), file.errorString());
    return false;
}

} // namespace

QString IconCommand::details() const
{
    return QStringLiteral(
        "The icon is drawn as the newest Android draws it. A line on standard error names each part that cannot "
        "be drawn as the package describes it.");
}

void IconCommand::addOptions(QCommandLineParser &parser) const
{
    m_icon.addTo(parser);
    m_theme.addTo(parser);
    parser.addOptions({m_launcher, m_output});
}

int IconCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QString program = QStringLiteral("sorrel icon");
    IconOptions options(m_icon);
    if (!options.read(parser))
        return Console::wrongUsage(options.errorText(), program);
    if (options.size() > IconOptions::MaxSize)
        return Console::wrongUsage(QStringLiteral("Icons have at most %1 pixels a side.").arg(IconOptions::MaxSize),
                                   program);
    const FileName output(parser.value(m_output));
    const bool isStandardOutput = output.isDash();
    if (isStandardOutput && console.isTerminal())
        return Console::wrongUsage(QStringLiteral("A picture is not written to a terminal; '-o' names a file."),
                                   program);

    const FileName file(parser.positionalArguments().constFirst());
    if (!isStandardOutput && output.isSameFile(file))
        return Console::wrongUsage(QStringLiteral("The picture would replace the package."), program);
    const Package package = UsedPlatform::package(file);
    if (!package.isValid()) {
        Console::complain(file.text(), package.error().message());
        return CannotRead;
    }
    SorrelKit::IconRequest request(options.size());
    request.setMask(options.mask());
    ThemeOption theme(m_theme);
    if (!theme.read(parser, package, &request)) {
        Console::complain(file.text(), theme.errorText());
        return CannotRead;
    }
    SorrelKit::DrawableRenderer renderer(package);
    QImage picture;
    if (parser.isSet(m_launcher)) {
        const QList<Entry> launchers = package.launchers();
        const Entry *launcher = findLauncher(launchers, parser.value(m_launcher));
        if (launcher == nullptr) {
            Console::complain(file.text(), QStringLiteral("there is no launcher '%1'").arg(parser.value(m_launcher)));
            return CannotRead;
        }
        picture = renderer.icon(*launcher, request);
    } else {
        picture = renderer.icon(request);
    }
    const QString fault = renderer.error().text();
    if (picture.isNull()) {
        Console::complain(file.text(), fault.isEmpty() ? QStringLiteral("there is no icon") : fault);
        return CannotRead;
    }
    if (!fault.isEmpty())
        Console::complain(file.text(), fault);
    const QByteArray png = pngBytes(picture);
    if (!isStandardOutput)
        return writeFile(output, png) ? Success : CannotRead;
    console.write(png);
    return Success;
}
