// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Bytes.h"
#include "Devices.h"
#include "TableBuilder.h"
#include "stream/Extractor.h"
#include "table/ResourceConfig.h"

#include <QtTest>

#include <cstring>
#include <memory>

using namespace fixture;

using Member = int ResourceConfig::*;

Q_DECLARE_METATYPE(Member)

namespace {

constexpr int SizeAt = 0;
constexpr int WholeSize = 64;
constexpr int KnownSize = 36;

/// A number of the record: its offset, and its bits in the bytes at that offset.
struct Field {
    const char *name;
    Member member;
    int at;
    int width;
    int mask = 0;
    int shift = 0;
};

const QVector<Field> fields = {
    {"mcc", &ResourceConfig::mcc, 4, 2},
    {"mnc", &ResourceConfig::mnc, 6, 2},
    {"orientation", &ResourceConfig::orientation, 12, 1},
    {"touchscreen", &ResourceConfig::touchscreen, 13, 1},
    {"density", &ResourceConfig::density, 14, 2},
    {"keyboard", &ResourceConfig::keyboard, 16, 1},
    {"navigation", &ResourceConfig::navigation, 17, 1},
    {"keysHidden", &ResourceConfig::keysHidden, 18, 1, 0x03, 0},
    {"navHidden", &ResourceConfig::navHidden, 18, 1, 0x0c, 2},
    {"screenWidth", &ResourceConfig::screenWidth, 20, 2},
    {"screenHeight", &ResourceConfig::screenHeight, 22, 2},
    {"sdkVersion", &ResourceConfig::sdkVersion, 24, 2},
    {"screenSize", &ResourceConfig::screenSize, 28, 1, 0x0f, 0},
    {"screenLong", &ResourceConfig::screenLong, 28, 1, 0x30, 4},
    {"layoutDirection", &ResourceConfig::layoutDirection, 28, 1, 0xc0, 6},
    {"uiModeType", &ResourceConfig::uiModeType, 29, 1, 0x0f, 0},
    {"uiModeNight", &ResourceConfig::uiModeNight, 29, 1, 0x30, 4},
    {"smallestScreenWidthDp", &ResourceConfig::smallestScreenWidthDp, 30, 2},
    {"screenWidthDp", &ResourceConfig::screenWidthDp, 32, 2},
    {"screenHeightDp", &ResourceConfig::screenHeightDp, 34, 2},
};

/// A record on a device of its own, with a reader at its start.
struct Loading {
    explicit Loading(const QByteArray &bytes) : device(bytes), reader(&device) {}

    const ResourceConfig &load()
    {
        config.load(&reader);
        return config;
    }

    /// The fault's text without the device's own text, or an empty string.
    QString fault() const { return *reader.errorSink().toStrongRef(); }

    SequentialDevice device;
    Extractor reader;
    ResourceConfig config;
};

ResourceConfig loaded(const QByteArray &record)
{
    Loading loading(record);
    const ResourceConfig config = loading.load();
    if (loading.reader.failed())
        qFatal("%s", qPrintable(loading.reader.errorString()));
    return config;
}

ResourceConfig loaded(const ConfigBuilder &record)
{
    return loaded(record.build());
}

/// A record of @p size bytes with all bits set, except for the size.
QByteArray filledRecord(int size)
{
    QByteArray record(qMax(size, 4), char(0xff));
    poke32(record, SizeAt, size);
    return record;
}

/// The value of a number when all its bits are set.
int filledValue(const Field &field)
{
    return field.mask == 0 ? -1 : field.mask >> field.shift;
}

/// A configuration in which every field is set, to different values where possible.
ResourceConfig filledConfig()
{
    ResourceConfig config;
    int value = 0;
    for (const Field &field : fields)
        config.*field.member = ++value;
    std::memcpy(config.language, "en", 2);
    std::memcpy(config.country, "US", 2);
    return config;
}

ResourceConfig withLocale(const QByteArray &language, const QByteArray &country)
{
    ResourceConfig config;
    std::memcpy(config.language, language.leftJustified(2, '\0').constData(), 2);
    std::memcpy(config.country, country.leftJustified(2, '\0').constData(), 2);
    return config;
}

} // namespace

class TestResourceConfig : public QObject
{
    Q_OBJECT

private slots:
    // loading
    void aNewConfigurationIsZero();
    void everyFieldHasItsPlace_data();
    void everyFieldHasItsPlace();
    void everyFieldIsSignExtended_data();
    void everyFieldIsSignExtended();
    void bitsOfAByteAreKeptApart_data();
    void bitsOfAByteAreKeptApart();
    void localeIsKeptAsBytes();
    void everyRecordSize_data();
    void everyRecordSize();
    void aRecordOfSizeEightHasOnlyTheNetwork();
    void aRecordOfSizeFourHasNothing();
    void newerFieldsAreSkipped();
    void loadingClearsEveryField();
    void theReaderGoesOnBehindTheRecord();
    void theEnclosingBoundaryIsRestored();
    void sizesBelowFourAreStepsBack_data();
    void sizesBelowFourAreStepsBack();
    void anEarlierFaultLeavesTheFieldsZero();
    void everyPrefixIsReadAsFarAsItGoes_data();
    void everyPrefixIsReadAsFarAsItGoes();
    void aRecordThatPassesItsRegionIsReadAllTheSame();
    void fourBytesAtATimeAreEnough();

    // every error text
    void chunkTooShort();
    void fileTooShort();
    void boundaryOutOfBounds();
    void sizesThatDoNotFitAreOutOfBounds();

    // comparing
    void equalFieldsAreEqual();
    void everyFieldCounts();
    void everyByteOfTheLocaleCounts();
    void skippedBytesDoNotCount_data();
    void skippedBytesDoNotCount();

    // locale()
    void locale_data();
    void locale();
    void noLanguageGivesANullLocale();

    // toString()
    void theDefaultHasNoQualifiers();
    void qualifiersOfAField_data();
    void qualifiersOfAField();
    void numbersAreQualifiers_data();
    void numbersAreQualifiers();
    void localeQualifiers_data();
    void localeQualifiers();
    void screenSizeInPixels();
    void qualifiersHaveAnOrder();
    void qualifiersOfARecord();
    void keepsTheDensityThatIsReadOutOfNodpi();
    void keepsPackedLanguagesAndRegionsGarbled();
    void keepsScriptsUntold();
};

void TestResourceConfig::aNewConfigurationIsZero()
{
    const ResourceConfig config;
    for (const Field &field : fields)
        QVERIFY2(config.*field.member == 0, field.name);
    QCOMPARE(QByteArray(config.language, 2) + QByteArray(config.country, 2), QByteArray(4, '\0'));
}

void TestResourceConfig::everyFieldHasItsPlace_data()
{
    QTest::addColumn<int>("at");
    for (int at = 4; at < WholeSize; ++at)
        QTest::newRow(qPrintable(QString::number(at))) << at;
}

void TestResourceConfig::everyFieldHasItsPlace()
{
    QFETCH(int, at);
    constexpr int byte = 0x5e;
    const ResourceConfig config = loaded(ConfigBuilder(WholeSize).u8(at, byte));
    for (const Field &field : fields) {
        int expected = 0;
        if (at >= field.at && at < field.at + field.width)
            expected = field.mask == 0 ? byte << (8 * (at - field.at)) : (byte & field.mask) >> field.shift;
        QVERIFY2(config.*field.member == expected, field.name);
    }
    QByteArray locale(4, '\0');
    if (at >= 8 && at < 12)
        locale[at - 8] = char(byte);
    QCOMPARE(QByteArray(config.language, 2) + QByteArray(config.country, 2), locale);
}

void TestResourceConfig::everyFieldIsSignExtended_data()
{
    QTest::addColumn<Member>("member");
    QTest::addColumn<int>("at");
    QTest::addColumn<int>("width");
    for (const Field &field : fields) {
        if (field.mask == 0)
            QTest::newRow(field.name) << field.member << field.at << field.width;
    }
}

void TestResourceConfig::everyFieldIsSignExtended()
{
    QFETCH(Member, member);
    QFETCH(int, at);
    QFETCH(int, width);
    const auto read = [=](int value) {
        ConfigBuilder record;
        return loaded(width == 1 ? record.u8(at, value) : record.u16(at, value)).*member;
    };
    const int top = width == 1 ? 0x80 : 0x8000;
    QCOMPARE(read(top - 1), top - 1);
    QCOMPARE(read(top), -top);
    QCOMPARE(read(2 * top - 1), -1);
}

void TestResourceConfig::bitsOfAByteAreKeptApart_data()
{
    QTest::addColumn<Member>("member");
    QTest::addColumn<int>("at");
    QTest::addColumn<int>("mask");
    QTest::addColumn<int>("shift");
    for (const Field &field : fields) {
        if (field.mask != 0)
            QTest::newRow(field.name) << field.member << field.at << field.mask << field.shift;
    }
}

void TestResourceConfig::bitsOfAByteAreKeptApart()
{
    QFETCH(Member, member);
    QFETCH(int, at);
    QFETCH(int, mask);
    QFETCH(int, shift);
    for (int byte = 0; byte <= 0xff; ++byte)
        QCOMPARE(loaded(ConfigBuilder().u8(at, byte)).*member, (byte & mask) >> shift);
}

void TestResourceConfig::localeIsKeptAsBytes()
{
    const ResourceConfig config = loaded(ConfigBuilder().locale("e\xff", "\x80Z"));
    QCOMPARE(QByteArray(config.language, 2), QByteArray("e\xff"));
    QCOMPARE(QByteArray(config.country, 2), QByteArray("\x80Z"));
}

void TestResourceConfig::everyRecordSize_data()
{
    QTest::addColumn<int>("size");
    for (int size = 4; size <= 80; ++size)
        QTest::newRow(qPrintable(QString::number(size))) << size;
}

void TestResourceConfig::everyRecordSize()
{
    QFETCH(int, size);
    // Fields are in groups of four bytes. A group is read only when the record has room for all of it.
    const auto isIn = [size](int at) { return size > (at | 3); };
    Loading loading(filledRecord(size) + QByteArray(8, 'x'));
    const ResourceConfig config = loading.load();
    QCOMPARE(loading.fault(), QString());
    QCOMPARE(loading.reader.position, size);
    QCOMPARE(loading.device.delivered(), size);
    for (const Field &field : fields)
        QVERIFY2(config.*field.member == (isIn(field.at) ? filledValue(field) : 0), field.name);
    QCOMPARE(QByteArray(config.language, 2) + QByteArray(config.country, 2),
             QByteArray(4, isIn(8) ? char(0xff) : '\0'));
}

void TestResourceConfig::aRecordOfSizeEightHasOnlyTheNetwork()
{
    Loading loading(ConfigBuilder(8).mcc(310).mnc(4).build() + filledRecord(WholeSize));
    ResourceConfig expected;
    expected.mcc = 310;
    expected.mnc = 4;
    QVERIFY(loading.load() == expected);
    QCOMPARE(loading.device.delivered(), 8);
}

void TestResourceConfig::aRecordOfSizeFourHasNothing()
{
    Loading loading(ConfigBuilder(4).build() + filledRecord(WholeSize));
    QVERIFY(loading.load() == ResourceConfig());
    QCOMPARE(loading.device.delivered(), 4);
}

void TestResourceConfig::newerFieldsAreSkipped()
{
    Loading loading(filledRecord(WholeSize));
    QVERIFY(loading.load() == loaded(filledRecord(KnownSize)));
    QCOMPARE(loading.reader.position, WholeSize);
    QCOMPARE(loading.device.delivered(), WholeSize);
}

void TestResourceConfig::loadingClearsEveryField()
{
    for (const QByteArray &record : {ConfigBuilder(4).build(), ConfigBuilder(8).build(), QByteArray()}) {
        Loading loading(record);
        loading.config = filledConfig();
        QVERIFY(loading.load() == ResourceConfig());
    }
}

void TestResourceConfig::theReaderGoesOnBehindTheRecord()
{
    Loading loading(filledRecord(KnownSize) + ConfigBuilder(12).locale("de").build() + filledRecord(KnownSize));
    loading.load();
    QCOMPARE(loading.load().locale(), QStringLiteral("de"));
    QCOMPARE(loading.reader.position, KnownSize + 12);
    QCOMPARE(loading.load().mcc, -1);
    QCOMPARE(loading.fault(), QString());
}

void TestResourceConfig::theEnclosingBoundaryIsRestored()
{
    Loading loading(filledRecord(KnownSize) + QByteArray(8, 'x'));
    loading.reader.pushBoundary(KnownSize);
    loading.load();
    QCOMPARE(loading.fault(), QString());
    QCOMPARE(loading.reader.boundary, KnownSize);
    QCOMPARE(loading.reader.remaining(), 0);
}

void TestResourceConfig::sizesBelowFourAreStepsBack_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {3, 2, 1, 0, -1, -100})
        QTest::newRow(qPrintable(QString::number(size))) << size;
}

void TestResourceConfig::sizesBelowFourAreStepsBack()
{
    QFETCH(int, size);
    Loading loading(filledRecord(size) + QByteArray(WholeSize, 'x'));
    QVERIFY(loading.load() == ResourceConfig());
    QCOMPARE(loading.fault(), QString());
    QCOMPARE(loading.reader.position, size);
    QCOMPARE(loading.device.delivered(), 4);
}

void TestResourceConfig::anEarlierFaultLeavesTheFieldsZero()
{
    Loading loading(filledRecord(WholeSize));
    loading.reader.pushBoundary(WholeSize);
    loading.reader.setError(QStringLiteral("earlier"));
    loading.config = filledConfig();
    QVERIFY(loading.load() == ResourceConfig());
    QCOMPARE(loading.fault(), QStringLiteral("earlier"));
    QCOMPARE(loading.reader.position, 4);
    QCOMPARE(loading.device.delivered(), 4);
    QCOMPARE(loading.reader.boundary, WholeSize);
}

void TestResourceConfig::everyPrefixIsReadAsFarAsItGoes_data()
{
    QTest::addColumn<int>("answerAtEnd");
    QTest::newRow("a device that answers 0 at its end") << 0;
    QTest::newRow("a device that answers -1 at its end") << -1;
}

void TestResourceConfig::everyPrefixIsReadAsFarAsItGoes()
{
    QFETCH(int, answerAtEnd);
    const QByteArray record = filledRecord(WholeSize);
    for (int size = 0; size < WholeSize; ++size) {
        const std::unique_ptr<char[]> block(new char[size_t(size)]);
        std::memcpy(block.get(), record.constData(), size_t(size));
        Loading loading(QByteArray::fromRawData(block.get(), size));
        loading.device.setAnswerAtEnd(answerAtEnd);
        const ResourceConfig config = loading.load();
        QCOMPARE(loading.fault(), QStringLiteral("file too short"));
        for (const Field &field : fields) {
            const bool isIn = size >= field.at + field.width;
            QVERIFY2(config.*field.member == (isIn ? filledValue(field) : 0), field.name);
        }
    }
}

void TestResourceConfig::aRecordThatPassesItsRegionIsReadAllTheSame()
{
    Loading loading(filledRecord(KnownSize));
    loading.reader.pushBoundary(KnownSize - 16);
    QVERIFY(loading.load() == loaded(filledRecord(KnownSize)));
    QVERIFY(loading.reader.failed());
    QCOMPARE(loading.reader.position, KnownSize);
    QCOMPARE(loading.reader.boundary, KnownSize - 16);
}

void TestResourceConfig::fourBytesAtATimeAreEnough()
{
    Loading loading(filledRecord(WholeSize));
    loading.device.setLargestRead(4);
    QVERIFY(loading.load() == loaded(filledRecord(WholeSize)));
    QCOMPARE(loading.fault(), QString());
    QCOMPARE(loading.device.delivered(), WholeSize);
}

void TestResourceConfig::chunkTooShort()
{
    Loading loading(filledRecord(WholeSize));
    loading.reader.pushBoundary(3);
    loading.config = filledConfig();
    QVERIFY(loading.load() == ResourceConfig());
    QCOMPARE(loading.fault(), QStringLiteral("chunk too short"));
    QCOMPARE(loading.reader.boundary, 3);
    QCOMPARE(loading.device.delivered(), 0);
}

void TestResourceConfig::fileTooShort()
{
    Loading loading(filledRecord(WholeSize).left(WholeSize - 1));
    loading.load();
    QCOMPARE(loading.fault(), QStringLiteral("file too short"));

    Loading bytewise(filledRecord(WholeSize));
    bytewise.device.setLargestRead(1);
    QVERIFY(bytewise.load() == ResourceConfig());
    QCOMPARE(bytewise.fault(), QStringLiteral("file too short"));
}

void TestResourceConfig::boundaryOutOfBounds()
{
    Loading loading(filledRecord(KnownSize));
    loading.reader.pushBoundary(KnownSize - 1);
    loading.load();
    QCOMPARE(loading.fault(), QStringLiteral("boundary out of bounds"));
}

void TestResourceConfig::sizesThatDoNotFitAreOutOfBounds()
{
    for (const qint64 size : {0x80000000, 0x80000001, 0x80000003}) {
        QByteArray record = filledRecord(WholeSize);
        poke32(record, SizeAt, size);
        Loading loading(record);
        QVERIFY(loading.load() == ResourceConfig());
        QCOMPARE(loading.fault(), QStringLiteral("boundary out of bounds"));
    }
}

void TestResourceConfig::equalFieldsAreEqual()
{
    QVERIFY(ResourceConfig() == ResourceConfig());
    QVERIFY(filledConfig() == filledConfig());
    QVERIFY(loaded(filledRecord(WholeSize)) == loaded(filledRecord(WholeSize)));
    QVERIFY(!(filledConfig() == ResourceConfig()));
}

void TestResourceConfig::everyFieldCounts()
{
    for (const Field &field : fields) {
        for (const int difference : {1, 0x100, 0x10000, 0x1000000}) {
            ResourceConfig other = filledConfig();
            other.*field.member ^= difference;
            QVERIFY2(!(other == filledConfig()), field.name);
            QVERIFY2(!(filledConfig() == other), field.name);
        }
    }
}

void TestResourceConfig::everyByteOfTheLocaleCounts()
{
    for (int byte = 0; byte < 4; ++byte) {
        ResourceConfig other = filledConfig();
        (byte < 2 ? other.language : other.country)[byte % 2] ^= 0x20;
        QVERIFY(!(other == filledConfig()));
    }
}

void TestResourceConfig::skippedBytesDoNotCount_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<int>("bits");
    QTest::newRow("input flags") << 18 << 0xf0;
    QTest::newRow("padding") << 19 << 0xff;
    QTest::newRow("minor version, low byte") << 26 << 0xff;
    QTest::newRow("minor version, high byte") << 27 << 0xff;
    QTest::newRow("ui mode") << 29 << 0xc0;
    for (int at = KnownSize; at < WholeSize; ++at)
        QTest::newRow(qPrintable(QString::number(at))) << at << 0xff;
}

void TestResourceConfig::skippedBytesDoNotCount()
{
    QFETCH(int, at);
    QFETCH(int, bits);
    const ResourceConfig config = loaded(ConfigBuilder(WholeSize).locale("de").density(240));
    QVERIFY(loaded(ConfigBuilder(WholeSize).locale("de").density(240).u8(at, bits)) == config);
}

void TestResourceConfig::locale_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QByteArray>("country");
    QTest::addColumn<QString>("locale");
    const auto row = [](const char *name, const char *language, const char *country, const QString &expected) {
        QTest::newRow(name) << QByteArray(language) << QByteArray(country) << expected;
    };
    row("both", "en", "US", QStringLiteral("en-US"));
    row("the other case", "EN", "us", QStringLiteral("en-US"));
    row("either case", "Pt", "bR", QStringLiteral("pt-BR"));
    row("language", "fr", "", QStringLiteral("fr"));
    row("a country's first half", "en", "U", QStringLiteral("en"));
    row("no letters, beside those of ASCII", "{[", "`@", QStringLiteral("{[-`@"));
    row("Latin-1", "\xc9z", "\xe9Z", QStringLiteral(u"\u00e9z-\u00c9Z"));
    QTest::newRow("a country's other half") << QByteArray("en") << QByteArray("\0S", 2) << QStringLiteral("en");
}

void TestResourceConfig::locale()
{
    QFETCH(QByteArray, language);
    QFETCH(QByteArray, country);
    QTEST(withLocale(language, country).locale(), "locale");
    QTEST(loaded(ConfigBuilder()
                     .u8(8, language.at(0))
                     .u8(9, language.at(1))
                     .u16(10, peek16(country.leftJustified(2, '\0'), 0)))
              .locale(),
          "locale");
}

void TestResourceConfig::noLanguageGivesANullLocale()
{
    QVERIFY(ResourceConfig().locale().isNull());
    QVERIFY(withLocale("", "US").locale().isNull());
    QVERIFY(withLocale("e", "US").locale().isNull());
    QVERIFY(withLocale(QByteArray("\0n", 2), "US").locale().isNull());
}

void TestResourceConfig::theDefaultHasNoQualifiers()
{
    QCOMPARE(ResourceConfig().toString(), QString());
    QCOMPARE(loaded(ConfigBuilder()).toString(), QString());
}

void TestResourceConfig::qualifiersOfAField_data()
{
    using Names = QMap<int, QString>;
    QTest::addColumn<Member>("member");
    QTest::addColumn<Names>("names");
    const auto row = [](const char *name, Member member, const Names &names) {
        QTest::newRow(name) << member << names;
    };
    row("layoutDirection", &ResourceConfig::layoutDirection, {{1, "ldltr"}, {2, "ldrtl"}});
    row("screenSize", &ResourceConfig::screenSize, {{1, "small"}, {2, "normal"}, {3, "large"}, {4, "xlarge"}});
    row("screenLong", &ResourceConfig::screenLong, {{1, "notlong"}, {2, "long"}});
    row("orientation", &ResourceConfig::orientation, {{1, "port"}, {2, "land"}, {3, "square"}});
    row("uiModeType", &ResourceConfig::uiModeType, {{2, "desk"}, {3, "car"}, {4, "television"}, {5, "appliance"}});
    row("uiModeNight", &ResourceConfig::uiModeNight, {{1, "notnight"}, {2, "night"}});
    row("density", &ResourceConfig::density,
        {{120, "ldpi"},
         {160, "mdpi"},
         {213, "tvdpi"},
         {240, "hdpi"},
         {320, "xhdpi"},
         {480, "xxhdpi"},
         {65535, "nodpi"}});
    row("touchscreen", &ResourceConfig::touchscreen, {{1, "notouch"}, {2, "stylus"}, {3, "finger"}});
    row("keysHidden", &ResourceConfig::keysHidden, {{1, "keysexposed"}, {2, "keyshidden"}, {3, "keyssoft"}});
    row("keyboard", &ResourceConfig::keyboard, {{1, "nokeys"}, {2, "qwerty"}, {3, "12key"}});
    row("navHidden", &ResourceConfig::navHidden, {{1, "navexposed"}, {2, "navhidden"}});
    row("navigation", &ResourceConfig::navigation, {{1, "nonav"}, {2, "dpad"}, {3, "trackball"}, {4, "wheel"}});
}

void TestResourceConfig::qualifiersOfAField()
{
    using Names = QMap<int, QString>;
    QFETCH(Member, member);
    QFETCH(Names, names);
    ResourceConfig config;
    for (int value = -0x101; value <= 0x10010; ++value) {
        config.*member = value;
        // A plain comparison comes first for speed: there are many values, and few have a name.
        if (config.toString() != names.value(value))
            QCOMPARE(config.toString() + QLatin1Char('=') + QString::number(value), names.value(value));
        if (value == 700)
            value = 0xfff0;
    }
}

void TestResourceConfig::numbersAreQualifiers_data()
{
    QTest::addColumn<Member>("member");
    QTest::addColumn<QString>("pattern");
    const auto row = [](const char *name, Member member, const char *pattern) {
        QTest::newRow(name) << member << QString::fromLatin1(pattern);
    };
    row("mcc", &ResourceConfig::mcc, "mcc%1");
    row("mnc", &ResourceConfig::mnc, "mnc%1");
    row("smallestScreenWidthDp", &ResourceConfig::smallestScreenWidthDp, "sw%1dp");
    row("screenWidthDp", &ResourceConfig::screenWidthDp, "w%1dp");
    row("screenHeightDp", &ResourceConfig::screenHeightDp, "h%1dp");
    row("screenWidth", &ResourceConfig::screenWidth, "%1x0");
    row("screenHeight", &ResourceConfig::screenHeight, "0x%1");
    row("sdkVersion", &ResourceConfig::sdkVersion, "v%1");
}

void TestResourceConfig::numbersAreQualifiers()
{
    QFETCH(Member, member);
    QFETCH(QString, pattern);
    ResourceConfig config;
    for (const int value : {1, 4, 310, 32767, -1, -32768}) {
        config.*member = value;
        QCOMPARE(config.toString(), pattern.arg(value));
    }
}

void TestResourceConfig::localeQualifiers_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QByteArray>("country");
    QTest::addColumn<QString>("qualifiers");
    const auto row = [](const char *name, const QByteArray &language, const QByteArray &country,
                        const QString &expected) { QTest::newRow(name) << language << country << expected; };
    row("both", "en", "US", QStringLiteral("en-rUS"));
    row("language", "fr", "", QStringLiteral("fr"));
    row("case is kept", "EN", "us", QStringLiteral("EN-rus"));
    row("country", "", "US", QString());
    row("a language's first half", "e", "US", QString());
    row("a language's other half", QByteArray("\0n", 2), "US", QString());
    row("a country's first half", "en", "U", QStringLiteral("en"));
    row("a country's other half", "en", QByteArray("\0S", 2), QStringLiteral("en"));
    row("no letters, beside those of ASCII", "{[", "`@", QStringLiteral("{[-r`@"));
    row("Latin-1", "\xc9z", "\xe9Z", QStringLiteral(u"\u00c9z-r\u00e9Z"));
}

void TestResourceConfig::localeQualifiers()
{
    QFETCH(QByteArray, language);
    QFETCH(QByteArray, country);
    QTEST(withLocale(language, country).toString(), "qualifiers");
}

void TestResourceConfig::screenSizeInPixels()
{
    ResourceConfig config;
    config.screenWidth = 1280;
    config.screenHeight = 720;
    QCOMPARE(config.toString(), QStringLiteral("1280x720"));
}

void TestResourceConfig::qualifiersHaveAnOrder()
{
    ResourceConfig config = withLocale("en", "US");
    config.mcc = 310;
    config.mnc = 4;
    config.orientation = 2;
    config.touchscreen = 3;
    config.density = 240;
    config.keyboard = 3;
    config.navigation = 2;
    config.keysHidden = 3;
    config.navHidden = 2;
    config.screenWidth = 1280;
    config.screenHeight = 720;
    config.sdkVersion = 21;
    config.screenSize = 4;
    config.screenLong = 1;
    config.layoutDirection = 2;
    config.uiModeType = 4;
    config.uiModeNight = 2;
    config.smallestScreenWidthDp = 600;
    config.screenWidthDp = 820;
    config.screenHeightDp = 590;
    QCOMPARE(config.toString(),
             QStringLiteral("mcc310-mnc4-en-rUS-ldrtl-sw600dp-w820dp-h590dp-xlarge-notlong-land-television-night-hdpi-"
                            "finger-keyssoft-12key-navhidden-dpad-1280x720-v21"));
}

void TestResourceConfig::qualifiersOfARecord()
{
    QCOMPARE(loaded(ConfigBuilder().locale("en", "US").orientation(2).density(240)).toString(),
             QStringLiteral("en-rUS-land-hdpi"));
    QCOMPARE(loaded(ConfigBuilder().mcc(310).mnc(4).sdkVersion(21)).toString(), QStringLiteral("mcc310-mnc4-v21"));
    QCOMPARE(loaded(ConfigBuilder().locale("", "US")).toString(), QString());
    QCOMPARE(loaded(ConfigBuilder().density(640)).toString(), QString());
    QCOMPARE(loaded(ConfigBuilder().u16(24, 0xffff)).toString(), QStringLiteral("v-1"));
}

void TestResourceConfig::keepsTheDensityThatIsReadOutOfNodpi()
{
    ResourceConfig config = loaded(ConfigBuilder().density(0xffff));
    QCOMPARE(config.density, -1);
    QCOMPARE(config.toString(), QString());
    config.density = 65535;
    QCOMPARE(config.toString(), QStringLiteral("nodpi"));
}

void TestResourceConfig::keepsPackedLanguagesAndRegionsGarbled()
{
    // "fil" and "419", each as three numbers of five bits, from the last to the first, after a set bit.
    const ResourceConfig filipino = loaded(ConfigBuilder().locale("\xad\x05"));
    QCOMPARE(filipino.locale(), QStringLiteral(u"\u00ad\u0005"));
    QCOMPARE(filipino.toString(), QStringLiteral(u"\u00ad\u0005"));
    const ResourceConfig latinAmerican = loaded(ConfigBuilder().locale("es", "\xa4\x24"));
    QCOMPARE(latinAmerican.locale(), QStringLiteral(u"es-\u00a4$"));
    QCOMPARE(latinAmerican.toString(), QStringLiteral(u"es-r\u00a4$"));
}

void TestResourceConfig::keepsScriptsUntold()
{
    ConfigBuilder latin = ConfigBuilder().locale("sr");
    for (int i = 0; i < 4; ++i)
        latin.u8(KnownSize + i, "Latn"[i]);
    QCOMPARE(loaded(latin).locale(), QStringLiteral("sr"));
    QCOMPARE(loaded(latin).toString(), QStringLiteral("sr"));
    QVERIFY(loaded(latin) == loaded(ConfigBuilder().locale("sr")));
}

QTEST_GUILESS_MAIN(TestResourceConfig)
#include "tst_resourceconfig.moc"
