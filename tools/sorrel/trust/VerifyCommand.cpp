// SPDX-License-Identifier: LGPL-2.1-or-later
#include "VerifyCommand.h"

#include "Console.h"
#include "FileName.h"
#include "SignatureReport.h"

#include <SorrelKit/Package.h>

#include <algorithm>

using SorrelKit::Package;
using SorrelKit::SignatureRequest;
using SorrelKit::Signatures;
using SorrelKit::Signer;

namespace {

constexpr int MaxLevel = 10000;

// The bytes of a fingerprint; empty when @p text is none.
QByteArray fingerprintOf(const QString &text)
{
    constexpr int Digits = 64;
    QByteArray digits = text.toLatin1();
    digits.replace(':', QByteArray());
    const bool isHex = std::all_of(digits.cbegin(), digits.cend(), [](char digit) {
        return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f') || (digit >= 'A' && digit <= 'F');
    });
    return isHex && digits.size() == Digits ? QByteArray::fromHex(digits) : QByteArray();
}

QString refusalText(Signer::Match match, const QString &installed)
{
    return match == Signer::Match::Unverified
               ? QStringLiteral("no update of %1, because one of the two is not verified").arg(installed)
               : QStringLiteral("no update of %1, because the signers differ").arg(installed);
}

} // namespace

QString VerifyCommand::details() const
{
    return QStringLiteral(
        "A package is verified when nobody changed it since its signers signed it, and Android accepts their "
        "signatures. The names in a certificate are what the signer wrote; compare fingerprints instead.\n\n"
        "Exit status: 0 when every package is verified, 1 when a package is not verified or cannot be read, 2 for "
        "wrong usage.");
}

void VerifyCommand::addOptions(QCommandLineParser &parser) const
{
    parser.addOptions({m_json, m_printCerts, m_minSdk, m_maxSdk, m_fingerprint, m_sameAs, m_v4Signature});
}

bool VerifyCommand::readLevel(const QCommandLineParser &parser, const QCommandLineOption &option, int *level,
                              QString *error) const
{
    if (!parser.isSet(option))
        return true;
    bool isNumber = false;
    *level = parser.value(option).toInt(&isNumber);
    if (isNumber && *level >= 1 && *level <= MaxLevel)
        return true;
    *error = QStringLiteral("--%1 is a number from 1 to %2, not '%3'.")
                 .arg(option.names().constFirst())
                 .arg(MaxLevel)
                 .arg(parser.value(option));
    return false;
}

bool VerifyCommand::read(const QCommandLineParser &parser, Demands *demands, QString *error) const
{
    for (const QCommandLineOption *const option : {&m_minSdk, &m_maxSdk, &m_fingerprint, &m_sameAs, &m_v4Signature}) {
        if (parser.values(*option).size() > 1) {
            *error = QStringLiteral("--%1 may be given once.").arg(option->names().constFirst());
            return false;
        }
    }
    int min = 0;
    int max = 0;
    if (!readLevel(parser, m_minSdk, &min, error) || !readLevel(parser, m_maxSdk, &max, error))
        return false;
    if (max != 0 && min > max) {
        *error = QStringLiteral("--min-sdk is higher than --max-sdk.");
        return false;
    }
    demands->request.setMinSdkVersion(min);
    demands->request.setMaxSdkVersion(max);
    demands->fingerprint = fingerprintOf(parser.value(m_fingerprint));
    if (parser.isSet(m_fingerprint) && demands->fingerprint.isEmpty()) {
        *error = QStringLiteral("--fingerprint is 64 hexadecimal digits, with or without colons, not '%1'.")
                     .arg(parser.value(m_fingerprint));
        return false;
    }
    if (parser.isSet(m_v4Signature) && parser.positionalArguments().size() > 1) {
        *error = QStringLiteral("--v4-signature is for one file.");
        return false;
    }
    if (parser.isSet(m_sameAs)) {
        const FileName installed(parser.value(m_sameAs));
        demands->isUpdate = true;
        demands->installedFile = installed.text();
        // The v4 signature is that of the other package.
        demands->installed = Signatures(Package::fromNativePath(installed.path()), demands->request);
    }
    if (!parser.isSet(m_v4Signature))
        return true;
    // Without a name, the signature would be looked for beside the package.
    const QString v4Signature = FileName(parser.value(m_v4Signature)).forQt();
    demands->request.setV4SignatureFile(v4Signature);
    *error = QStringLiteral("--v4-signature is the name of a file, in UTF-8.");
    return !v4Signature.isEmpty();
}

void VerifyCommand::check(const Demands &demands, const Signatures &signatures, SignatureReport *report)
{
    const QList<Signer> signers = signatures.signers();
    const bool hasFingerprint = std::any_of(signers.cbegin(), signers.cend(), [&](const Signer &signer) {
        return signer.certificate().fingerprint() == demands.fingerprint;
    });
    if (!demands.fingerprint.isEmpty() && !hasFingerprint)
        report->refuse(
            {QStringLiteral("fingerprint-differs"),
             QStringLiteral("no signer has the fingerprint %1").arg(QString::fromLatin1(demands.fingerprint.toHex()))});
    // Neither sets nor versions before Android 11 have v4 signatures.
    if (!demands.request.v4SignatureFile().isEmpty() && signatures.isVerified()
        && !signatures.schemes().contains(Signer::Scheme::V4))
        report->refuse({QStringLiteral("v4-unverified"), QStringLiteral("the v4 signature was not verified")});
    if (!demands.isUpdate || Signatures::sameSigner(demands.installed, signatures))
        return;
    const Signer::Match match = Signatures::compareSigners(demands.installed, signatures);
    report->refuse({QStringLiteral("update-refused"), refusalText(match, demands.installedFile)});
}

int VerifyCommand::run(const QCommandLineParser &parser, Console &console) const
{
    Demands demands;
    QString error;
    if (!read(parser, &demands, &error))
        return Console::wrongUsage(error, QStringLiteral("sorrel verify"));
    const auto details =
        parser.isSet(m_printCerts) ? SignatureReport::Details::Certificates : SignatureReport::Details::Fingerprints;
    int status = Success;
    bool isFirst = true;
    for (const QString &argument : parser.positionalArguments()) {
        const FileName file(argument);
        const Signatures signatures(Package::fromNativePath(file.path()), demands.request);
        SignatureReport report(file, signatures);
        check(demands, signatures, &report);
        if (!report.isVerified())
            status = NotVerified;
        if (parser.isSet(m_json))
            console.writeLine(report.toJson());
        else
            console.write((isFirst ? QString() : QStringLiteral("\n")) + report.toText(console.style(), details));
        isFirst = false;
        console.flush();
    }
    return status;
}
