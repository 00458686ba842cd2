// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ScanCommand.h"

#include "Console.h"
#include "OtherProgram.h"
#include "PackageScan.h"

QString ScanCommand::details() const
{
    return QStringLiteral(
        "The lines are those of 'sorrel info --json'. Worker processes read the packages. When a worker dies, or "
        "exceeds the limit of time or memory, only its current file is lost; the line of that file has the error.\n\n"
        "With --index, the lines of packages that were not changed come from the index, in the order of the paths.");
}

void ScanCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addPositionalArgument(
        QStringLiteral("PATH"),
        QStringLiteral(
            "A package, a directory to search for packages (.apk, .apks, .xapk, .apkm), or '-' to read a list of "
            "paths from standard input, one path per line."),
        QStringLiteral("PATH..."));
}

void ScanCommand::addOptions(QCommandLineParser &parser) const
{
    m_scan.addTo(parser);
    m_index.addTo(parser);
    parser.addOptions({m_ordered, m_all, m_icon, m_lint, m_verify});
}

int ScanCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QString program = QStringLiteral("sorrel scan");
    ScanOptions options(m_scan);
    if (!options.read(parser))
        return Console::wrongUsage(options.errorText(), program);
    ReportContent content;
    content.includesDisabled = parser.isSet(m_all);
    content.iconSize = parser.value(m_icon).toInt();
    if (parser.isSet(m_icon) && (content.iconSize < 1 || content.iconSize > IconOptions::MaxSize))
        return Console::wrongUsage(QStringLiteral("--icon is a number from 1 to %1, not '%2'.")
                                       .arg(IconOptions::MaxSize)
                                       .arg(parser.value(m_icon)),
                                   program);
    content.includesLint = parser.isSet(m_lint);
    content.includesSignatures = parser.isSet(m_verify);
    // The index has the labels of the launchers that are shown.
    if (m_index.isSet(parser) && content.includesDisabled)
        return Console::wrongUsage(QStringLiteral("'--all' and '--index' cannot be used together."), program);
    const std::unique_ptr<PackageScan> scan =
        m_makeIndexed != nullptr && m_index.isSet(parser)
            ? m_makeIndexed(m_index.value(parser), options, content)
            : std::make_unique<PackageScan>(OtherProgram::path(content.program()), options, content);
    scan->add(parser.positionalArguments());
    return scan->run(parser.isSet(m_ordered), [&](const QVector<QByteArray> &reports) {
        QByteArray lines;
        for (const QByteArray &report : reports)
            lines += report + '\n';
        console.write(lines);
        return console.flush();
    });
}
