// SPDX-License-Identifier: LGPL-2.1-or-later
#include "CatalogCommand.h"

#include "CatalogPage.h"
#include "Console.h"
#include "OutputFile.h"
#include "PackageScan.h"
#include "ProgramPath.h"

#include <QJsonDocument>

#include <algorithm>

QString CatalogCommand::details() const
{
    return QStringLiteral(
        "The page has icons, labels in a language to choose, versions, launchers and the findings of "
        "'sorrel lint'. It needs no other file. It lists each package that cannot be read with the reason.");
}

void CatalogCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addPositionalArgument(
        QStringLiteral("PATH"),
        QStringLiteral("A package, a directory to search for packages (.apk, .apks, .xapk, .apkm), or '-' to read a "
                       "list of paths from standard input, one path per line."),
        QStringLiteral("PATH..."));
}

void CatalogCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_output, m_title, m_verify});
    m_icon.addShapeTo(parser);
    m_scan.addTo(parser);
    m_index.addTo(parser);
}

int CatalogCommand::run(const QCommandLineParser &parser, Console & /*console*/) const
{
    const QString program = QStringLiteral("sorrel catalog");
    ScanOptions options(m_scan);
    if (!options.read(parser))
        return Console::wrongUsage(options.errorText(), program);
    IconOptions icon(m_icon);
    if (!icon.readShape(parser))
        return Console::wrongUsage(icon.errorText(), program);
    const FileName output(parser.value(m_output));
    if (output.path().isEmpty())
        return Console::wrongUsage(QStringLiteral("'-o' has to name the page's file."), program);
    ReportContent content;
    content.iconSize = IconSize;
    content.iconMask = icon.mask();
    content.includesLint = true;
    content.lintDrawsIcons = true;
    content.includesSignatures = parser.isSet(m_verify);
    const std::unique_ptr<PackageScan> scan = m_makeIndexed != nullptr && m_index.isSet(parser)
                                                  ? m_makeIndexed(m_index.value(parser), options, content)
                                                  : std::make_unique<PackageScan>(programPath(), options, content);
    scan->add(parser.positionalArguments());
    const auto isReplaced = [&](const FileName &file) { return output.isSameFile(file); };
    if (std::any_of(scan->files().cbegin(), scan->files().cend(), isReplaced))
        return Console::wrongUsage(QStringLiteral("The page would replace a package."), program);

    OutputFile file(output);
    if (!file.open()) {
        Console::complain(output.text(), file.errorString());
        return CannotRead;
    }
    CatalogPage page(file.device(), parser.value(m_title));
    const int status = scan->run(true, [&](const QVector<QByteArray> &reports) {
        for (const QByteArray &report : reports)
            page.add(QJsonDocument::fromJson(report).object());
        return true;
    });
    if (page.finish() && file.commit())
        return status;
    Console::complain(output.text(), file.errorString());
    return CannotRead;
}
