// SPDX-License-Identifier: LGPL-2.1-or-later
#include "LintCommand.h"

#include "Console.h"
#include "FileName.h"
#include "LintChecks.h"
#include "PackageLint.h"
#include "PrintableText.h"

#include <QJsonObject>

namespace {

QString severityText(Severity severity, const TextStyle &style)
{
    constexpr int width = 7;
    QString text = severityName(severity).leftJustified(width);
    switch (severity) {
    case Severity::Note:
        return style.key(text);
    case Severity::Warning:
        return style.warning(text);
    case Severity::Error:
        return style.error(text);
    }
    return text;
}

void listChecks(Console &console)
{
    constexpr int nameWidth = 22;
    for (const LintCheck *check : LintChecks::all())
        console.write(QStringLiteral("%1  %2  %3\n")
                          .arg(QString::fromLatin1(check->name).leftJustified(nameWidth),
                               severityText(check->severity, console.style()), QLatin1String(check->meaning)));
}

QString findingLine(const Finding &finding, const TextStyle &style)
{
    const QString subject =
        finding.subject.isEmpty() ? QString() : style.strong(printableText(finding.subject)) + QStringLiteral(": ");
    return QStringLiteral("  ") + severityText(finding.severity, style) + QStringLiteral("  ") + subject
           + printableText(finding.text) + style.faint(QStringLiteral(" (%1)").arg(finding.check)) + QLatin1Char('\n');
}

QString textOf(const FileName &file, const PackageLint &lint, const TextStyle &style)
{
    QString text = style.title(printableText(file.text())) + QLatin1Char('\n');
    for (const Finding &finding : lint.findings())
        text += findingLine(finding, style);
    return lint.findings().isEmpty() ? text + QStringLiteral("  nothing odd\n") : text;
}

QJsonObject jsonOf(const FileName &file, const PackageLint &lint)
{
    QJsonObject json = file.toJson();
    json.insert(QStringLiteral("error"),
                QJsonObject{{QStringLiteral("code"), lint.errorCode()}, {QStringLiteral("text"), lint.errorText()}});
    json.insert(QStringLiteral("lint"), lint.toJson());
    return json;
}

} // namespace

QString LintCommand::details() const
{
    return QStringLiteral(
        "An error: the package, or a part of it, cannot be read or installed. A warning: some readers see something "
        "else, or nothing. A note: readers cope with it. The exit status does not depend on findings.");
}

void LintCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_json, m_draw, m_checks});
}

int LintCommand::run(const QCommandLineParser &parser, Console &console) const
{
    const QStringList files = parser.positionalArguments();
    if (parser.isSet(m_checks)) {
        listChecks(console);
        return Success;
    }
    if (files.isEmpty())
        return Console::wrongUsage(QStringLiteral("A file is missing."), QStringLiteral("sorrel lint"));
    int status = Success;
    bool isFirst = true;
    for (const QString &argument : files) {
        const FileName file(argument);
        const PackageLint lint(file, parser.isSet(m_draw) ? m_makeDrawnCheck : IconCheckFactory(), m_checkSignatures);
        if (lint.failed()) {
            Console::complain(file.text(), lint.errorText());
            status = CannotRead;
        }
        if (parser.isSet(m_json)) {
            console.writeLine(jsonOf(file, lint));
        } else if (!lint.failed() || !lint.findings().isEmpty()) {
            console.write((isFirst ? QString() : QStringLiteral("\n")) + textOf(file, lint, console.style()));
            isFirst = false;
        }
        console.flush();
    }
    return status;
}
