// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiagnosticLint.h"

#include "FindingList.h"

#include <SorrelKit/Diagnostic.h>

#include <QStringList>

namespace {

using SorrelKit::Diagnostic;

bool isReportedElsewhere(Diagnostic::Code code)
{
    switch (code) {
    case Diagnostic::Code::DiskNumbers:
    case Diagnostic::Code::MemberName:
    case Diagnostic::Code::NoMemberHeader:
    case Diagnostic::Code::MemberSizes:
    case Diagnostic::Code::MemberMethod:
    case Diagnostic::Code::MemberEncrypted:
    case Diagnostic::Code::MemberNotDeflated:
    case Diagnostic::Code::DocumentType:
    case Diagnostic::Code::UnknownNode:
    case Diagnostic::Code::UnknownTableChunk:
        return true;
    default:
        return false;
    }
}

// The levels that mind, when they are not all; an empty text otherwise.
QString levelsOf(const Diagnostic &diagnostic)
{
    const int first = diagnostic.firstSdkVersion();
    const int last = diagnostic.lastSdkVersion();
    if (first > 0 && last > 0)
        return QStringLiteral("API levels %1 to %2").arg(first).arg(last);
    if (first > 0)
        return QStringLiteral("API level %1 and later").arg(first);
    return last > 0 ? QStringLiteral("API level %1 and older").arg(last) : QString();
}

QString textOf(const Diagnostic &diagnostic)
{
    QStringList facts;
    if (!diagnostic.detail().isEmpty())
        facts.append(FindingList::shortened(diagnostic.detail()));
    if (diagnostic.count() > 1)
        facts.append(FindingList::counted(diagnostic.count(), QStringLiteral("time")));
    if (!levelsOf(diagnostic).isEmpty())
        facts.append(levelsOf(diagnostic));
    const QString more = facts.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(facts.join(QStringLiteral("; ")));
    return diagnostic.text() + more;
}

} // namespace

void DiagnosticLint::run(const SorrelKit::Package &package, FindingList *findings)
{
    for (const Diagnostic &diagnostic : package.diagnostics()) {
        if (!diagnostic.isRefused() && isReportedElsewhere(diagnostic.code()))
            continue;
        QStringList subject{diagnostic.package(), diagnostic.path()};
        subject.removeAll(QString());
        const LintCheck &check = diagnostic.isRefused() ? LintChecks::AndroidRefuses : LintChecks::AndroidTakes;
        findings->add(check, subject.join(QLatin1Char('/')), textOf(diagnostic));
    }
}
