// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiagnosticLint.h"

#include "DiagnosticChecks.h"
#include "FindingList.h"

#include <SorrelKit/Diagnostic.h>

#include <QStringList>

namespace {

using SorrelKit::Diagnostic;
using Code = Diagnostic::Code;

// The kit has the same rule.
static_assert(int(Code::BytesAhead) == int(Oddity::BytesAhead) + 1 && int(Code::StagedAlias) == int(Oddity::Count),
              "a code is the number of its oddity, after None");

QString hexadecimal(const QString &noun, const QString &number, int digits)
{
    return QStringLiteral("%1 0x%2").arg(noun).arg(number.toLongLong(), digits, 16, QLatin1Char('0'));
}

// The detail of a diagnostic, whose number gets a noun.
QString detailText(Code code, const QString &detail)
{
    constexpr int IdDigits = 2;
    constexpr int TypeDigits = 4;
    bool isNumber = false;
    const qint64 number = detail.toLongLong(&isNumber);
    if (!isNumber)
        return FindingList::shortened(detail);
    switch (code) {
    case Code::BytesAhead:
    case Code::BytesBehind:
    case Code::CutComment:
    case Code::LongComment:
    case Code::DirectoryGap:
    case Code::MemberStoredSizes:
    case Code::DocumentHeaderSize:
    case Code::DocumentBytesBehind:
    case Code::DocumentResourceMap:
    case Code::AttributeSize:
    case Code::TableBytesBehind:
        return FindingList::counted(number, QStringLiteral("byte"));
    case Code::MissingRecords:
        return FindingList::counted(number, QStringLiteral("member"));
    case Code::MemberMethod:
    case Code::MemberNotDeflated:
        return QStringLiteral("method %1").arg(number);
    case Code::DocumentType:
    case Code::UnknownNode:
    case Code::UnknownTableChunk:
        return hexadecimal(QStringLiteral("type"), detail, TypeDigits);
    case Code::UnnamedPackage:
    case Code::RepeatedPackage:
    case Code::NoTypePool:
        return hexadecimal(QStringLiteral("package"), detail, IdDigits);
    case Code::UnnamedType:
        return QStringLiteral("type %1").arg(number);
    case Code::EntryPastChunk:
        return QStringLiteral("entry %1").arg(number);
    case Code::AttributeNameIndex:
        return QStringLiteral("string %1").arg(number);
    default:
        return FindingList::shortened(detail);
    }
}

void report(const Diagnostic &diagnostic, const QString &detail, qint64 count, const QString &subject,
            FindingList *findings)
{
    QStringList facts;
    if (!detail.isEmpty())
        facts.append(detailText(diagnostic.code(), detail));
    if (count > 1)
        facts.append(FindingList::counted(count, QStringLiteral("time")));
    const QString levels = DiagnosticChecks::levels(diagnostic);
    if (!levels.isEmpty())
        facts.append(levels);
    const QString more = facts.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(facts.join(QStringLiteral("; ")));
    findings->add(DiagnosticChecks::of(diagnostic.code()), subject, diagnostic.text() + more);
}

} // namespace

void DiagnosticLint::run(const SorrelKit::Package &package, FindingList *findings)
{
    for (const Diagnostic &diagnostic : package.diagnostics()) {
        QStringList subject{diagnostic.package(), diagnostic.path()};
        subject.removeAll(QString());
        report(diagnostic, diagnostic.detail(), diagnostic.count(), subject.join(QLatin1Char('/')), findings);
    }
}

void DiagnosticLint::reportMember(const QString &name, const OddityList &oddities, FindingList *findings)
{
    for (const OddityList::Item &item : oddities.items())
        report(Diagnostic(Code(int(item.oddity) + 1)), item.detail, item.count, name, findings);
}
