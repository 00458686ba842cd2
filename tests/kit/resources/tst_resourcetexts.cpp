// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourcesFixture.h"

#include <QtTest>

#include <cstring>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr int Float = 0x04;
constexpr int Dimension = 0x05;
constexpr int Fraction = 0x06;

qint64 bitsOf(float number)
{
    quint32 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

// A table of one number, for the configuration @p record.
QByteArray tableFor(const QByteArray &record)
{
    return TableBuilder()
        .strings({})
        .package(PackageBuilder().types(names({"integer"})).type(TypeBuilder(1, record).value(0, Integer, 1)))
        .build();
}

} // namespace

class TestResourceTexts : public QObject
{
    Q_OBJECT

private slots:
    void qualifiers_data();
    void qualifiers();
    void shortConfigurations();
    void texts_data();
    void texts();
    void arrays();
    void arraysCountedFromOne();
    void plurals();
    void styles();
    void attributes();
    void itemsOfOtherNames();
};

void TestResourceTexts::qualifiers_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *text, const ConfigBuilder &config) {
        QTest::newRow(text) << config.build() << QString::fromLatin1(text);
    };
    const auto wordsAt = [&](int at, int shift, std::initializer_list<const char *> words) {
        int number = 0;
        for (const char *word : words) {
            ++number;
            if (*word != 0)
                row(word, ConfigBuilder().u8(at, number << shift));
        }
    };
    row("", ConfigBuilder());
    row("mcc310", ConfigBuilder().mcc(310));
    row("mcc310-mnc4", ConfigBuilder().mcc(310).mnc(4));
    row("de", ConfigBuilder().locale("de"));
    row("de-rAT", ConfigBuilder().locale("de", "AT"));
    row("fil", ConfigBuilder().locale("\xad\x05"));
    row("es-r419", ConfigBuilder().locale("es", "\xa4\x24"));
    const auto script = [](ConfigBuilder config, const char *text, int at) {
        for (int i = 0; text[i] != 0; ++i)
            config.u8(at + i, text[i]);
        return config;
    };
    row("b+sr+Latn", script(ConfigBuilder().locale("sr"), "Latn", 36));
    row("b+zh+Hant+HK", script(ConfigBuilder().locale("zh", "HK"), "Hant", 36));
    row("b+ca+ES+valencia", script(ConfigBuilder().locale("ca", "ES"), "valencia", 40));
    row("b+ar+u+nu+latn", script(ConfigBuilder().locale("ar"), "latn", 53));
    row("zh-rTW", script(ConfigBuilder().locale("zh", "TW").u8(52, 1), "Hant", 36)); // the script is derived
    wordsAt(19, 0, {"neuter", "feminine", "masculine"});
    wordsAt(28, 6, {"ldltr", "ldrtl"});
    row("sw600dp", ConfigBuilder().u16(30, 600));
    row("w820dp", ConfigBuilder().u16(32, 820));
    row("h480dp", ConfigBuilder().u16(34, 480));
    wordsAt(28, 0, {"small", "normal", "large", "xlarge"});
    wordsAt(28, 4, {"notlong", "long"});
    wordsAt(48, 0, {"notround", "round"});
    wordsAt(49, 0, {"nowidecg", "widecg"});
    wordsAt(49, 2, {"lowdr", "highdr"});
    wordsAt(12, 0, {"port", "land", "square"});
    wordsAt(29, 0, {"", "desk", "car", "television", "appliance", "watch", "vrheadset"});
    wordsAt(29, 4, {"notnight", "night"});
    for (const int density : {1, 100, 65533})
        row(qPrintable(QStringLiteral("%1dpi").arg(density)), ConfigBuilder().density(density));
    row("ldpi", ConfigBuilder().density(120));
    row("mdpi", ConfigBuilder().density(160));
    row("tvdpi", ConfigBuilder().density(213));
    row("hdpi", ConfigBuilder().density(240));
    row("xhdpi", ConfigBuilder().density(320));
    row("xxhdpi", ConfigBuilder().density(480));
    row("xxxhdpi", ConfigBuilder().density(640));
    row("anydpi", ConfigBuilder().density(0xfffe));
    row("nodpi", ConfigBuilder().density(0xffff));
    wordsAt(13, 0, {"notouch", "stylus", "finger"});
    wordsAt(18, 0, {"keysexposed", "keyshidden", "keyssoft"});
    wordsAt(16, 0, {"nokeys", "qwerty", "12key"});
    wordsAt(18, 2, {"navexposed", "navhidden"});
    wordsAt(17, 0, {"nonav", "dpad", "trackball", "wheel"});
    row("1280x720", ConfigBuilder().u16(20, 1280).u16(22, 720));
    row("v21", ConfigBuilder().sdkVersion(21));
    row("v21.3", ConfigBuilder().sdkVersion(21).u16(26, 3));
    row("orientation=9", ConfigBuilder().orientation(9));
    row("uiModeType=1", ConfigBuilder().u8(29, 1));
    row("keyboard=4", ConfigBuilder().u8(16, 4));
    row("mcc310-mnc4-b+sr+Latn-ldrtl-sw600dp-w820dp-h480dp-large-long-round-widecg-highdr-land-car-night-hdpi-finger-"
        "keyssoft-qwerty-navhidden-wheel-1280x720-v21",
        script(ConfigBuilder()
                   .mcc(310)
                   .mnc(4)
                   .locale("sr")
                   .orientation(2)
                   .density(240)
                   .sdkVersion(21)
                   .u8(13, 3)
                   .u8(16, 2)
                   .u8(17, 4)
                   .u8(18, 3 | 2 << 2)
                   .u16(20, 1280)
                   .u16(22, 720)
                   .u8(28, 3 | 2 << 4 | 2 << 6)
                   .u8(29, 3 | 2 << 4)
                   .u16(30, 600)
                   .u16(32, 820)
                   .u16(34, 480)
                   .u8(48, 2)
                   .u8(49, 2 | 2 << 2),
               "Latn", 36));
}

void TestResourceTexts::qualifiers()
{
    QFETCH(QByteArray, record);
    QFETCH(QString, text);
    const ResourcesFixture fixture(tableFor(record));
    QCOMPARE(fixture.resources.values(0x7f010000).size(), 1);
    QCOMPARE(fixture.resources.values(0x7f010000).first().configuration(), text);
}

void TestResourceTexts::shortConfigurations()
{
    // Bytes after the record do not belong to it.
    for (const int size : {4, 16, 28, 32, 36, 48, 52}) {
        const QByteArray record = ConfigBuilder(size).locale("de").sdkVersion(21).u16(32, 820).build();
        const ResourcesFixture fixture(tableFor(record));
        QString expected = size < 12 ? QString() : latin("de");
        expected += size < 36 ? QString() : latin("-w820dp");
        expected += size < 28 ? QString() : latin("-v21");
        QCOMPARE(fixture.resources.values(0x7f010000).value(0).configuration(), expected);
    }
}

void TestResourceTexts::texts_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<qint64>("data");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *word, int type, qint64 data, const char *text) {
        QTest::addRow("%s %02x %08llx", word, uint(type), data)
            << type << data << QString::fromLatin1(word) << QString::fromUtf8(text);
    };
    const auto complex = [](int mantissa, int radix, int unit) {
        return (qint64(mantissa) * 256 & 0xffffffff) | qint64(radix) << 4 | unit;
    };
    row("null", 0x00, 0, "@null");
    row("null", 0x00, 1, "@empty");
    row("reference", Reference, 0, "@null");
    row("reference", Reference, 0x01040000, "@0x01040000");
    row("reference", Reference, 0x7f010000, "@dimen/it");
    row("reference", 0x07, 0x7f010000, "@dimen/it");
    row("attribute", 0x02, 0x01010433, "?0x01010433");
    row("attribute", 0x02, 0x7f010000, "?dimen/it");
    row("attribute", 0x08, 0x7f010000, "?dimen/it");
    row("string", String, 0, "a \"text\"\n\xe2\x82\xac");
    row("string", String, 7, "");
    row("float", Float, bitsOf(0.5F), "0.5");
    row("float", Float, bitsOf(0.1F), "0.1");
    row("float", Float, bitsOf(-3), "-3");
    row("float", Float, bitsOf(16777216), "16777216");
    row("float", Float, bitsOf(1e-20F), "1e-20");
    row("float", Float, 0x7f800000, "inf");
    row("float", Float, 0x7fc00000, "nan");
    row("dimension", Dimension, complex(12, 0, 0), "12px");
    row("dimension", Dimension, complex(48, 0, 1), "48dp");
    row("dimension", Dimension, complex(14, 0, 2), "14sp");
    row("dimension", Dimension, complex(3, 0, 3), "3pt");
    row("dimension", Dimension, complex(1, 0, 4), "1in");
    row("dimension", Dimension, complex(-7, 0, 5), "-7mm");
    row("dimension", Dimension, complex(0, 0, 1), "0dp");
    row("dimension", Dimension, complex(13 * 128 + 64, 1, 1), "13.5dp");
    row("dimension", Dimension, complex(10923, 2, 1), "0.33334dp");
    row("dimension", Dimension, complex(838861, 3, 1), "0.1dp");
    row("dimension", Dimension, complex(-8388608, 0, 1), "-8388608dp");
    row("dimension", Dimension, complex(1, 0, 9), "1(unit 9)");
    row("fraction", Fraction, complex(4194304, 3, 0), "50%");
    row("fraction", Fraction, complex(4194304, 3, 1), "50%p");
    row("fraction", Fraction, complex(3, 0, 0), "300%");
    row("fraction", Fraction, complex(16777, 3, 0), "0.2%");
    row("fraction", Fraction, complex(1, 0, 7), "100(unit 7)");
    row("integer", Integer, 42, "42");
    row("integer", Integer, 0xffffffff, "-1");
    row("integer", 0x11, 0x2a, "0x2a");
    row("integer", 0x11, 0xffffffff, "0xffffffff");
    row("integer", 0x13, 3, "0x3");
    row("boolean", Boolean, 0, "false");
    row("boolean", Boolean, 0xffffffff, "true");
    row("boolean", Boolean, 1, "true");
    row("color", 0x1c, 0x80204060, "#80204060");
    row("color", 0x1d, 0xff204060, "#ff204060");
    row("color", 0x1e, 0x11223344, "#11223344");
    row("color", 0x1f, 0x00000000, "#00000000");
    row("type 0x09", 0x09, 12, "0x0000000c");
    row("type 0x20", 0x20, 12, "0x0000000c");
    row("type 0xff", 0xff, 0, "0x00000000");
}

void TestResourceTexts::texts()
{
    QFETCH(int, type);
    QFETCH(qint64, data);
    QFETCH(QString, word);
    QFETCH(QString, text);
    const ResourcesFixture fixture(TableBuilder()
                                       .strings(names({"a \"text\"\n\xe2\x82\xac"}))
                                       .package(PackageBuilder()
                                                    .types(names({"dimen"}))
                                                    .keys(names({"it"}))
                                                    .type(TypeBuilder(1)
                                                              .value(0, type, data)
                                                              .map(1, 0)
                                                              .entry(2, mapOf({mapItem(0x02000000, type, data)}))))
                                       .build());
    const SorrelKit::ResourceValue value = fixture.resources.defaultValue(0x7f010000);
    QCOMPARE(value.typeName(), word);
    QCOMPARE(value.text(), text);
    QVERIFY(value.items().isEmpty());
    // Items have the same texts.
    const SorrelKit::ResourceValue inMap = fixture.resources.defaultValue(0x7f010002);
    QCOMPARE(inMap.items().size(), 1);
    QCOMPARE(inMap.items().first().typeName(), word);
    QCOMPARE(inMap.items().first().text(), text);
}

void TestResourceTexts::arrays()
{
    const QByteArray array = mapOf(
        {mapItem(0x02000000, String, 0), mapItem(0x02000001, Reference, 0x7f010000), mapItem(0x0200ffff, Integer, 5)});
    const ResourcesFixture fixture(
        TableBuilder()
            .strings(names({"One"}))
            .package(PackageBuilder().types(names({"array"})).keys(names({"all"})).type(TypeBuilder(1).entry(0, array)))
            .build());
    QCOMPARE(answers(fixture.resources),
             names({"7f010000 array/all", "|map|", "0|string|One", "1|reference|@array/all", "65535|integer|5"}));
}

void TestResourceTexts::arraysCountedFromOne()
{
    const QByteArray array = mapOf({mapItem(0x01000001, Integer, 7), mapItem(0x01000002, Integer, 8),
                                    mapItem(0x01000003, Integer, 9), mapItem(0x01000000, Integer, 0)});
    const ResourcesFixture fixture(
        TableBuilder()
            .strings({})
            .package(PackageBuilder().types(names({"array"})).type(TypeBuilder(1).entry(0, array)))
            .build());
    QCOMPARE(answers(fixture.resources),
             names({"7f010000 array/0", "|map|", "0|integer|7", "1|integer|8", "2|integer|9", "type|integer|0"}));
}

void TestResourceTexts::plurals()
{
    QVector<QByteArray> items;
    for (int i = 4; i < 10; ++i)
        items.append(mapItem(0x01000000 + i, Integer, i));
    const ResourcesFixture fixture(TableBuilder()
                                       .strings({})
                                       .package(PackageBuilder()
                                                    .types(names({"plurals"}))
                                                    .keys(names({"all"}))
                                                    .type(TypeBuilder(1).entry(0, mapOf(items))))
                                       .build());
    QCOMPARE(answers(fixture.resources), names({"7f010000 plurals/all", "|map|", "other|integer|4", "zero|integer|5",
                                                "one|integer|6", "two|integer|7", "few|integer|8", "many|integer|9"}));
}

void TestResourceTexts::styles()
{
    TypeBuilder styles(1);
    styles.entry(0, mapOf({}, 0, 0))
        .entry(1, mapOf({mapItem(0x7f020000, 0x1c, 0xff000001), mapItem(0x010100d4, 0x02, 0x7f020000)}, 0x7f010000, 1))
        .entry(2, mapOf({}, 0x01030005, 2));
    TypeBuilder attributes(2);
    attributes.entry(0, mapOf({}, 0, 3));
    const ResourcesFixture fixture(TableBuilder()
                                       .strings({})
                                       .package(PackageBuilder()
                                                    .types(names({"style", "attr"}))
                                                    .keys(names({"Base", "Derived", "Foreign", "shade"}))
                                                    .type(styles)
                                                    .type(attributes))
                                       .build());
    QCOMPARE(answers(fixture.resources),
             names({"7f010000 style/Base", "|map|", "7f010001 style/Derived", "|map|@style/Base",
                    "attr/shade|color|#ff000001", "0x010100d4|attribute|?attr/shade", "7f010002 style/Foreign",
                    "|map|@0x01030005", "7f020000 attr/shade", "|map|"}));
}

void TestResourceTexts::attributes()
{
    const QByteArray attribute =
        mapOf({mapItem(0x01000000, Integer, 0x10004), mapItem(0x01000001, Integer, 1), mapItem(0x01000002, Integer, 9),
               mapItem(0x01000003, Integer, 0), mapItem(0x7f020000, Integer, 3)});
    const ResourcesFixture fixture(TableBuilder()
                                       .strings({})
                                       .package(PackageBuilder()
                                                    .types(names({"attr", "id"}))
                                                    .keys(names({"side", "left"}))
                                                    .type(TypeBuilder(1).entry(0, attribute))
                                                    .type(TypeBuilder(2).entry(0, simpleEntry(Boolean, 0, 0, 1))))
                                       .build());
    QCOMPARE(answers(fixture.resources),
             names({"7f010000 attr/side", "|map|", "type|integer|65540", "min|integer|1", "max|integer|9",
                    "l10n|integer|0", "id/left|integer|3", "7f020000 id/left", "|boolean|false"}));
}

void TestResourceTexts::itemsOfOtherNames()
{
    const ResourcesFixture fixture(
        TableBuilder()
            .strings({})
            .package(PackageBuilder()
                         .types(names({"array"}))
                         .type(TypeBuilder(1).entry(
                             0, mapOf({mapItem(0, Integer, 1), mapItem(0x0100000a, Integer, 2),
                                       mapItem(0x02010000, Integer, 3), mapItem(0xffffffff, Integer, 4)}))))
            .build());
    QCOMPARE(answers(fixture.resources),
             names({"7f010000 array/0", "|map|", "0x00000000|integer|1", "0x0100000a|integer|2", "0x02010000|integer|3",
                    "0xffffffff|integer|4"}));
}

QTEST_GUILESS_MAIN(TestResourceTexts)
#include "tst_resourcetexts.moc"
