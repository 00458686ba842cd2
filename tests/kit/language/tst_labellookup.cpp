// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Cost.h"
#include "language/LabelLookup.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr quint32 First = 0x7f010000;
constexpr int Float = 0x04;
constexpr int Hexadecimal = 0x11;
constexpr int Color = 0x1c;

using Labels = QMap<QString, QString>;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray localeOf(const char *language)
{
    return ConfigBuilder().locale(language).build();
}

XmlAttribute referenceTo(quint32 id)
{
    XmlAttribute attribute;
    attribute.value = {ValueType::Reference, id};
    return attribute;
}

XmlAttribute valueOf(int type, quint32 data, const QString &text = QString())
{
    XmlAttribute attribute;
    attribute.value = {ValueType(type), data};
    attribute.text = text;
    return attribute;
}

/// A table, as seen by a phone.
struct Texts {
    explicit Texts(const PackageBuilder &package, const QStringList &strings = {})
        : resolver({QSharedPointer<const ResourceTable>(
                       new ResourceTable(TableBuilder().strings(strings).package(package).build()))},
                   Configuration::phone(160))
    {
    }

    Labels labels(quint32 id) const
    {
        const XmlAttribute attribute = referenceTo(id);
        return LabelLookup(resolver).labels(&attribute);
    }
    QString label(quint32 id, const char *tag) const
    {
        const XmlAttribute attribute = referenceTo(id);
        return LabelLookup(resolver).label(&attribute, LanguageTag(latin(tag)));
    }

    ResourceResolver resolver;
};

} // namespace

Q_DECLARE_METATYPE(XmlAttribute)

class TestLabelLookup : public QObject
{
    Q_OBJECT

private slots:
    void missingAttribute();
    void valuesInTheManifest_data();
    void valuesInTheManifest();
    void everyLanguage();
    void chainsAreResolvedInEachLanguage();
    void languageThatIsOnlyOnTheWay();
    void oldCodesMeanTodays();
    void bestOfALanguage();
    void referencesToNothing();
    void cyclesEnd();
    void chainsHaveALimit();
    void languagesHaveALimit();
    void chainsThroughLargeTablesTakeLittle();
};

void TestLabelLookup::missingAttribute()
{
    const Texts texts{PackageBuilder()};
    LabelLookup lookup(texts.resolver);
    QVERIFY(lookup.labels(nullptr).isEmpty());
    QCOMPARE(lookup.label(nullptr, LanguageTag()), QString());
    QVERIFY(!lookup.isSpent());
}

void TestLabelLookup::valuesInTheManifest_data()
{
    QTest::addColumn<XmlAttribute>("attribute");
    QTest::addColumn<QString>("label");
    QTest::newRow("text") << valueOf(String, 0, latin("Notes")) << "Notes";
    QTest::newRow("number") << valueOf(Integer, 42) << "42";
    QTest::newRow("negative") << valueOf(Integer, 0xffffffff) << "-1";
    QTest::newRow("hexadecimal") << valueOf(Hexadecimal, 16) << "16";
    QTest::newRow("number as it was written") << valueOf(Integer, 42, latin("042")) << "042";
    QTest::newRow("true") << valueOf(Boolean, 0xffffffff) << "true";
    QTest::newRow("false") << valueOf(Boolean, 0) << "false";
    QTest::newRow("fraction of a number") << valueOf(Float, 0x3fc00000) << "1.5";
    QTest::newRow("no number") << valueOf(Float, 0x7fc00000) << "";
    QTest::newRow("colour") << valueOf(Color, 0xff00ff00) << "";
    QTest::newRow("nothing") << valueOf(0, 0) << "";
    QTest::newRow("of the theme") << valueOf(2, 0x01010030) << "";
}

void TestLabelLookup::valuesInTheManifest()
{
    QFETCH(XmlAttribute, attribute);
    QFETCH(QString, label);
    const Texts texts{PackageBuilder()};
    LabelLookup lookup(texts.resolver);
    QCOMPARE(lookup.label(&attribute, LanguageTag(latin("de"))), label);
    QCOMPARE(lookup.labels(&attribute), (Labels{{QString(), label}}));
}

void TestLabelLookup::everyLanguage()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, String, 0).value(1, Integer, 7))
        .type(TypeBuilder(1, localeOf("de")).value(0, String, 1).value(1, Boolean, 1))
        .type(TypeBuilder(1, ConfigBuilder().locale("pt", "BR").build()).value(0, String, 2));
    const Texts texts(package, {latin("Plain"), latin("Deutsch"), latin("Brasil")});
    QCOMPARE(texts.labels(First),
             (Labels{{QString(), latin("Plain")}, {latin("de"), latin("Deutsch")}, {latin("pt-BR"), latin("Brasil")}}));
    QCOMPARE(texts.label(First, "de"), latin("Deutsch"));
    QCOMPARE(texts.label(First, "de-AT"), latin("Deutsch"));
    QCOMPARE(texts.label(First, "fr"), latin("Plain"));
    QCOMPARE(texts.labels(First + 1), (Labels{{QString(), latin("7")}, {latin("de"), latin("true")}}));
}

void TestLabelLookup::chainsAreResolvedInEachLanguage()
{
    // The first refers to the second in all languages except German. In German it refers to the third.
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, Reference, First + 1).value(1, String, 0).value(2, String, 1))
        .type(TypeBuilder(1, localeOf("de")).value(0, Reference, First + 2).value(1, String, 2).value(2, String, 3))
        .type(TypeBuilder(1, localeOf("fr")).value(1, String, 4).value(2, String, 5));
    const Texts texts(package, {latin("second"), latin("third"), latin("second de"), latin("third de"),
                                latin("second fr"), latin("third fr")});
    QCOMPARE(
        texts.labels(First),
        (Labels{{QString(), latin("second")}, {latin("de"), latin("third de")}, {latin("fr"), latin("second fr")}}));
    QCOMPARE(texts.label(First, "fr"), latin("second fr"));
}

void TestLabelLookup::languageThatIsOnlyOnTheWay()
{
    // The first refers to a text that exists only in German, so other languages have no text.
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, Reference, First + 1))
        .type(TypeBuilder(1, localeOf("de")).value(1, String, 0));
    const Texts texts(package, {latin("Deutsch")});
    QCOMPARE(texts.labels(First), (Labels{{latin("de"), latin("Deutsch")}}));
    QCOMPARE(texts.label(First, "fr"), QString());
}

void TestLabelLookup::oldCodesMeanTodays()
{
    PackageBuilder package;
    package.type(TypeBuilder(1, localeOf("iw")).value(0, String, 0))
        .type(TypeBuilder(1, localeOf("he")).value(0, String, 1));
    const Texts texts(package, {latin("first"), latin("second")});
    QCOMPARE(texts.labels(First), (Labels{{latin("he"), latin("first")}}));
}

void TestLabelLookup::bestOfALanguage()
{
    PackageBuilder package;
    package.type(TypeBuilder(1, localeOf("de")).value(0, String, 0))
        .type(TypeBuilder(1, ConfigBuilder().locale("de").sdkVersion(26).build()).value(0, String, 1))
        .type(TypeBuilder(1, ConfigBuilder().locale("de").orientation(2).build()).value(0, String, 2));
    const Texts texts(package, {latin("any"), latin("new"), latin("landscape")});
    QCOMPARE(texts.labels(First), (Labels{{latin("de"), latin("new")}}));
}

void TestLabelLookup::referencesToNothing()
{
    PackageBuilder package;
    const Texts texts(package.type(TypeBuilder(1).value(0, Reference, First + 9)));
    for (const quint32 id : {0u, First, First + 1, 0x0104000au}) {
        QVERIFY(texts.labels(id).isEmpty());
        QCOMPARE(texts.label(id, "de"), QString());
    }
}

void TestLabelLookup::cyclesEnd()
{
    PackageBuilder package;
    package.type(
        TypeBuilder(1).value(0, Reference, First).value(1, Reference, First + 2).value(2, Reference, First + 1));
    const Texts texts(package);
    QVERIFY(texts.labels(First).isEmpty());
    QVERIFY(texts.labels(First + 1).isEmpty());
}

void TestLabelLookup::chainsHaveALimit()
{
    constexpr int Length = ResourceResolver::MaxDepth;
    TypeBuilder type(1);
    for (int i = 0; i < Length; ++i)
        type.value(i, Reference, First + quint32(i) + 1);
    type.value(Length, String, 0);
    PackageBuilder package;
    const Texts texts(package.type(type), {latin("text")});
    QVERIFY(texts.labels(First).isEmpty());
    QCOMPARE(texts.labels(First + 1), (Labels{{QString(), latin("text")}}));
}

void TestLabelLookup::languagesHaveALimit()
{
    PackageBuilder package;
    int count = 0;
    for (char first = 'a'; first <= 'z'; ++first) {
        for (char second = 'a'; second <= 'z'; ++second) {
            for (const char *region : {"AA", "BB"}) {
                const char language[] = {first, second, '\0'};
                package.type(TypeBuilder(1, ConfigBuilder().locale(language, region).build()).value(0, String, 0));
                ++count;
            }
        }
    }
    QVERIFY(count > LabelLookup::MaxLanguages);
    const Texts texts(package, {latin("text")});
    QVERIFY(texts.labels(First).size() <= LabelLookup::MaxLanguages);
    // The labels at the start of the table are found.
    QCOMPARE(texts.label(First, "aa-AA"), latin("text"));
    QCOMPARE(texts.label(First, "sa-AA"), latin("text"));
    QCOMPARE(texts.label(First, "zz-BB"), QString());
}

// The first resource leads to hundreds of others. The type of each has tens of thousands of values.
void TestLabelLookup::chainsThroughLargeTablesTakeLittle()
{
    constexpr int Resources = 400;
    PackageBuilder package;
    for (int i = 0; i < 400; ++i) {
        const char language[] = {char('a' + i / 26 % 26), char('a' + i % 26), '\0'};
        package.type(TypeBuilder(1, localeOf(language)).value(0, Reference, First + 0x10000 + quint32(i)));
    }
    TypeBuilder large(2);
    large.value(0, String, 0).encoding(TableEncoding::ShortOffsets);
    for (int i = 1; i < Resources; ++i)
        large.offset(i, 0);
    const QByteArray table =
        TableBuilder().strings({latin("x")}).package(package.chunk(large.build().repeated(50000))).build();
    const ResourceResolver resolver({QSharedPointer<const ResourceTable>(new ResourceTable(table))},
                                    Configuration::phone(160));
    const XmlAttribute attribute = referenceTo(First);
    LabelLookup lookup(resolver);
    QVERIFY(!lookup.labels(&attribute).isEmpty() || lookup.isSpent());
    const Cost taken = cost([&]() { LabelLookup(resolver).labels(&attribute); });
    QVERIFY(taken.ended);
    QVERIFY2(taken.allocations < 1000000, qPrintable(QString::number(taken.allocations)));
}

QTEST_GUILESS_MAIN(TestLabelLookup)
#include "tst_labellookup.moc"
