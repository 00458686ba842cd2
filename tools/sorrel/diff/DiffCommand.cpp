// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiffCommand.h"

#include "Console.h"
#include "DiffPage.h"
#include "DiffReport.h"
#include "DiffText.h"
#include "FileName.h"
#include "OutputFile.h"

#include <SorrelKit/PackageDiff.h>

using SorrelKit::PackageDiff;

QString DiffCommand::details() const
{
    return QStringLiteral(
        "The first lines are reasons for which Android refuses the update. Added lines begin with '+', removed ones "
        "with "
        "'-', and changed ones with '~'. Lines that let other applications use a component are red.\n\n"
        "Exit status: 0 when nothing differs, 1 when something differs, 2 when a file could not be read or written, "
        "and "
        "for wrong usage.");
}

void DiffCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addPositionalArgument(QStringLiteral("OLD"), fileText());
    parser.addPositionalArgument(QStringLiteral("NEW"), QStringLiteral("The same, after a change."));
}

void DiffCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_json, m_all, m_html});
}

bool DiffCommand::writePage(const FileName &file, const DiffReport &report)
{
    OutputFile output(file);
    if (output.open()) {
        const QByteArray page = DiffPage::toHtml(report);
        if (output.device()->write(page) == page.size() && output.commit())
            return true;
    }
    Console::complain(file.text(), output.errorString());
    return false;
}

int DiffCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QString program = QStringLiteral("sorrel diff");
    const FileName page(parser.value(m_html));
    const bool writesPage = parser.isSet(m_html);
    const FileName oldFile(parser.positionalArguments().at(0));
    const FileName newFile(parser.positionalArguments().at(1));
    if (writesPage && page.path().isEmpty())
        return Console::wrongUsage(QStringLiteral("'--html' has to name the page's file."), program);
    if (writesPage && (page.isSameFile(oldFile) || page.isSameFile(newFile)))
        return Console::wrongUsage(QStringLiteral("The page would replace a package."), program);

    const DiffSide before(oldFile);
    const DiffSide after(newFile);
    bool isWhole = true;
    for (const DiffSide *side : {&before, &after}) {
        const SorrelKit::Error error = side->package.error();
        if (!error)
            continue;
        Console::complain(side->file.text(), error.message());
        isWhole = false;
    }
    if (!before.package.isValid() || !after.package.isValid())
        return Trouble;
    const PackageDiff diff(before.package, after.package, before.signatures, after.signatures);
    const DiffReport report(before, after, diff);
    isWhole = isWhole && diff.isComplete();
    if (!diff.isComplete())
        Console::complain(newFile.text(), QStringLiteral("not everything was compared, because it takes too much"));
    if (parser.isSet(m_json))
        console.writeLine(DiffJson::toJson(before, after, diff, m_signerJson));
    else if (!writesPage && !diff.isEmpty())
        console.write(DiffText(console.style(), parser.isSet(m_all)).toText(report));
    if ((writesPage && !writePage(page, report)) || !console.flush() || !isWhole)
        return Trouble;
    return diff.isEmpty() ? Success : Different;
}
