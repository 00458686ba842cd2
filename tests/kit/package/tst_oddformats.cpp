// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "OddDocuments.h"
#include "OddTables.h"
#include "oddity/Oddity.h"

#include <SorrelKit/Diagnostic.h>
#include <SorrelKit/Package.h>

#include <QtTest>

using namespace fixture;
using SorrelKit::Diagnostic;
using SorrelKit::Error;
using SorrelKit::Package;

namespace {

// The codes of diagnostics are in the order of the oddities, behind Code::None.
QVector<Diagnostic::Code> codesOf(const QVector<Oddity> &oddities)
{
    QVector<Diagnostic::Code> codes;
    for (const Oddity oddity : oddities)
        codes.append(Diagnostic::Code(int(oddity) + 1));
    return codes;
}

// The codes about the file @p path of the package in @p device.
QVector<Diagnostic::Code> codesOf(const Package &package, const QString &path)
{
    QVector<Diagnostic::Code> codes;
    for (const Diagnostic &diagnostic : package.diagnostics()) {
        if (diagnostic.path() == path)
            codes.append(diagnostic.code());
    }
    return codes;
}

} // namespace

Q_DECLARE_METATYPE(fixture::OddFile)

/// Manifests and tables that build tools do not write, in packages.
class TestOddFormats : public QObject
{
    Q_OBJECT

private slots:
    void manifests_data();
    void manifests();
    void tables_data();
    void tables();
};

void TestOddFormats::manifests_data()
{
    QTest::addColumn<OddFile>("file");
    for (const OddFile &file : oddDocuments())
        QTest::newRow(qPrintable(file.name)) << file;
}

void TestOddFormats::manifests()
{
    QFETCH(OddFile, file);
    PackageDevice device(emptyTable(), file.bytes);
    const Package package(&device);
    const bool isTaken = file.fault == FormatFault::None;
    QCOMPARE(package.packageName(), isTaken ? QStringLiteral("org.example") : QString());
    QCOMPARE(!package.error(), isTaken);
    if (isTaken)
        QCOMPARE(codesOf(package, QStringLiteral("AndroidManifest.xml")), codesOf(file.oddities));
    else
        QVERIFY(!package.error().message().isEmpty());
}

void TestOddFormats::tables_data()
{
    QTest::addColumn<OddFile>("file");
    for (const OddFile &file : oddTables())
        QTest::newRow(qPrintable(file.name)) << file;
}

void TestOddFormats::tables()
{
    QFETCH(OddFile, file);
    XmlBuilder manifest = XmlBuilder::manifest();
    manifest.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.example"))})
        .empty(QStringLiteral("application"), {androidReference(QStringLiteral("label"), 0x7f010000)})
        .end(QStringLiteral("manifest"));
    PackageDevice device(file.bytes, manifest.build());
    const Package package(&device);
    QCOMPARE(package.packageName(), QStringLiteral("org.example"));
    if (file.fault != FormatFault::None) {
        QCOMPARE(package.error().code(), Error::Code::BadTable);
        return;
    }
    QCOMPARE(package.label(), QStringLiteral("Plain"));
    QCOMPARE(codesOf(package, QStringLiteral("resources.arsc")), codesOf(file.oddities));
    QVERIFY(!package.error());
}

QTEST_GUILESS_MAIN(TestOddFormats)
#include "tst_oddformats.moc"
