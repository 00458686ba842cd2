// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "resources/ResourceResolver.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr quint32 First = 0x7f010000;
constexpr int ThemeAttribute = 0x02;
constexpr int Null = 0x00;
constexpr quint32 AndroidWhite = 0x0106000b;

using Tables = QVector<QSharedPointer<const ResourceTable>>;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

QSharedPointer<const ResourceTable> tableOf(PackageBuilder package, const QStringList &strings = {})
{
    return QSharedPointer<const ResourceTable>(
        new ResourceTable(TableBuilder().strings(strings).package(package.types({latin("thing")})).build()));
}

// One resource with a number in each of the configurations: 0 in the first, and so on.
Tables numbered(const QVector<ConfigBuilder> &configurations)
{
    PackageBuilder package;
    for (int i = 0; i < configurations.size(); ++i)
        package.type(TypeBuilder(1, configurations.at(i).build()).value(0, Integer, i));
    return {tableOf(package)};
}

int numberOf(const ResolvedValue &value)
{
    return value.value.integer().value_or(-1);
}

QVector<int> numbersOf(const QVector<ResolvedValue> &values)
{
    QVector<int> numbers;
    for (const ResolvedValue &value : values)
        numbers.append(numberOf(value));
    return numbers;
}

/// Tables, as a column of a test's data.
struct Input {
    Tables tables;
};

} // namespace

Q_DECLARE_METATYPE(Input)

class TestResourceResolver : public QObject
{
    Q_OBJECT

private slots:
    void bestOfTheConfigurations_data();
    void bestOfTheConfigurations();
    void valuesForLanguagesAreForNobodyElse();
    void referencesAreFollowed();
    void chainsEnd();
    void cyclesEnd();
    void workGrowsWithTheChunksOfTheType();
    void coloursOfThePlatform();
    void attributesOfTheThemeAreNull();
    void mapsAndNullsAreNoValues();
    void resourcesThatAreNotThere();
    void severalTables();
    void candidatesAreOrdered();
    void anotherDevice();
    void namesOfTypes();
};

void TestResourceResolver::bestOfTheConfigurations_data()
{
    QTest::addColumn<Input>("input");
    QTest::addColumn<int>("best");
    const auto row = [](const char *name, const QVector<ConfigBuilder> &configurations, int best) {
        QTest::newRow(name) << Input{numbered(configurations)} << best;
    };
    row("newest version", {ConfigBuilder(), ConfigBuilder().sdkVersion(26), ConfigBuilder().sdkVersion(24)}, 1);
    row("day", {ConfigBuilder().u8(29, 0x20), ConfigBuilder(), ConfigBuilder().u8(29, 0x10)}, 2);
    row("no night", {ConfigBuilder().u8(29, 0x20), ConfigBuilder()}, 1);
    row("portrait", {ConfigBuilder(), ConfigBuilder().orientation(2), ConfigBuilder().orientation(1)}, 2);
    row("density",
        {ConfigBuilder().density(160), ConfigBuilder().density(320), ConfigBuilder().density(240),
         ConfigBuilder().density(640)},
        1);
    row("density before version", {ConfigBuilder().density(320), ConfigBuilder().density(240).sdkVersion(30)}, 0);
    row("first of equals", {ConfigBuilder().sdkVersion(4), ConfigBuilder().sdkVersion(4)}, 0);
    row("none that matches", {ConfigBuilder().orientation(2), ConfigBuilder().mcc(310)}, -1);
}

void TestResourceResolver::bestOfTheConfigurations()
{
    QFETCH(Input, input);
    QFETCH(int, best);
    const ResourceResolver resolver(input.tables, Configuration::phone(320));
    QCOMPARE(numberOf(resolver.resource(First)), best);
}

void TestResourceResolver::valuesForLanguagesAreForNobodyElse()
{
    const ResourceResolver resolver(numbered({ConfigBuilder().locale("de").sdkVersion(30), ConfigBuilder()}),
                                    Configuration::phone(320));
    QCOMPARE(numberOf(resolver.resource(First)), 1);
    QCOMPARE(numbersOf(resolver.candidates(First)), QVector<int>{1});
    QCOMPARE(resolver.candidates(First, ResourceResolver::Locales::Any).size(), 2);
    const ResourceResolver german(numbered({ConfigBuilder().locale("de")}), Configuration::phone(320));
    QVERIFY(german.resource(First).value.isReference());
}

void TestResourceResolver::referencesAreFollowed()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, Reference, First + 1).value(2, Integer, 7))
        .type(TypeBuilder(1, ConfigBuilder().density(480).build()).value(1, Reference, First + 3))
        .type(TypeBuilder(1, ConfigBuilder().density(320).build()).value(3, String, 0));
    const ResourceResolver resolver({tableOf(package, {latin("res/a.png")})}, Configuration::phone(320));
    const ResolvedValue value = resolver.resource(First);
    QCOMPARE(value.text, latin("res/a.png"));
    QCOMPARE(value.resource, First + 3);
    QCOMPARE(value.density, 320);
    QVERIFY(value.table != nullptr);
    // A value that is no reference stays unchanged, and its string belongs to no table.
    const ResolvedValue plain = resolver.resolved({ValueType::String, 0});
    QCOMPARE(plain.value.type, ValueType::String);
    QCOMPARE(plain.text, QString());
    QCOMPARE(plain.resource, quint32(0));
    QVERIFY(plain.table == nullptr);
    QCOMPARE(numberOf(resolver.resolved({ValueType::DynamicReference, First + 2})), 7);
}

void TestResourceResolver::chainsEnd()
{
    constexpr int Length = ResourceResolver::MaxDepth;
    TypeBuilder type(1);
    for (int i = 0; i < Length; ++i)
        type.value(i, Reference, First + quint32(i) + 1);
    type.value(Length, Integer, 7);
    PackageBuilder package;
    const ResourceResolver resolver({tableOf(package.type(type))}, Configuration::phone(320));
    QCOMPARE(numberOf(resolver.resource(First + 1)), 7);
    const ResolvedValue tooFar = resolver.resource(First);
    QVERIFY(tooFar.value.isReference());
    QCOMPARE(tooFar.text, QString());
}

void TestResourceResolver::cyclesEnd()
{
    PackageBuilder package;
    package.type(
        TypeBuilder(1).value(0, Reference, First).value(1, Reference, First + 2).value(2, Reference, First + 1));
    const ResourceResolver resolver({tableOf(package)}, Configuration::phone(320));
    QVERIFY(resolver.resource(First).value.isReference());
    QVERIFY(resolver.resource(First + 1).value.isReference());
}

void TestResourceResolver::workGrowsWithTheChunksOfTheType()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, Reference, First + 1).value(1, Integer, 7)).type(TypeBuilder(1));
    const ResourceResolver resolver({tableOf(package)}, Configuration::phone(320));
    QCOMPARE(resolver.work(First), Budget::LookupWork + 2 * Budget::ValueWork);
    QCOMPARE(resolver.work(0x7f020000), qint64(Budget::LookupWork));
}

void TestResourceResolver::coloursOfThePlatform()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, Reference, AndroidWhite).value(1, Reference, 0x01060fff));
    const ResourceResolver resolver({tableOf(package)}, Configuration::phone(320));
    const ResolvedValue white = resolver.resource(First);
    QVERIFY(white.value.isColor());
    QCOMPARE(white.value.data, 0xffffffff);
    QCOMPARE(white.resource, AndroidWhite);
    QCOMPARE(resolver.resolved({ValueType::Reference, AndroidWhite + 1}).value.data, 0xff000000);
    QVERIFY(resolver.resource(First + 1).value.isReference());
}

void TestResourceResolver::attributesOfTheThemeAreNull()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, ThemeAttribute, 0x01010030));
    const ResourceResolver resolver({tableOf(package)}, Configuration::phone(320));
    QVERIFY(resolver.resource(First).isNull());
    QVERIFY(resolver.resolved({ValueType::Attribute, 0x01010030}).isNull());
    QVERIFY(resolver.resolved({ValueType::DynamicAttribute, 0x01010030}).isNull());
}

void TestResourceResolver::mapsAndNullsAreNoValues()
{
    PackageBuilder package;
    package.type(TypeBuilder(1).map(0, 2).value(1, Null, 0)).type(TypeBuilder(1).value(0, Integer, 7));
    const ResourceResolver resolver({tableOf(package)}, Configuration::phone(320));
    QCOMPARE(numberOf(resolver.resource(First)), 7);
    QCOMPARE(resolver.candidates(First).size(), 1);
    QVERIFY(resolver.resource(First + 1).value.isReference());
}

void TestResourceResolver::resourcesThatAreNotThere()
{
    const ResourceResolver resolver(numbered({ConfigBuilder()}), Configuration::phone(320));
    for (const quint32 id : {0u, First + 1, 0x7e010000u, 0xffffffffu}) {
        const ResolvedValue value = resolver.resource(id);
        QVERIFY(value.value.isReference());
        QCOMPARE(value.value.data, id);
        QCOMPARE(value.resource, id);
        QVERIFY(resolver.candidates(id).isEmpty());
    }
    QVERIFY(ResourceResolver({}, Configuration::phone(320)).resource(First).value.isReference());
}

void TestResourceResolver::severalTables()
{
    PackageBuilder base;
    base.type(TypeBuilder(1).value(0, String, 0).value(1, Reference, First + 2).value(3, String, 0));
    PackageBuilder split;
    split.type(TypeBuilder(1, ConfigBuilder().density(320).build()).value(0, String, 0).value(2, String, 1))
        .type(TypeBuilder(1).value(3, String, 1));
    const ResourceResolver resolver({tableOf(base, {latin("base")}), tableOf(split, {latin("split"), latin("other")})},
                                    Configuration::phone(320));
    QCOMPARE(resolver.resource(First).text, latin("split"));
    QCOMPARE(resolver.resource(First + 1).text, latin("other"));
    // The first of two equal values wins.
    QCOMPARE(resolver.resource(First + 3).text, latin("base"));
    QCOMPARE(resolver.work(First), Budget::LookupWork + 3 * Budget::ValueWork);
    const QVector<ResolvedValue> all = resolver.candidates(First);
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.first().text, QString());
    QCOMPARE(ResourceResolver::withText(all.first()).text, latin("split"));
    QCOMPARE(ResourceResolver::withText(all.last()).text, latin("base"));
}

void TestResourceResolver::candidatesAreOrdered()
{
    const ResourceResolver resolver(
        numbered({ConfigBuilder().density(160), ConfigBuilder().density(640), ConfigBuilder().orientation(2),
                  ConfigBuilder().density(0xfffe).sdkVersion(26), ConfigBuilder().density(320),
                  ConfigBuilder().density(320), ConfigBuilder().density(480)}),
        Configuration::phone(320));
    const QVector<ResolvedValue> values = resolver.candidates(First);
    QCOMPARE(numbersOf(values), (QVector<int>{3, 4, 5, 6, 1, 0}));
    QCOMPARE(values.first().density, int(Configuration::AnyDensity));
    QCOMPARE(values.first().resource, First);
    // References are not followed.
    PackageBuilder package;
    package.type(TypeBuilder(1).value(0, Reference, First + 1).value(1, Integer, 1));
    const ResourceResolver other({tableOf(package)}, Configuration::phone(320));
    QVERIFY(other.candidates(First).first().value.isReference());
}

void TestResourceResolver::anotherDevice()
{
    const ResourceResolver resolver(numbered({ConfigBuilder().density(160), ConfigBuilder().density(640)}),
                                    Configuration::phone(160));
    QCOMPARE(numberOf(resolver.resource(First)), 0);
    QCOMPARE(numberOf(resolver.forDevice(Configuration::phone(640)).resource(First)), 1);
    QCOMPARE(resolver.device().density, 160);
}

void TestResourceResolver::namesOfTypes()
{
    PackageBuilder other(0x02);
    other.types({latin("other")});
    const auto second = QSharedPointer<const ResourceTable>(new ResourceTable(TableBuilder().package(other).build()));
    const ResourceResolver resolver({tableOf(PackageBuilder()), second}, Configuration::phone(160));
    QCOMPARE(resolver.typeName(First), latin("thing"));
    QCOMPARE(resolver.typeName(0x02010000), latin("other"));
    QCOMPARE(resolver.typeName(0x03010000), QString());
}

QTEST_GUILESS_MAIN(TestResourceResolver)
#include "tst_resourceresolver.moc"
