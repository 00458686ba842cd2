// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "SignedPackages.h"
#include "Tool.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray sha256(const BlockSigner &signer)
{
    return QCryptographicHash::hash(signer.certificates.first(), QCryptographicHash::Sha256).toHex();
}

QJsonObject jsonOf(const ToolRun &run)
{
    return QJsonDocument::fromJson(run.output).object();
}

QStringList codesOf(const QJsonObject &json, const char *key = "errors")
{
    QStringList codes;
    for (const QJsonValue &issue : json.value(QLatin1String(key)).toArray())
        codes.append(issue.toObject().value(QLatin1String("code")).toString());
    return codes;
}

} // namespace

class TestVerifyCommand : public QObject
{
    Q_OBJECT

private slots:
    void aVerifiedPackage();
    void aChangedPackage();
    void everyByteCounts();
    void severalFilesAndTheStatus();
    void rangesOfVersions_data();
    void rangesOfVersions();
    void schemeV1();
    void severalSigners();
    void certificates();
    void json();
    void jsonOfALineage();
    void setsOfPackages();
    void fingerprints_data();
    void fingerprints();
    void updates();
    void v4SignatureThatIsDemanded();
    void hostileNames();
    void textOnATerminalIsColoured();
    void manyIssuesAreCounted();
    void wrongUsage_data();
    void wrongUsage();
    void otherReportsHaveTheSigner();

private:
    QString write(const char *name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(latin(name)), bytes);
    }
    ToolRun verify(const QStringList &arguments) const { return runSorrel(QStringList(latin("verify")) + arguments); }

    const BlockSigner m_jane = signerNamed("Jane");
    const BlockSigner m_other = signerNamed("Other", 2);
    QTemporaryDir m_directory;
};

void TestVerifyCommand::aVerifiedPackage()
{
    const QString file = write("good.apk", signedByV2({m_jane}));
    const ToolRun run = verify({file});
    QCOMPARE(run.status, 0);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.output, file.toUtf8()
                             + ": signed by CN=Jane, unchanged since; verified for Android 7.0 and later by scheme v2\n"
                               "  SHA-256        "
                             + sha256(m_jane) + '\n');
}

void TestVerifyCommand::aChangedPackage()
{
    const QString file = write("changed.apk", changed(signedByV2({m_jane})));
    const ToolRun run = verify({file});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.errors, QByteArray());
    QVERIFY2(run.output.startsWith(file.toUtf8() + ": NOT VERIFIED\n  error    v2: "), run.output.constData());
    QVERIFY(!run.output.contains("signed by"));
    QVERIFY(!run.output.contains(sha256(m_jane)));
    QCOMPARE(codesOf(jsonOf(verify({latin("--json"), file}))), QStringList(latin("content-changed")));
}

// Each byte of the package, of the signing block and of the directory, one at a time in a step through all.
void TestVerifyCommand::everyByteCounts()
{
    const QByteArray good = signedByV2({m_jane});
    constexpr int Step = 97;
    QStringList files;
    for (int at = 0; at < good.size(); at += Step) {
        QByteArray bytes = good;
        bytes[at] = char(bytes.at(at) ^ 0x10);
        files.append(write(QByteArray("byte-" + QByteArray::number(at) + ".apk").constData(), bytes));
    }
    QVERIFY(files.size() > 20);
    const ToolRun run = verify(QStringList(latin("--json")) + files);
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output.count('\n'), int(files.size()));
    QCOMPARE(run.output.count("\"verified\":true"), 0);
    QCOMPARE(run.output.count("\"verified\":false"), int(files.size()));
}

void TestVerifyCommand::severalFilesAndTheStatus()
{
    const QString good = write("good.apk", signedByV2({m_jane}));
    const QString plain = write("plain.apk", unsignedPackage());
    const QString missing = m_directory.filePath(latin("missing.apk"));
    const ToolRun run = verify({good, plain, missing, good});
    QCOMPARE(run.status, 1);
    QCOMPARE(run.output.count(": NOT VERIFIED\n"), 2);
    QCOMPARE(run.output.count(": signed by CN=Jane"), 2);
    QVERIFY(run.output.contains("\n\n" + plain.toUtf8() + ": NOT VERIFIED\n  error    the package has no signature"));
    QVERIFY(run.output.contains("\n\n" + missing.toUtf8() + ": NOT VERIFIED\n  error    the package cannot be opened"));
    QCOMPARE(verify({good, good}).status, 0);
}

void TestVerifyCommand::rangesOfVersions_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("result");
    const auto row = [](const char *options, const char *result) {
        QTest::newRow(options) << latin(options).split(QLatin1Char(' '), Qt::SkipEmptyParts) << QByteArray(result);
    };
    row("", "NOT VERIFIED");
    row("--min-sdk 24", "verified for Android 7.0 and later by scheme v2\n");
    row("--min-sdk 24 --max-sdk 27", "verified for Android 7.0 to 8.1 by scheme v2\n");
    row("--min-sdk 30 --max-sdk 30", "verified for Android 11 by scheme v2\n");
    row("--min-sdk 99", "verified for SDK 99 and later by scheme v2\n");
    row("--max-sdk 27", "NOT VERIFIED");
    row("--max-sdk 20", "NOT VERIFIED");
}

// The package is for Android 6.0 and later, which does not know v2.
void TestVerifyCommand::rangesOfVersions()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, result);
    const QString file = write("old.apk", signedByV2({m_jane}, 23));
    const ToolRun run = verify(options + QStringList(file));
    QVERIFY2(run.output.contains(result), run.output.constData());
    QCOMPARE(run.status, result == "NOT VERIFIED" ? 1 : 0);
}

void TestVerifyCommand::schemeV1()
{
    JarOptions options;
    options.certificate.commonName = "Jane";
    const QString good = write("v1.apk", signedByV1(options, {{latin("META-INF/a"), "a"}}));
    const ToolRun run = verify({good});
    QCOMPARE(run.status, 0);
    QVERIFY2(
        run.output.contains(": signed by CN=Jane, unchanged since; verified for Android 4.3 and later by scheme v1\n"),
        run.output.constData());
    QVERIFY(run.output.contains("\n  warning  v1: META-INF/a: a member is not protected by signatures"));
    const QString added = write("added.apk", signedByV1({}, {{latin("b.txt"), "b"}}));
    QCOMPARE(verify({added}).status, 1);
    QCOMPARE(codesOf(jsonOf(verify({latin("--json"), added}))).constFirst(), latin("unlisted-member"));
}

void TestVerifyCommand::severalSigners()
{
    const ToolRun run = verify({write("two.apk", signedByV2({m_jane, m_other}))});
    QCOMPARE(run.status, 0);
    QVERIFY(run.output.contains(": signed by CN=Jane and CN=Other, unchanged since; verified "));
    QVERIFY(run.output.contains("\n  SHA-256        " + sha256(m_jane) + " (CN=Jane, by scheme v2)\n"));
    QVERIFY(run.output.contains("\n  SHA-256        " + sha256(m_other) + " (CN=Other, by scheme v2)\n"));
}

void TestVerifyCommand::certificates()
{
    const ToolRun run = verify({latin("--print-certs"), write("rotated.apk", signedByRotated(m_other, m_jane, 9))});
    QCOMPARE(run.status, 0);
    // The width of the keys depends on the longest one.
    const QByteArray text = run.output.simplified();
    for (const char *part :
         {" signer by scheme v3",
          " subject CN=Jane issuer CN=Jane serial number 1 valid from "
          "2020-01-01T00:00:00Z valid until 2050-01-01T00:00:00Z signed with ecdsa-with-SHA256 key "
          "EC, 256 bits key SHA-256 ",
          " lineage with installedData and rollback subject CN=Other ", " signer by scheme v2 subject CN=Other "})
        QVERIFY2(text.contains(part), part);
    for (const QCryptographicHash::Algorithm algorithm :
         {QCryptographicHash::Sha256, QCryptographicHash::Sha1, QCryptographicHash::Md5}) {
        QVERIFY(run.output.contains(QCryptographicHash::hash(m_jane.certificates.first(), algorithm).toHex() + '\n'));
        QVERIFY(run.output.contains(QCryptographicHash::hash(m_other.certificates.first(), algorithm).toHex() + '\n'));
    }
    QVERIFY(text.contains(" key SHA-256 "
                          + QCryptographicHash::hash(m_jane.key.publicKey(), QCryptographicHash::Sha256).toHex()));
}

void TestVerifyCommand::json()
{
    const QString file = write("good.apk", signedByV2({m_jane}));
    const ToolRun run = verify({latin("--json"), file});
    QCOMPARE(run.status, 0);
    QCOMPARE(run.output.count('\n'), 1);
    const auto hash = [this](QCryptographicHash::Algorithm algorithm) {
        return QString::fromLatin1(QCryptographicHash::hash(m_jane.certificates.first(), algorithm).toHex());
    };
    const QByteArray key = QCryptographicHash::hash(m_jane.key.publicKey(), QCryptographicHash::Sha256).toHex();
    const QJsonObject certificate{
        {latin("subject"), latin("CN=Jane")},
        {latin("issuer"), latin("CN=Jane")},
        {latin("serial"), latin("1")},
        {latin("notBefore"), latin("2020-01-01T00:00:00Z")},
        {latin("notAfter"), latin("2050-01-01T00:00:00Z")},
        {latin("sha256"), hash(QCryptographicHash::Sha256)},
        {latin("sha1"), hash(QCryptographicHash::Sha1)},
        {latin("md5"), hash(QCryptographicHash::Md5)},
        {latin("signatureAlgorithm"), latin("ecdsa-with-SHA256")},
    };
    const QJsonObject publicKey{
        {latin("algorithm"), latin("EC")}, {latin("bits"), 256}, {latin("sha256"), QString::fromLatin1(key)}};
    const QJsonObject signer{{latin("scheme"), latin("v2")},       {latin("minSdkVersion"), 0},
                             {latin("maxSdkVersion"), 2147483647}, {latin("certificate"), certificate},
                             {latin("publicKey"), publicKey},      {latin("lineage"), QJsonArray()}};
    const QJsonObject expected{{latin("file"), file},
                               {latin("verified"), true},
                               {latin("schemes"), QJsonArray{latin("v2")}},
                               {latin("minSdkVersion"), 24},
                               {latin("maxSdkVersion"), 2147483647},
                               {latin("signers"), QJsonArray{signer}},
                               {latin("stamp"), QJsonValue()},
                               {latin("errors"), QJsonArray()},
                               {latin("warnings"), QJsonArray()}};
    QCOMPARE(jsonOf(run), expected);
}

void TestVerifyCommand::jsonOfALineage()
{
    const QJsonObject json =
        jsonOf(verify({latin("--json"), write("rotated.apk", signedByRotated(m_other, m_jane, 9))}));
    QCOMPARE(json.value(latin("schemes")).toArray(), QJsonArray({latin("v2"), latin("v3")}));
    const QJsonArray signers = json.value(latin("signers")).toArray();
    QCOMPARE(signers.size(), 2);
    QCOMPARE(signers.at(0).toObject().value(latin("scheme")).toString(), latin("v3"));
    QCOMPARE(signers.at(1).toObject().value(latin("scheme")).toString(), latin("v2"));
    const QJsonArray lineage = signers.at(0).toObject().value(latin("lineage")).toArray();
    QCOMPARE(lineage.size(), 2);
    const QJsonObject past = lineage.at(0).toObject();
    QCOMPARE(past.value(latin("certificate")).toObject().value(latin("subject")).toString(), latin("CN=Other"));
    QCOMPARE(past.value(latin("capabilities")).toArray(), QJsonArray({latin("installedData"), latin("rollback")}));
}

void TestVerifyCommand::setsOfPackages()
{
    const QString same = write("same.apks", signedSet(m_jane, m_jane));
    const ToolRun good = verify({same});
    QCOMPARE(good.status, 0);
    QVERIFY2(good.output.contains("\n  base           verified for Android 7.0 and later by scheme v2\n"
                                  "  config.de      verified for Android 7.0 and later by scheme v2\n"),
             good.output.constData());
    const QJsonArray packages = jsonOf(verify({latin("--json"), same})).value(latin("packages")).toArray();
    QCOMPARE(packages.size(), 2);
    QCOMPARE(packages.at(0).toObject().value(latin("name")).toString(), QString());
    QCOMPARE(packages.at(1).toObject().value(latin("name")).toString(), latin("config.de"));
    const QString mixed = write("mixed.apks", signedSet(m_jane, m_other));
    QCOMPARE(verify({mixed}).status, 1);
    QCOMPARE(codesOf(jsonOf(verify({latin("--json"), mixed}))), QStringList(latin("set-signers-differ")));
}

void TestVerifyCommand::fingerprints_data()
{
    QTest::addColumn<QByteArray>("fingerprint");
    QTest::addColumn<int>("status");
    const QByteArray right = sha256(m_jane);
    QByteArray withColons = right.toUpper();
    for (int at = int(withColons.size()) - 2; at > 0; at -= 2)
        withColons.insert(at, ':');
    QTest::newRow("right") << right << 0;
    QTest::newRow("right, in upper case") << right.toUpper() << 0;
    QTest::newRow("right, with colons") << withColons << 0;
    QTest::newRow("of another signer") << sha256(m_other) << 1;
    QTest::newRow("empty") << QByteArray() << 2;
    QTest::newRow("too short") << right.chopped(2) << 2;
    QTest::newRow("too long") << right + "00" << 2;
    QTest::newRow("no number") << right.chopped(1) + 'g' << 2;
    QTest::newRow("with spaces") << right.left(62) + "  " << 2;
}

void TestVerifyCommand::fingerprints()
{
    QFETCH(QByteArray, fingerprint);
    QFETCH(int, status);
    const QString file = write("good.apk", signedByV2({m_jane}));
    const QString option = latin("--fingerprint=") + QString::fromLatin1(fingerprint);
    const ToolRun run = verify({option, file});
    QCOMPARE(run.status, status);
    QCOMPARE(run.output.contains("NOT VERIFIED\n  error    no signer has the fingerprint " + fingerprint), status == 1);
    QCOMPARE(run.output.isEmpty(), status == 2);
    if (status == 1) {
        const QJsonObject json = jsonOf(verify({option, latin("--json"), file}));
        QCOMPARE(json.value(latin("verified")), QJsonValue(false));
        QCOMPARE(codesOf(json), QStringList(latin("fingerprint-differs")));
    }
    // The right fingerprint does not excuse a change.
    if (status == 0)
        QCOMPARE(verify({option, write("changed.apk", changed(signedByV2({m_jane})))}).status, 1);
}

void TestVerifyCommand::updates()
{
    const QString janes = write("jane.apk", signedByV2({m_jane}));
    const QString others = write("other.apk", signedByV2({m_other}));
    const QString rotated = write("rotated.apk", signedByRotated(m_other, m_jane));
    const QString withoutTrust = write("distrusted.apk", signedByRotated(m_other, m_jane, 0));
    const QString damaged = write("changed.apk", changed(signedByV2({m_jane})));
    const auto status = [this](const QString &installed, const QString &update) {
        return verify({latin("--same-as"), installed, update}).status;
    };
    QCOMPARE(status(janes, janes), 0);
    QCOMPARE(status(others, rotated), 0);
    QCOMPARE(status(janes, rotated), 0);
    QCOMPARE(status(janes, others), 1);
    QCOMPARE(status(others, withoutTrust), 1);
    QCOMPARE(status(damaged, janes), 1);
    QCOMPARE(status(janes, damaged), 1);
    QCOMPARE(status(m_directory.filePath(latin("missing")), janes), 1);
    QCOMPARE(status(QString(), janes), 1);
    const ToolRun run = verify({latin("--same-as"), janes, others});
    QVERIFY2(run.output.contains("NOT VERIFIED\n  error    no update of " + janes.toUtf8()
                                 + ", because the signers differ\n"),
             run.output.constData());
    QCOMPARE(codesOf(jsonOf(verify({latin("--json"), latin("--same-as"), janes, others}))),
             QStringList(latin("update-refused")));
}

void TestVerifyCommand::v4SignatureThatIsDemanded()
{
    const QString file = write("good.apk", signedByV2({m_jane}));
    const QString missing = m_directory.filePath(latin("missing.idsig"));
    QCOMPARE(verify({latin("--v4-signature"), missing, file}).status, 1);
    const QString empty = write("empty.idsig", QByteArray());
    QCOMPARE(verify({latin("--v4-signature"), empty, file}).status, 1);
    // Versions and files that have no v4 signature do not excuse it.
    const ToolRun old = verify({latin("--v4-signature"), empty, latin("--max-sdk=29"), file});
    QCOMPARE(old.status, 1);
    QVERIFY2(old.output.contains("\n  error    the v4 signature was not verified\n"), old.output.constData());
    const QString set = write("set.apks", signedSet(m_jane, m_jane));
    QCOMPARE(verify({latin("--v4-signature"), empty, set}).status, 1);
    QCOMPARE(codesOf(jsonOf(verify({latin("--json"), latin("--v4-signature"), empty, set}))),
             QStringList(latin("v4-unverified")));
}

void TestVerifyCommand::hostileNames()
{
    const BlockSigner hostile = signerNamed("a\033[2J\nverified\xe2\x80\xae");
    const QString file = write("a\033[2Jb.apk", signedByV2({hostile}));
    const ToolRun run = verify({latin("--print-certs"), file});
    QCOMPARE(run.status, 0);
    QVERIFY(!run.output.contains('\033'));
    QVERIFY(!run.output.contains("\nverified"));
    QVERIFY(!run.output.contains("\xe2\x80\xae"));
    const ToolRun json = verify({latin("--json"), file});
    QCOMPARE(json.output.count('\n'), 1);
    QVERIFY(!json.output.contains('\033'));
}

void TestVerifyCommand::textOnATerminalIsColoured()
{
    const QString good = write("good.apk", signedByV2({m_jane}));
    const ToolRun run = runSorrelOnTerminal({latin("verify"), good});
    QVERIFY(run.output.contains("; \033[1;32mverified\033[0m for Android 7.0"));
    const ToolRun plain = runSorrelOnTerminal({latin("verify"), write("plain.apk", unsignedPackage())});
    QVERIFY(plain.output.contains(": \033[1;31mNOT VERIFIED\033[0m"));
}

void TestVerifyCommand::manyIssuesAreCounted()
{
    QVector<Member> members;
    for (int i = 0; i < 25; ++i)
        members.append({latin("META-INF/%1").arg(i), "a"});
    const QString file = write("many.apk", signedByV1({}, members));
    QCOMPARE(codesOf(jsonOf(verify({latin("--json"), file})), "warnings").size(), 25);
    const ToolRun run = verify({file});
    QCOMPARE(run.output.count("\n  warning  v1: META-INF/"), 10);
    QVERIFY(run.output.endsWith("\n  warning  15 more, which --json lists\n"));
}

void TestVerifyCommand::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *arguments, const char *text) {
        QTest::newRow(arguments) << latin(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts) << QByteArray(text);
    };
    row("", "A file is missing.");
    row("--min-sdk 0 a.apk", "--min-sdk is a number from 1 to 10000, not '0'.");
    row("--min-sdk= a.apk", "--min-sdk is a number from 1 to 10000, not ''.");
    row("--max-sdk 10001 a.apk", "--max-sdk is a number from 1 to 10000, not '10001'.");
    row("--max-sdk x a.apk", "--max-sdk is a number from 1 to 10000, not 'x'.");
    row("--min-sdk 30 --max-sdk 29 a.apk", "--min-sdk is higher than --max-sdk.");
    row("--fingerprint ab --fingerprint ab a.apk", "--fingerprint may be given once.");
    row("--same-as a.apk --same-as b.apk a.apk", "--same-as may be given once.");
    row("--min-sdk 1 --min-sdk 2 a.apk", "--min-sdk may be given once.");
    row("--v4-signature= a.apk", "--v4-signature is the name of a file, in UTF-8.");
    row("--v4-signature a.idsig a.apk b.apk", "--v4-signature is for one file.");
    row("--fingerprint ab a.apk", "--fingerprint is 64 hexadecimal digits, with or without colons, not 'ab'.");
}

void TestVerifyCommand::wrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, text);
    const ToolRun run = verify(arguments);
    QCOMPARE(run.status, 2);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.errors, "sorrel: " + text + "\nTry 'sorrel verify --help'.\n");
}

void TestVerifyCommand::otherReportsHaveTheSigner()
{
    const QString good = write("good.apk", signedByV2({m_jane}));
    const QString damaged = write("changed.apk", changed(signedByV2({m_jane})));
    const QByteArray text = runSorrel({latin("info"), latin("--signer"), good}).output;
    QVERIFY2(text.contains("\n  signer         CN=Jane\n    SHA-256      " + sha256(m_jane)
                           + "\n  verified       for Android 7.0 and later by scheme v2\n"),
             text.constData());
    QVERIFY(runSorrel({latin("info"), latin("--signer"), damaged}).output.contains("\n  NOT VERIFIED   v2: "));
    QVERIFY(!runSorrel({latin("info"), good}).output.contains("Jane"));
    const auto signer = [](const QString &file) {
        return jsonOf(runSorrel({latin("info"), latin("--json"), latin("--signer"), file}))
            .value(latin("signer"))
            .toObject();
    };
    QCOMPARE(signer(good).value(latin("verified")), QJsonValue(true));
    QCOMPARE(signer(good).value(latin("signers")).toArray().size(), 1);
    QCOMPARE(signer(damaged).value(latin("verified")), QJsonValue(false));
    QCOMPARE(signer(damaged).value(latin("signers")).toArray().size(), 0);

    QJsonObject expected = jsonOf(verify({latin("--json"), good}));
    expected.remove(latin("file"));
    for (const QStringList &options :
         {QStringList{latin("--verify")}, QStringList{latin("--verify"), latin("--icon=16")}}) {
        const QJsonObject scanned = jsonOf(runSorrel(QStringList{latin("scan"), good} + options));
        QCOMPARE(scanned.value(latin("signatures")).toObject(), expected);
    }
    QVERIFY(!jsonOf(runSorrel({latin("scan"), good})).contains(latin("signatures")));

    const QString page = m_directory.filePath(latin("page.html"));
    QCOMPARE(runSorrel({latin("catalog"), latin("--verify"), latin("-o"), page, good}).status, 0);
    QFile file(page);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("<dd class=\"signer\"><bdi>CN=Jane</bdi></dd>"));
}

QTEST_GUILESS_MAIN(TestVerifyCommand)
#include "tst_verify_command.moc"
