// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TableBuilder.h"
#include "format/Configuration.h"

#include <QtTest>

#include <functional>

using namespace fixture;

namespace {

using Change = std::function<void(Configuration &)>;

Configuration changed(const Change &change)
{
    Configuration configuration;
    change(configuration);
    return configuration;
}

Configuration ofDensity(int density)
{
    return changed([density](Configuration &configuration) { configuration.density = density; });
}

// The codes of the locale, joined by "-".
QString localeIn(const QByteArray &record)
{
    const Configuration read = Configuration::read(ByteView(record));
    QStringList codes;
    for (const ShortText &code : {read.language, read.script, read.region, read.variant}) {
        if (!code.isEmpty())
            codes.append(code.toString());
    }
    return codes.join(QLatin1Char('-'));
}

} // namespace

Q_DECLARE_METATYPE(Change)

class TestConfiguration : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldIsRead();
    void shortRecordsLeaveTheRestUnset();
    void locales_data();
    void locales();
    void scriptThatWasDerivedIsNone();
    void garbledCodesAreNone();
    void phoneMatchesWhatIsForAnyDevice();
    void whatDoesNotMatch_data();
    void whatDoesNotMatch();
    void better_data();
    void better();
    void densities_data();
    void densities();
};

void TestConfiguration::everyFieldIsRead()
{
    ConfigBuilder builder;
    builder.mcc(310).mnc(4).locale("de", "AT").orientation(2).u8(13, 3).density(640).u8(16, 1).u8(17, 2);
    builder.u8(18, 0x09).u8(19, 2).u16(20, 1080).u16(22, 2400).sdkVersion(26).u8(28, 0x93).u8(29, 0x25);
    builder.u16(30, 600).u16(32, 700).u16(34, 800).u8(48, 2).u8(49, 0x06);
    const QByteArray record = builder.build();
    const Configuration read = Configuration::read(ByteView(record));
    QCOMPARE(read.mcc, 310);
    QCOMPARE(read.mnc, 4);
    QCOMPARE(read.language.toString(), QStringLiteral("de"));
    QCOMPARE(read.region.toString(), QStringLiteral("AT"));
    QCOMPARE(read.orientation, 2);
    QCOMPARE(read.touchscreen, 3);
    QCOMPARE(read.density, 640);
    QCOMPARE(read.keyboard, 1);
    QCOMPARE(read.navigation, 2);
    QCOMPARE(read.keysHidden, 1);
    QCOMPARE(read.navHidden, 2);
    QCOMPARE(read.grammaticalGender, 2);
    QCOMPARE(read.screenWidth, 1080);
    QCOMPARE(read.screenHeight, 2400);
    QCOMPARE(read.sdkVersion, 26);
    QCOMPARE(read.screenSize, 3);
    QCOMPARE(read.screenLong, 1);
    QCOMPARE(read.layoutDirection, 2);
    QCOMPARE(read.uiModeType, 5);
    QCOMPARE(read.uiModeNight, 2);
    QCOMPARE(read.smallestScreenWidthDp, 600);
    QCOMPARE(read.screenWidthDp, 700);
    QCOMPARE(read.screenHeightDp, 800);
    QCOMPARE(read.screenRound, 2);
    QCOMPARE(read.wideColorGamut, 2);
    QCOMPARE(read.hdr, 1);
}

void TestConfiguration::shortRecordsLeaveTheRestUnset()
{
    const QByteArray record = ConfigBuilder(16).locale("fr").density(320).build() + QByteArray(48, '\x7f');
    const Configuration read = Configuration::read(ByteView(record));
    QCOMPARE(read.language.toString(), QStringLiteral("fr"));
    QCOMPARE(read.density, 320);
    QCOMPARE(read.sdkVersion, 0);
    QCOMPARE(read.smallestScreenWidthDp, 0);
    QVERIFY(read.script.isEmpty());
}

void TestConfiguration::locales_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("tag");
    const auto withScript = [](ConfigBuilder builder, const char *script, const char *variant = "") {
        QByteArray record = builder.build();
        record.replace(36, 4, QByteArray(script).leftJustified(4, '\0'));
        return record.replace(40, 8, QByteArray(variant).leftJustified(8, '\0'));
    };
    QTest::newRow("none") << ConfigBuilder().build() << "";
    QTest::newRow("language") << ConfigBuilder().locale("en").build() << "en";
    QTest::newRow("region") << ConfigBuilder().locale("en", "GB").build() << "en-GB";
    // The first bit is set. After it are three letters of five bits each, the last one first: f, i, l are 5, 8, 11.
    QTest::newRow("three letters") << ConfigBuilder().u8(8, 0x80 | 11 << 2 | 8 >> 3).u8(9, (8 & 7) << 5 | 5).build()
                                   << "fil";
    // The digits 4, 1, 9.
    QTest::newRow("three digits")
        << ConfigBuilder().locale("es").u8(10, 0x80 | 9 << 2 | 1 >> 3).u8(11, (1 & 7) << 5 | 4).build() << "es-419";
    QTest::newRow("script") << withScript(ConfigBuilder().locale("sr"), "Latn") << "sr-Latn";
    QTest::newRow("all") << withScript(ConfigBuilder().locale("ca", "ES"), "Latn", "valencia") << "ca-Latn-ES-valencia";
    QTest::newRow("region alone") << ConfigBuilder().u8(10, 'U').u8(11, 'S').build() << "US";
}

void TestConfiguration::locales()
{
    QFETCH(QByteArray, record);
    QFETCH(QString, tag);
    QCOMPARE(localeIn(record), tag);
}

void TestConfiguration::scriptThatWasDerivedIsNone()
{
    QByteArray record = ConfigBuilder().locale("sr").u8(52, 1).build();
    record.replace(36, 4, "Cyrl");
    QCOMPARE(localeIn(record), QStringLiteral("sr"));
}

void TestConfiguration::garbledCodesAreNone()
{
    const QByteArray letters = ConfigBuilder().u8(8, 0xff).u8(9, 0xff).build();
    QVERIFY(!Configuration::read(ByteView(letters)).hasLocale());
    const QByteArray controls = ConfigBuilder().u8(8, '\n').u8(9, '-').build();
    QVERIFY(!Configuration::read(ByteView(controls)).hasLocale());
}

void TestConfiguration::phoneMatchesWhatIsForAnyDevice()
{
    QVERIFY(Configuration().matches(Configuration::phone(320)));
    // Android scales pictures, so any density matches. The newest platform has every version.
    QVERIFY(ofDensity(640).matches(Configuration::phone(320)));
    QVERIFY(changed([](Configuration &c) { c.sdkVersion = 99; }).matches(Configuration::phone(320)));
    // Keys on the screen count as a keyboard that is not hidden.
    QVERIFY(changed([](Configuration &c) { c.keysHidden = 1; }).matches(Configuration::phone(320)));
}

void TestConfiguration::whatDoesNotMatch_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    row("land", [](Configuration &c) { c.orientation = 2; });
    row("night", [](Configuration &c) { c.uiModeNight = 2; });
    row("television", [](Configuration &c) { c.uiModeType = 4; });
    row("right to left", [](Configuration &c) { c.layoutDirection = 2; });
    row("tablet", [](Configuration &c) { c.smallestScreenWidthDp = 600; });
    row("wide", [](Configuration &c) { c.screenWidthDp = 500; });
    row("high", [](Configuration &c) { c.screenHeightDp = 1000; });
    row("large", [](Configuration &c) { c.screenSize = 3; });
    row("short", [](Configuration &c) { c.screenLong = 1; });
    row("round", [](Configuration &c) { c.screenRound = 2; });
    row("wide gamut", [](Configuration &c) { c.wideColorGamut = 2; });
    row("high range", [](Configuration &c) { c.hdr = 2; });
    row("a country", [](Configuration &c) { c.mcc = 310; });
    row("a network", [](Configuration &c) { c.mnc = 4; });
    row("a gender", [](Configuration &c) { c.grammaticalGender = 2; });
    row("stylus", [](Configuration &c) { c.touchscreen = 2; });
    row("keyboard", [](Configuration &c) { c.keyboard = 2; });
    row("keys hidden", [](Configuration &c) { c.keysHidden = 2; });
    row("ball", [](Configuration &c) { c.navigation = 3; });
    row("navigation shown", [](Configuration &c) { c.navHidden = 1; });
    row("wide in pixels", [](Configuration &c) { c.screenWidth = 5000; });
    row("high in pixels", [](Configuration &c) { c.screenHeight = 5000; });
}

void TestConfiguration::whatDoesNotMatch()
{
    QFETCH(Change, change);
    QVERIFY(!changed(change).matches(Configuration::phone(320)));
}

void TestConfiguration::better_data()
{
    QTest::addColumn<Change>("one");
    QTest::addColumn<Change>("other");
    const auto row = [](const char *name, const Change &one, const Change &other) {
        QTest::newRow(name) << one << other;
    };
    const Change nothing = [](Configuration &) {};
    row(
        "a version to none", [](Configuration &c) { c.sdkVersion = 21; }, nothing);
    row(
        "the newer version", [](Configuration &c) { c.sdkVersion = 26; }, [](Configuration &c) { c.sdkVersion = 21; });
    row(
        "the wider screen", [](Configuration &c) { c.screenWidthDp = 400; },
        [](Configuration &c) { c.screenWidthDp = 320; });
    row(
        "the closer width", [](Configuration &c) { c.smallestScreenWidthDp = 360; },
        [](Configuration &c) { c.smallestScreenWidthDp = 320; });
    row(
        "day", [](Configuration &c) { c.uiModeNight = 1; }, nothing);
    row(
        "keys on the screen to keys that are not hidden", [](Configuration &c) { c.keysHidden = 3; },
        [](Configuration &c) { c.keysHidden = 1; });
    row(
        "keys that are not hidden to any", [](Configuration &c) { c.keysHidden = 1; }, nothing);
    row("an unset size to a smaller one", nothing, [](Configuration &c) { c.screenSize = 1; });
    row(
        "a set size to an unset one", [](Configuration &c) { c.screenSize = 2; }, nothing);
    row(
        "orientation to density", [](Configuration &c) { c.orientation = 1; },
        [](Configuration &c) { c.density = 320; });
    row(
        "density to version", [](Configuration &c) { c.density = 320; }, [](Configuration &c) { c.sdkVersion = 26; });
    row(
        "a country to everything", [](Configuration &c) { c.mcc = 310; },
        [](Configuration &c) {
            c.mnc = 4;
            c.density = 320;
            c.sdkVersion = 26;
        });
}

void TestConfiguration::better()
{
    QFETCH(Change, one);
    QFETCH(Change, other);
    Configuration device = Configuration::phone(320);
    device.mcc = 310;
    device.mnc = 4;
    QVERIFY(changed(one).isBetterThan(changed(other), device));
    QVERIFY(!changed(other).isBetterThan(changed(one), device));
    QVERIFY(!changed(one).isBetterThan(changed(one), device));
}

void TestConfiguration::densities_data()
{
    QTest::addColumn<int>("screen");
    QTest::addColumn<QVector<int>>("bestFirst");
    QTest::newRow("exact, then larger, then smaller") << 320 << QVector<int>{320, 480, 640, 240, 160, 120};
    QTest::newRow("between two, the larger") << 400 << QVector<int>{480, 640, 320, 240};
    QTest::newRow("above all") << 640 << QVector<int>{480, 320, 240};
    QTest::newRow("below all") << 120 << QVector<int>{160, 240, 320};
    QTest::newRow("any before all") << 320 << QVector<int>{Configuration::AnyDensity, 320, 480};
    QTest::newRow("none is medium") << 320 << QVector<int>{240, 0, 120};
}

void TestConfiguration::densities()
{
    QFETCH(int, screen);
    QFETCH(QVector<int>, bestFirst);
    const Configuration device = Configuration::phone(screen);
    for (int i = 0; i < bestFirst.size(); ++i) {
        for (int j = 0; j < bestFirst.size(); ++j) {
            const bool isBetter = ofDensity(bestFirst.at(i)).isBetterThan(ofDensity(bestFirst.at(j)), device);
            QVERIFY2(isBetter == (i < j),
                     qPrintable(QStringLiteral("%1 and %2").arg(bestFirst.at(i)).arg(bestFirst.at(j))));
        }
    }
}

QTEST_GUILESS_MAIN(TestConfiguration)
#include "tst_configuration.moc"
