// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VERIFYCOMMAND_H
#define VERIFYCOMMAND_H

#include "Command.h"

#include <SorrelKit/SignatureRequest.h>
#include <SorrelKit/Signatures.h>

#include <QByteArray>
#include <QCommandLineOption>
#include <QString>

#include <limits>

class SignatureReport;

/// `sorrel verify`: verifies the signatures of packages as Android does.
class VerifyCommand : public Command
{
public:
    QString details() const override;
    int maxArguments() const override { return std::numeric_limits<int>::max(); }
    void addArguments(QCommandLineParser &parser) const override
    {
        parser.addPositionalArgument(QStringLiteral("FILE"), fileText(), QStringLiteral("FILE..."));
    }
    void addOptions(QCommandLineParser &parser) const override;
    int run(const QCommandLineParser &parser, Console &console) const override;

private:
    /// The demands of the options.
    struct Demands {
        SorrelKit::SignatureRequest request;
        QByteArray fingerprint; ///< SHA-256 of the certificate; empty for any
        bool isUpdate = false;  ///< whether there is an installed package
        QString installedFile;
        SorrelKit::Signatures installed;
    };

    /// Reads the options of @p parser. Returns false and sets @p error when one is wrong.
    bool read(const QCommandLineParser &parser, Demands *demands, QString *error) const;
    bool readLevel(const QCommandLineParser &parser, const QCommandLineOption &option, int *level,
                   QString *error) const;
    static void check(const Demands &demands, const SorrelKit::Signatures &signatures, SignatureReport *report);

    const QCommandLineOption m_json{QStringLiteral("json"),
                                    QStringLiteral("Print one JSON object per file, each on one line.")};
    const QCommandLineOption m_minSdk{
        QStringLiteral("min-sdk"),
        QStringLiteral("Verify for API level N and later, instead of the package's minimum SDK."), QStringLiteral("N")};
    const QCommandLineOption m_maxSdk{QStringLiteral("max-sdk"), QStringLiteral("Verify for API level N and earlier."),
                                      QStringLiteral("N")};
    const QCommandLineOption m_printCerts{QStringLiteral("print-certs"),
                                          QStringLiteral("Print everything about the certificates.")};
    const QCommandLineOption m_fingerprint{
        QStringLiteral("fingerprint"),
        QStringLiteral("Require a signer whose certificate has this fingerprint: 64 hexadecimal digits, with or "
                       "without colons."),
        QStringLiteral("SHA256")};
    const QCommandLineOption m_sameAs{
        QStringLiteral("same-as"),
        QStringLiteral("Require that Android accepts the signers for an update of the package OTHER."),
        QStringLiteral("OTHER.apk")};
    const QCommandLineOption m_v4Signature{
        QStringLiteral("v4-signature"),
        QStringLiteral("Require this file with the v4 signature; by default FILE.idsig when it exists."),
        QStringLiteral("FILE.idsig")};
};

#endif
