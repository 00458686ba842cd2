// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "AttributeTexts.h"
#include "Bytes.h"

#include <QtTest>

using namespace fixture;

namespace {

constexpr int Null = 0x00;
constexpr int Theme = 0x02;
constexpr int Float = 0x04;
constexpr int DynamicReference = 0x07;
constexpr int Hexadecimal = 0x11;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray manifestWith(const QVector<Attribute> &attributes, Encoding encoding = Encoding::Utf16)
{
    return XmlBuilder::manifest(encoding).empty(latin("e"), attributes).build();
}

} // namespace

Q_DECLARE_METATYPE(fixture::Attribute)

class TestAttributeTexts : public QObject
{
    Q_OBJECT

private slots:
    void textsAgreeWithValues_data();
    void textsAgreeWithValues();
    void stringsOfEveryLength_data();
    void stringsOfEveryLength();
    void attributesWithoutAnIdAreTakenAsWritten();
    void namesAreListedOnce();
    void comparingHasABudget();
    void everyPrefixIsAnswered();
};

void TestAttributeTexts::textsAgreeWithValues_data()
{
    QTest::addColumn<Attribute>("attribute");
    QTest::addColumn<bool>("agrees");
    const auto row = [](const char *name, const Attribute &attribute, bool agrees) {
        QTest::newRow(name) << attribute << agrees;
    };
    const auto text = [](const char *value) { return androidText(latin("label"), latin(value)); };
    // Words may give the value of a flag, but not of a label.
    const auto flag = [](int type, qint64 data) { return androidValue(latin("enabled"), type, data); };
    const auto label = [](int type, qint64 data) { return androidValue(latin("label"), type, data); };
    row("string", text("a"), true);
    row("string, written as such", writtenAs(text("a"), latin("a")), true);
    row("string, written as another", writtenAs(text("a"), latin("b")), false);
    row("string, written as its start", writtenAs(text("ab"), latin("a")), false);
    row("value that was not written", label(Integer, 5), true);
    row("nothing", writtenAs(label(Null, 0), latin("a")), true);
    row("number", writtenAs(flag(Integer, 5), latin("5")), true);
    row("number, hexadecimal", writtenAs(flag(Hexadecimal, 0x1f), latin("0x1f")), true);
    row("negative number", writtenAs(flag(Integer, 0xffffffff), latin("-1")), true);
    row("number of another value", writtenAs(flag(Integer, 5), latin("6")), false);
    row("number that has a name", writtenAs(flag(Integer, 5), latin("singleTask")), true);
    row("label that is a number", writtenAs(label(Integer, 5), latin("5")), true);
    row("label that is a number, written as a text", writtenAs(label(Integer, 5), latin("Bank")), false);
    row("true", writtenAs(flag(Boolean, 0xffffffff), latin("true")), true);
    row("false", writtenAs(flag(Boolean, 0), latin("false")), true);
    row("false, written as true", writtenAs(flag(Boolean, 0), latin("true")), false);
    row("reference", writtenAs(label(Reference, 0x7f010000), latin("@string/a")), true);
    row("reference, written as a text", writtenAs(label(Reference, 0x7f010000), latin("Bank")), false);
    row("dynamic reference", writtenAs(label(DynamicReference, 0x7f010000), latin("@string/a")), true);
    row("dynamic reference, written as a text", writtenAs(label(DynamicReference, 0x7f010000), latin("Bank")), false);
    row("of the theme", writtenAs(label(Theme, 0x7f010000), latin("?a")), true);
    row("of the theme, written as a text", writtenAs(label(Theme, 0x7f010000), latin("Bank")), false);
    row("float", writtenAs(flag(Float, 0x3f800000), latin("1.0")), true);
    row("label that is a float, written as a text", writtenAs(label(Float, 0x3f800000), latin("Bank")), false);
}

void TestAttributeTexts::textsAgreeWithValues()
{
    QFETCH(Attribute, attribute);
    QFETCH(bool, agrees);
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const AttributeTexts texts(manifestWith({attribute}, encoding));
        QCOMPARE(texts.differentTexts(), agrees ? 0 : 1);
        QCOMPARE(texts.names(), agrees ? QStringList() : QStringList{attribute.name});
    }
}

void TestAttributeTexts::stringsOfEveryLength_data()
{
    QTest::addColumn<int>("length");
    // A length takes one or two bytes, or one or two words.
    for (const int length : {1, 0x7f, 0x80, 0x7ffe, 0x7fff})
        QTest::newRow(QByteArray::number(length).constData()) << length;
}

void TestAttributeTexts::stringsOfEveryLength()
{
    QFETCH(int, length);
    const QString text(length - 1, QLatin1Char('x'));
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const Attribute same = writtenAs(androidText(latin("label"), text + 'a'), text + 'a');
        QCOMPARE(AttributeTexts(manifestWith({same}, encoding)).differentTexts(), 0);
        const Attribute other = writtenAs(androidText(latin("label"), text + 'a'), text + 'b');
        QCOMPARE(AttributeTexts(manifestWith({other}, encoding)).differentTexts(), 1);
    }
}

// Android also uses the written text of these attributes, for example the name of the package.
void TestAttributeTexts::attributesWithoutAnIdAreTakenAsWritten()
{
    const Attribute package = writtenAs(plainText(latin("package"), latin("a")), latin("b"));
    QCOMPARE(AttributeTexts(manifestWith({package})).differentTexts(), 0);
}

void TestAttributeTexts::namesAreListedOnce()
{
    const auto other = [](const QString &name) { return writtenAs(androidText(name, latin("a")), latin("b")); };
    const AttributeTexts texts(manifestWith({other(latin("label")), other(latin("name")), other(latin("label"))}));
    QCOMPARE(texts.differentTexts(), 3);
    QCOMPARE(texts.names(), QStringList({latin("label"), latin("name")}));
    XmlBuilder builder;
    QVector<Attribute> attributes;
    for (int i = 0; i <= AttributeTexts::MaxNames; ++i) {
        attributes.append(other(QString::number(i)));
        builder.attributeId(attributes.last().name, 0x01010001 + i);
    }
    const AttributeTexts many(builder.empty(latin("e"), attributes).build());
    QCOMPARE(many.differentTexts(), AttributeTexts::MaxNames + 1);
    QCOMPARE(many.names().size(), int(AttributeTexts::MaxNames));
}

void TestAttributeTexts::comparingHasABudget()
{
    constexpr int Length = 1 << 14;
    constexpr int Most = AttributeTexts::MaxCompared / Length;
    const QString text(Length - 1, QLatin1Char('x'));
    const Attribute other = writtenAs(androidText(latin("label"), text + 'a'), text + 'b');
    const auto found = [&](int count) {
        return AttributeTexts(manifestWith(QVector<Attribute>(count, other))).differentTexts();
    };
    QCOMPARE(found(Most / 2), Most / 2);
    QVERIFY(found(2 * Most) <= Most / 2 + 1);
}

void TestAttributeTexts::everyPrefixIsAnswered()
{
    const Attribute other = writtenAs(androidText(latin("label"), latin("a")), latin("b"));
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const QByteArray bytes = manifestWith({other}, encoding);
        for (int at = 0; at < bytes.size(); ++at) {
            QVERIFY(AttributeTexts(bytes.left(at)).differentTexts() <= 1);
            for (const int value : {0x00, 0x7f, 0xff}) {
                QByteArray damaged = bytes;
                poke8(damaged, at, value);
                QVERIFY(AttributeTexts(damaged).differentTexts() <= 1);
            }
        }
    }
}

QTEST_GUILESS_MAIN(TestAttributeTexts)
#include "tst_attributetexts.moc"
