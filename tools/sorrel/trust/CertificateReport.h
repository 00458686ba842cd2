// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CERTIFICATEREPORT_H
#define CERTIFICATEREPORT_H

#include "ReportRows.h"

#include <SorrelKit/Certificate.h>
#include <SorrelKit/Signer.h>

#include <QJsonObject>
#include <QString>

/// Certificates and signers in the reports about signatures.
namespace CertificateReport {

/// The subject of @p certificate, or a text that it has none.
QString name(const SorrelKit::Certificate &certificate);
/// The SHA-256 fingerprint in lower-case hexadecimal digits.
QString sha256(const SorrelKit::Certificate &certificate);

/// An object of "certificate" and "publicKey".
QJsonObject toJson(const SorrelKit::Certificate &certificate);
/// The same with the scheme, the versions and the lineage.
QJsonObject toJson(const SorrelKit::Signer &signer);

/// Everything about @p certificate, with @p indent spaces before the keys.
void addRows(const SorrelKit::Certificate &certificate, int indent, ReportRows *rows);
/// Everything about @p signer.
void addRows(const SorrelKit::Signer &signer, int indent, ReportRows *rows);

} // namespace CertificateReport

#endif
