// SPDX-License-Identifier: LGPL-2.1-or-later
//
// sorrel-viewer-reader: reads a package for the viewer. Protocol.h describes what it writes and reads.

#include "Arguments.h"
#include "Conversation.h"
#include "ProcessLimits.h"
#include "Protocol.h"
#include "Sandbox.h"
#include "UsedPlatform.h"

#include <QCommandLineParser>
#include <QFile>

#include <clocale>
#include <csignal>
#include <new>
#include <unistd.h>

using namespace Viewer;
using SorrelKit::Platform;

namespace {

enum ExitStatus {
    Success = 0,
    WrongUsage = 2,
    TooMuchMemory = 3
};

constexpr qint64 MaxMemory = qint64(1) << 30;

Subject subjectOf(const QByteArray &path, const QLocale &locale, const QStringList &sandbox)
{
    const FileName file(path);
    return {file, UsedPlatform::package(file), locale, sandbox};
}

} // namespace

int main(int argc, char *argv[])
{
    // Nobody reads the output when this process outlives the window.
    ProcessLimits::endWithParent(::getppid());
    ProcessLimits::limitMemory(MaxMemory);
    std::signal(SIGPIPE, SIG_IGN);
    std::setlocale(LC_CTYPE, "");

    const QCommandLineOption compare(QStringLiteral("compare"), {}, QStringLiteral("OTHER"));
    const QCommandLineOption locale(QStringLiteral("locale"), {}, QStringLiteral("TAG"));
    const QCommandLineOption platform(QStringLiteral("platform"), {}, QStringLiteral("FILE"));
    const QCommandLineOption unconfined(QStringLiteral("unconfined"));
    const QCommandLineOption within(QStringLiteral("within"), {}, QStringLiteral("NAME"));
    QCommandLineParser parser;
    parser.addOptions({compare, locale, platform, unconfined, within});
    if (!parser.parse(argumentTexts(argc, argv)) || parser.positionalArguments().size() != 1)
        return WrongUsage;

    Lines lines(STDIN_FILENO, STDOUT_FILENO);
    lines.write("hello", {{QStringLiteral("protocol"), Protocol::Version}});
    if (parser.isSet(platform))
        qputenv("SORREL_PLATFORM", argumentBytes(parser.value(platform)));
    QList<QByteArray> files;
    for (const QString &file : parser.positionalArguments() + parser.values(compare))
        files.append(FileName(file).pathOfUri());
    QStringList sandbox = parser.values(within);
    if (!parser.isSet(unconfined))
        sandbox += Sandbox::enter(files + QList<QByteArray>{QFile::encodeName(Platform::installed().fileName())});
    const QLocale texts = localeOf(parser.value(locale));
    try {
        const Subject subject = subjectOf(files.constFirst(), texts, sandbox);
        std::optional<Subject> other;
        if (files.size() > 1)
            other = subjectOf(files.constLast(), texts, sandbox);
        Conversation(subject, other, lines).run();
    } catch (const std::bad_alloc &) {
        ::_exit(TooMuchMemory);
    }
    return Success;
}
