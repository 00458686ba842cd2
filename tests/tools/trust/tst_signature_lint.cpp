// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "SignedPackages.h"
#include "Tool.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

BlockSigner signerWith(const CertificateFields &fields)
{
    BlockSigner signer = signerNamed("Jane");
    signer.certificates = {signer.key.certificate(fields)};
    return signer;
}

} // namespace

/// The findings of `sorrel lint` about signatures.
class TestSignatureLint : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsOdd();
    void findings_data();
    void findings();
    void scanHasTheSameFindings();

private:
    QString write(const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(QStringLiteral("a.apk")), bytes);
    }

    QTemporaryDir m_directory;
};

void TestSignatureLint::nothingIsOdd()
{
    const QString file = write(signedByV2({signerNamed("Jane")}));
    const ToolRun run = runSorrel({QStringLiteral("lint"), file});
    QCOMPARE(run.status, 0);
    QCOMPARE(run.output, file.toUtf8() + "\n  nothing odd\n");
    const ToolRun drawn = runSorrel({QStringLiteral("lint"), QStringLiteral("--draw"), file});
    QCOMPARE(drawn.output, run.output);
}

void TestSignatureLint::findings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &bytes, const QStringList &expected) {
        QTest::newRow(name) << bytes << expected;
    };
    const BlockSigner jane = signerNamed("Jane");
    CertificateFields debug;
    debug.commonName = "Android Debug";
    CertificateFields expired;
    expired.notAfter = QDateTime(QDate(2021, 1, 1), QTime(0, 0), Qt::UTC);
    BlockSigner weak(TestKey::rsa(1, 1024), {0x0103});
    row("unsigned", unsignedPackage(),
        {QStringLiteral("unsigned||The package has no signature; Android does not install it.")});
    row("not verified", changed(signedByV2({jane})),
        {QStringLiteral(
            "not-verified|signer 1|The content was changed (scheme v2, SHA-256); the package is not verified.")});
    row("too old a scheme", signedByV2({jane}, 22),
        {QStringLiteral(
            "not-verified||The package needs a newer signature scheme (v1 for API levels 22 to 23); the package "
            "is not verified.")});
    row("certificate for tests", signedByV2({signerWith(debug)}),
        {QStringLiteral("debug-certificate|CN=Android Debug|The certificate is for tests; shops refuse the package.")});
    row("expired certificate", signedByV2({signerWith(expired)}),
        {QStringLiteral("expired-certificate|CN=Test signer|The certificate has expired (2021-01-01T00:00:00Z); "
                        "Android installs the package all the "
                        "same.")});
    row("short key", signedByV2({weak}),
        {QStringLiteral("weak-signature|CN=Test signer|A key is weak (1024 bits of RSA); others may be able to forge "
                        "the signature.")});
    const QString v1Only =
        QStringLiteral("v1-only||The package is signed by scheme v1 alone; Android 7.0 and later accept changes "
                       "outside of its members, and take longer to install it.");
    row("v1 alone", signedByV1(), {v1Only});
    const Member other{QStringLiteral("META-INF/a"), "a"};
    row("a member without protection", signedByV1({}, {other}),
        {v1Only, QStringLiteral("unprotected-member|META-INF/a|A member is not protected by signatures (scheme v1); "
                                "anyone can change it for devices that use this scheme.")});
    row("members without protection", signedByV1({}, {other, {QStringLiteral("META-INF/b"), "b"}}),
        {v1Only, QStringLiteral("unprotected-member||A member is not protected by signatures (scheme v1, 2 times); "
                                "anyone can change it for devices that use this scheme.")});
    row("a set of two that are not signed by the same", signedSet(jane, signerNamed("Other", 2)),
        {QStringLiteral("not-verified|config.de|The packages of the set have different signers; the package is not "
                        "verified.")});
}

void TestSignatureLint::findings()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    const ToolRun run = runSorrel({QStringLiteral("lint"), QStringLiteral("--json"), write(bytes)});
    QCOMPARE(run.status, 0);
    QStringList found;
    for (const QJsonValue &value :
         QJsonDocument::fromJson(run.output).object().value(QLatin1String("lint")).toArray()) {
        const QJsonObject finding = value.toObject();
        // Other checks find changed members and sets.
        if (finding.value(QLatin1String("subject")) != QLatin1String("resources.arsc")
            && finding.value(QLatin1String("check")) != QLatin1String("package-set"))
            found.append(finding.value(QLatin1String("check")).toString() + QLatin1Char('|')
                         + finding.value(QLatin1String("subject")).toString() + QLatin1Char('|')
                         + finding.value(QLatin1String("text")).toString());
    }
    QCOMPARE(found, expected);
}

void TestSignatureLint::scanHasTheSameFindings()
{
    const QString file = write(unsignedPackage());
    for (const QString &option : {QStringLiteral("--verify"), QStringLiteral("--icon=16")}) {
        const ToolRun run = runSorrel({QStringLiteral("scan"), QStringLiteral("--lint"), option, file});
        QCOMPARE(run.output.count("\"check\":\"unsigned\""), 1);
    }
}

QTEST_GUILESS_MAIN(TestSignatureLint)
#include "tst_signature_lint.moc"
