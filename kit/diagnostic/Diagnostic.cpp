// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Diagnostic.h>

#include "diagnostic/DiagnosticData.h"

namespace SorrelKit {

// A code is the number of its oddity, after None.
static_assert(int(Diagnostic::Code::BytesAhead) == int(Oddity::BytesAhead) + 1
                  && int(Diagnostic::Code::NoMemberHeader) == int(Oddity::NoMemberHeader) + 1
                  && int(Diagnostic::Code::DocumentType) == int(Oddity::DocumentType) + 1
                  && int(Diagnostic::Code::TableBytesBehind) == int(Oddity::TableBytesBehind) + 1
                  && int(Diagnostic::Code::StagedAlias) == int(Oddity::Count),
              "both lists have the same names in the same order");

Diagnostic::Diagnostic() : d(new DiagnosticData) {}
Diagnostic::Diagnostic(Code code) : d(new DiagnosticData)
{
    if (code != Code::None)
        d->row = DiagnosticTable::row(Oddity(int(code) - 1));
}

Diagnostic::Diagnostic(const Diagnostic &other) = default;
Diagnostic::Diagnostic(Diagnostic &&other) noexcept = default;
Diagnostic &Diagnostic::operator=(const Diagnostic &other) = default;
Diagnostic &Diagnostic::operator=(Diagnostic &&other) noexcept = default;
Diagnostic::~Diagnostic() = default;

Diagnostic::Code Diagnostic::code() const
{
    return d->row != nullptr ? Code(int(d->row->oddity) + 1) : Code::None;
}

QString Diagnostic::text() const
{
    return d->row != nullptr ? QString::fromLatin1(d->row->text) : QString();
}

QString Diagnostic::detail() const
{
    return d->detail;
}

int Diagnostic::count() const
{
    return d->count;
}

QString Diagnostic::package() const
{
    return d->package;
}

QString Diagnostic::path() const
{
    return d->path;
}

bool Diagnostic::isRefused() const
{
    if (d->row == nullptr)
        return false;
    const bool isManifest = d->path != QLatin1String("resources.arsc");
    return d->row->effect == DiagnosticTable::Effect::Refused
           || (d->row->effect == DiagnosticTable::Effect::ManifestRefused && isManifest);
}

int Diagnostic::firstSdkVersion() const
{
    return d->row != nullptr ? d->row->firstSdkVersion : 0;
}

int Diagnostic::lastSdkVersion() const
{
    return d->row != nullptr ? d->row->lastSdkVersion : 0;
}

} // namespace SorrelKit
