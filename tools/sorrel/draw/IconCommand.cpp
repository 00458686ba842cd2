// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IconCommand.h"

#include "Console.h"
#include "FileName.h"
#include "FrameFiles.h"
#include "OutputFile.h"
#include "PngBytes.h"
#include "UsedPlatform.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

#include <algorithm>
#include <optional>

using SorrelKit::Entry;
using SorrelKit::Package;

namespace {

// The width is at most IconOptions::MaxSize.
constexpr int MaxBannerHeight = 576;

std::optional<Entry> findEntry(const QList<Entry> &entries, const QString &name)
{
    const auto found =
        std::find_if(entries.cbegin(), entries.cend(), [&name](const Entry &entry) { return entry.name() == name; });
    return found != entries.cend() ? std::make_optional(*found) : std::nullopt;
}

// The banner of the application, or of the first entry for televisions when it has none.
QImage bannerOf(const Package &package, SorrelKit::DrawableRenderer &renderer, const SorrelKit::IconRequest &request)
{
    QImage banner = renderer.banner(request);
    if (renderer.error().code() == SorrelKit::IconError::Code::Missing) {
        for (const Entry &entry : package.entries(Entry::Kind::Television)) {
            if (entry.isShown())
                return renderer.banner(entry, request);
        }
    }
    return banner;
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
    parser.addOptions({m_launcher, m_round, m_night, m_monochrome, m_rtl, m_banner, m_frames, m_output});
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
    const bool isBanner = parser.isSet(m_banner);
    const bool hasFrames = parser.isSet(m_frames);
    if (isBanner && hasFrames)
        return Console::wrongUsage(QStringLiteral("A banner has no frames."), program);
    if (isBanner && options.size() > MaxBannerHeight)
        return Console::wrongUsage(QStringLiteral("Banners have at most %1 pixels of height.").arg(MaxBannerHeight),
                                   program);
    const FileName output(parser.value(m_output));
    const bool isStandardOutput = output.isDash() && !hasFrames;
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
    request.setRound(parser.isSet(m_round));
    request.setNight(parser.isSet(m_night));
    request.setMonochrome(parser.isSet(m_monochrome));
    request.setLayoutDirection(parser.isSet(m_rtl) ? Qt::RightToLeft : Qt::LeftToRight);
    SorrelKit::DrawableRenderer renderer(package);
    std::optional<Entry> entry;
    if (parser.isSet(m_launcher)) {
        const QString name = parser.value(m_launcher);
        entry = findEntry(package.launchers(), name);
        if (!entry)
            entry = findEntry(package.entries(Entry::Kind::Television), name);
        if (!entry) {
            Console::complain(file.text(), QStringLiteral("there is no launcher '%1'").arg(name));
            return CannotRead;
        }
    }
    if (hasFrames)
        return writeFrames(file, renderer, entry ? &*entry : nullptr, request, FileName(parser.value(m_frames)),
                           console);
    QImage picture;
    if (isBanner)
        picture = entry ? renderer.banner(*entry, request) : bannerOf(package, renderer, request);
    else
        picture = entry ? renderer.icon(*entry, request) : renderer.icon(request);
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

int IconCommand::writeFrames(const FileName &file, SorrelKit::DrawableRenderer &renderer, const Entry *entry,
                             const SorrelKit::IconRequest &request, const FileName &directory, Console &console) const
{
    const QVector<SorrelKit::IconFrame> frames =
        entry != nullptr ? renderer.frames(*entry, request) : renderer.frames(request);
    const QString fault = renderer.error().text();
    if (!fault.isEmpty())
        Console::complain(file.text(), fault);
    if (frames.isEmpty())
        return CannotRead;
    FrameFiles files(directory);
    if (!files.write(frames)) {
        Console::complain(directory.text(), files.errorText());
        return CannotRead;
    }
    console.write(files.list());
    return Success;
}
