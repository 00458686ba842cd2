// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SIGNATUREREPORT_H
#define SIGNATUREREPORT_H

#include "FileName.h"
#include "ReportRows.h"
#include "TextStyle.h"

#include <SorrelKit/Signatures.h>

#include <QJsonObject>
#include <QList>
#include <QString>

/**
 * The report of `sorrel verify` about the signatures of a package or set of packages. Parts of it are in those of other
 * commands.
 */
class SignatureReport
{
public:
    /// The parts of the text.
    enum class Details {
        Fingerprints, ///< the result, fingerprints and issues
        Certificates, ///< everything about each signer as well
    };

    /// A demand of the caller, besides Android's, that the package does not meet.
    struct Refusal {
        QString code; ///< in the form of SignatureNames::code()
        QString message;
    };

    SignatureReport(const FileName &file, const SorrelKit::Signatures &signatures)
        : m_file(file), m_signatures(signatures)
    {
    }

    /// Adds a reason against the package. It is not verified then.
    void refuse(const Refusal &refusal) { m_refusals.append(refusal); }
    bool isVerified() const { return m_signatures.isVerified() && m_refusals.isEmpty(); }

    /// The report for people: a line with the result, and lines with details below. Characters that control a terminal
    /// become U+FFFD.
    QString toText(const TextStyle &style, Details details) const;
    /// The report for programs, as docs/verify.schema.json describes it.
    QJsonObject toJson() const;

    /// The same without the file.
    static QJsonObject toJson(const SorrelKit::Signatures &signatures);
    /// The result, and the signers' certificates when the package is verified: a part of the report of `sorrel info`.
    static QJsonObject signerJson(const SorrelKit::Signatures &signatures);
    /// The same for people.
    static ReportRows signerRows(const SorrelKit::Signatures &signatures);

private:
    FileName m_file;
    SorrelKit::Signatures m_signatures;
    QList<Refusal> m_refusals;
};

#endif
