// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "ApkFile.h"
#include "Files.h"
#include "Tool.h"

#include <QDomDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace fixture;

namespace {

QByteArray launcherManifest()
{
    const QString name = QStringLiteral("name");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.start(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), QStringLiteral("org.x"))});
    builder.empty(QStringLiteral("uses-sdk"), {androidValue(QStringLiteral("minSdkVersion"), Integer, 23)});
    builder.start(QStringLiteral("application"), {androidText(QStringLiteral("label"), QStringLiteral("App"))});
    builder.start(QStringLiteral("activity"),
                  {androidText(name, QStringLiteral(".Main")), androidReference(QStringLiteral("label"), 0x7f010000)});
    builder.launcherFilter().end(QStringLiteral("activity"));
    return builder.end(QStringLiteral("application")).end(QStringLiteral("manifest")).build();
}

QByteArray labelTable()
{
    return TableBuilder()
        .strings({QStringLiteral("Hello")})
        .package(PackageBuilder()
                     .types({QStringLiteral("string")})
                     .keys({QStringLiteral("greeting")})
                     .type(TypeBuilder(1).value(0, String, 0)))
        .build();
}

// A document with names and texts that XML cannot express.
QByteArray manifestThatIsNoXml()
{
    const QString odd = QStringLiteral("http://example.org/odd");
    XmlBuilder builder = XmlBuilder::manifest();
    builder.startNamespace(QStringLiteral("9 odd"), odd);
    builder.startNamespace(QStringLiteral("xml"), QStringLiteral("urn:taken"));
    builder.start(QStringLiteral("manifest"));
    builder.start(
        QStringLiteral("1 child<"),
        {plainText(QStringLiteral("a b"), QStringLiteral("1")),
         plainText(QStringLiteral("a_b"), QStringLiteral("2")),
         plainText(QStringLiteral(""), QStringLiteral("empty name")),
         {odd, QStringLiteral("value"), QString::fromUtf16(u"\u0001\uFFFE<&\"'\n"), String, 0},
         {QStringLiteral("urn:taken"), QStringLiteral("c"), QString(QChar(0xd800)), String, 0},
         {QStringLiteral("urn:unbound"), QStringLiteral("d"), QStringLiteral("😀"), String, 0},
         {QStringLiteral("http://www.w3.org/2000/xmlns/"), QStringLiteral("e"), QStringLiteral("5"), String, 0}});
    builder.empty(QStringLiteral("child"));
    return builder.end(QStringLiteral("1 child<")).end(QStringLiteral("manifest")).build();
}

void compareElements(const QDomElement &written, const QDomElement &decoded)
{
    QCOMPARE(written.namespaceURI(), decoded.namespaceURI());
    QCOMPARE(written.tagName(), decoded.tagName());
    QCOMPARE(written.attributes().length(), decoded.attributes().length());
    for (int i = 0; i < decoded.attributes().length(); ++i) {
        const QDomNode attribute = decoded.attributes().item(i);
        if (attribute.namespaceURI().isEmpty())
            QCOMPARE(written.attribute(attribute.nodeName()), attribute.nodeValue());
        else
            QCOMPARE(written.attributeNS(attribute.namespaceURI(), attribute.localName()), attribute.nodeValue());
    }
    QDomElement writtenChild = written.firstChildElement();
    QDomElement decodedChild = decoded.firstChildElement();
    while (!writtenChild.isNull() && !decodedChild.isNull()) {
        compareElements(writtenChild, decodedChild);
        writtenChild = writtenChild.nextSiblingElement();
        decodedChild = decodedChild.nextSiblingElement();
    }
    QCOMPARE(writtenChild.isNull(), decodedChild.isNull());
}

} // namespace

/// `sorrel manifest`.
class TestManifestCommand : public QObject
{
    Q_OBJECT

private slots:
    void isXml();
    void namesResources();
    void declaresAndroidOnTheRoot();
    void printsAttributesOfOneNameApart();
    void printsTheSameEachTime();
    void makesXmlOfAManifestThatIsNone();
    void printsTheBaseOfASet();
    void refusesANegativeStringIndex();
    void unreadablePackage();
    void refusesAManifestWithoutElements();
    void printsAManifestWithADamagedTable();
    void printsAManifestWithoutATable();
    void refusesATextThatIsTooLong();

private:
    QString write(const QString &name, const QByteArray &bytes) const
    {
        return writeFile(m_directory.filePath(name), bytes);
    }
    QString good() const { return write(QStringLiteral("good.apk"), package(labelTable(), launcherManifest())); }

    QTemporaryDir m_directory;
};

// A manifest in which Android reads the same values as ApkFile.
void TestManifestCommand::isXml()
{
    const QString file = good();
    const ToolRun result = runSorrel({QStringLiteral("manifest"), QStringLiteral("--ids"), file});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QDomDocument written;
    QVERIFY(written.setContent(result.output, true));
    compareElements(written.documentElement(), ApkFile(file).getManifest().documentElement());
    QVERIFY(result.output.contains("\n    <application android:label=\"App\">\n        <activity "));
}

void TestManifestCommand::namesResources()
{
    const QString file = good();
    QVERIFY(runSorrel({QStringLiteral("manifest"), file}).output.contains(" android:label=\"@string/greeting\""));
    const QByteArray ids = runSorrel({QStringLiteral("manifest"), QStringLiteral("--ids"), file}).output;
    QVERIFY(ids.contains(" android:label=\"@string/0\""));
    const auto values = [&](const char *reference) {
        return runSorrel({QStringLiteral("resources"), file, QLatin1String(reference)}).output;
    };
    QVERIFY(values("@string/greeting").contains("Hello"));
    QCOMPARE(values("@string/0"), values("@string/greeting"));
}

void TestManifestCommand::declaresAndroidOnTheRoot()
{
    const QByteArray declaration = "xmlns:android=\"http://schemas.android.com/apk/res/android\"";
    const QByteArray output = runSorrel({QStringLiteral("manifest"), good()}).output;
    QVERIFY(output.contains("<manifest " + declaration));
    QCOMPARE(output.count("xmlns"), 1);

    const QString otherPrefix =
        write(QStringLiteral("prefix.apk"),
              package(emptyTable(),
                      XmlBuilder()
                          .startNamespace(QStringLiteral("a"), androidUri)
                          .empty(QStringLiteral("manifest"), {androidText(QStringLiteral("name"), QStringLiteral("1"))})
                          .build()));
    QVERIFY(runSorrel({QStringLiteral("manifest"), otherPrefix})
                .output.contains("<manifest " + declaration + " android:name=\"1\"/>"));
}

void TestManifestCommand::printsAttributesOfOneNameApart()
{
    const QString name = QStringLiteral("name");
    const QString file =
        write(QStringLiteral("names.apk"),
              package(emptyTable(),
                      XmlBuilder::manifest()
                          .empty(QStringLiteral("manifest"),
                                 {{QStringLiteral("urn:a"), QStringLiteral("x"), QStringLiteral("1"), String, 0},
                                  {QStringLiteral("urn:b"), QStringLiteral("x"), QStringLiteral("2"), String, 0},
                                  androidText(name, QStringLiteral("3"))})
                          .build()));
    QDomDocument written;
    QVERIFY(written.setContent(runSorrel({QStringLiteral("manifest"), file}).output, true));
    const QDomElement root = written.documentElement();
    QCOMPARE(root.attributeNS(QStringLiteral("urn:a"), QStringLiteral("x")), QStringLiteral("1"));
    QCOMPARE(root.attributeNS(QStringLiteral("urn:b"), QStringLiteral("x")), QStringLiteral("2"));
    QCOMPARE(root.attributeNS(androidUri, name), QStringLiteral("3"));
}

void TestManifestCommand::printsTheSameEachTime()
{
    const QString file = good();
    const QByteArray first = runSorrel({QStringLiteral("manifest"), file}).output;
    for (int i = 0; i < 5; ++i)
        QCOMPARE(runSorrel({QStringLiteral("manifest"), file}).output, first);
}

void TestManifestCommand::makesXmlOfAManifestThatIsNone()
{
    const QString file = write(QStringLiteral("odd.apk"), package(emptyTable(), manifestThatIsNoXml()));
    const ToolRun result = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(result.status, 0);
    QDomDocument written;
    QString fault;
    QVERIFY2(written.setContent(result.output, true, &fault), qPrintable(fault));
    const QDomElement root = written.documentElement().firstChildElement();
    QCOMPARE(root.tagName(), QStringLiteral("_1_child_"));
    QCOMPARE(root.attributes().length(), 7);
    QCOMPARE(root.attribute(QStringLiteral("a_b")), QStringLiteral("1"));
    QCOMPARE(root.attribute(QStringLiteral("a_b_")), QStringLiteral("2"));
    QCOMPARE(root.attributeNS(QStringLiteral("http://example.org/odd"), QStringLiteral("value")),
             QStringLiteral("\ufffd\ufffd<&\"'\n"));
    QCOMPARE(root.attributeNS(QStringLiteral("urn:taken"), QStringLiteral("c")), QStringLiteral("\ufffd"));
    QCOMPARE(root.attributeNS(QStringLiteral("urn:unbound"), QStringLiteral("d")), QStringLiteral("😀"));
    QCOMPARE(root.attribute(QStringLiteral("e")), QStringLiteral("5"));

    QProcess xmllint;
    xmllint.start(QStringLiteral("xmllint"), {QStringLiteral("--noout"), QStringLiteral("-")});
    xmllint.write(result.output);
    xmllint.closeWriteChannel();
    QVERIFY(xmllint.waitForFinished());
    QCOMPARE(xmllint.readAllStandardError(), QByteArray());
    QCOMPARE(xmllint.exitCode(), 0);
}

void TestManifestCommand::printsTheBaseOfASet()
{
    const QString file = good();
    QFile base(file);
    QVERIFY(base.open(QIODevice::ReadOnly));
    const QString set = write(QStringLiteral("set.apks"), zip({{QStringLiteral("base.apk"), base.readAll()}}));
    const ToolRun result = runSorrel({QStringLiteral("manifest"), set});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.output, runSorrel({QStringLiteral("manifest"), file}).output);
}

void TestManifestCommand::refusesANegativeStringIndex()
{
    ElementFields fields;
    fields.name = -1;
    XmlBuilder builder = XmlBuilder::manifest();
    builder.chunk(nodeChunk(0x0102, elementBody(fields)));
    const QString file = write(QStringLiteral("negative.apk"), package(emptyTable(), builder.build()));
    const ToolRun result = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors),
             QStringLiteral("sorrel: %1: could not parse AndroidManifest.xml: XML element without a name\n").arg(file));
}

void TestManifestCommand::unreadablePackage()
{
    const ToolRun result = runSorrel({QStringLiteral("manifest"), QStringLiteral("/nonexistent")});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.errors, QByteArray("sorrel: /nonexistent: could not open APK file\n"));
}

void TestManifestCommand::refusesAManifestWithoutElements()
{
    const QString file = write(QStringLiteral("void.apk"), package(emptyTable(), XmlBuilder().build()));
    const ToolRun result = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(
        QString::fromUtf8(result.errors),
        QStringLiteral("sorrel: %1: could not parse AndroidManifest.xml: XML document without an element\n").arg(file));
}

// The values in the manifest itself can be read.
void TestManifestCommand::printsAManifestWithADamagedTable()
{
    const QString file = write(QStringLiteral("table.apk"), package(QByteArray("no table"), launcherManifest()));
    const ToolRun result = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(result.status, 1);
    QVERIFY(result.output.contains(" android:label=\"@0x7f010000\""));
    QVERIFY2(result.errors.startsWith("sorrel: " + file.toUtf8() + ": could not parse resources.arsc"),
             result.errors.constData());
}

void TestManifestCommand::printsAManifestWithoutATable()
{
    const QString file =
        write(QStringLiteral("no-table.apk"), zip({{QStringLiteral("AndroidManifest.xml"), launcherManifest()}}));
    const ToolRun result = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QVERIFY(result.output.contains(" android:label=\"@0x7f010000\""));
}

// Android does not read the names of attributes that have an id, so any number may have a long one.
void TestManifestCommand::refusesATextThatIsTooLong()
{
    constexpr int Attributes = 20000;
    const QString name(2000, QLatin1Char('n'));
    XmlBuilder builder;
    builder.attributeId(name, 0x0101ffff).start(QStringLiteral("manifest"));
    for (int i = 0; i < Attributes; ++i)
        builder.empty(QStringLiteral("e"), {androidValue(name, Integer, 1)});
    const QString file =
        write(QStringLiteral("long.apk"), package(emptyTable(), builder.end(QStringLiteral("manifest")).build()));
    const ToolRun result = runSorrel({QStringLiteral("manifest"), file});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(QString::fromUtf8(result.errors), QStringLiteral("sorrel: %1: the manifest is too long\n").arg(file));
}

QTEST_GUILESS_MAIN(TestManifestCommand)
#include "tst_manifest_command.moc"
