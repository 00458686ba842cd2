// SPDX-License-Identifier: LGPL-2.1-or-later
#include "DiagnosticChecks.h"

#include <QByteArray>
#include <QMetaEnum>

namespace {

using SorrelKit::Diagnostic;
using Code = Diagnostic::Code;

// Readers that go by the sizes of chunks cope with these.
bool isHarmless(Code code)
{
    switch (code) {
    case Code::DocumentBytesBehind:
    case Code::UnknownNode:
    case Code::TableBytesBehind:
    case Code::UnknownTableChunk:
    case Code::UnnamedPackage:
    case Code::LibraryChunk:
    case Code::OverlayChunk:
    case Code::StagedAlias:
        return true;
    default:
        return false;
    }
}

Severity severityOf(const Diagnostic &diagnostic)
{
    if (diagnostic.isRefused())
        return Severity::Error;
    return isHarmless(diagnostic.code()) ? Severity::Note : Severity::Warning;
}

// "BytesAhead" is "bytes-ahead".
QByteArray nameOf(const char *key)
{
    QByteArray name;
    for (const char *character = key; *character != '\0'; ++character) {
        const bool isUpper = *character >= 'A' && *character <= 'Z';
        if (isUpper && !name.isEmpty())
            name += '-';
        name += isUpper ? char(*character - 'A' + 'a') : *character;
    }
    return name;
}

struct CheckTexts {
    QByteArray name;
    QByteArray meaning;
};

// The texts that the checks point to.
std::vector<CheckTexts> makeTexts()
{
    const auto codes = QMetaEnum::fromType<Code>();
    std::vector<CheckTexts> texts;
    for (int i = 1; i < codes.keyCount(); ++i) {
        const Diagnostic diagnostic{Code(codes.value(i))};
        QString meaning = diagnostic.text();
        const QString levels = DiagnosticChecks::levels(diagnostic);
        if (!levels.isEmpty())
            meaning += QStringLiteral(" [%1]").arg(levels);
        texts.push_back({nameOf(codes.key(i)), meaning.toUtf8()});
    }
    return texts;
}

std::vector<LintCheck> makeChecks()
{
    static const std::vector<CheckTexts> texts = makeTexts();
    std::vector<LintCheck> checks;
    for (const CheckTexts &each : texts) {
        const Diagnostic diagnostic{Code(int(checks.size()) + 1)};
        checks.push_back({each.name.constData(), severityOf(diagnostic), each.meaning.constData()});
    }
    return checks;
}

} // namespace

const LintCheck &DiagnosticChecks::of(Code code)
{
    return all()[std::size_t(code) - 1];
}

const std::vector<LintCheck> &DiagnosticChecks::all()
{
    static const std::vector<LintCheck> checks = makeChecks();
    return checks;
}

QString DiagnosticChecks::levels(const Diagnostic &diagnostic)
{
    const int first = diagnostic.firstSdkVersion();
    const int last = diagnostic.lastSdkVersion();
    if (first > 0 && last > 0)
        return QStringLiteral("API levels %1 to %2").arg(first).arg(last);
    if (first > 0)
        return QStringLiteral("API level %1 and later").arg(first);
    return last > 0 ? QStringLiteral("API level %1 and older").arg(last) : QString();
}
