// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Arguments.h"
#include "FileName.h"
#include "PngFile.h"
#include "PrintableText.h"
#include "ProcessLimits.h"
#include "ThumbnailFile.h"
#include "ThumbnailerOptions.h"
#include "UsedPlatform.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Package.h>

#include <QCoreApplication>

#include <cstdio>
#include <new>

using SorrelKit::Package;

namespace {

enum ExitStatus : int {
    Success = 0,
    Failure = 1,
    WrongUsage = 2,
};

/// Far above the needs of any real package. A hostile package would take more.
constexpr int MaxProcessorSeconds = 60;
constexpr qint64 MaxMemoryBytes = qint64(1024) << 20;

QByteArray errorLine(const QString &text)
{
    return "sorrel-thumbnailer: " + printableText(text).toUtf8() + '\n';
}

void printError(const QString &text)
{
    std::fputs(errorLine(text).constData(), stderr);
}

int fail(const QString &name, const QString &text)
{
    printError(QStringLiteral("%1: %2").arg(name, text));
    return Failure;
}

int wrongUsage(const QString &text)
{
    printError(text);
    std::fputs("Try 'sorrel-thumbnailer --help'.\n", stderr);
    return WrongUsage;
}

int writeThumbnail(const ThumbnailerOptions &options)
{
    const QString inputName = options.input().text();
    const QByteArray path = options.input().pathOfUri();
    if (path.isEmpty())
        return fail(inputName, QStringLiteral("names no file of this machine"));
    const bool isFile = !options.output().isDash();
    const FileName input(path);
    if (isFile && input.isSameFile(options.output()))
        return fail(inputName, QStringLiteral("the thumbnail would replace the package"));
    const Package package = UsedPlatform::package(input);
    SorrelKit::IconRequest request(options.size());
    request.setMask(options.mask());
    SorrelKit::DrawableRenderer renderer(package);
    const QImage icon = renderer.icon(request);
    if (icon.isNull())
        return fail(inputName, package.error() ? package.error().message() : renderer.error().text());

    const QByteArray png = PngFile::fromImage(icon);
    if (png.isEmpty())
        return fail(inputName, QStringLiteral("the icon could not be made a PNG file"));
    // The package cannot delay the rest, so the time limit must not interrupt the writing.
    ProcessLimits::allowMoreProcessorTime();
    ThumbnailFile output(options.output().path());
    if (isFile ? output.write(png) : output.writeToStandardOutput(png))
        return Success;
    return fail(isFile ? options.output().text() : QStringLiteral("standard output"), output.errorString());
}

int writeThumbnailWithinLimits(const ThumbnailerOptions &options)
{
    const QString name = options.input().text();
    const QByteArray tooMuchTime = errorLine(QStringLiteral("%1: reading took too long").arg(name));
    ProcessLimits::limitProcessorTime(MaxProcessorSeconds, tooMuchTime, Failure);
    ProcessLimits::limitMemory(MaxMemoryBytes);
    try {
        return writeThumbnail(options);
    } catch (const std::bad_alloc &) {
        ProcessLimits::limitMemory(0);
        return fail(name, QStringLiteral("reading took too much memory"));
    }
}

// Standard error gets one line. QT_LOGGING_RULES="*=true" also shows the messages of the libraries.
void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", printableText(qFormatLogMessage(type, context, text)).toUtf8().constData());
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("sorrel-thumbnailer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SORREL_VERSION));
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        qInstallMessageHandler(handleMessage);

    ThumbnailerOptions options;
    if (!options.parse(argumentTexts(argc, argv)))
        return wrongUsage(options.errorString());
    if (options.isHelp() || options.isVersion()) {
        // Only help and version need it, and starting it takes longer than reading a small package.
        const QCoreApplication application(argc, argv);
        if (options.isVersion())
            options.showVersion();
        options.showHelp();
    }
    return writeThumbnailWithinLimits(options);
}
