// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SIGNATURENAMES_H
#define SIGNATURENAMES_H

#include <SorrelKit/PastSigner.h>
#include <SorrelKit/SignatureIssue.h>
#include <SorrelKit/Signer.h>

#include <QList>
#include <QString>
#include <QStringList>

/// Names in the reports about signatures. They stay the same from version to version.
namespace SignatureNames {

/// The names of @p schemes, by Signer::schemeName().
QStringList schemes(const QList<SorrelKit::Signer::Scheme> &schemes);
/// The name of the enumerator in lower case, with a hyphen between its words: "content-changed".
QString code(SorrelKit::SignatureIssue::Code code);
/// The names of the enumerators of PastSigner::Capability, with a lower-case letter first: "installedData".
QStringList capabilities(SorrelKit::PastSigner::Capabilities capabilities);

/// @p texts as an English list: "v1, v2 and v3".
QString joined(const QStringList &texts);
/// "scheme v2", or "schemes v2 and v3".
QString schemesText(const QList<SorrelKit::Signer::Scheme> &schemes);

} // namespace SignatureNames

#endif
