// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "format/AndroidAttributes.h"
#include "manifest/ManifestWriter.h"

#include <QXmlStreamReader>
#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray xml(const QByteArray &document, const QByteArray &table = emptyTable(),
               ManifestWriter::References references = ManifestWriter::References::Names)
{
    const ResourceIndex index({QSharedPointer<const ResourceTable>::create(table)});
    return ManifestWriter(index, references).toXml(document);
}

/// The attributes of the only element of a document with @p attributes.
QByteArray written(const QVector<Attribute> &attributes, const QByteArray &table = emptyTable(),
                   ManifestWriter::References references = ManifestWriter::References::Names)
{
    const QByteArray output = xml(XmlBuilder::manifest().empty(latin("e"), attributes).build(), table, references);
    const QByteArray start = "<e xmlns:android=\"http://schemas.android.com/apk/res/android\"";
    const auto at = output.indexOf(start);
    return at < 0 ? output : output.mid(at + start.size()).trimmed().chopped(2);
}

QByteArray table(int packageId, const QString &packageName)
{
    return TableBuilder()
        .package(PackageBuilder(packageId, packageName)
                     .types({latin("attr"), latin("string")})
                     .keys({latin("color"), latin("title")})
                     .type(TypeBuilder(1).entry(5, simpleEntry(Integer, 1, 0, 0)))
                     .type(TypeBuilder(2).entry(3, simpleEntry(Integer, 1, 0, 1))))
        .build();
}

} // namespace

class TestManifestWriter : public QObject
{
    Q_OBJECT

private slots:
    void writesTypedValues_data();
    void writesTypedValues();
    void writesReferences_data();
    void writesReferences();
    void writesValuesOfReferences_data();
    void writesValuesOfReferences();
    void writesTheValueThatAndroidReads();
    void sortsAttributesByName();
    void numbersAttributesOfOneName();
    void namesAttributesByTheirIds();
    void usesThePrefixesOfTheDocument();
    void declaresOnlyUsedNamespaces();
    void endsWithTheRoot();
    void textsUpToTheCeiling();
    void manyNamespacesTakeNoTime();
};

void TestManifestWriter::writesTypedValues_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<qint64>("data");
    QTest::addColumn<QString>("text");
    QTest::newRow("null") << int(ValueType::Null) << qint64(0) << latin("@null");
    QTest::newRow("empty") << int(ValueType::Null) << qint64(1) << latin("@empty");
    QTest::newRow("float") << int(ValueType::Float) << qint64(0x3fc00000) << latin("1.5");
    QTest::newRow("dimension") << int(ValueType::Dimension) << qint64(0x3001) << latin("48dp");
    QTest::newRow("fraction") << int(ValueType::Fraction) << qint64(0x40000030) << latin("50%");
    QTest::newRow("integer") << Integer + 0 << qint64(0xffffffff) << latin("-1");
    QTest::newRow("hexadecimal") << int(ValueType::Hexadecimal) << qint64(0x20000) << latin("0x20000");
    QTest::newRow("boolean") << Boolean + 0 << qint64(0xffffffff) << latin("true");
    QTest::newRow("colour") << int(ValueType::ColorArgb8) << qint64(0x80ff0000) << latin("#80ff0000");
}

void TestManifestWriter::writesTypedValues()
{
    QFETCH(int, type);
    QFETCH(qint64, data);
    QFETCH(QString, text);
    QCOMPARE(written({androidValue(latin("icon"), type, data)}), "android:icon=\"" + text.toUtf8() + '"');
}

void TestManifestWriter::writesReferences_data()
{
    QTest::addColumn<int>("packageId");
    QTest::addColumn<int>("type");
    QTest::addColumn<qint64>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("number");
    const int reference = int(ValueType::Reference);
    QTest::newRow("own") << 0x7f << reference << qint64(0x7f020003) << latin("@string/title") << latin("@string/3");
    QTest::newRow("of the theme") << 0x7f << int(ValueType::Attribute) << qint64(0x7f010005) << latin("?attr/color")
                                  << latin("?attr/5");
    QTest::newRow("dynamic") << 0x7f << int(ValueType::DynamicReference) << qint64(0x00020003) << latin("@string/title")
                             << latin("@string/3");
    QTest::newRow("unknown entry") << 0x7f << reference << qint64(0x7f020004) << latin("@0x7f020004")
                                   << latin("@string/4");
    QTest::newRow("unknown type") << 0x7f << reference << qint64(0x7f090004) << latin("@0x7f090004")
                                  << latin("@0x7f090004");
    QTest::newRow("of the platform") << 0x7f << reference << qint64(0x01020003) << latin("@0x01020003")
                                     << latin("@0x01020003");
    QTest::newRow("within the platform") << 0x01 << reference << qint64(0x01020003) << latin("@some.name:string/title")
                                         << latin("@some.name:string/3");
    QTest::newRow("to nothing") << 0x7f << reference << qint64(0) << latin("@null") << latin("@null");
}

void TestManifestWriter::writesReferences()
{
    QFETCH(int, packageId);
    QFETCH(int, type);
    QFETCH(qint64, id);
    QFETCH(QString, name);
    QFETCH(QString, number);
    const QVector<Attribute> attributes{androidValue(latin("icon"), type, id)};
    const QByteArray resources = table(packageId, latin("some.name"));
    QCOMPARE(written(attributes, resources), "android:icon=\"" + name.toUtf8() + '"');
    QCOMPARE(written(attributes, resources, ManifestWriter::References::Numbers),
             "android:icon=\"" + number.toUtf8() + '"');
}

// The text in the source may differ from the typed value. Android takes it only without a value or a resource id.
void TestManifestWriter::writesValuesOfReferences_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<qint64>("id");
    QTest::addColumn<QString>("text");
    const int reference = int(ValueType::Reference);
    QTest::newRow("text") << reference << qint64(0x7f010000) << latin("Notes");
    QTest::newRow("truth") << reference << qint64(0x7f010001) << latin("true");
    QTest::newRow("alias") << reference << qint64(0x7f010002) << latin("true");
    QTest::newRow("number") << reference << qint64(0x7f010003) << latin("-3");
    QTest::newRow("missing") << reference << qint64(0x7f010009) << latin("@0x7f010009");
    QTest::newRow("cycle") << reference << qint64(0x7f010004) << latin("@string/4");
    QTest::newRow("theme") << int(ValueType::Attribute) << qint64(0x7f010001) << latin("?string/1");
}

void TestManifestWriter::writesValuesOfReferences()
{
    QFETCH(int, type);
    QFETCH(qint64, id);
    QFETCH(QString, text);
    const QByteArray resources = TableBuilder()
                                     .strings({latin("Notes")})
                                     .package(PackageBuilder()
                                                  .types({latin("string")})
                                                  .type(TypeBuilder(1)
                                                            .value(0, String, 0)
                                                            .value(1, Boolean, -1)
                                                            .value(2, int(ValueType::Reference), 0x7f010001)
                                                            .value(3, Integer, -3)
                                                            .value(4, int(ValueType::Reference), 0x7f010004)))
                                     .build();
    const ResourceTables tables{QSharedPointer<const ResourceTable>::create(resources)};
    const ResourceIndex index(tables);
    const ResourceResolver resolver(tables, Configuration::phone(160));
    const QByteArray document =
        XmlBuilder::manifest().empty(latin("e"), {androidValue(latin("icon"), type, id)}).build();
    const QByteArray written = ManifestWriter(index, resolver).toXml(document);
    QVERIFY2(written.contains("android:icon=\"" + text.toUtf8() + '"'), written.constData());
}

void TestManifestWriter::writesTheValueThatAndroidReads()
{
    QCOMPARE(written({writtenAs(androidValue(latin("minSdkVersion"), Integer, 7), latin("8"))}),
             QByteArray("android:minSdkVersion=\"7\""));
    QCOMPARE(written({{androidUri, latin("label"), latin("raw"), String, 0, latin("value")}}),
             QByteArray("android:label=\"value\""));
    QCOMPARE(written({{androidUri, latin("label"), latin("raw"), int(ValueType::Null), 0}}),
             QByteArray("android:label=\"raw\""));
    QCOMPARE(written({{QString(), latin("package"), latin("raw"), String, 0, latin("value")}}),
             QByteArray("package=\"raw\""));
}

void TestManifestWriter::sortsAttributesByName()
{
    QCOMPARE(written({androidText(latin("name"), latin("1")), plainText(latin("package"), latin("2")),
                      androidText(latin("color"), latin("3")), plainText(latin("color"), latin("4"))}),
             QByteArray("color=\"4\" android:color=\"3\" android:name=\"1\" package=\"2\""));
}

void TestManifestWriter::numbersAttributesOfOneName()
{
    QCOMPARE(written({androidText(latin("name"), latin("1")), androidText(latin("name"), latin("2")),
                      androidText(latin("name"), latin("3")), plainText(latin("a b"), latin("4")),
                      plainText(latin("a_b"), latin("5"))}),
             QByteArray("a_b=\"4\" a_b_=\"5\" android:name=\"1\" android:name_=\"2\" android:name_2=\"3\""));
}

// Tools that shrink packages empty the names.
void TestManifestWriter::namesAttributesByTheirIds()
{
    const auto document = [](qint64 id) {
        const QString none = QStringLiteral("");
        return XmlBuilder()
            .attributeId(none, id)
            .empty(latin("e"), {{androidUri, none, latin("x"), String, 0}})
            .build();
    };
    QVERIFY(xml(document(Attr::Label)).contains(" android:label=\"x\""));
    QVERIFY(xml(document(0x0101ffff)).contains(" android:_0x0101ffff=\"x\""));
}

void TestManifestWriter::usesThePrefixesOfTheDocument()
{
    const QByteArray output = xml(XmlBuilder()
                                      .startNamespace(latin("tools"), latin("urn:tools"))
                                      .startNamespace(latin("android"), latin("urn:taken"))
                                      .empty(latin("e"), {{latin("urn:tools"), latin("a"), latin("1"), String, 0},
                                                          {latin("urn:taken"), latin("b"), latin("2"), String, 0},
                                                          {latin("urn:unbound"), latin("c"), latin("3"), String, 0}})
                                      .build());
    QVERIFY2(output.contains(" tools:a=\"1\" ns1:b=\"2\" ns2:c=\"3\""), output.constData());
    QVERIFY(output.contains(" xmlns:tools=\"urn:tools\""));
}

void TestManifestWriter::declaresOnlyUsedNamespaces()
{
    const QByteArray output =
        xml(XmlBuilder().startNamespace(latin("unused"), latin("urn:unused")).empty(latin("e")).build());
    QVERIFY(!output.contains("unused"));
}

void TestManifestWriter::endsWithTheRoot()
{
    const QByteArray output = xml(XmlBuilder()
                                      .start(latin("e"))
                                      .empty(latin("child"))
                                      .end(latin("e"))
                                      .end(latin("e"))
                                      .empty(latin("second"))
                                      .build());
    QVERIFY2(output.endsWith(">\n    <child/>\n</e>\n"), output.constData());
}

void TestManifestWriter::textsUpToTheCeiling()
{
    constexpr int Attributes = 1000;
    const auto output = [](int nameLength) {
        const QString name(nameLength, QLatin1Char('n'));
        XmlBuilder builder;
        builder.start(latin("e"));
        for (int i = 0; i < Attributes; ++i)
            builder.empty(latin("e"), {{QString(), name, QString(), Integer, 1}});
        return xml(builder.end(latin("e")).build());
    };
    constexpr int Ceiling = int(ManifestWriter::MaxCharacters / Attributes);
    QVERIFY(output(Ceiling - 1000).size() > (Ceiling - 1000) * Attributes);
    QCOMPARE(output(Ceiling + 1), QByteArray());
}

// Each namespace needs a prefix of its own.
void TestManifestWriter::manyNamespacesTakeNoTime()
{
    constexpr int Namespaces = 20000;
    XmlBuilder builder;
    builder.start(latin("e"));
    for (int i = 0; i < Namespaces; ++i)
        builder.empty(latin("e"), {{QString::number(i), latin("a"), latin("1"), String, 0}});
    const QByteArray output = xml(builder.end(latin("e")).build());
    QCOMPARE(output.count("xmlns:"), Namespaces + 1);
    QXmlStreamReader reader(output);
    while (!reader.atEnd())
        reader.readNext();
    QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));
}

QTEST_GUILESS_MAIN(TestManifestWriter)
#include "tst_manifestwriter.moc"
