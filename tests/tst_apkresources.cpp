// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkResources.h"
#include "Bytes.h"
#include "Cost.h"
#include "Devices.h"
#include "TableBuilder.h"
#include "stream/Extractor.h"
#include "table/ApkResourcesData.h"
#include "table/LocaleLookup.h"
#include "table/ResourcesLoader.h"

#include <QtTest>

#include <limits>
#include <random>
#include <utility>

using namespace fixture;

namespace {

constexpr int Reference = 0x01;
constexpr int AttributeReference = 0x02;
constexpr int String = 0x03;
constexpr int Decimal = 0x10;

using Texts = QMap<QString, QString>;

ApkResources loaded(const TableBuilder &builder)
{
    SequentialDevice device(builder.build(), QIODevice::ReadOnly);
    ApkResources table;
    if (!table.load(&device))
        qFatal("the table is not good");
    return table;
}

/// A table with the one package "org.example.app".
ApkResources loaded(const PackageBuilder &package)
{
    return loaded(TableBuilder().strings({"zero", "one", "two"}).package(package));
}

/// A package with the types "string" and "drawable".
PackageBuilder application()
{
    return PackageBuilder().types({"string", "drawable"});
}

QByteArray locale(const char *language, const char *country = "")
{
    return ConfigBuilder().locale(language, country).build();
}

/// The resource id of an entry of the application's first type, "string".
constexpr int stringId(int entry)
{
    return 0x7f010000 | entry;
}

/// A table in which each string refers to the next. The last one is the number -1.
ApkResources chain(int references)
{
    TypeBuilder type(1);
    for (int i = 0; i < references; ++i)
        type.value(i, Reference, stringId(i + 1));
    return loaded(application().type(type.value(references, Decimal, -1)));
}

/// A string with @p count locales. In each of them it refers to itself.
ApkResources selfReferring(int count)
{
    PackageBuilder package = application();
    for (int i = 0; i < count; ++i) {
        const char language[] = {char('a' + i / 26), char('a' + i % 26), '\0'};
        package.type(TypeBuilder(1, i == 0 ? locale("") : locale(language)).value(0, Reference, stringId(0)));
    }
    return loaded(package);
}

/// One value of a random table.
struct ModelValue {
    int package;
    int type;
    int entry;
    QString locale;
    int dataType;
    int data;
};

/// A model of lookupByLocale() that follows the plain recursive rule. It covers tables of the packages 0x7f and 0x01,
/// each with the types "string" and "drawable".
class Model
{
public:
    QVector<ModelValue> values;

    static QString typeName(int type) { return type == 1 ? QStringLiteral("string") : QStringLiteral("drawable"); }

    Texts byLocale(int package, int type, int entry, int depth) const
    {
        Texts result;
        for (const ModelValue &value : values) {
            if (value.package != package || value.type != type || value.entry != entry)
                continue;
            if (result.contains(value.locale))
                continue;
            if (depth > 0 && value.dataType == Reference) {
                const Texts sub = followed(value.data, depth - 1);
                if (!value.locale.isEmpty()) {
                    result[value.locale] = sub.contains(value.locale) ? sub[value.locale] : sub.value(QString());
                    continue;
                }
                for (const QString &key : sub.keys()) {
                    if (!result.contains(key))
                        result[key] = sub[key];
                }
                continue;
            }
            result[value.locale] = value.dataType == Decimal ? QString::number(value.data) : text(value.data);
        }
        return result;
    }

private:
    Texts followed(int id, int depth) const
    {
        const int type = (id >> 16) & 0xff;
        // an id of an unknown type or of another package resolves to nothing
        if (id >> 24 != 0x7f || type < 1 || type > 2)
            return {};
        return byLocale(0x7f, type, id & 0xffff, depth);
    }

    static QString text(int id)
    {
        const int package = id >> 24;
        const int type = (id >> 16) & 0xff;
        const QString digits = QString::number(id, 16).rightJustified(8, '0');
        if (package != 0x7f && package != 0x01)
            return "@?" + digits;
        if (type < 1 || type > 2)
            return "@#" + digits;
        return QString("@%1%2/%3").arg(package == 0x7f ? "" : "android:", typeName(type)).arg(id & 0xffff);
    }
};

} // namespace

class TestApkResources : public QObject
{
    Q_OBJECT

private slots:
    // ids to reference texts
    void idsAreRendered_data();
    void idsAreRendered();
    void theFirstPackageWithTheIdRenders();
    void thePackageByteIsUnsigned();
    void keepsIdsWithTheTopBitSetAtSixteenDigits();
    void thePrefixFollowsTheIdAndNotThePackage();
    void typedValuesAreRendered_data();
    void typedValuesAreRendered();
    void nullValuesAreNullTexts();
    void valuesThatReferNeverReachThePool();

    // reference texts to packages
    void plainTextsAreTheirOwnValue_data();
    void plainTextsAreTheirOwnValue();
    void textsThatAreNoReferenceHaveNoValues_data();
    void textsThatAreNoReferenceHaveNoValues();
    void referencesAreParsed_data();
    void referencesAreParsed();
    void keepsEntriesOutOfRangeAsEntryZero();
    void keepsReferencesWithAPackageNameUnresolved();
    void aPackageWhoseNameEndsInAColonAnswersToIt();
    void keepsNamelessPackagesAnsweringWithoutAPrefix();
    void onlyTheFirstPackageThatAnswersIsAsked();
    void withoutAnApplicationPackageNothingIsFound();

    // all values
    void allValuesAreListedInOrder();
    void unknownResourcesHaveNoValues();
    void mapsHaveNoValues();
    void theFirstTypeOfANameIsMeant();

    // by configuration
    void valuesAreKeyedByTheirQualifiers();
    void theLastValueOfAConfigurationWins();
    void referencesAreNotFollowedByConfiguration();

    // by locale
    void valuesAreKeyedByTheirLocale();
    void theFirstValueOfALocaleWins();
    void aReferenceAtDepthZeroIsItsText();
    void depthsBelowZeroAreAsZero();
    void attributeReferencesAreNotFollowed();
    void aReferenceOfTheDefaultBringsAllLocales();
    void keepsLocalesBroughtByTheDefaultBeforeOwnLaterOnes();
    void ownEarlierLocalesStayBeforeThoseOfTheDefault();
    void nothingIsStoredForADefaultThatBringsNone();
    void aReferenceOfALocaleTakesThatLocale();
    void aReferenceOfALocaleFallsBackToTheDefault();
    void aReferenceOfALocaleMayBeEmpty();
    void referencesToNowhereAreEmpty_data();
    void referencesToNowhereAreEmpty();
    void chainsAreFollowedToTheDepth_data();
    void chainsAreFollowedToTheDepth();
    void depthsAboveTheCeilingCountAsTheCeiling();
    void cyclesEndInReferenceTexts();
    void manyLocalesThatReferToThemselvesAreAnsweredQuickly_data();
    void manyLocalesThatReferToThemselvesAreAnsweredQuickly();
    void stringsThatReferToEachOtherAreAnsweredQuickly();
    void randomTablesAnswerByTheRecursiveRule();
    void oneRunAnswersTheSameTwice();
    void packagesAnswerAsTablesDo();
};

void TestApkResources::idsAreRendered_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("expected");
    QTest::newRow("of the application") << 0x7f010005 << "@string/5";
    QTest::newRow("last type") << 0x7f020000 << "@drawable/0";
    QTest::newRow("last entry") << 0x7f02ffff << "@drawable/65535";
    QTest::newRow("no type") << 0x7f000001 << "@#7f000001";
    QTest::newRow("one type too many") << 0x7f030001 << "@#7f030001";
    QTest::newRow("far too many") << 0x7f7f0001 << "@#7f7f0001";
    QTest::newRow("last") << 0x7fff0001 << "@#7fff0001";
    QTest::newRow("of another package") << 0x01020003 << "@android:drawable/3";
    QTest::newRow("type of another package") << 0x01040003 << "@#01040003";
    QTest::newRow("unknown package") << 0x02010000 << "@?02010000";
    QTest::newRow("zero") << 0 << "@?00000000";
    QTest::newRow("leading zeros") << 0x0a << "@?0000000a";
}

void TestApkResources::idsAreRendered()
{
    QFETCH(int, id);
    QFETCH(QString, expected);
    const PackageBuilder framework = PackageBuilder(1, "android").types({"string", "drawable", "id"});
    const ApkResources table = loaded(TableBuilder().package(application()).package(framework));
    QCOMPARE(table.refToString(id), expected);
    QCOMPARE(table.valueToString(Reference, id), expected);
    QCOMPARE(table.valueToString(AttributeReference, id), expected);
}

void TestApkResources::theFirstPackageWithTheIdRenders()
{
    const ApkResources table = loaded(TableBuilder()
                                          .package(PackageBuilder(2, "one").types({"string"}))
                                          .package(PackageBuilder(2, "two").types({"string", "drawable"})));
    QCOMPARE(table.refToString(0x02010000), QString("@one:string/0"));
    QCOMPARE(table.refToString(0x02020000), QString("@#02020000"));
}

void TestApkResources::thePackageByteIsUnsigned()
{
    const ApkResources table = loaded(TableBuilder()
                                          .package(PackageBuilder(-1, "minus").types({"string"}))
                                          .package(PackageBuilder(0x17f, "wide").types({"string"}))
                                          .package(PackageBuilder(0xff, "last").types({"string"}))
                                          .package(PackageBuilder(0x80, "upper").types({"string"})));
    QCOMPARE(table.refToString(int(0xff010002)), QString("@last:string/2"));
    QCOMPARE(table.refToString(int(0x80010002)), QString("@upper:string/2"));
    QCOMPARE(table.refToString(0x7f010002), QString("@?7f010002"));
}

void TestApkResources::keepsIdsWithTheTopBitSetAtSixteenDigits()
{
    const ApkResources table = loaded(TableBuilder().package(PackageBuilder(0xff, "last").types({"string"})));
    QCOMPARE(table.refToString(int(0x80010002)), QString("@?ffffffff80010002"));
    QCOMPARE(table.refToString(int(0xff020002)), QString("@#ffffffffff020002"));
}

void TestApkResources::thePrefixFollowsTheIdAndNotThePackage()
{
    SequentialDevice device(TableBuilder()
                                .package(PackageBuilder(1, "android").types({"string"}))
                                .package(PackageBuilder(0x7f, "org.example").types({"string"}))
                                .build());
    Extractor reader(&device);
    ApkResourcesData data;
    ResourcesLoader().load(&data, &reader);
    for (const ResourcePackage &package : std::as_const(data.packages)) {
        QCOMPARE(package.refToString(0x7f010002), QString("@string/2"));
        QCOMPARE(package.refToString(0x01010002), "@" + package.name() + ":string/2");
        QCOMPARE(package.refToString(0x03010002), "@" + package.name() + ":string/2");
    }
}

void TestApkResources::nullValuesAreNullTexts()
{
    const ApkResources table = loaded(application().type(TypeBuilder(1).value(0, 0x00, 1)));
    QVERIFY(table.valueToString(0x00, 1).isNull());
    QCOMPARE(table.lookupAll("@string/0"), QStringList{QString()});
    QVERIFY(table.lookupAll("@string/0").constFirst().isNull());
    QVERIFY(table.lookupAllByConfig("@string/0").value("", "none").isNull());
    QVERIFY(table.lookupByLocale("@string/0", 0).value("", "none").isNull());
}

void TestApkResources::typedValuesAreRendered_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("data");
    QTest::addColumn<QString>("expected");
    QTest::newRow("null") << 0x00 << 7 << QString();
    QTest::newRow("reference") << 0x01 << 0x7f010001 << "@string/1";
    QTest::newRow("attribute") << 0x02 << 0x7f020001 << "@drawable/1";
    QTest::newRow("string") << 0x03 << 1 << "one";
    QTest::newRow("no string") << 0x03 << 3 << "unknown string table#3";
    QTest::newRow("negative string") << 0x03 << -1 << "unknown string table#-1";
    QTest::newRow("float") << 0x04 << 0x3fc00000 << "1.5";
    QTest::newRow("dimension") << 0x05 << 0xc01 << "3073";
    QTest::newRow("fraction") << 0x06 << -2 << "-2";
    QTest::newRow("dynamic reference") << 0x07 << 0x7f010001 << "?07/7f010001";
    QTest::newRow("decimal") << 0x10 << -5 << "-5";
    QTest::newRow("hexadecimal") << 0x11 << 255 << "0xff";
    QTest::newRow("boolean") << 0x12 << 2 << "true";
    QTest::newRow("colour") << 0x1d << 0x0000ff00 << "#00ff00";
    QTest::newRow("negative type") << -1 << 1 << "?ffffffffffffffff/00000001";
}

void TestApkResources::typedValuesAreRendered()
{
    QFETCH(int, type);
    QFETCH(int, data);
    QFETCH(QString, expected);
    QCOMPARE(loaded(application()).valueToString(type, data), expected);
}

void TestApkResources::valuesThatReferNeverReachThePool()
{
    const ApkResources empty;
    QCOMPARE(empty.valueToString(Reference, 1), QString("@?00000001"));
    QCOMPARE(empty.valueToString(AttributeReference, 1), QString("@?00000001"));
}

void TestApkResources::plainTextsAreTheirOwnValue_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"plain", "", " @string/0", "string/0", "?attr/0", "0"})
        QTest::newRow(text) << text;
}

void TestApkResources::plainTextsAreTheirOwnValue()
{
    QFETCH(QString, text);
    for (const ApkResources &table :
         {ApkResources(), loaded(application().type(TypeBuilder(1).value(0, Decimal, 1)))}) {
        QCOMPARE(table.lookupAll(text), QStringList{text});
        QCOMPARE(table.lookupAllByConfig(text), (Texts{{QString(), text}}));
        for (const int depth : {-1, 0, 5})
            QCOMPARE(table.lookupByLocale(text, depth), (Texts{{QString(), text}}));
    }
}

void TestApkResources::textsThatAreNoReferenceHaveNoValues_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"@",          "@string",     "@string/",    "@/0",
                             "@string/x",  "@string/-1",  "@string/+0",  "@string/0x0",
                             "@string/0 ", "@string/ 0",  "@string/0\n", "@@string/0",
                             "@string//0", "@string/0/0", "@:string/0",  "@org.example.app:/0",
                             "@?7f010000", "@#7f010000",  "@String/0",   "@ string/0",
                             "@string/1",  "@colour/0"})
        QTest::newRow(qPrintable(QString(text).replace('\n', "line feed"))) << text;
}

void TestApkResources::textsThatAreNoReferenceHaveNoValues()
{
    QFETCH(QString, text);
    const ApkResources table = loaded(application().type(TypeBuilder(1).value(0, Decimal, 1)));
    QCOMPARE(table.lookupAll(text), QStringList());
    QCOMPARE(table.lookupAllByConfig(text), Texts());
    QCOMPARE(table.lookupByLocale(text, 5), Texts());
    QCOMPARE(ApkResources().lookupAll(text), QStringList());
}

void TestApkResources::referencesAreParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "@string/0"
                           << "10";
    QTest::newRow("leading zeros") << "@string/0012"
                                   << "12";
    QTest::newRow("decimal, not octal") << "@string/010"
                                        << "110";
    QTest::newRow("colon at the start of a type") << "@:odd/0"
                                                  << "77";
    QTest::newRow("blanks in a type") << "@a type/0"
                                      << "78";
}

void TestApkResources::referencesAreParsed()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const ApkResources table =
        loaded(PackageBuilder()
                   .types({"string", ":odd", "a type"})
                   .type(TypeBuilder(1).value(0, Decimal, 10).value(12, Decimal, 12).value(10, Decimal, 110))
                   .type(TypeBuilder(2).value(0, Decimal, 77))
                   .type(TypeBuilder(3).value(0, Decimal, 78)));
    QCOMPARE(table.lookupAll(text), QStringList{expected});
    QCOMPARE(table.lookupAllByConfig(text), (Texts{{"", expected}}));
    QCOMPARE(table.lookupByLocale(text, 5), (Texts{{"", expected}}));
}

void TestApkResources::keepsEntriesOutOfRangeAsEntryZero()
{
    const ApkResources table = loaded(application().type(TypeBuilder(1).value(0, Decimal, 10)));
    for (const char *text : {"@string/2147483648", "@string/4294967295", "@string/99999999999999999999"})
        QCOMPARE(table.lookupAll(text), QStringList{"10"});
    QCOMPARE(table.lookupAll("@string/2147483647"), QStringList());
}

void TestApkResources::keepsReferencesWithAPackageNameUnresolved()
{
    const PackageBuilder framework =
        PackageBuilder(1, "android").types({"string"}).type(TypeBuilder(1).value(1, Decimal, 5));
    const PackageBuilder own = application().type(TypeBuilder(1).value(1, Decimal, 6));
    const ApkResources table = loaded(TableBuilder().package(framework).package(own));
    for (const char *text : {"@android:string/1", "@org.example.app:string/1"}) {
        QCOMPARE(table.lookupAll(text), QStringList());
        QCOMPARE(table.lookupAllByConfig(text), Texts());
        QCOMPARE(table.lookupByLocale(text, 5), Texts());
    }
    QCOMPARE(table.lookupAll("@string/1"), QStringList{"6"});
}

void TestApkResources::aPackageWhoseNameEndsInAColonAnswersToIt()
{
    const PackageBuilder odd = PackageBuilder(9, "odd:").types({"string"}).type(TypeBuilder(1).value(1, Decimal, 5));
    const ApkResources table = loaded(TableBuilder().package(application()).package(odd));
    QCOMPARE(table.lookupAll("@odd:string/1"), QStringList{"5"});
    QCOMPARE(table.lookupByLocale("@odd:string/1", 5), (Texts{{"", "5"}}));
    QCOMPARE(table.lookupAll("@Odd:string/1"), QStringList());
    // its reference texts have two colons, so the lookup does not find them
    QCOMPARE(table.refToString(0x09010001), QString("@odd::string/1"));
    QCOMPARE(table.lookupAll("@odd::string/1"), QStringList());
}

void TestApkResources::keepsNamelessPackagesAnsweringWithoutAPrefix()
{
    const PackageBuilder nameless =
        PackageBuilder(2, QString()).types({"string"}).type(TypeBuilder(1).value(0, Decimal, 2));
    const PackageBuilder own = application().type(TypeBuilder(1).value(0, Decimal, 1));
    QCOMPARE(loaded(TableBuilder().package(nameless)).lookupAll("@string/0"), QStringList{"2"});
    QCOMPARE(loaded(TableBuilder().package(nameless).package(own)).lookupAll("@string/0"), QStringList{"2"});
    QCOMPARE(loaded(TableBuilder().package(own).package(nameless)).lookupAll("@string/0"), QStringList{"1"});
}

void TestApkResources::onlyTheFirstPackageThatAnswersIsAsked()
{
    const PackageBuilder second = application().type(TypeBuilder(1).value(0, Decimal, 2).value(1, Decimal, 3));
    const PackageBuilder first = application().type(TypeBuilder(1).value(0, Decimal, 1));
    const ApkResources table = loaded(TableBuilder().package(PackageBuilder(2, "two")).package(first).package(second));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"1"});
    QCOMPARE(table.lookupAll("@string/1"), QStringList());
    QCOMPARE(table.lookupAllByConfig("@string/1"), Texts());
    QCOMPARE(table.lookupByLocale("@string/1", 5), Texts());
}

void TestApkResources::withoutAnApplicationPackageNothingIsFound()
{
    const PackageBuilder framework =
        PackageBuilder(1, "android").types({"string"}).type(TypeBuilder(1).value(0, Decimal, 5));
    const ApkResources table = loaded(TableBuilder().package(framework));
    QCOMPARE(table.lookupAll("@string/0"), QStringList());
    QCOMPARE(table.lookupAllByConfig("@string/0"), Texts());
    QCOMPARE(table.lookupByLocale("@string/0", 5), Texts());
}

void TestApkResources::allValuesAreListedInOrder()
{
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1, locale("de")).value(0, String, 2))
                                          .type(TypeBuilder(2).value(0, Decimal, 9))
                                          .type(TypeBuilder(1).value(0, Reference, 0x7f020000).value(1, Decimal, 4))
                                          .type(TypeBuilder(1, locale("de")).value(0, String, 2))
                                          .type(TypeBuilder(1, locale("fr")).value(0, String, 0)));
    QCOMPARE(table.lookupAll("@string/0"), (QStringList{"two", "@drawable/0", "two", "zero"}));
    QCOMPARE(table.lookupAll("@string/1"), QStringList{"4"});
}

void TestApkResources::unknownResourcesHaveNoValues()
{
    const ApkResources table = loaded(application().type(TypeBuilder(1).value(2, Decimal, 4).offset(5, 0xffffffff)));
    for (const char *text : {"@string/0", "@string/3", "@string/5", "@string/6", "@drawable/2", "@id/2"}) {
        QCOMPARE(table.lookupAll(text), QStringList());
        QCOMPARE(table.lookupAllByConfig(text), Texts());
        QCOMPARE(table.lookupByLocale(text, 5), Texts());
    }
    QCOMPARE(table.lookupAll("@string/2"), QStringList{"4"});
}

void TestApkResources::mapsHaveNoValues()
{
    const ApkResources table =
        loaded(application().type(TypeBuilder(1).map(0, 2)).type(TypeBuilder(1, locale("de")).value(0, Decimal, 1)));
    QCOMPARE(table.lookupAllByConfig("@string/0"), (Texts{{"de", "1"}}));
}

void TestApkResources::theFirstTypeOfANameIsMeant()
{
    const ApkResources table = loaded(PackageBuilder()
                                          .types({"string", "string"})
                                          .type(TypeBuilder(2).value(0, Decimal, 2).value(1, Decimal, 3))
                                          .type(TypeBuilder(1).value(0, Decimal, 1)));
    QCOMPARE(table.refToString(0x7f020000), QString("@string/0"));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"1"});
    QCOMPARE(table.lookupAll("@string/1"), QStringList());
}

void TestApkResources::valuesAreKeyedByTheirQualifiers()
{
    const QByteArray landscape = ConfigBuilder().locale("en", "US").orientation(2).density(240).build();
    const ApkResources table =
        loaded(application()
                   .type(TypeBuilder(2, landscape).value(0, Decimal, 1))
                   .type(TypeBuilder(2).value(0, Decimal, 2))
                   .type(TypeBuilder(2, ConfigBuilder().mcc(310).mnc(4).sdkVersion(21).build()).value(0, Decimal, 3)));
    QCOMPARE(table.lookupAllByConfig("@drawable/0"),
             (Texts{{"", "2"}, {"en-rUS-land-hdpi", "1"}, {"mcc310-mnc4-v21", "3"}}));
}

void TestApkResources::theLastValueOfAConfigurationWins()
{
    // densities without a name have no qualifier, so the key is the same
    const ApkResources table =
        loaded(application()
                   .type(TypeBuilder(1).value(0, Decimal, 1))
                   .type(TypeBuilder(1, locale("de")).value(0, Decimal, 2))
                   .type(TypeBuilder(1, ConfigBuilder().density(640).build()).value(0, Decimal, 3))
                   .type(TypeBuilder(1, locale("de")).value(0, Decimal, 4)));
    QCOMPARE(table.lookupAllByConfig("@string/0"), (Texts{{"", "3"}, {"de", "4"}}));
}

void TestApkResources::referencesAreNotFollowedByConfiguration()
{
    const ApkResources table = loaded(
        application().type(TypeBuilder(1).value(0, Reference, stringId(1)).value(1, AttributeReference, 0x02010000)));
    QCOMPARE(table.lookupAllByConfig("@string/0"), (Texts{{"", "@string/1"}}));
    QCOMPARE(table.lookupAllByConfig("@string/1"), (Texts{{"", "@?02010000"}}));
    QCOMPARE(table.lookupAll("@string/0"), QStringList{"@string/1"});
}

void TestApkResources::valuesAreKeyedByTheirLocale()
{
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1).value(0, String, 0))
                                          .type(TypeBuilder(1, locale("pt", "br")).value(0, String, 1))
                                          .type(TypeBuilder(1, locale("EN")).value(0, String, 2)));
    for (const int depth : {0, 5})
        QCOMPARE(table.lookupByLocale("@string/0", depth), (Texts{{"", "zero"}, {"en", "two"}, {"pt-BR", "one"}}));
}

void TestApkResources::theFirstValueOfALocaleWins()
{
    const QByteArray landscape = ConfigBuilder().locale("de").orientation(2).build();
    const ApkResources table =
        loaded(application()
                   .type(TypeBuilder(1, landscape).value(0, Decimal, 1))
                   .type(TypeBuilder(1, locale("de")).value(0, Decimal, 2))
                   .type(TypeBuilder(1, ConfigBuilder().density(240).build()).value(0, Decimal, 3))
                   .type(TypeBuilder(1).value(0, Decimal, 4)));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"", "3"}, {"de", "1"}}));
}

void TestApkResources::aReferenceAtDepthZeroIsItsText()
{
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1).value(0, Reference, stringId(1)).value(1, Decimal, 1))
                                          .type(TypeBuilder(1, locale("de")).value(0, Reference, 0x7f020007)));
    QCOMPARE(table.lookupByLocale("@string/0", 0), (Texts{{"", "@string/1"}, {"de", "@drawable/7"}}));
}

void TestApkResources::depthsBelowZeroAreAsZero()
{
    const ApkResources table = chain(2);
    for (const int depth : {-1, -64, std::numeric_limits<int>::min()})
        QCOMPARE(table.lookupByLocale("@string/0", depth), (Texts{{"", "@string/1"}}));
}

void TestApkResources::attributeReferencesAreNotFollowed()
{
    const ApkResources table =
        loaded(application().type(TypeBuilder(1).value(0, AttributeReference, stringId(1)).value(1, Decimal, 1)));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"", "@string/1"}}));
}

void TestApkResources::aReferenceOfTheDefaultBringsAllLocales()
{
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1).value(0, Reference, stringId(1)).value(1, Decimal, 1))
                                          .type(TypeBuilder(1, locale("de")).value(1, Decimal, 2))
                                          .type(TypeBuilder(1, locale("fr")).value(1, Decimal, 3)));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"", "1"}, {"de", "2"}, {"fr", "3"}}));
    QCOMPARE(table.lookupByLocale("@string/0", 1), (Texts{{"", "1"}, {"de", "2"}, {"fr", "3"}}));
}

void TestApkResources::keepsLocalesBroughtByTheDefaultBeforeOwnLaterOnes()
{
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1).value(0, Reference, stringId(1)).value(1, Decimal, 1))
                                          .type(TypeBuilder(1, locale("de")).value(0, Decimal, 20).value(1, Decimal, 2))
                                          .type(TypeBuilder(1, locale("fr")).value(0, Decimal, 30)));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"", "1"}, {"de", "2"}, {"fr", "30"}}));
}

void TestApkResources::ownEarlierLocalesStayBeforeThoseOfTheDefault()
{
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1, locale("de")).value(0, Decimal, 20).value(1, Decimal, 2))
                                          .type(TypeBuilder(1).value(0, Reference, stringId(1)).value(1, Decimal, 1))
                                          .type(TypeBuilder(1, locale("fr")).value(1, Decimal, 3)));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"", "1"}, {"de", "20"}, {"fr", "3"}}));
}

void TestApkResources::nothingIsStoredForADefaultThatBringsNone()
{
    const QByteArray dense = ConfigBuilder().density(240).build();
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1).value(0, Reference, stringId(1)))
                                          .type(TypeBuilder(1, locale("de")).value(1, Decimal, 2))
                                          // the default is still missing, so the next value without a locale takes its
                                          // place
                                          .type(TypeBuilder(1, dense).value(2, Decimal, 5))
                                          .type(TypeBuilder(1).value(3, Reference, stringId(1)))
                                          .type(TypeBuilder(1, dense).value(3, Decimal, 6)));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"de", "2"}}));
    QCOMPARE(table.lookupByLocale("@string/3", 5), (Texts{{"", "6"}, {"de", "2"}}));
}

void TestApkResources::aReferenceOfALocaleTakesThatLocale()
{
    const ApkResources table =
        loaded(application()
                   .type(TypeBuilder(1).value(1, Decimal, 1))
                   .type(TypeBuilder(1, locale("de")).value(0, Reference, stringId(1)).value(1, Decimal, 2))
                   .type(TypeBuilder(1, locale("fr")).value(1, Decimal, 3)));
    // no other locale is added
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"de", "2"}}));
}

void TestApkResources::aReferenceOfALocaleFallsBackToTheDefault()
{
    const ApkResources table = loaded(application()
                                          .type(TypeBuilder(1).value(1, Decimal, 1))
                                          .type(TypeBuilder(1, locale("de")).value(1, Decimal, 2))
                                          .type(TypeBuilder(1, locale("de", "AT")).value(0, Reference, stringId(1))));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"de-AT", "1"}}));
}

void TestApkResources::aReferenceOfALocaleMayBeEmpty()
{
    const ApkResources table =
        loaded(application()
                   .type(TypeBuilder(1, locale("de")).value(1, Decimal, 2))
                   .type(TypeBuilder(1, locale("fr")).value(0, Reference, stringId(1)))
                   .type(TypeBuilder(1, ConfigBuilder().locale("fr").density(240).build()).value(0, Decimal, 9)));
    // the locale exists, with an empty text
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"fr", ""}}));
    QVERIFY(!table.lookupByLocale("@string/0", 5).value("fr").isNull());
}

void TestApkResources::referencesToNowhereAreEmpty_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("unknown package") << 0x02010000;
    QTest::newRow("another package") << 0x01010000;
    QTest::newRow("unknown type") << 0x7f090000;
    QTest::newRow("no type") << 0x7f000000;
    QTest::newRow("no entry") << 0x7f010099;
    QTest::newRow("map") << 0x7f010002;
    QTest::newRow("negative") << -1;
}

void TestApkResources::referencesToNowhereAreEmpty()
{
    QFETCH(int, id);
    const PackageBuilder framework =
        PackageBuilder(1, "android").types({"string"}).type(TypeBuilder(1).value(0, Decimal, 5));
    const ApkResources table = loaded(TableBuilder()
                                          .package(application()
                                                       .type(TypeBuilder(1).value(0, Reference, id).map(2, 1))
                                                       .type(TypeBuilder(1, locale("de")).value(0, Reference, id)))
                                          .package(framework));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"de", ""}}));
    QCOMPARE(table.lookupByLocale("@string/0", 0), (Texts{{"", table.refToString(id)}, {"de", table.refToString(id)}}));
}

void TestApkResources::chainsAreFollowedToTheDepth_data()
{
    QTest::addColumn<int>("references");
    QTest::addColumn<int>("depth");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no reference") << 0 << 0 << "-1";
    QTest::newRow("one, depth 0") << 1 << 0 << "@string/1";
    QTest::newRow("one, depth 1") << 1 << 1 << "-1";
    QTest::newRow("three, depth 2") << 3 << 2 << "@string/3";
    QTest::newRow("three, depth 3") << 3 << 3 << "-1";
    QTest::newRow("five, depth 5") << 5 << 5 << "-1";
    QTest::newRow("six, depth 5") << 6 << 5 << "@string/6";
    QTest::newRow("sixty-three, depth 63") << 63 << 63 << "-1";
    QTest::newRow("sixty-four, depth 63") << 64 << 63 << "@string/64";
    QTest::newRow("sixty-four, depth 64") << 64 << 64 << "-1";
}

void TestApkResources::chainsAreFollowedToTheDepth()
{
    QFETCH(int, references);
    QFETCH(int, depth);
    QFETCH(QString, expected);
    QCOMPARE(chain(references).lookupByLocale("@string/0", depth), (Texts{{"", expected}}));
}

void TestApkResources::depthsAboveTheCeilingCountAsTheCeiling()
{
    QCOMPARE(LocaleLookup::MaxDepth, 64);
    for (const int depth : {65, 1000, std::numeric_limits<int>::max()}) {
        QCOMPARE(chain(64).lookupByLocale("@string/0", depth), (Texts{{"", "-1"}}));
        QCOMPARE(chain(65).lookupByLocale("@string/0", depth), (Texts{{"", "@string/65"}}));
    }
}

void TestApkResources::cyclesEndInReferenceTexts()
{
    const ApkResources table =
        loaded(application().type(TypeBuilder(1).value(0, Reference, stringId(1)).value(1, Reference, stringId(0))));
    QCOMPARE(table.lookupByLocale("@string/0", 4), (Texts{{"", "@string/1"}}));
    QCOMPARE(table.lookupByLocale("@string/0", 5), (Texts{{"", "@string/0"}}));
    QCOMPARE(table.lookupByLocale("@string/1", 5), (Texts{{"", "@string/1"}}));
}

void TestApkResources::manyLocalesThatReferToThemselvesAreAnsweredQuickly_data()
{
    QTest::addColumn<int>("locales");
    QTest::addColumn<int>("depth");
    QTest::newRow("18 locales") << 18 << 5;
    QTest::newRow("300 locales") << 300 << 5;
    QTest::newRow("300 locales, as deep as can be") << 300 << 1000;
}

void TestApkResources::manyLocalesThatReferToThemselvesAreAnsweredQuickly()
{
    QFETCH(int, locales);
    QFETCH(int, depth);
    const ApkResources table = selfReferring(locales);
    const Cost taken = cost([&] { table.lookupByLocale("@string/0", depth); });
    QVERIFY2(taken.allocations < 1000000, qPrintable(QString::number(taken.allocations)));
    const Texts texts = table.lookupByLocale("@string/0", depth);
    QCOMPARE(texts.size(), locales);
    QCOMPARE(texts.values(), QVector<QString>(locales, "@string/0").toList());
}

void TestApkResources::stringsThatReferToEachOtherAreAnsweredQuickly()
{
    constexpr int Strings = 40;
    PackageBuilder package = application();
    for (int shift = 0; shift < 20; ++shift) {
        const char language[] = {'x', char('a' + shift), '\0'};
        TypeBuilder type(1, locale(language));
        for (int entry = 0; entry < Strings; ++entry)
            type.value(entry, Reference, stringId((entry * 7 + shift * 11 + 1) % Strings));
        package.type(type);
    }
    const ApkResources table = loaded(package);
    const Cost taken = cost([&] { table.lookupByLocale("@string/3", 64); });
    QVERIFY2(taken.allocations < 1000000, qPrintable(QString::number(taken.allocations)));
    QCOMPARE(table.lookupByLocale("@string/3", 64).size(), 20);
}

void TestApkResources::randomTablesAnswerByTheRecursiveRule()
{
    std::mt19937 random(20220427);
    const auto below = [&random](int end) { return int(random() % unsigned(end)); };
    const QVector<QByteArray> languages = {"", "", "de", "fr", "en"};
    for (int round = 0; round < 60; ++round) {
        Model model;
        PackageBuilder own = application();
        PackageBuilder framework = PackageBuilder(1, "android").types({"string", "drawable"});
        const int chunks = 1 + below(8);
        for (int i = 0; i < chunks; ++i) {
            const int packageId = below(6) == 0 ? 0x01 : 0x7f;
            const QByteArray language = languages.at(below(int(languages.size())));
            ConfigBuilder config;
            config.locale(language).density(160 * below(3));
            const int typeId = 1 + below(2);
            TypeBuilder type(typeId, config.build());
            for (int entry = 0; entry < 3; ++entry) {
                if (below(4) == 0)
                    continue;
                const int dataType = below(3) == 0 ? Decimal : below(6) == 0 ? AttributeReference : Reference;
                const int packageByte = below(10) == 0 ? 1 + below(2) : 0x7f;
                const int id = packageByte << 24 | (below(10) == 0 ? 3 * below(2) : 1 + below(2)) << 16 | below(4);
                const int data = dataType == Decimal ? 1000 * round + 10 * i + entry : id;
                type.value(entry, dataType, data);
                model.values.append({packageId, typeId, entry, language, dataType, data});
            }
            (packageId == 0x7f ? own : framework).type(type);
        }
        const ApkResources table = loaded(TableBuilder().package(framework).package(own));
        for (int type = 1; type <= 2; ++type) {
            for (int entry = 0; entry < 4; ++entry) {
                for (int depth = 0; depth <= 4; ++depth) {
                    const QString text = QString("@%1/%2").arg(Model::typeName(type)).arg(entry);
                    QCOMPARE(table.lookupByLocale(text, depth), model.byLocale(0x7f, type, entry, depth));
                }
            }
        }
    }
}

void TestApkResources::oneRunAnswersTheSameTwice()
{
    const ApkResources table = chain(3);
    LocaleLookup lookup(ApkResourcesData::of(table));
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(lookup.byReference("plain", 2), (Texts{{"", "plain"}}));
        QCOMPARE(lookup.byReference("@string/0", 2), (Texts{{"", "@string/3"}}));
        QCOMPARE(lookup.byReference("@string/1", 2), (Texts{{"", "-1"}}));
        QCOMPARE(lookup.byReference("@string/0", 3), (Texts{{"", "-1"}}));
        QCOMPARE(lookup.byReference("@string/9", 3), Texts());
        QCOMPARE(lookup.byReference("@?", 3), Texts());
    }
}

void TestApkResources::packagesAnswerAsTablesDo()
{
    TypeBuilder type(1);
    for (int i = 0; i < 66; ++i)
        type.value(i, Reference, stringId(i + 1));
    const PackageBuilder builder = application().type(type).type(TypeBuilder(1, locale("de")).value(0, Decimal, 7));
    SequentialDevice device(TableBuilder().package(builder).build());
    Extractor reader(&device);
    ApkResourcesData data;
    ResourcesLoader().load(&data, &reader);
    const ResourcePackage package = data.packages.first();
    const ApkResources table = loaded(builder);

    QCOMPARE(package.lookupAll("string", 0, table), table.lookupAll("@string/0"));
    QCOMPARE(package.lookupAllByConfig("string", 0, table), table.lookupAllByConfig("@string/0"));
    for (const int depth : {-1, 0, 1, 64, 1000})
        QCOMPARE(package.lookupByLocale("string", 0, table, depth), table.lookupByLocale("@string/0", depth));
    QCOMPARE(package.lookupByLocale("string", 0, table, 1000), (Texts{{"", "@string/65"}, {"de", "7"}}));

    // an entry of -1 never exists, and neither does an unknown type
    QCOMPARE(package.lookupAll("string", -1, table), QStringList());
    QCOMPARE(package.lookupAllByConfig("string", -1, table), Texts());
    QCOMPARE(package.lookupByLocale("string", -1, table, 5), Texts());
    QCOMPARE(package.lookupAll("colour", 0, table), QStringList());
    // the given table renders values and resolves references
    QCOMPARE(package.lookupAll("string", 1, ApkResources()), QStringList{"@?7f010002"});
    QCOMPARE(package.lookupByLocale("string", 1, ApkResources(), 5), Texts());
}

QTEST_GUILESS_MAIN(TestApkResources)
#include "tst_apkresources.moc"
